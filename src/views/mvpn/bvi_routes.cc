// The BVI route view (-o, and -k after its interface check): which collection the interface, source and
// group name, the walk over it, and the route printer.
//
// The BVI collections answer a missing route or directory with status 2, not the store's not-found code.
// The listing departs from the common walk: a missing directory ends it silently and any other failure
// prints a bare "No MRIB BVI route table" even under -d; it has read and data-type texts of its own; the
// store's more flag is not asked, and a batch of exactly 256 items with a record decoded asks for the next,
// resuming after the key of the last decoded route. The single route is fetched without a data-type check.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <span>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/interface.h"
#include "platform/mrib_utl.h"
#include "views/line_pieces.h"
#include "views/mvpn/bvi.h"

namespace {

constexpr cerr_t kBviNoMatch = 2;

constexpr ViewTexts kItemTexts{.not_available = "No MRIB BVI route table",
                               .not_found_code = kBviNoMatch,
                               .not_found = "No matching route in MRIB route-DB\n"};

constexpr CycleMessages kListMessages{.read = "Reading result BVI data-list %s\n",
                                      .free_after_read = "Freeing result BVI data-list %s\n",
                                      .data_type = "BVI Unexpected datatype: %x\n"};

// ---- Record ----------------------------------------------------------------------------------------------

// A route's lines are assembled in place: BVI routes are printed by the million.

// The designation line: a text that does not fit is reported and the line printed empty, for the rest of
// the route still says something.
void add_designation(OstrelLine& line, const mrib_bvi_route_pod& route) {
  std::string_view name = ostrel_ifh_name(route.BVIIfhandle, 0);
  char ifname[80];
  const size_t length = std::min(name.size(), sizeof ifname - 1);
  ostrel::detail::copy_short(ifname, name.data(), length);  // not the compiler's string move
  ifname[length] = '\0';
  char entry[256];
  int written = mrib_utl_print_bvi_entry(
      route.TableName, ostrel_ipv4_word(route.Source), ostrel_ipv4_word(route.GroupRange.GroupPrefix), ifname,
      static_cast<uint8_t>(route.GroupRange.GroupPrefixLength), entry, static_cast<int>(sizeof entry));
  if (written < 0) std::fputs("buffer overflow in printing BVI route\n", stderr);
  line.add('\n').add(entry).add('\n');
}

// The platform data is four words as the platform wrote them, in host order.
void add_platform_data(OstrelLine& line, const mrib_bvi_route_pod& route) {
  uint32_t words[4];
  static_assert(sizeof words == sizeof route.BVIPlatformData);
  std::memcpy(words, route.BVIPlatformData, sizeof words);
  line.add("    Platform Data: {0x");
  ostrel_add_hex(line, words[0]).add(", 0x");
  ostrel_add_hex(line, words[1]).add(", 0x");
  ostrel_add_hex(line, words[2]).add(", 0x");
  ostrel_add_hex(line, words[3]).add("}\n    Platform Length: ").add(uint64_t{route.BVIPlatformDataLength});
  line.add('\n');
}

void print_mroutes(OstrelLine& line, const pod_array<mrib_bvi_mroute_pod>& mroutes) {
  if (mroutes.count == 0) return;
  line.add("      MRIB Routes:\n");
  for (const mrib_bvi_mroute_pod& mroute : std::span(mroutes.data, mroutes.count)) {
    line.add("        (").add(ostrel_source_text(&mroute.Source)).add(',');
    line.add(ostrel_addr_text(&mroute.GroupRange.GroupPrefix)).add('/');
    line.add(uint64_t{static_cast<uint8_t>(mroute.GroupRange.GroupPrefixLength)}).add(")\n\n");
    line.emit();
  }
}

// `detail` (-D) adds the reference count.
void mrib_bvi_route_print(const mrib_bvi_route_pod& route, bool detail) {
  OstrelLine line;
  add_designation(line, route);
  line.add("    Up: ").add(ostrel_dhms_text(route.Uptime)).add('\n');
  add_platform_data(line, route);
  if (detail) line.add("    Refcount: ").add_signed(static_cast<int>(route.RefCount)).add('\n');
  line.emit();
  print_mroutes(line, route.MRoute);
}

void print_route(const mrib_bvi_route_pod& route, bool* detail) {
  mrib_bvi_route_print(route, *detail);
}

// ---- Paths -----------------------------------------------------------------------------------------------

// The request as the path table reads it.
struct BviQuery {
  const char* prefix;  // "process/bvi-route", or "bvi-route" when a VRF was given
  uint32_t ifhandle;   // 0: no interface, or one the platform does not know
  const char* source;
  const char* group;
  int group_len;
};

bool has(const char* text) {
  return text[0] != '\0';
}

struct PathRow {
  bool (*applies)(const BviQuery&);
  bool (*build)(const BviQuery&);  // into ostrel_query_path
  bool single_item;
};

// The first row that applies names the collection. Without a known interface every BVI route is listed,
// whatever the source and group. With an interface and a source but no group, there is no collection by
// interface and source: the interface's own routes are listed, as without a source, so the routes asked
// for are among those shown rather than lost in the whole table.
constexpr PathRow kPaths[] = {
    {[](const BviQuery& q) { return q.ifhandle == 0; },
     [](const BviQuery& q) { return ostrel_build_path("%s/", q.prefix); }, false},
    {[](const BviQuery& q) { return has(q.source) && has(q.group); },
     [](const BviQuery& q) {
       return ostrel_build_path("%s/0x%x,%s,%s,%d", q.prefix, q.ifhandle, q.source, q.group, q.group_len);
     },
     true},
    {[](const BviQuery& q) { return has(q.group); },
     [](const BviQuery& q) {
       return ostrel_build_path("%s-if-g/0x%x/%s,%d/", q.prefix, q.ifhandle, q.group, q.group_len);
     },
     false},
    {[](const BviQuery&) { return true; },
     [](const BviQuery& q) { return ostrel_build_path("%s-if/0x%x", q.prefix, q.ifhandle); }, false},
};

// "0x%x,source,group,length": the handle, then the route's key with both addresses in hexadecimal. A route
// whose addresses have no such text gives no key, and the walk ends with it.
bool bvi_route_resume_key(const mrib_bvi_route_pod& route, char* key, size_t size, bool*) {
  const int length = std::snprintf(key, size, "0x%x,", route.BVIIfhandle);
  if (length < 0 || static_cast<size_t>(length) >= size) return false;
  return ostrel_route_key(route.Source, route.GroupRange.GroupPrefix,
                          static_cast<int>(route.GroupRange.GroupPrefixLength), key + length, size - length);
}

void list_routes(vellum_handle_t handle, bool* detail) {
  ListOutcome outcome =
      ostrel_list_cycle(ListCycle<mrib_bvi_route_pod, bool>{.handle = handle,
                                                            .messages = &kListMessages,
                                                            .rule = BatchRule::kFullBatch,
                                                            .context = detail,
                                                            .print = print_route,
                                                            .resume_key = bvi_route_resume_key});
  if (outcome.failed && outcome.code != kBviNoMatch) ostrel_out("No MRIB BVI route table\n");
}

void ostrel_bvi_routes(vellum_handle_t handle, const char* source, const char* group, uint8_t group_len,
                       const char* ifname, bool vrf_given, bool detail) {
  const BviQuery query{vrf_given ? "bvi-route" : "process/bvi-route",
                       has(ifname) ? interface_find(ifname) : 0u, source, group, group_len};
  const PathRow* row = std::find_if(std::begin(kPaths), std::end(kPaths),
                                    [&query](const PathRow& candidate) { return candidate.applies(query); });
  if (!row->build(query)) return;
  if (!row->single_item) {
    list_routes(handle, &detail);
    return;
  }
  (void)ostrel_item_cycle(ItemCycle<mrib_bvi_route_pod, bool>{.handle = handle,
                                                              .texts = kItemTexts,
                                                              .check_data_type = false,
                                                              .context = &detail,
                                                              .print = print_route});
}

}  // namespace

void ostrel_bvi_route_view(const ShowArgs& args) {
  ostrel_bvi_routes(ostrel_view_handle, args.source, args.group, static_cast<uint8_t>(args.group_plen),
                    args.ifname, args.vrf != nullptr, args.platform_detail);
}

void ostrel_bvi_ifname_view(const ShowArgs& args) {
  if (ostrel_bvi_find_interface(args.ifname) != 0) ostrel_bvi_route_view(args);
}

uint32_t ostrel_bvi_find_interface(const char* name) {
  uint32_t handle = interface_find(name);
  if (handle == 0) std::fputs("Interface not found\n", stderr);
  return handle;
}
