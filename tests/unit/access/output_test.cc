#include "access/output.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

// What `write` hands to stdout, once the output buffer is flushed.
template <typename Write>
std::string written(Write write) {
  testing::internal::CaptureStdout();
  write();
  ostrel_out_flush();
  return testing::internal::GetCapturedStdout();
}

// Digit counts change at the powers of ten and are guessed from the bit width, which changes at the powers
// of two: values on both sides of each, as "%lu" writes them.
TEST(OstrelLine, CountersReadAsPrintfWritesThem) {
  std::vector<uint64_t> values = {0, UINT64_MAX};
  for (uint64_t power = 1;; power *= 10) {
    values.insert(values.end(), {power - 1, power, power + 1});
    if (power > UINT64_MAX / 10) break;
  }
  for (int bit = 1; bit < 64; ++bit)
    values.insert(values.end(), {(uint64_t{1} << bit) - 1, uint64_t{1} << bit});
  for (uint64_t value : values) {
    OstrelLine line;
    char expected[24];
    std::snprintf(expected, sizeof expected, "%lu", static_cast<unsigned long>(value));
    EXPECT_EQ(line.add('<').add(value).add('>').text(), "<" + std::string(expected) + ">");
  }
  OstrelLine line;
  line.add_signed(-1).add(' ').add_signed(INT64_MIN).add(' ').add_signed(42);
  EXPECT_EQ(line.text(), "-1 -9223372036854775808 42");
}

// Texts, formats and lines leave in the order they were written, across buffer spills and texts larger than
// the buffer; an emitted line starts a fresh one.
TEST(Output, EveryWayOutKeepsItsOrder) {
  std::string almost_full(ostrel::detail::kOutSize - 3, 'x');
  std::string larger(ostrel::detail::kOutSize + 10, 'y');
  OstrelLine line;
  EXPECT_EQ(written([&] {
              ostrel_out("a");
              line.add("  Gi0/0/0/1").add(' ').addf("0x%05x", 0x12).add('\n');
              line.emit();
              line.add("next");
              line.emit('\n');
              ostrel_out(almost_full);
              ostrel_outf("%d", 123);  // as long as the room left, which leaves none for its terminator
              ostrel_out(larger);
              ostrel_outf("%s", larger.c_str());
            }),
            "a  Gi0/0/0/1 0x00012\nnext\n" + almost_full + "123" + larger + larger);
}

TEST(OstrelLine, APieceBeyondTheCapacityIsCutThere) {
  OstrelLine line;
  std::string long_piece(OstrelLine::kCapacity - 3, 'x');
  line.add(long_piece).add("abcdef").add('g').addf("%d", 12345);
  EXPECT_EQ(line.text(), long_piece + "abc");
  EXPECT_FALSE(line.fits());
  OstrelLine number(5);
  EXPECT_EQ(number.add("abc").add(uint64_t{12345}).text(), "abc12");
  EXPECT_FALSE(number.fits());
}

// Short pieces are copied by overlapping moves of fixed widths: every length, through a line, a cursor and
// the output buffer, arrives whole and in place.
TEST(OstrelLine, PiecesOfEveryLengthArriveWhole) {
  std::string text;
  for (int i = 0; i < 300; ++i) text += static_cast<char>('!' + i * 7 % 90);
  std::string all;
  for (size_t n = 0; n <= text.size(); ++n) {
    const std::string piece = text.substr(0, n);
    OstrelLine line;
    line.add('<').add(piece);
    line.take(line.cursor().put(piece).put('>'));
    EXPECT_EQ(line.text(), "<" + piece + piece + ">") << n;
    all += piece;
  }
  EXPECT_EQ(written([&] {
              for (size_t n = 0; n <= text.size(); ++n) ostrel_out(text.substr(0, n));
            }),
            all);
}

// A line of a 16-byte buffer holds 15 characters: a piece of exactly the room left does not fit, since its
// terminator would not, whether it is added, formatted or written by a platform writer.
TEST(OstrelLine, ALineOfABufferTakesWhatTheBufferWouldHold) {
  OstrelLine text_line(15);
  text_line.add("0123456789");
  EXPECT_TRUE(text_line.add("12345").fits());
  EXPECT_FALSE(text_line.add('x').fits());

  OstrelLine format_line(15);
  format_line.add("0123456789").addf("%d", 1234);
  EXPECT_TRUE(format_line.fits());
  EXPECT_FALSE(format_line.addf("%d", 12).fits());
  EXPECT_EQ(format_line.text(), "012345678912341");

  OstrelLine writer_line(15);
  writer_line.add("0123");
  EXPECT_EQ(writer_line.room(), 12u);
  EXPECT_TRUE(
      writer_line.advance(std::snprintf(writer_line.end(), writer_line.room(), "%s", "abcdefghijk")).fits());
  EXPECT_FALSE(writer_line.advance(std::snprintf(writer_line.end(), writer_line.room(), "%s", "z")).fits());
  OstrelLine failed(15);
  EXPECT_FALSE(failed.advance(-1).fits());

  // The framing newline goes out after a full line.
  EXPECT_EQ(written([&] { text_line.emit('\n'); }), "012345678912345\n");
}

}  // namespace
