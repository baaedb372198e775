// Error texts, bounded copies, number and address texts, durations and the system log mirror.
#include "platform/text.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstring>
#include <string>

#include "sim/cerr_codes.h"

namespace {

TEST(CerrStrerror, TableCodesSmallCodesAndUnknownCodes) {
  EXPECT_STREQ(cerr_strerror(ostrel::sim::kStoreNotFound),
               "'vellum' detected the 'warning' condition 'The item or directory does not exist'");
  EXPECT_STREQ(cerr_strerror(2), "No such file or directory");
  // Two texts made on demand are both alive inside one printf().
  const char* unknown = cerr_strerror(0x40c00000);
  EXPECT_STREQ(cerr_strerror(13), "Permission denied");
  EXPECT_NE(std::string(unknown).find("0x40c00000"), std::string::npos) << unknown;
}

TEST(BoundedCopies, CutOrRefuseButAlwaysTerminate) {
  char field[5];
  EXPECT_STREQ(sstrncpy(field, "10.1.1.1", sizeof field), "10.1");
  EXPECT_STREQ(sstrncpy(field, "ab", sizeof field), "ab");

  char dst[4] = "xyz";
  EXPECT_NE(strncpy_s(dst, sizeof dst, "abcd", 10), 0);
  EXPECT_STREQ(dst, "");
  EXPECT_EQ(strncpy_s(dst, sizeof dst, "abcdef", 2), 0);  // the count, not the source, bounds the copy
  EXPECT_STREQ(dst, "ab");
}

TEST(NumberAndAddressTexts, WriteIntoTheCallersBufferOrGiveNone) {
  char buffer[16];
  EXPECT_STREQ(inet_ntoa_r(htonl(0x0a000001), buffer, sizeof buffer), "10.0.0.1");
  uint8_t v4[4] = {232, 1, 1, 1};
  EXPECT_EQ(ux_inet_ntop(AF_INET, v4, buffer, 9), nullptr);
  EXPECT_STREQ(ux_inet_ntop(AF_INET, v4, buffer, 10), "232.1.1.1");
  uint8_t edges[2][4] = {{0, 0, 0, 0}, {255, 100, 99, 10}};
  EXPECT_STREQ(ux_inet_ntop(AF_INET, edges[0], buffer, sizeof buffer), "0.0.0.0");
  EXPECT_STREQ(ux_inet_ntop(AF_INET, edges[1], buffer, sizeof buffer), "255.100.99.10");
  EXPECT_STREQ(itoa(-1234, buffer, sizeof buffer, 10), "-1234");
  EXPECT_EQ(itoa(12345, buffer, 5, 10), nullptr);
}

TEST(Durations, FormChangesAtADayAndAWeekAndNegativesGiveNone) {
  EXPECT_STREQ(sprint_dhms(0), "00:00:00");
  EXPECT_STREQ(sprint_dhms(83), "00:01:23");
  EXPECT_STREQ(sprint_dhms(86399), "23:59:59");
  EXPECT_STREQ(sprint_dhms(86400), "1d00h");
  EXPECT_STREQ(sprint_dhms(86400 + 2 * 3600 + 59), "1d02h");
  EXPECT_STREQ(sprint_dhms(604799), "6d23h");
  EXPECT_STREQ(sprint_dhms(604800), "1w0d");
  EXPECT_STREQ(sprint_dhms64(2 * 604800 + 3 * 86400 + 86399), "2w3d");
  EXPECT_STREQ(sprint_dhms(0x7fffffff), "3550w5d");
  // Values negative as signed give none.
  EXPECT_EQ(sprint_dhms(0x80000000u), nullptr);
  EXPECT_EQ(sprint_dhms(0xffffffffu), nullptr);
  EXPECT_EQ(sprint_dhms64(0x8000000000000000ull), nullptr);
  EXPECT_NE(sprint_dhms64(0x80000000u), nullptr);  // a 64-bit duration may exceed 32 bits
}

TEST(Syslog, MirrorsToStandardErrorOnRequest) {
  ::setenv("OSTREL_SYSLOG_STDERR", "1", 1);
  testing::internal::CaptureStderr();
  ux_syslog(3, "STRDUP-ERR : %s (%s:%d). Aborting process", "x", "main", 7);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "<3>STRDUP-ERR : x (main:7). Aborting process\n");
  ::unsetenv("OSTREL_SYSLOG_STDERR");
  testing::internal::CaptureStderr();
  ux_syslog(6, "quiet");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
