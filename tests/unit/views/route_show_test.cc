// The route walk over more than one batch: every route once and in order, resuming after the key of the last
// printed route, and the end of the walk after a batch in which nothing decoded.
#include "views/route/route_show.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "../sim/test_root.h"
#include "access/output.h"
#include "platform/vellum.h"

namespace {

constexpr char kTable[] = "/oper/ipv4-mrib/gl/act/table/default/";

// `count` routes (10.0.h.l, 232.1.1.1) named by their keys, after `before` and followed by `after` items.
std::string routes(int count, const std::string& before = "", const std::string& after = "") {
  std::string items = before;
  for (int i = 0; i < count; ++i) {
    char key[32], source[24];
    std::snprintf(key, sizeof key, "0a00%02x%02x,e8010101,32", i >> 8, i & 0xff);
    std::snprintf(source, sizeof source, "10.0.%d.%d", i >> 8, i & 0xff);
    if (!items.empty()) items += ",";
    items += R"({"path": ")" + std::string(kTable) + "routedb/" + key +
             R"(", "type": "mrib_route_pod", "value": {"Source": ")" + source +
             R"(", "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32}}})";
  }
  if (!after.empty()) items += "," + after;
  return R"({"library": true, "items": [)" + items + "]}";
}

std::string show_table() {
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, kTable, 0), 0u);
  testing::internal::CaptureStdout();
  mrib_route_show(handle, "", "", 32, false, false, false, false);
  ostrel_out_flush();
  std::string out = testing::internal::GetCapturedStdout();
  (void)vellum_unbind(handle);
  return out;
}

TEST(RouteShowTest, ThreeBatchesPrintEveryRouteOnceInOrder) {
  ostrel::sim::TestRoot root(routes(600));
  std::string out = show_table();
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

TEST(RouteShowTest, ABatchWithNothingDecodedEndsTheWalkThoughMoreFollow) {
  std::string broken;
  for (int i = 0; i < 256; ++i) {
    char key[32];
    std::snprintf(key, sizeof key, "00%06x,e8010101,32", i);
    broken += std::string(i ? "," : "") + R"({"path": ")" + kTable + "routedb/" + key +
              R"(", "datatype": 7, "hex": "00"})";
  }
  ostrel::sim::TestRoot root(routes(1, broken));
  testing::internal::CaptureStderr();
  std::string out = show_table();
  std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(out.find("(10.0.0.0,232.1.1.1)"), std::string::npos);
  EXPECT_NE(out.find("IP Multicast Routing Information Base"), std::string::npos);
  EXPECT_EQ(out.find("No matching routes"), std::string::npos);
  EXPECT_NE(err.find("Error decoding pod"), std::string::npos);
}

}  // namespace
