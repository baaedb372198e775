// The AMT views' choice of path for every mode and filter, what each says of an empty or failed path, and
// their walks over more than one batch. What the records print is in the amt cases.
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

using View = void (*)(vellum_handle_t, const ShowArgs&);
constexpr View R = ostrel_amt_routes, G = ostrel_amt_gateways;
constexpr char kTable[] = "/oper/ipv4-mrib/gl/act/table/default/";
// What an empty listing closes with (routes, expired routes) and what a single item that is not there says.
constexpr char N[] = "No matching MRIB AMT routes\n", X[] = "No matching MRIB AMT expired routes\n",
               I[] = "No matching MRIB AMT route\n";
// What a failed listing says (routes, expired routes, route summaries, gateways, gateway summaries) and what
// a failed single item says, without -d.
constexpr char FR[] = "No MRIB AMT route\n", FX[] = "No MRIB AMT expired route\n",
               FS[] = "No MRIB AMT route summary\n", FG[] = "No MRIB AMT Gateway\n",
               FGS[] = "No MRIB AMT Gateway summary\n", FI[] = "No MRIB AMT route\n";

// Runs `view` on the default table and returns what it printed on standard output.
std::string run(View view, const ShowArgs& args) {
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, kTable, 0), 0u);
  testing::internal::CaptureStdout();
  view(handle, args);
  ostrel_out_flush();
  (void)vellum_unbind(handle);
  return testing::internal::GetCapturedStdout();
}

// One run on an empty table, where every listing's directory exists, and one where the listing or the fetch
// fails. Flags: Q and H for -Q and -H; s and g for -s 10.0.0.1 and -g 232.1.1.1; a for the address
// 203.0.113.20 after -V. Every run gives -p 24, which no path carries, and the gateway runs -g 232.0.0.0,
// which is not theirs to read.
struct PathCase {
  View view;
  const char* flags;
  uint32_t port;  // given after -V
  const char* path;
  const char* out;
  const char* failed;
};

constexpr PathCase kPaths[] = {
    {R, "", 0, "amt-routedb/", N, FR},
    {R, "g", 0, "amt-routedb-g/232.1.1.1,32/", N, FR},
    {R, "s", 0, "amt-routedb-s/10.0.0.1/", N, FR},
    {R, "sg", 0, "amt-routedb/10.0.0.1,232.1.1.1,32", I, FI},
    {R, "Q", 0, "amt-routedb-expired/", X, FX},
    {R, "Qg", 0, "amt-routedb-expired-g/232.1.1.1/", X, FX},
    {R, "Qs", 0, "amt-routedb-expired-s/10.0.0.1/", X, FX},
    {R, "Qsg", 0, "amt-routedb-expired-sg/10.0.0.1,232.1.1.1/", X, FX},
    {R, "QH", 0, "amt-routedb-summary/", "", FS},
    {R, "Hg", 0, "amt-routedb-summary-g/232.1.1.1/", "", FS},
    {R, "Hs", 0, "amt-routedb-summary-s/10.0.0.1/", "", FS},
    {R, "QHsg", 0, "amt-routedb-summary/10.0.0.1,232.1.1.1", I, FI},
    {G, "", 65536, "amt-gw/", N, FG},
    {G, "", 70000, "amt-gw-port/4464/", N, FG},
    {G, "a", 0, "amt-gw-g/203.0.113.20/", N, FG},
    {G, "a", 2268, "amt-gw/203.0.113.20,2268", I, FI},
    {G, "Q", 0, "amt-gw-expired/", N, FG},
    {G, "Q", 2268, "amt-gw-expired-port/2268/", N, FG},
    {G, "Qa", 0x10000, "amt-gw-expired-g/203.0.113.20/", N, FG},
    {G, "Qa", 2268, "amt-gw-expired/203.0.113.20,2268", I, FI},
    {G, "H", 0, "amt-gw-summary/", N, FGS},
    {G, "QH", 2268, "amt-gw-summary-port/2268/", N, FGS},
    {G, "Ha", 0, "amt-gw-summary-g/203.0.113.20/", N, FGS},
    {G, "Ha", 2268, "amt-gw-summary/203.0.113.20,2268", I, FI},
};

void set(char* field, size_t size, bool given, const char* text) {
  std::snprintf(field, size, "%s", given ? text : "");
}

TEST(AmtPathTest, EachModeAndFilterReadsItsOwnPath) {
  std::string dirs, faults;
  for (const PathCase& c : kPaths) {
    const bool dir = c.path[std::strlen(c.path) - 1] == '/';
    const std::string path = '"' + std::string(kTable) + c.path + '"';
    if (dir) dirs += (dirs.empty() ? "" : ",") + path;
    faults += std::string(faults.empty() ? "" : ",") + R"({"op": ")" + (dir ? "datalist" : "item_get") +
              R"(", "path": )" + path + "}";
  }
  for (bool failing : {false, true}) {
    ostrel::sim::TestRoot root(R"({"dirs": [)" + dirs + R"(], "faults": [)" + (failing ? faults : "") + "]}");
    for (const PathCase& c : kPaths) {
      auto has = [&c](char flag) { return std::strchr(c.flags, flag) != nullptr; };
      ShowArgs args{.group_plen = 24, .gw_port = c.port, .amt_flag_q = has('Q'), .amt_flag_h = has('H')};
      set(args.source, sizeof args.source, has('s'), "10.0.0.1");
      set(args.group, sizeof args.group, has('g') || c.view == G, c.view == G ? "232.0.0.0" : "232.1.1.1");
      set(args.gw_address, sizeof args.gw_address, has('a'), "203.0.113.20");
      EXPECT_EQ(run(c.view, args), failing ? c.failed : c.out) << c.path;
      EXPECT_STREQ(ostrel_query_path, c.path);
    }
  }
}

// A listing below `dir` of 254 items of data type 8, a first record, an item of data type 9 named right after
// it (before any longer key), and a second record; `name` and `value` give each record's name and value, the
// '#' in them replaced by `first` or `second`. The first batch of 256 ends on the type-9 item; the next one
// reads it again only when it starts after the first record's name. Keys: "source,group" of active routes (no
// prefix length); "source,group,gateway,port" of expired routes; "address,port" of gateways; addresses in
// hexadecimal, host byte order. A source of an unknown family gives no key, and its listing ends with its
// batch.
struct ResumeCase {
  View view;
  bool expired;
  const char* dir;
  const char* type;
  const char* name;
  const char* value;
  int first, second;
  const char* out;
  int type_9_reads;
};

constexpr ResumeCase kResumes[] = {
    {R, false, "amt-routedb/", "mrib_amt_route_pod", "0a000001,e801010#",
     R"({"Source": "10.0.0.1", "GroupRange": {"GroupPrefix": "232.1.1.#", "GroupPrefixLength": 32}})", 1, 2,
     "\nAMT Route Database\n\n(10.0.0.1,232.1.1.1)\n\n(10.0.0.1,232.1.1.2)\n", 2},
    {R, false, "amt-routedb/", "mrib_amt_route_pod", "0a000001,e801010#",
     R"({"Source": {"AFName": 7}, "GroupRange": {"GroupPrefix": "232.1.1.#", "GroupPrefixLength": 32}})", 1,
     2, "\nAMT Route Database\n\n(<unknown AF 7>,232.1.1.1)\n", 1},
    {R, true, "amt-routedb-expired/", "mrib_amt_route_ex_pod", "0a000001,e801010#,cb007114,2268",
     R"({"Source": "10.0.0.1", "Group": "232.1.1.#", "GWAddress": "203.0.113.20", "GWPort": 2268})", 1, 2,
     "\nAMT Expired Route Database\n\n(10.0.0.1,232.1.1.1) \n\n(10.0.0.1,232.1.1.2) \n", 2},
    {G, false, "amt-gw/", "mrib_amt_gw_pod", "cb007114,#", R"({"GW_Addr": "203.0.113.20", "GW_Port": #})",
     2268, 2269, "\nAMT Gateway Database\n\n(203.0.113.20,2268) \n\n(203.0.113.20,2269) \n", 2},
};

std::string fill(std::string text, int n) {
  return text.replace(text.find('#'), 1, std::to_string(n));
}

TEST(AmtResumeTest, EachListingResumesAfterTheKeyOfItsLastDecodedRecord) {
  for (const ResumeCase& c : kResumes) {
    auto item = [&c](const std::string& name, const std::string& rest) {
      return R"({"path": ")" + std::string(kTable) + c.dir + name + "\", " + rest + "},";
    };
    std::string items, err;
    for (int i = 0; i < 254; ++i) {
      items += item("00000000," + std::to_string(100 + i), R"("datatype": 8, "hex": "00")");
      err += "Unexpected datatype: 8\n";
    }
    for (int i = 0; i < c.type_9_reads; ++i) err += "Unexpected datatype: 9\n";
    auto record = [&](int n) {
      return item(fill(c.name, n),
                  R"("type": ")" + std::string(c.type) + "\", \"value\": " + fill(c.value, n));
    };
    items += record(c.first) + item(fill(c.name, c.first) + "!", R"("datatype": 9, "hex": "00")") +
             record(c.second);
    items.pop_back();
    ostrel::sim::TestRoot root(R"({"items": [)" + items + "]}");
    testing::internal::CaptureStderr();
    EXPECT_EQ(run(c.view, ShowArgs{.amt_flag_q = c.expired}), c.out) << c.value;
    EXPECT_EQ(testing::internal::GetCapturedStderr(), err) << c.value;
  }
}

}  // namespace
