// The route walk over more than one batch: every route once and in order, resuming after the key of the last
// printed route.
#include "views/route/route_show.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "../sim/test_root.h"
#include "access/output.h"
#include "platform/vellum.h"

namespace {

constexpr char kTable[] = "/oper/ipv4-mrib/gl/act/table/default/";

// `count` routes (10.0.h.l, 232.1.1.1) named by their keys.
std::string routes(int count) {
  std::string items;
  for (int i = 0; i < count; ++i) {
    char key[32], source[24];
    std::snprintf(key, sizeof key, "0a00%02x%02x,e8010101,32", i >> 8, i & 0xff);
    std::snprintf(source, sizeof source, "10.0.%d.%d", i >> 8, i & 0xff);
    if (!items.empty()) items += ",";
    items += R"({"path": ")" + std::string(kTable) + "routedb/" + key +
             R"(", "type": "mrib_route_pod", "value": {"Source": ")" + source +
             R"(", "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32}}})";
  }
  return R"({"library": true, "items": [)" + items + "]}";
}

TEST(RouteShowTest, ThreeBatchesPrintEveryRouteOnceInOrder) {
  ostrel::sim::TestRoot root(routes(600));
  vellum_handle_t handle = nullptr;
  ASSERT_EQ(vellum_bind(&handle, kTable, 0), 0u);
  testing::internal::CaptureStdout();
  mrib_route_show(handle, "", "", 32, false, false, false, false);
  ostrel_out_flush();
  std::string out = testing::internal::GetCapturedStdout();
  (void)vellum_unbind(handle);
  size_t at = 0;
  for (int i = 0; i < 600; ++i) {
    char designation[40];
    std::snprintf(designation, sizeof designation, "\n(10.0.%d.%d,232.1.1.1)\n", i >> 8, i & 0xff);
    size_t found = out.find(designation, at);
    ASSERT_NE(found, std::string::npos) << "route " << i << " missing or out of order";
    at = found + 1;
  }
  EXPECT_EQ(out.find("\n(10.0.", at), std::string::npos) << "a route printed twice";
  EXPECT_EQ(out.find("IP Multicast Routing Information Base"),
            out.rfind("IP Multicast Routing Information Base"));
}

}  // namespace
