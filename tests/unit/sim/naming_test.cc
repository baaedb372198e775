// Interface, node and forwarding-processor naming from a root's inventory, and the control server.
#include <gtest/gtest.h>

#include <string>

#include "platform/interface.h"
#include "platform/mrib_utl.h"
#include "platform/naming.h"
#include "test_root.h"

namespace {

constexpr const char* kInventory = R"({
  "interfaces": [{"handle": "0x108", "name": "GigabitEthernet0/0/0/1"},
                 {"handle": "0x200", "name": "TenGigE0/1/0/0"},
                 {"handle": "0x2a", "name": "BVI100"}],
  "nodes": [{"id": "0x800", "name": "0/0/CPU0"}],
  "fapids": [{"id": "0x1", "name": "0/1/CPU0"}],
  "library": true,
  "control_server": true,
  "faults": [{"op": "interface_name", "handle": "0x200", "code": "0x40b0ff02"},
             {"op": "display_name", "handle": "0x2a"}]})";

TEST(Naming, NodesAndFapidsByIdentifier) {
  ostrel::sim::TestRoot root(kInventory);
  char text[80] = "junk";
  EXPECT_EQ(nodeid_to_str_external(0x800, text, sizeof text), kCerrOk);
  EXPECT_STREQ(text, "0/0/CPU0");
  EXPECT_EQ(fapid_to_str_external(0x1, text, 6), kCerrOk);
  EXPECT_STREQ(text, "0/1/C");  // cut to the room given
  EXPECT_NE(fapid_to_str_external(0x800, text, sizeof text), kCerrOk);
  EXPECT_STREQ(text, "");
  EXPECT_NE(nodeid_to_str_external(0x1, text, sizeof text), kCerrOk);
}

cerr_t bind(imc_ctx_t* ctx) {
  imc_control_server_params params{1, {}};
  return imc_control_server_bind(&params, 2, ctx);
}

TEST(ControlServer, NamesEachHandleWithItsOwnStatusWhileBound) {
  ostrel::sim::TestRoot root(kInventory);
  imc_ctx_t ctx = nullptr;
  ASSERT_EQ(bind(&ctx), kCerrOk);
  ASSERT_NE(ctx, nullptr);
  const uint32_t handles[] = {0x108, 0x1a0, 0x200};
  char names[3][80];
  imc_interface_name_result results[3];
  for (int i = 0; i < 3; ++i) results[i] = {names[i], sizeof names[i], 0};
  ASSERT_EQ(imc_interface_name(ctx, 3, handles, 0, results), kCerrOk);
  EXPECT_EQ(results[0].status, kCerrOk);
  EXPECT_STREQ(names[0], "GigabitEthernet0/0/0/1");
  EXPECT_NE(results[1].status, kCerrOk);
  EXPECT_EQ(results[2].status, 0x40b0ff02u);

  imc_ctx_t kept = ctx;
  ASSERT_EQ(imc_control_server_unbind(&ctx, 0), kCerrOk);
  EXPECT_EQ(ctx, nullptr);
  EXPECT_NE(imc_interface_name(kept, 1, handles, 0, results), kCerrOk);
}

TEST(ControlServer, RefusedByTheFixtureOrAFaultLeavesTheContextUnset) {
  for (const char* fixture : {R"({"control_server": false})",
                              R"({"control_server": true, "faults": [{"op": "control_server"}]})"}) {
    ostrel::sim::TestRoot root(fixture);
    imc_ctx_t ctx = nullptr;
    EXPECT_NE(bind(&ctx), kCerrOk) << fixture;
    EXPECT_EQ(ctx, nullptr);
  }
}

TEST(DisplayName, ShortFormInPlaceOrNoneOnAFaultOrWhenItDoesNotFit) {
  ostrel::sim::TestRoot root(kInventory);
  char name[80] = "GigabitEthernet0/0/0/1";
  EXPECT_EQ(imc_display_namestring(name, name, sizeof name, 1), name);
  EXPECT_STREQ(name, "Gi0/0/0/1");
  char other[80] = "TenGigE0/1/0/0";
  imc_display_namestring(other, other, sizeof other, 0);
  EXPECT_STREQ(other, "TenGigE0/1/0/0");
  char not_a_type[80] = "Loopbackx";  // a type is followed by its number
  imc_display_namestring(not_a_type, not_a_type, sizeof not_a_type, 1);
  EXPECT_STREQ(not_a_type, "Loopbackx");
  char bvi[80] = "BVI100";
  EXPECT_EQ(imc_display_namestring(bvi, bvi, sizeof bvi, 1), nullptr);
  char small[8];
  EXPECT_EQ(imc_display_namestring("TenGigE0/1/0/0", small, sizeof small, 0), nullptr);
  EXPECT_EQ(imc_display_namestring("TenGigE0/1/0/0", small, sizeof small, 1), nullptr);  // "Te0/1/0/0" is 9
}

TEST(InterfaceLookup, ByFullOrShortNameOrNumber) {
  ostrel::sim::TestRoot root(kInventory);
  EXPECT_EQ(interface_find("GigabitEthernet0/0/0/1"), 0x108u);
  EXPECT_EQ(interface_find("Gi0/0/0/1"), 0x108u);
  EXPECT_EQ(interface_find("BVI100"), 0x2au);
  EXPECT_EQ(interface_find("Gi0/0/0/9"), 0u);
  EXPECT_EQ(ostrel_ifstr_ifh("Te0/1/0/0"), 0x200u);
  EXPECT_EQ(ostrel_ifstr_ifh("0x2a"), 0x2au);
  EXPECT_EQ(ostrel_ifstr_ifh("0x2b"), 0u);
  EXPECT_STREQ(interface_name(0x108, 1), "Gi0/0/0/1");
  EXPECT_STREQ(interface_name(0x108, 0), "GigabitEthernet0/0/0/1");
  EXPECT_STREQ(interface_name(0x1a0, 1), "Un:0x1a0");
}

}  // namespace
