#include "access/text_helpers.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

namespace {

mrib_addrtype address(const char* dotted, uint32_t family = 0) {
  mrib_addrtype a{};
  a.AFName = family;
  inet_pton(AF_INET, dotted, &a.IPV4Address);
  return a;
}

TEST(StrSave, FiveSlotsThenTheFirstIsReusedAndLongTextsAreCut) {
  const char* slots[6];
  for (int i = 0; i < 6; ++i) slots[i] = strsave(std::to_string(i).c_str());
  for (int i = 1; i < 5; ++i) EXPECT_NE(slots[0], slots[i]);
  EXPECT_EQ(slots[0], slots[5]);
  EXPECT_STREQ(slots[5], "5");
  EXPECT_STREQ(slots[4], "4");
  EXPECT_EQ(std::strlen(strsave(std::string(300, 'x').c_str())), 256u);
}

// Dotted and hex texts share one ring of five.
TEST(AddressPrint, DottedAndHexTextsShareARingOfFive) {
  mrib_addrtype a[6];
  for (int i = 0; i < 6; ++i) a[i] = address(("10.0.0." + std::to_string(i)).c_str());
  const char* texts[6];
  for (int i = 0; i < 6; ++i) texts[i] = mrib_pod_addr_print(&a[i]);
  EXPECT_STREQ(texts[1], "10.0.0.1");
  EXPECT_STREQ(texts[4], "10.0.0.4");
  EXPECT_EQ(texts[0], texts[5]);
  EXPECT_STREQ(texts[0], "10.0.0.5");

  mrib_addrtype m = address("224.0.0.1");
  const char* dotted = ip_maddr_dotted_string(&m.IPV4Address);
  EXPECT_STREQ(dotted, "224.0.0.1");
  const char* later = nullptr;
  for (int i = 0; i < 5; ++i) later = ip_maddr_hex_string(&m.IPV4Address);
  EXPECT_EQ(later, dotted);
  EXPECT_STREQ(dotted, "e0000001");
}

TEST(AddressPrint, FamiliesZeroAndOneAreReadAsIpv4OthersAreNamed) {
  mrib_addrtype v6 = address("232.1.1.1", 1), odd = address("10.0.0.1", 7), v4 = address("10.0.0.1");
  EXPECT_STREQ(mrib_pod_addr_print(&v6), "232.1.1.1");
  EXPECT_EQ(mrib_pod_addr_bytes(&odd), nullptr);
  EXPECT_STREQ(ostrel_addr_text(&odd), "<unknown AF 7>");
  EXPECT_STREQ(ostrel_addr_text(&v4), "10.0.0.1");
  mrib_addrtype zero = address("0.0.0.0"), one = address("0.0.0.1");
  EXPECT_TRUE(mrib_pod_addr_is_any(&zero));
  EXPECT_FALSE(mrib_pod_addr_is_any(&one));
  mrib_addrtype b = address("10.1.2.3");
  EXPECT_STREQ(ip_maddr_hex_string(&b.IPV4Address), "0a010203");
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
    EXPECT_STREQ(instance, row.instance) << row.text;  // two null pointers compare equal, nothing else does
    std::free(name);
    std::free(instance);
  }
}

}  // namespace
