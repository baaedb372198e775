// Routes in fixtures: each is found under the path its view asks for, in every collection it belongs in, with
// the record that collection holds; and a table's summary counts its routes unless a fixture writes its own.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "../sim/test_root.h"
#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "platform/pod.h"
#include "platform/vellum.h"

namespace ostrel::tools {
namespace {

using ostrel::sim::TestRoot;

// An (S,G) route with rates in VRF red; a (*,G) group range; a route that names its collections.
constexpr char kRoutes[] = R"({"routes": [
  {"vrf": "red", "value": {"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32},
   "ForwardInterfaceCount": 2,
   "Interfaces": [{"Interface": "0x100"}, {"Interface": "0x108"}, {"Interface": "0x110"}],
   "IncomingRates": {"PacketsInRate": 5}, "OutgoingRates": [{"PacketsOutRate": 7}]}},
  {"value": {"Source": "0.0.0.0", "GroupRange": {"GroupPrefix": "224.0.0.0", "GroupPrefixLength": 4},
   "Interfaces": [{"Interface": "0x100"}]}},
  {"in": ["routedb", "routedb-special"], "aliases": ["10.0.0.2,232.1.1.1,24"],
   "value": {"Source": "10.0.0.2", "GroupRange": {"GroupPrefix": "232.1.1.0", "GroupPrefixLength": 24},
   "ForwardInterfaceCount": 1}}
]})";

// The record at `path`, decoded, and released with the object; `found` is false when there is none.
template <typename Record>
struct Fetched {
  Record pod{};
  bool found = false;
  explicit Fetched(const std::string& path) {
    vellum_handle_t handle = nullptr;
    EXPECT_EQ(vellum_bind(&handle, "/", 0), 0u);
    uint32_t type = 0, length = 0;
    void* data = nullptr;
    if (vellum_item_get(handle, path.c_str(), &type, &data, &length, 0) == 0) {
      found = pod_decode(data, length, &pod, OstrelPod<Record>::desc) == 0;
      EXPECT_TRUE(found) << path;
    }
    std::free(data);
    EXPECT_EQ(vellum_unbind(handle), 0u);
  }
  ~Fetched() {
    if (found) {
      EXPECT_EQ(pod_free_indirections(&pod, OstrelPod<Record>::desc), 0u);
    }
  }
};

constexpr char kRed[] = "/oper/ipv4-mrib/gl/act/table/red/";
constexpr char kDefault[] = "/oper/ipv4-mrib/gl/act/table/default/";

TEST(FixtureRoutes, EachCollectionHoldsTheRouteUnderTheKeyItsViewAsksFor) {
  TestRoot root(kRoutes);
  const std::string red = kRed;
  for (const char* path :
       {"routedb/0a000001,e8010101,32", "routedb/10.0.0.1,232.1.1.1,32",
        "routedb-g/232.1.1.1,32/0a000001,e8010101,32", "routedb-s/10.0.0.1/0a000001,e8010101,32",
        "routedb-mib/e0000000,00000000,4/e8010101,0a000001,32"}) {
    Fetched<mrib_route_pod> route(red + path);
    ASSERT_TRUE(route.found) << path;
    EXPECT_EQ(route.pod.OutgoingRates.count, 0u) << path;
    EXPECT_EQ(route.pod.IncomingRates.PacketsInRate, 0u) << path;
  }
  for (const char* path :
       {"routeratedb/0a000001,e8010101,32", "routeratedb/10.0.0.1,232.1.1.1,32",
        "routeratedb-g/232.1.1.1,32/0a000001,e8010101,32", "routeratedb-s/10.0.0.1/0a000001,e8010101,32"}) {
    Fetched<mrib_route_pod> route(red + path);
    ASSERT_TRUE(route.found) << path;
    EXPECT_EQ(route.pod.OutgoingRates.count, 1u) << path;
    EXPECT_EQ(route.pod.IncomingRates.PacketsInRate, 5u) << path;
  }
  for (const char* path :
       {"routedb-ole/0a000001,e8010101,32", "routedb-ole/10.0.0.1,232.1.1.1,32",
        "routedb-ole-g/232.1.1.1,32/0a000001,e8010101,32", "routedb-ole-s/10.0.0.1/0a000001,e8010101,32"}) {
    Fetched<mrib_route_ole_pod> ole(red + path);
    ASSERT_TRUE(ole.found) << path;
    EXPECT_EQ(ole.pod.OLECount, 2u) << path;
    EXPECT_EQ(ole.pod.GroupRange.GroupPrefixLength, 32u) << path;
  }
  EXPECT_FALSE(Fetched<mrib_route_pod>(red + "routedb-special/0a000001,e8010101,32").found);

  // A (*,G) range has no source to be filtered by and is no MIB entry.
  const std::string table = kDefault;
  EXPECT_TRUE(Fetched<mrib_route_pod>(table + "routedb/0.0.0.0,224.0.0.0,4").found);
  EXPECT_TRUE(Fetched<mrib_route_pod>(table + "routedb-g/224.0.0.0,4/00000000,e0000000,4").found);
  EXPECT_FALSE(Fetched<mrib_route_pod>(table + "routedb-s/0.0.0.0/00000000,e0000000,4").found);
  EXPECT_FALSE(Fetched<mrib_route_pod>(table + "routedb-mib/e0000000,00000000,4/e0000000,00000000,32").found);

  // "in" names the collections, the private one included; "aliases" adds keys as typed.
  EXPECT_TRUE(Fetched<mrib_route_pod>(table + "routedb-special/0a000002,e8010100,24").found);
  EXPECT_TRUE(Fetched<mrib_route_pod>(table + "routedb/10.0.0.2,232.1.1.1,24").found);
  EXPECT_TRUE(Fetched<mrib_route_pod>(table + "routedb/10.0.0.2,232.1.1.0,24").found);
  EXPECT_FALSE(Fetched<mrib_route_pod>(table + "routedb-g/232.1.1.0,24/0a000002,e8010100,24").found);
  EXPECT_FALSE(Fetched<mrib_route_ole_pod>(table + "routedb-ole/0a000002,e8010100,24").found);
}

TEST(FixtureRoutes, TheSummaryCountsTheTablesRoutesUnlessAFixtureWritesIt) {
  {
    TestRoot root(kRoutes);
    Fetched<mrib_db_summ_pod> red(std::string(kRed) + "routedb-summary");
    ASSERT_TRUE(red.found);
    EXPECT_EQ(red.pod.GroupRanges, 0u);
    EXPECT_EQ(red.pod.GRoutes, 0u);
    EXPECT_EQ(red.pod.SGRoutes, 1u);
    EXPECT_EQ(red.pod.ForwardingInterfaceCount, 2u);
    EXPECT_EQ(red.pod.RouteInterfaceCount, 3u);
    Fetched<mrib_db_summ_pod> table(std::string(kDefault) + "routedb-summary");
    ASSERT_TRUE(table.found);
    EXPECT_EQ(table.pod.GroupRanges, 2u);
    EXPECT_EQ(table.pod.GRoutes, 1u);
    EXPECT_EQ(table.pod.SGRoutes, 1u);
    EXPECT_EQ(table.pod.ForwardingInterfaceCount, 1u);
    EXPECT_EQ(table.pod.RouteInterfaceCount, 1u);
  }
  // Written before the routes or after them, the fixture's own summary stays.
  const char* own = R"({"items": [{"path": "/oper/ipv4-mrib/gl/act/table/default/routedb-summary",
                                   "type": "mrib_db_summ_pod", "value": {"GRoutes": 9}}]})";
  for (auto fixtures : {std::vector<std::string>{own, kRoutes}, std::vector<std::string>{kRoutes, own}}) {
    TestRoot root(fixtures);
    Fetched<mrib_db_summ_pod> table(std::string(kDefault) + "routedb-summary");
    ASSERT_TRUE(table.found);
    EXPECT_EQ(table.pod.GRoutes, 9u);
    EXPECT_EQ(table.pod.SGRoutes, 0u);
    EXPECT_EQ(Fetched<mrib_db_summ_pod>(std::string(kRed) + "routedb-summary").pod.SGRoutes, 1u);
  }
}

}  // namespace
}  // namespace ostrel::tools
