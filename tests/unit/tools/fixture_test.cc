// Building roots from fixtures: the error messages for bad fixtures, all-or-nothing replacement, how later
// fixtures add to earlier ones, and what the root then declares (inventory, files, faults).
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "../sim/test_root.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "tools/fixture/fixture.h"

namespace ostrel::tools {
namespace {

using namespace ostrel::sim;

namespace fs = std::filesystem;

// `message` is the error after "bad.json: at ", or with `codec_says` only its start: the codec words its own
// reasons.
struct BadFixture {
  const char* json;
  const char* message;
  bool codec_says = false;
};

constexpr BadFixture kBadFixtures[] = {
    {R"({"itemz": []})", "/itemz: unknown member"},
    {R"([1])", "/: expected an object"},
    {R"({"items": {}})", "/items: expected an array"},
    {R"({"items": [{"path": "a/b", "datatype": 7, "hex": ""}]})",
     "/items/0/path: expected an absolute item path such as \"/a/b/item\""},
    {R"({"items": [{"path": "/a/b/", "datatype": 7, "hex": ""}]})",
     "/items/0/path: expected an absolute item path such as \"/a/b/item\""},
    {R"({"items": [{"path": "/a", "datatype": 7, "hex": "abc"}]})", "/items/0/hex: odd number of hex digits"},
    {R"({"items": [{"path": "/a", "datatype": 7, "hex": "zz"}]})", "/items/0/hex: not a hex digit: 'z'"},
    {R"({"items": [{"path": "/a", "hex": "00"}]})",
     "/items/0/datatype: missing (or give \"type\" and \"value\")"},
    {R"({"items": [{"path": "/a", "datatype": -1, "hex": "00"}]})",
     "/items/0/datatype: expected a non-negative number"},
    {R"({"items": [{"path": "/a", "type": "no_such_pod", "value": {}}]})",
     "/items/0/type: unknown record type \"no_such_pod\""},
    {R"({"dirs": ["/a/"], "items": [{"path": "/a", "datatype": 7, "hex": ""},
                                    {"path": "/b", "datatype": 7, "hex": "", "hex": "00"}]})",
     "/items/1/hex: duplicate member"},
    {R"({"items": [{"path": "/a", "type": "mrib_route_pod", "value": {"Interfaces": [{}, {"Interface": "x"}]}}]})",
     "/items/0/value/Interfaces/1/Interface: ", true},
    {R"({"items": [{"path": "/a", "type": "mrib_db_summ_pod", "value": {"GRoute": 1}}]})",
     "/items/0/value/GRoute: ", true},
    {R"({"items": [{"path": "/a", "datatype": 7, "hex": "", "aliases": ["/b", "c"]}]})",
     "/items/0/aliases/1: expected an absolute item path such as \"/a/b/item\""},
    {R"({"dirs": ["/a//b/"]})", "/dirs/0: expected an absolute directory path such as \"/a/b/\""},
    {R"({"interfaces": [{"handle": "0x100", "name": "Gi0"}, {"handle": "0xzz", "name": "Gi1"}]})",
     "/interfaces/1/handle: not a number: \"0xzz\""},
    {R"({"nodes": [{"id": "0x100000000", "name": "0/0/CPU0"}]})", "/nodes/0/id: number out of range"},
    {R"({"library": "yes"})", "/library: expected true or false"},
    {R"({"faults": [{"op": "explode"}]})", "/faults/0/op: unknown fault operation \"explode\""},
    {R"({"faults": [{"op": "datalist"}]})", "/faults/0/path: missing"},
    {R"({"faults": [{"op": "next", "path": "/a/", "batch": 1}]})", "/faults/0/batch: unknown member"},
    {R"({"faults": [{"op": "pool", "name": "p", "code": 0}]})", "/faults/0/code: a fault's code cannot be 0"},
    {R"({"routes": [{"value": {"GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32}}}]})",
     "/routes/0/value/Source: missing"},
    {R"({"routes": [{"value": {"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1"}}}]})",
     "/routes/0/value/GroupRange/GroupPrefixLength: missing"},
    {R"({"routes": [{"value": {"Source": {"AFName": 1}, "GroupRange": {"GroupPrefix": "232.1.1.1",
                                                                       "GroupPrefixLength": 32}}}]})",
     "/routes/0/value/Source: expected an IPv4 address"},
    {R"({"routes": [{"value": {"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1",
                                                                   "GroupPrefixLength": 33}}}]})",
     "/routes/0/value/GroupRange/GroupPrefixLength: a prefix length above 32"},
    {R"({"routes": [{"vfr": "red", "value": {}}]})", "/routes/0/vfr: unknown member"},
    {R"({"routes": [{"in": ["routedb", "routedb-x"],
                     "value": {"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1",
                                                                    "GroupPrefixLength": 32}}}]})",
     "/routes/0/in/1: unknown route collection \"routedb-x\""},
    {R"({"items": [{"path": "/oper/ipv4-mrib/gl/act/table/default/routedb-ole/0a000001,e8010101,32",
                    "datatype": 8, "hex": ""}],
        "routes": [{"value": {"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1",
                                                                   "GroupPrefixLength": 32}}}]})",
     "/routes/0: /oper/ipv4-mrib/gl/act/table/default/routedb-ole/0a000001,e8010101,32 is also "
     "written by bad.json at /items/0"},
};

class FixtureTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "ostrel-fixture-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    scratch_ = pattern;
  }
  void TearDown() override {
    root_reset_for_testing(scratch_ + "/gone");
    fs::remove_all(scratch_);
  }
  std::string root() const { return scratch_ + "/root"; }
  std::vector<std::string> scratch_entries() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(scratch_))
      names.push_back(entry.path().filename().string());
    return names;
  }

  std::string scratch_;
};

TEST_F(FixtureTest, BadFixtureNamesTheFileAndTheJsonPath) {
  for (const BadFixture& bad : kBadFixtures) {
    std::string error;
    EXPECT_FALSE(build_root(root(), {{"good.json", "{}"}, {"bad.json", bad.json}}, &error)) << bad.json;
    const std::string message = std::string("bad.json: at ") + bad.message;
    if (bad.codec_says) {
      EXPECT_EQ(error.rfind(message, 0), 0u) << error;
      EXPECT_GT(error.size(), message.size()) << error;
    } else {
      EXPECT_EQ(error, message) << bad.json;
    }
  }
  std::string error;
  EXPECT_FALSE(build_root(root(), {{"broken.json", "{\"items\":\n  [}"}}, &error));
  EXPECT_EQ(error.rfind("broken.json:2:4: not valid JSON: ", 0), 0u) << error;
  EXPECT_TRUE(scratch_entries().empty());
}

TEST_F(FixtureTest, FailedBuildLeavesThePreviousRootWhole) {
  std::string error;
  ASSERT_TRUE(build_root(
      root(), {{"one.json", R"({"items": [{"path": "/a/x", "datatype": 8, "hex": "01"}]})"}}, &error))
      << error;
  EXPECT_FALSE(build_root(
      root(), {{"two.json", R"({"items": [{"path": "/a/x", "datatype": 8, "hex": "1"}]})"}}, &error));
  EXPECT_EQ(scratch_entries(), std::vector<std::string>{"root"});
  root_reset_for_testing(root());
  EXPECT_TRUE(fs::exists(root() + "/vellum.db"));
  EXPECT_TRUE(fs::exists(root_path("/pkg/lib/libvellum.so")));
}

// A build aimed at a directory that is not a root leaves it alone; one that fails late leaves neither its
// own directory nor the parents it made.
TEST_F(FixtureTest, BuildReplacesOnlyARootAndLeavesNothingOfAFailure) {
  fs::create_directories(scratch_ + "/home");
  std::ofstream(scratch_ + "/home/notes") << "mine";
  std::string error;
  EXPECT_FALSE(build_root(scratch_ + "/home", {{"one.json", "{}"}}, &error));
  EXPECT_EQ(error, scratch_ + "/home: exists and is not a router root (no vellum.db); not replaced");
  EXPECT_TRUE(fs::exists(scratch_ + "/home/notes"));

  auto no_room = [](const std::string& dir, std::string* finish_error) {
    EXPECT_TRUE(fs::exists(dir + "/vellum.db"));
    *finish_error = "no room";
    return false;
  };
  EXPECT_FALSE(build_root(scratch_ + "/a/b/root", {{"one.json", "{}"}}, &error, no_room));
  EXPECT_EQ(error, scratch_ + "/a/b/root: no room");
  EXPECT_EQ(scratch_entries(), std::vector<std::string>{"home"});
}

TEST_F(FixtureTest, LaterFixturesAddToAndReplaceEarlierOnes) {
  const char* first = R"({
    "interfaces": [{"handle": "0x100", "name": "GigabitEthernet0/0/0/1"}, {"handle": 264, "name": "Loopback0"}],
    "nodes": [{"id": "0x800", "name": "0/0/CPU0"}],
    "control_server": true})";
  const char* second = R"({
    "interfaces": [{"handle": "0x108", "name": "Loopback1"}],
    "fapids": [{"id": 1, "name": "0/1/CPU0"}],
    "library": false, "control_server": false,
    "faults": [{"op": "interface_name", "handle": 256}, {"op": "pool_alloc", "name": "p", "index": 2,
                "code": "0x40cc0002"}]})";
  TestRoot built(std::vector<std::string>{first, second});
  EXPECT_EQ(interface_name_of(0x100), "GigabitEthernet0/0/0/1");
  EXPECT_EQ(interface_name_of(0x108), "Loopback1");
  EXPECT_EQ(interface_handle_of("Loopback1"), 0x108u);
  EXPECT_EQ(interface_handle_of("Loopback0"), std::nullopt);
  ASSERT_NE(node_name_of(0x800), nullptr);
  EXPECT_EQ(*node_name_of(0x800), "0/0/CPU0");
  EXPECT_EQ(node_name_of(0x801), nullptr);
  ASSERT_NE(fapid_name_of(1), nullptr);
  EXPECT_EQ(*fapid_name_of(1), "0/1/CPU0");
  EXPECT_FALSE(control_server_available());
  EXPECT_FALSE(fs::exists(root_path("/pkg/lib/libvellum.so")));
  ASSERT_TRUE(find_fault("interface_name", "0x100").has_value());
  EXPECT_EQ(find_fault("interface_name", "0x100")->code, kInjectedFailure);
  EXPECT_FALSE(find_fault("pool_alloc", "p", 1).has_value());
  ASSERT_TRUE(find_fault("pool_alloc", "p", 2).has_value());
  EXPECT_EQ(find_fault("pool_alloc", "p", 2)->code, 0x40cc0002u);
}

TEST_F(FixtureTest, RootWithoutAStoreAnswersNothing) {
  root_reset_for_testing(scratch_ + "/missing");
  EXPECT_EQ(root_db(), nullptr);
  EXPECT_EQ(interface_name_of(0x100), std::nullopt);
  EXPECT_FALSE(control_server_available());
  EXPECT_FALSE(find_fault("bind", "/").has_value());
}

}  // namespace
}  // namespace ostrel::tools
