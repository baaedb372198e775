// The synthetic router: the same settings make the same store, every route collection holds each route with
// the same contents, whatever order the generator wrote them in, and each listing view's collection holds a
// record per route.
#include "tools/vellumctl/generate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "../sim/test_root.h"
#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "access/text_helpers.h"
#include "platform/pod.h"
#include "platform/vellum.h"

namespace ostrel::tools {
namespace {

using ostrel::sim::TestRoot;

constexpr char kTable[] = "/oper/ipv4-mrib/gl/act/table/default/";

// The store that `settings` generate in place of the root's.
std::string generated_store(const TestRoot& root, const GenerateSettings& settings) {
  std::string error;
  EXPECT_TRUE(generate_root(root.dir(), settings, &error)) << error;
  std::ifstream in(root.dir() + "/vellum.db", std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A decoded route of the store, released with the object.
struct Route {
  mrib_route_pod pod{};
  bool decoded = false;
  Route(vellum_handle_t handle, const std::string& path) {
    uint32_t type = 0, length = 0;
    void* data = nullptr;
    EXPECT_EQ(vellum_item_get(handle, path.c_str(), &type, &data, &length, 0), kCerrOk) << path;
    decoded = data && pod_decode(data, length, &pod, &ostrel_mrib_route_pod_desc) == kCerrOk;
    std::free(data);
  }
  ~Route() {
    if (decoded) {
      EXPECT_EQ(pod_free_indirections(&pod, &ostrel_mrib_route_pod_desc), kCerrOk);
    }
  }
};

// The names below a directory of the table, in listing order.
std::vector<std::string> names_below(vellum_handle_t handle, const std::string& dir) {
  std::vector<std::string> names;
  std::string resume;
  for (;;) {
    uint32_t count = 256;
    vellum_datalist_t list = nullptr;
    if (vellum_datalist(handle, dir.c_str(), resume.c_str(), &count, &list, 0) != kCerrOk) break;
    for (uint32_t i = 0; i < count; ++i) {
      const char* path = nullptr;
      uint32_t type = 0, length = 0, flags = 0;
      const void* data = nullptr;
      EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
      names.push_back(std::filesystem::path(path).filename().string());
    }
    uint32_t more = 0;
    EXPECT_EQ(vellum_datalist_get_more_flag(list, &more), kCerrOk);
    EXPECT_EQ(vellum_datalist_free(list), kCerrOk);
    if (!more || names.empty()) break;
    resume = dir + names.back();
  }
  return names;
}

TEST(Generate, TheSameSettingsMakeTheSameStore) {
  TestRoot a("{}"), b("{}"), c("{}");
  GenerateSettings settings;
  settings.routes = 300;
  const std::string store = generated_store(a, settings);
  EXPECT_EQ(generated_store(b, settings), store);
  settings.seed = 2;
  EXPECT_NE(generated_store(c, settings), store);
}

TEST(Generate, EveryCollectionHoldsEachRouteAlike) {
  TestRoot root("{}");
  GenerateSettings settings;
  settings.routes = 600;  // more than two batches
  settings.amt_every = 7;
  settings.filtered = true;
  std::string error;
  ASSERT_TRUE(generate_root(root.dir(), settings, &error)) << error;
  ostrel::sim::root_reset_for_testing(root.dir());
  vellum_handle_t handle = nullptr;
  ASSERT_EQ(vellum_bind(&handle, kTable, 0), kCerrOk);

  std::vector<std::string> keys = names_below(handle, "routedb/");
  ASSERT_EQ(keys.size(), settings.routes);
  EXPECT_EQ(names_below(handle, "routeratedb/"), keys);
  EXPECT_EQ(names_below(handle, "routedb-ole/"), keys);
  EXPECT_EQ(names_below(handle, "routedb-mib/e0000000,00000000,4/").size(), settings.routes);

  uint32_t star_routes = 0;
  for (const std::string& key : keys) {
    Route route(handle, "routedb/" + key);
    ASSERT_TRUE(route.decoded) << key;
    const mrib_route_pod& r = route.pod;
    star_routes += mrib_pod_addr_is_any(&r.Source);
    char mib_key[32];
    ASSERT_TRUE(ostrel_route_key(r.GroupRange.GroupPrefix, r.Source, 32, mib_key, sizeof mib_key));
    Route mib(handle, std::string("routedb-mib/e0000000,00000000,4/") + mib_key);
    Route rated(handle, "routeratedb/" + key);
    for (const Route* other : {&mib, &rated}) {
      ASSERT_TRUE(other->decoded) << key;
      // Filled from another index or draw, a route differs in uptime or (AMT every 7th) interface count.
      EXPECT_EQ(other->pod.Uptime, r.Uptime) << key;
      EXPECT_EQ(other->pod.Interfaces.count, r.Interfaces.count) << key;
    }
    EXPECT_EQ(rated.pod.OutgoingRates.count, 1u) << key;
    EXPECT_EQ(mib.pod.OutgoingRates.count, 0u) << key;
  }
  EXPECT_EQ(star_routes, settings.routes / settings.star_every);

  uint32_t type = 0, length = 0;
  void* data = nullptr;
  ASSERT_EQ(vellum_item_get(handle, "routedb-summary", &type, &data, &length, 0), kCerrOk);
  mrib_db_summ_pod summary{};
  ASSERT_EQ(pod_decode(data, length, &summary, &ostrel_mrib_db_summ_pod_desc), kCerrOk);
  std::free(data);
  EXPECT_EQ(summary.GRoutes, star_routes);
  EXPECT_EQ(summary.SGRoutes, settings.routes - star_routes);
  EXPECT_EQ(vellum_unbind(handle), kCerrOk);
}

// Whether the item at `path` decodes as a `Record`.
template <typename Record>
bool decodes(vellum_handle_t handle, const std::string& path) {
  uint32_t type = 0, length = 0;
  void* data = nullptr;
  Record record{};
  bool decoded = vellum_item_get(handle, path.c_str(), &type, &data, &length, 0) == kCerrOk &&
                 pod_decode(data, length, &record, OstrelPod<Record>::desc) == kCerrOk;
  std::free(data);
  return decoded && pod_free_indirections(&record, OstrelPod<Record>::desc) == kCerrOk;
}

TEST(Generate, EachListingViewHasARecordPerRoute) {
  TestRoot root("{}");
  GenerateSettings settings;
  settings.routes = 300;  // more than a batch
  std::string error;
  ASSERT_TRUE(generate_root(root.dir(), settings, &error)) << error;
  ostrel::sim::root_reset_for_testing(root.dir());
  vellum_handle_t handle = nullptr;
  ASSERT_EQ(vellum_bind(&handle, "/oper/", 0), kCerrOk);
  const struct {
    const char* dir;
    bool (*decodes)(vellum_handle_t, const std::string&);
  } collections[] = {
      {"ipv4-mrib-cl-pim/gl/act/routedb/", decodes<mrib_lib_route_pod>},
      {"ipv4-mrib/gl/act/table/default/amt-routedb/", decodes<mrib_amt_route_pod>},
      {"ipv4-mrib/gl/act/table/default/amt-gw/", decodes<mrib_amt_gw_pod>},
      {"ipv4-mrib/gl/act/process/bvi-route/", decodes<mrib_bvi_route_pod>},
      {"ipv4-mrib/gl/act/table/default/mpls-mroute/", decodes<mrib_mpls_db_pod>},
      {"ipv4-mrib/gl/act/process/encapid-db/", decodes<mrib_encapid_pod>},
      {"ipv4-mrib/gl/act/iirdb/", decodes<mrib_iir_intf_pod>},
  };
  for (const auto& collection : collections) {
    std::vector<std::string> names = names_below(handle, collection.dir);
    EXPECT_EQ(names.size(), settings.routes) << collection.dir;
    for (const std::string& name : names)
      EXPECT_TRUE(collection.decodes(handle, collection.dir + name)) << collection.dir << name;
  }
  // The client's routes and the AMT routes are keyed as the route table, the AMT ones without the length.
  std::vector<std::string> keys = names_below(handle, "ipv4-mrib/gl/act/table/default/routedb/");
  EXPECT_EQ(names_below(handle, "ipv4-mrib-cl-pim/gl/act/routedb/"), keys);
  for (std::string& key : keys) key.resize(key.size() - 3);
  EXPECT_EQ(names_below(handle, "ipv4-mrib/gl/act/table/default/amt-routedb/"), keys);
  EXPECT_EQ(vellum_unbind(handle), kCerrOk);
}

}  // namespace
}  // namespace ostrel::tools
