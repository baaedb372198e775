// MRIB utilities: entry designations and their room, the bounded formatter, paths and client names.
#include "platform/mrib_utl.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "test_root.h"

namespace {

int print_entry(uint32_t group, uint32_t source, uint32_t length, char* buffer, int size) {
  const uint32_t key[3] = {htonl(group), htonl(source), length};
  return mrib_utl_print_entry(0, key, 0, buffer, size, 0);
}

TEST(PrintEntry, SourceGroupFormsTheirRoomAndInjectedFaults) {
  char line[512];
  EXPECT_EQ(print_entry(0xe8010101, 0x0a000001, 32, line, sizeof line), 20);
  EXPECT_STREQ(line, "(10.0.0.1,232.1.1.1)");
  print_entry(0xe8000000, 0, 8, line, sizeof line);
  EXPECT_STREQ(line, "(*,232.0.0.0/8)");
  print_entry(0xe8010101, 0, 32, line, sizeof line);
  EXPECT_STREQ(line, "(*,232.1.1.1)");
  print_entry(0xe8010100, 0x0a000001, 24, line, sizeof line);
  EXPECT_STREQ(line, "(10.0.0.1,232.1.1.0/24)");
  EXPECT_EQ(print_entry(0xe8010101, 0x0a000001, 32, line, 21), 20);  // exactly the text and its terminator
  EXPECT_LT(print_entry(0xe8010101, 0x0a000001, 32, line, 20), 0);
  EXPECT_STREQ(line, "");
  for (int size : {512, 46, 45}) {  // the longest, written in place or whole
    EXPECT_EQ(print_entry(0xffffffff, 0xffffffff, 4294967295u, line, size), 44) << size;
    EXPECT_STREQ(line, "(255.255.255.255,255.255.255.255/4294967295)") << size;
  }
  EXPECT_LT(print_entry(0xffffffff, 0xffffffff, 4294967295u, line, 44), 0);
  for (auto [fixture, result] : {std::pair{R"({"faults": [{"op": "print_entry", "overflow": true}]})", -1},
                                 {R"({"faults": [{"op": "print_entry"}]})", -2}}) {
    ostrel::sim::TestRoot root(fixture);
    EXPECT_EQ(print_entry(0xe8010101, 0, 32, line, sizeof line), result) << fixture;
  }
}

TEST(PrintBviEntry, DesignationInterfaceAndTable) {
  char line[256];
  int length = mrib_utl_print_bvi_entry("default", htonl(0x0a000001), htonl(0xe8010101), "BVI1", 32, line,
                                        sizeof line);
  EXPECT_STREQ(line, "(10.0.0.1,232.1.1.1) BVI1, table default");
  EXPECT_EQ(length, 40);
  EXPECT_EQ(mrib_utl_print_bvi_entry("default", htonl(0x0a000001), htonl(0xe8010101), "BVI1", 32, line, 41),
            40);
  EXPECT_EQ(mrib_utl_print_bvi_entry("default", htonl(0x0a000001), htonl(0xe8010101), "BVI1", 32, line, 40),
            -1);
  EXPECT_STREQ(line, "");
  EXPECT_EQ(mrib_utl_print_bvi_entry("", 0, 0, "", 32, line, sizeof line), 11);
  EXPECT_STREQ(line, "(*,0.0.0.0)");
}

TEST(MribSnprintf, StoresWithinItsRoomAndCountsWhatItStoredForAppending) {
  char buffer[8] = "zzzzzzz";
  EXPECT_EQ(mrib_snprintf(buffer, 5, "%s%s", "abc", "def"), 4);
  EXPECT_STREQ(buffer, "abcd");
  EXPECT_EQ(buffer[5], 'z');
  EXPECT_EQ(mrib_snprintf(buffer, 4, "%s", "abc"), 3);
  EXPECT_EQ(mrib_snprintf(buffer, 1, "%s", "abc"), 0);
  EXPECT_STREQ(buffer, "");
  buffer[0] = 'q';
  EXPECT_EQ(mrib_snprintf(buffer, 0, "%s", "abc"), 0);
  EXPECT_EQ(buffer[0], 'q');

  // Appending by the returned count never passes the end.
  char sentence[10];
  char* at = sentence;
  int room = sizeof sentence;
  for (const char* word : {"C", "RPF", "MA", "MDT_IFH", "X"}) {
    int stored = mrib_snprintf(at, room, "%s%s", at == sentence ? "" : " ", word);
    at += stored;
    room -= stored;
  }
  EXPECT_STREQ(sentence, "C RPF MA ");
  EXPECT_EQ(room, 1);
}

TEST(BuildPath, JoinsIntoANewHeapTextOrGivesNoneOnAFault) {
  char* path = mrib_utl_build_path("/oper/ipv4-mrib/gl/act/table/", "red/");
  ASSERT_NE(path, nullptr);
  EXPECT_STREQ(path, "/oper/ipv4-mrib/gl/act/table/red/");
  std::free(path);
  ostrel::sim::TestRoot root(R"({"faults": [{"op": "build_path"}]})");
  EXPECT_EQ(mrib_utl_build_path("red", "/"), nullptr);
}

}  // namespace
