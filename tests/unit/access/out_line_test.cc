#include "access/out_line.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

// What `write` puts on a stream, read back.
template <typename Write>
std::string written(Write write) {
  char* text = nullptr;
  size_t size = 0;
  FILE* out = open_memstream(&text, &size);
  write(out);
  std::fclose(out);
  std::string result(text, size);
  std::free(text);
  return result;
}

TEST(OstrelLine, CountersReadAsPrintfWritesThem) {
  OstrelLine line;
  line.add(uint64_t{0}).add(' ').add(uint64_t{7}).add(' ').add(uint64_t{1000}).add(' ');
  line.add(UINT64_MAX).add(' ').add_signed(-1).add(' ').add_signed(INT64_MIN).add(' ').add_signed(42);
  EXPECT_EQ(line.text(), "0 7 1000 18446744073709551615 -1 -9223372036854775808 42");
}

TEST(OstrelLine, PiecesAndFormatsJoinAndAWriteStartsAFreshLine) {
  OstrelLine line;
  EXPECT_EQ(written([&](FILE* out) {
              line.add("  Gi0/0/0/1").add(' ').addf("0x%05x", 0x12).add('\n');
              line.emit(out);
              line.add("next\n");
              line.emit(out);
            }),
            "  Gi0/0/0/1 0x00012\nnext\n");
}

TEST(OstrelWrite, KeepsOrderWithTheStreamsOtherWriters) {
  std::string long_text(20000, 'x');  // more than the stream's buffer holds
  EXPECT_EQ(written([&](FILE* out) {
              std::fputs("a", out);
              ostrel_write("bc", 2, out);
              std::fprintf(out, "%d", 4);
              ostrel_write(long_text.data(), long_text.size(), out);
              std::fputs("z", out);
            }),
            "abc4" + long_text + "z");
}

// An operator watching a line-buffered terminal sees each line as it is written.
TEST(OstrelWrite, ALineBufferedStreamGetsEachLineAtOnce) {
  FILE* out = std::tmpfile();
  ASSERT_NE(out, nullptr);
  std::setvbuf(out, nullptr, _IOLBF, 4096);
  std::fputs("warm ", out);  // the stream now has its buffer
  ostrel_write("up\n", 3, out);
  ostrel_write("line\n", 5, out);
  char seen[16] = "";
  ASSERT_EQ(pread(fileno(out), seen, sizeof seen - 1, 0), 13);
  EXPECT_STREQ(seen, "warm up\nline\n");
  std::fclose(out);
}

TEST(OstrelLine, APieceBeyondTheCapacityIsCutThere) {
  OstrelLine line;
  std::string long_piece(OstrelLine::kCapacity - 3, 'x');
  line.add(long_piece).add("abcdef").add('g').addf("%d", 12345);
  EXPECT_EQ(line.text(), long_piece + "abc");
}

TEST(OstrelBoundedLine, PiecesThatFitArePrintedAfterABlankLine) {
  OstrelBoundedLine<32> line;
  line.set_length(std::snprintf(line.buffer(), 32, "(*,232.0.0.1)"));
  EXPECT_TRUE(line.append_text(" Flags: "));
  EXPECT_TRUE(line.append("%s", "S"));
  EXPECT_EQ(written([&](FILE* out) { line.print(out); }), "\n(*,232.0.0.1) Flags: S\n");
}

// A piece of exactly the room left does not fit: its terminator would not.
TEST(OstrelBoundedLine, APieceThatDoesNotFitAbandonsTheLineForGood) {
  OstrelBoundedLine<16> text_line;
  text_line.set_length(10);
  EXPECT_FALSE(text_line.append_text("123456"));
  EXPECT_FALSE(text_line.ok());
  EXPECT_FALSE(text_line.append_text("1"));

  OstrelBoundedLine<16> format_line;
  format_line.set_length(10);
  EXPECT_TRUE(format_line.append("%d", 12345));
  EXPECT_TRUE(format_line.append("%s", ""));  // the room is now 1, which only an empty piece fits
  EXPECT_FALSE(format_line.append("%d", 1));
  EXPECT_FALSE(format_line.ok());

  // So does a writer that reports as much as the room left, or a failure.
  OstrelBoundedLine<16> line;
  line.set_length(4);
  EXPECT_TRUE(line.advance(11));
  EXPECT_FALSE(line.advance(1));
  OstrelBoundedLine<16> failed;
  failed.set_length(-1);
  EXPECT_FALSE(failed.ok());
  EXPECT_FALSE(failed.append_text(""));
}

}  // namespace
