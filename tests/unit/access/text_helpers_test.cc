// The rings of texts that one printf may hold several of. The texts themselves (addresses, keys, tree ids,
// client names) show in the views' cases.
#include "access/text_helpers.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

mrib_addrtype address(const char* dotted) {
  mrib_addrtype a{};
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

}  // namespace
