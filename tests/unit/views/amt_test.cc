// The AMT views' choice of path for every mode and filter, and their walks over more than one batch. What the
// records print and what each failure says are in the amt cases.
#include "views/amt/amt.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "../sim/test_root.h"
#include "access/output.h"
#include "access/query.h"
#include "platform/vellum.h"

namespace {

constexpr char kTable[] = "/oper/ipv4-mrib/gl/act/table/default/";
constexpr char kNoRoutes[] = "No matching MRIB AMT routes\n";
constexpr char kNoItem[] = "No matching MRIB AMT route\n";

// One run of a view against an empty table, where every listing's directory exists.
struct PathCase {
  void (*view)(vellum_handle_t, const ShowArgs&);
  const char* modes;  // "Q" and "H" for -Q and -H
  const char* text;   // -s for routes, the address given after -V for gateways
  const char* group;  // -g for routes
  uint32_t port;      // the port given after -V
  const char* path;
  const char* out;  // the closing line of an empty listing, or the not-found line of a single item
};

constexpr auto R = ostrel_amt_routes;
constexpr auto G = ostrel_amt_gateways;
constexpr char S[] = "10.0.0.1", A[] = "203.0.113.20";
constexpr char kGroup[] = "232.1.1.1";

constexpr PathCase kPaths[] = {
    {R, "", "", "", 0, "amt-routedb/", kNoRoutes},
    {R, "", "", kGroup, 0, "amt-routedb-g/232.1.1.1,32/", kNoRoutes},
    {R, "", S, "", 0, "amt-routedb-s/10.0.0.1/", kNoRoutes},
    {R, "", S, kGroup, 0, "amt-routedb/10.0.0.1,232.1.1.1,32", kNoItem},
    {R, "Q", "", "", 0, "amt-routedb-expired/", "No matching MRIB AMT expired routes\n"},
    {R, "Q", "", kGroup, 0, "amt-routedb-expired-g/232.1.1.1/", "No matching MRIB AMT expired routes\n"},
    {R, "Q", S, "", 0, "amt-routedb-expired-s/10.0.0.1/", "No matching MRIB AMT expired routes\n"},
    {R, "Q", S, kGroup, 0, "amt-routedb-expired-sg/10.0.0.1,232.1.1.1/",
     "No matching MRIB AMT expired routes\n"},
    {R, "QH", "", "", 0, "amt-routedb-summary/", ""},
    {R, "H", "", kGroup, 0, "amt-routedb-summary-g/232.1.1.1/", ""},
    {R, "H", S, "", 0, "amt-routedb-summary-s/10.0.0.1/", ""},
    {R, "QH", S, kGroup, 0, "amt-routedb-summary/10.0.0.1,232.1.1.1", kNoItem},
    {G, "", "", "", 65536, "amt-gw/", kNoRoutes},
    {G, "", "", "", 70000, "amt-gw-port/4464/", kNoRoutes},
    {G, "", A, "", 0, "amt-gw-g/203.0.113.20/", kNoRoutes},
    {G, "", A, "", 2268, "amt-gw/203.0.113.20,2268", kNoItem},
    {G, "Q", "", "", 0, "amt-gw-expired/", kNoRoutes},
    {G, "Q", "", "", 2268, "amt-gw-expired-port/2268/", kNoRoutes},
    {G, "Q", A, "", 0x10000, "amt-gw-expired-g/203.0.113.20/", kNoRoutes},
    {G, "Q", A, "", 2268, "amt-gw-expired/203.0.113.20,2268", kNoItem},
    {G, "H", "", "", 0, "amt-gw-summary/", kNoRoutes},
    {G, "QH", "", "", 2268, "amt-gw-summary-port/2268/", kNoRoutes},
    {G, "H", A, "", 0, "amt-gw-summary-g/203.0.113.20/", kNoRoutes},
    {G, "H", A, "", 2268, "amt-gw-summary/203.0.113.20,2268", kNoItem},
};

// Runs `view` on the default table and returns what it printed on standard output.
std::string run(void (*view)(vellum_handle_t, const ShowArgs&), const ShowArgs& args) {
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, kTable, 0), 0u);
  testing::internal::CaptureStdout();
  view(handle, args);
  ostrel_out_flush();
  (void)vellum_unbind(handle);
  return testing::internal::GetCapturedStdout();
}

TEST(AmtPathTest, EachModeAndFilterReadsItsOwnPath) {
  std::string dirs;
  for (const PathCase& c : kPaths) {
    if (c.path[std::strlen(c.path) - 1] == '/')
      dirs += std::string(dirs.empty() ? "" : ",") + '"' + kTable + c.path + '"';
  }
  ostrel::sim::TestRoot root(R"({"dirs": [)" + dirs + "]}");
  for (const PathCase& c : kPaths) {
    // A -p of 24, which no path carries; the gateway rows also give a group, which is not theirs to read.
    ShowArgs args{.group_plen = 24, .gw_port = c.port};
    args.amt_flag_q = std::strchr(c.modes, 'Q') != nullptr;
    args.amt_flag_h = std::strchr(c.modes, 'H') != nullptr;
    if (c.view == R) {
      std::snprintf(args.source, sizeof args.source, "%s", c.text);
      std::snprintf(args.group, sizeof args.group, "%s", c.group);
    } else {
      std::snprintf(args.gw_address, sizeof args.gw_address, "%s", c.text);
      std::snprintf(args.group, sizeof args.group, "232.0.0.0");
    }
    EXPECT_EQ(run(c.view, args), c.out) << c.path;
    EXPECT_STREQ(ostrel_query_path, c.path);
  }
}

// A listing of 254 items of data type 8, then the record named `first`, an item of data type 9 that sorts
// right after that name and before any longer key, and the record named `second`. The first batch of 256
// ends on the type-9 item; the next one reads it again only when it starts after `first` itself.
std::string listing(const std::string& dir, const char* type, const char* first, const char* first_value,
                    const char* second, const char* second_value) {
  std::string items;
  for (int i = 0; i < 254; ++i) {
    char name[16];
    std::snprintf(name, sizeof name, "00000000,%03d", i);
    items += R"({"path": ")" + dir + name + R"(", "datatype": 8, "hex": "00"},)";
  }
  auto record = [&](const char* name, const char* value) {
    return R"({"path": ")" + dir + name + R"(", "type": ")" + type + R"(", "value": )" + value + "}";
  };
  items += record(first, first_value) + R"(, {"path": ")" + dir + first +
           R"(!", "datatype": 9, "hex": "00"},)" + record(second, second_value);
  return R"({"items": [)" + items + "]}";
}

struct ResumeCase {
  void (*view)(vellum_handle_t, const ShowArgs&);
  bool expired;
  const char* dir;
  const char* type;
  const char* first;
  const char* first_value;
  const char* second;
  const char* second_value;
  const char* out;
  int type_9_reads;
};

// Keys: "source,group" of active routes (no prefix length); "source,group,gateway,port" of expired routes;
// "address,port" of gateways; addresses in hexadecimal, host byte order. A source of an unknown family gives
// no key, and its listing ends with its batch.
constexpr ResumeCase kResumes[] = {
    {R, false, "amt-routedb/", "mrib_amt_route_pod", "0a000001,e8010101",
     R"({"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32}})",
     "0a000001,e8010102",
     R"({"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.2", "GroupPrefixLength": 32}})",
     "\nAMT Route Database\n\n(10.0.0.1,232.1.1.1)\n\n(10.0.0.1,232.1.1.2)\n", 2},
    {R, false, "amt-routedb/", "mrib_amt_route_pod", "0a000001,e8010101",
     R"({"Source": {"AFName": 7}, "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32}})",
     "0a000001,e8010102", "{}", "\nAMT Route Database\n\n(<unknown AF 7>,232.1.1.1)\n", 1},
    {R, true, "amt-routedb-expired/", "mrib_amt_route_ex_pod", "0a000001,e8010101,cb007114,2268",
     R"({"Source": "10.0.0.1", "Group": "232.1.1.1", "GWAddress": "203.0.113.20", "GWPort": 2268})",
     "0a000001,e8010102,cb007114,2268",
     R"({"Source": "10.0.0.1", "Group": "232.1.1.2", "GWAddress": "203.0.113.20", "GWPort": 2268})",
     "\nAMT Expired Route Database\n\n(10.0.0.1,232.1.1.1) \n\n(10.0.0.1,232.1.1.2) \n", 2},
    {G, false, "amt-gw/", "mrib_amt_gw_pod", "cb007114,2268",
     R"({"GW_Addr": "203.0.113.20", "GW_Port": 2268})", "cb007114,2269",
     R"({"GW_Addr": "203.0.113.20", "GW_Port": 2269})",
     "\nAMT Gateway Database\n\n(203.0.113.20,2268) \n\n(203.0.113.20,2269) \n", 2},
};

TEST(AmtResumeTest, EachListingResumesAfterTheKeyOfItsLastDecodedRecord) {
  for (const ResumeCase& c : kResumes) {
    ostrel::sim::TestRoot root(
        listing(kTable + std::string(c.dir), c.type, c.first, c.first_value, c.second, c.second_value));
    ShowArgs args{.amt_flag_q = c.expired};
    testing::internal::CaptureStderr();
    EXPECT_EQ(run(c.view, args), c.out) << c.first_value;
    std::string err = testing::internal::GetCapturedStderr();
    std::string expected_err;
    for (int i = 0; i < 254; ++i) expected_err += "Unexpected datatype: 8\n";
    for (int i = 0; i < c.type_9_reads; ++i) expected_err += "Unexpected datatype: 9\n";
    EXPECT_EQ(err, expected_err) << c.first_value;
  }
}

}  // namespace
