// Packed item data: exact packed forms, round trips through every shape of zero run, and damaged forms
// refused without touching what was already unpacked.
#include "sim/store/record_pack.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ostrel::sim {
namespace {

using namespace std::string_literals;

std::string packed(const std::string& record) {
  std::string out = "stale";
  pack_record(record, &out);
  return out;
}

TEST(RecordPackTest, ShortZeroRunsStayInTheLiteralAndLongOnesAreLeftOut) {
  EXPECT_EQ(packed(""), "\x00"s);
  EXPECT_EQ(packed("\0\0\0"s), "\x03"s);
  EXPECT_EQ(packed("a\0\0\0\0\0\0\0b"s), "\x09\x00\x09"s + "a\0\0\0\0\0\0\0b"s);
  EXPECT_EQ(packed("a\0\0\0\0\0\0\0\0b\0"s), "\x0b\x00\x01"s + "a\x08\x01"s + "b");
  EXPECT_EQ(packed("\0\0x"s), "\x03\x02\x01x"s);
  // Lengths from 128 on take two varint bytes.
  EXPECT_EQ(packed(std::string(200, '\0') + "z"), "\xc9\x01\xc8\x01\x01z"s);
}

TEST(RecordPackTest, UnpacksWhatItPackedAfterWhatTheBufferHeld) {
  std::string image(3000, '\0');
  for (size_t at : {0u, 7u, 9u, 100u, 108u, 2000u, 2999u}) image[at] = static_cast<char>(at % 251 + 1);
  std::vector<std::string> records = {
      "", "\0"s, "q", image, image.substr(1), image.substr(0, 2999), std::string(300, '\x7f')};
  for (const std::string& record : records) {
    std::string form = packed(record);
    std::string out = "head";
    ASSERT_TRUE(unpack_record_append(form.data(), form.size(), &out)) << record.size();
    EXPECT_EQ(out, "head" + record) << record.size();
  }
  EXPECT_LT(packed(image).size(), 40u);
}

TEST(RecordPackTest, RefusesDamagedFormsAndKeepsTheBuffer) {
  const std::vector<std::string> damaged = {
      "",                         // no length
      "\x80"s,                    // the length ends inside its varint
      "\xff\xff\xff\xff\x7f"s,    // a length over 32 bits
      "\x04\x00"s,                // a segment without its literal count
      "\x04\x00\x02x"s,           // a literal past the end of the blob
      "\x04\x00\x05xxxxx"s,       // a literal past the record's length
      "\x04\x05\x00"s,            // zeros past the record's length
      "\x04\x02\x01x\x00\x02yy"s  // a second segment past the record's length
  };
  for (const std::string& form : damaged) {
    std::string out = "kept";
    EXPECT_FALSE(unpack_record_append(form.data(), form.size(), &out)) << testing::PrintToString(form);
    EXPECT_EQ(out, "kept");
  }
  std::string out;
  EXPECT_TRUE(unpack_record_append("\x04\x02\x01x\x00\x01y", 7, &out));
  EXPECT_EQ(out, "\0\0xy"s);
}

}  // namespace
}  // namespace ostrel::sim
