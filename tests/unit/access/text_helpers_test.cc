#include "access/text_helpers.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "platform/text.h"

namespace {

mrib_addrtype address(const char* dotted, uint32_t family = 0) {
  mrib_addrtype a{};
  a.AFName = family;
  inet_pton(AF_INET, dotted, &a.IPV4Address);
  return a;
}

TEST(StrSave, FiveSlotsThenTheFirstIsReused) {
  const char* slots[6];
  for (int i = 0; i < 6; ++i) slots[i] = strsave(std::to_string(i).c_str());
  for (int i = 1; i < 5; ++i) EXPECT_NE(slots[0], slots[i]);
  EXPECT_EQ(slots[0], slots[5]);
  EXPECT_STREQ(slots[5], "5");
  EXPECT_STREQ(slots[4], "4");
}

TEST(StrSave, CutsLongTextsToTheSlot) {
  std::string long_text(300, 'x');
  EXPECT_EQ(std::strlen(strsave(long_text.c_str())), 256u);
}

TEST(AddressPrint, RingOfFiveInOneCall) {
  mrib_addrtype a[6];
  for (int i = 0; i < 6; ++i) a[i] = address(("10.0.0." + std::to_string(i)).c_str());
  const char* texts[6];
  for (int i = 0; i < 6; ++i) texts[i] = mrib_pod_addr_print(&a[i]);
  EXPECT_STREQ(texts[1], "10.0.0.1");
  EXPECT_STREQ(texts[4], "10.0.0.4");
  EXPECT_EQ(texts[0], texts[5]);
  EXPECT_STREQ(texts[0], "10.0.0.5");
}

TEST(AddressPrint, AnIpv6TaggedAddressPrintsItsFirstFourBytes) {
  mrib_addrtype a = address("232.1.1.1", 1);
  EXPECT_STREQ(mrib_pod_addr_print(&a), "232.1.1.1");
  EXPECT_EQ(mrib_pod_addr_length(&a), 16u);
}

TEST(AddressPrint, UnknownFamilyIsNamedNotRead) {
  mrib_addrtype a = address("10.0.0.1", 7);
  EXPECT_EQ(mrib_pod_addr_bytes(&a), nullptr);
  EXPECT_EQ(mrib_pod_addr_length(&a), 0u);
  EXPECT_STREQ(ostrel_addr_text(&a), "<unknown AF 7>");
  mrib_addrtype b = address("10.0.0.1");
  EXPECT_STREQ(ostrel_addr_text(&b), "10.0.0.1");
}

TEST(AddressPrintDeathTest, UnknownFamilyBreaksTheAssertion) {
  mrib_addrtype a = address("10.0.0.1", 2);
  EXPECT_DEATH(mrib_pod_addr_print(&a), "addr_bytes != NULL");
  EXPECT_DEATH(mrib_pod_addr_is_any(&a), "ipv4/multicast/mrib/src/mrib_pod_lib");
}

TEST(AddressPrint, AnyAddress) {
  mrib_addrtype zero = address("0.0.0.0"), one = address("0.0.0.1");
  EXPECT_TRUE(mrib_pod_addr_is_any(&zero));
  EXPECT_FALSE(mrib_pod_addr_is_any(&one));
}

TEST(HexString, EightLowerCaseDigitsInDottedOrder) {
  mrib_addrtype a = address("224.0.0.1"), b = address("10.1.2.3");
  EXPECT_STREQ(ip_maddr_hex_string(&a.IPV4Address), "e0000001");
  EXPECT_STREQ(ip_maddr_hex_string(&b.IPV4Address), "0a010203");
  EXPECT_DEATH(ip_maddr_hex_string(nullptr), "addr");
}

TEST(HexString, DottedTextsShareTheRing) {
  mrib_addrtype a = address("224.0.0.1");
  const char* dotted = ip_maddr_dotted_string(&a.IPV4Address);
  EXPECT_STREQ(dotted, "224.0.0.1");
  const char* later = nullptr;
  for (int i = 0; i < 5; ++i) later = ip_maddr_hex_string(&a.IPV4Address);
  EXPECT_EQ(later, dotted);
  EXPECT_STREQ(dotted, "e0000001");
}

TEST(RouteKey, HexAddressesAndTheLengthOrNothing) {
  mrib_addrtype source = address("10.0.0.1"), group = address("232.1.1.1", 1), odd = address("1.2.3.4", 9);
  char key[64];
  ASSERT_TRUE(ostrel_route_key(source, group, 32, key, sizeof key));
  EXPECT_STREQ(key, "0a000001,e8010101,32");
  ASSERT_TRUE(ostrel_route_key(group, source, -7, key, sizeof key));
  EXPECT_STREQ(key, "e8010101,0a000001,-7");
  EXPECT_FALSE(ostrel_route_key(source, odd, 32, key, sizeof key));
  EXPECT_FALSE(ostrel_route_key(source, group, 32, key, 20));
}

TEST(CtidText, ByType) {
  mrib_ctid_pod ctid{0, 0};
  EXPECT_STREQ(ostrel_ctid_text(&ctid), "*");
  ctid.TYPE = 5;
  inet_pton(AF_INET, "232.1.1.1", &ctid.ID);
  EXPECT_STREQ(ostrel_ctid_text(&ctid), "232.1.1.1");
  ctid.TYPE = 6;
  EXPECT_STREQ(ostrel_ctid_text(&ctid), "232.1.1.1");
  ctid.TYPE = 3;
  EXPECT_STREQ(ostrel_ctid_text(&ctid), "");
}

// Without a bound interface-name server (none is bound in unit tests) handles are shown as numbers.
TEST(InterfaceName, NullAndUnnamedHandles) {
  EXPECT_STREQ(ostrel_ifh_name(0, 0), "Null");
  EXPECT_STREQ(ostrel_ifh_name(0x1a0, 1), "0x1a0");
}

TEST(Uptime, NeverWholeSecondsAndNoText) {
  EXPECT_STREQ(ostrel_fmt_uptime(0), "never");
  std::string hour = sprint_dhms(3600);
  EXPECT_EQ(ostrel_fmt_uptime(3600000000u), hour);
  std::string zero = sprint_dhms(0);
  EXPECT_EQ(ostrel_fmt_uptime(999999), zero);
}

TEST(CalendarTime, NeverAndNoNewline) {
  char buffer[64];
  EXPECT_STREQ(ostrel_fmt_time(buffer, UINT64_MAX), "never");
  setenv("TZ", "UTC", 1);
  tzset();
  EXPECT_STREQ(ostrel_fmt_time(buffer, 0), "Thu Jan  1 00:00:00 1970");
}

TEST(ClientName, SplitAtTheColon) {
  struct Row {
    const char* text;
    const char* name;
    const char* instance;
  } rows[] = {{"pim:3", "pim", "3"}, {"pim:", "pim", nullptr}, {"pim", "pim", nullptr}, {":2", "", "2"}};
  for (const Row& row : rows) {
    char *name = nullptr, *instance = nullptr;
    ostrel_parse_client_name_inst(row.text, &name, &instance);
    EXPECT_STREQ(name, row.name) << row.text;
    if (row.instance == nullptr) {
      EXPECT_EQ(instance, nullptr) << row.text;
    } else {
      EXPECT_STREQ(instance, row.instance) << row.text;
    }
    std::free(name);
    std::free(instance);
  }
  EXPECT_DEATH(ostrel_parse_client_name_inst(nullptr, nullptr, nullptr), "str != NULL");
}

}  // namespace
