// The route view (-r, -f, -N): which collection the filters name, the legend, and the walk over it.
//
// Departures from the common list cycle: a batch in which no record decoded ends the walk even when the
// store has more, and the next batch resumes after the key of the last decoded route (its source, group and
// prefix length), never after an item path, so a filtered collection resumes where its own order says. The
// single route of a source and group is fetched without checking its data type, and a decoding failure
// there ends the view.
#include "views/route/route_show.h"

#include <cstdio>
#include <cstring>

#include "access/pod_descriptors.h"
#include "access/query.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "views/route/route_print.h"

namespace {

constexpr char kLegend[] =
    "\n"
    "IP Multicast Routing Information Base\n"
    "Entry flags: L - Domain-Local Source, E - External Source to the Domain,\n"
    "    C - Directly-Connected Check, S - Signal, IA - Inherit Accept,\n"
    "    IF - Inherit From, D - Drop, ME - MDT Encap, EID - Encap ID,\n"
    "    MD - MDT Decap, MT - MDT Threshold Crossed, MH - MDT interface handle\n"
    "    CD - Conditional Decap, MPLS - MPLS Decap, EX - Extranet\n"
    "    MoFE - MoFRR Enabled, MoFS - MoFRR State, MoFP - MoFRR Primary\n"
    "    MoFB - MoFRR Backup, RPFID - RPF ID Set, X - VXLAN, RPF - RPF neighbor present\n"
    "Interface flags: F - Forward, A - Accept, IC - Internal Copy,\n"
    "    NS - Negate Signal, DP - Don't Preserve, SP - Signal Present,\n"
    "    II - Internal Interest, ID - Internal Disinterest, LI - Local Interest,\n"
    "    LD - Local Disinterest, DI - Decapsulation Interface\n"
    "    EI - Encapsulation Interface, MI - MDT Interface, LVIF - MPLS Encap,\n"
    "    EX - Extranet, A2 - Secondary Accept, MT - MDT Threshold Crossed,\n"
    "    MA - Data MDT Assigned, LMI - mLDP MDT Interface, TMI - P2MP-TE MDT Interface\n"
    "    IRMI - IR MDT Interface, TRMI - TREE SID MDT Interface, MH - Multihome Interface\n";
static_assert(sizeof kLegend - 1 == 1100, "the legend is printed byte for byte");

constexpr char kNotAvailable[] = "No MRIB route-DB";

// The request as the path table reads it.
struct RouteQuery {
  const char* collection;  // "routedb" or "routeratedb"
  const char* source;
  const char* group;
  uint32_t group_plen;
  bool nsf;
};

bool has(const char* text) {
  return text[0] != '\0';
}

// What the path's "%s" conversions after the collection name are filled with.
enum class PathArgs { kNone, kGroupLength, kSource, kSourceGroupLength };

struct PathRow {
  bool (*applies)(const RouteQuery&);
  const char* format;
  PathArgs args;
  bool single_item;
};

// The first row that applies names the collection. With a source alone the prefix length is not sent.
constexpr PathRow kPaths[] = {
    {[](const RouteQuery& q) { return q.nsf; }, "%s-nsf/", PathArgs::kNone, false},
    {[](const RouteQuery& q) { return !has(q.source) && has(q.group); }, "%s-g/%s,%d/",
     PathArgs::kGroupLength, false},
    {[](const RouteQuery& q) { return !has(q.source) && !has(q.group) && ostrel_private != 0; },
     "%s-special/", PathArgs::kNone, false},
    {[](const RouteQuery& q) { return !has(q.source) && !has(q.group); }, "%s/", PathArgs::kNone, false},
    {[](const RouteQuery& q) { return !has(q.group); }, "%s-s/%s/", PathArgs::kSource, false},
    {[](const RouteQuery&) { return true; }, "%s/%s,%s,%d", PathArgs::kSourceGroupLength, true},
};

// Writes the row's path into ostrel_query_path; false when it does not fit.
bool build_path(const PathRow& row, const RouteQuery& q) {
  int length = 0;
  char* path = ostrel_query_path;
  constexpr size_t kSize = sizeof ostrel_query_path;
  int plen = static_cast<int>(q.group_plen);
  switch (row.args) {
    case PathArgs::kNone:
      length = std::snprintf(path, kSize, row.format, q.collection);
      break;
    case PathArgs::kGroupLength:
      length = std::snprintf(path, kSize, row.format, q.collection, q.group, plen);
      break;
    case PathArgs::kSource:
      length = std::snprintf(path, kSize, row.format, q.collection, q.source);
      break;
    case PathArgs::kSourceGroupLength:
      length = std::snprintf(path, kSize, row.format, q.collection, q.source, q.group, plen);
      break;
  }
  return length >= 0 && static_cast<size_t>(length) < kSize;
}

// The printer's switches.
struct WalkContext {
  bool split_lists;
  bool detail;
  bool nsf;
  bool rates;
};

void print_legend(void*) {
  std::fputs(kLegend, stdout);
}

void print_legend_unless_private(void*) {
  if (!ostrel_private) std::fputs(kLegend, stdout);
}

void print_route(void* record, void* context) {
  const auto* route = static_cast<const mrib_route_pod*>(record);
  const auto* walk = static_cast<const WalkContext*>(context);
  mrib_route_print(route, walk->split_lists, walk->detail, walk->nsf, walk->rates);
}

// "source,group,length" with both addresses in hexadecimal; a route whose addresses have no such text gives
// no key, and the walk ends with it.
bool route_resume_key(const void* record, char* key, size_t size, void*) {
  const auto* route = static_cast<const mrib_route_pod*>(record);
  return ostrel_route_key(route->Source, route->GroupRange.GroupPrefix,
                          static_cast<int>(route->GroupRange.GroupPrefixLength), key, size);
}

void show_one(vellum_handle_t handle, mrib_route_pod* record, WalkContext* walk) {
  ItemCycle cycle;
  cycle.handle = handle;
  cycle.desc = &ostrel_mrib_route_pod_desc;
  cycle.record = record;
  cycle.record_size = sizeof *record;
  cycle.check_data_type = false;
  cycle.context = walk;
  cycle.on_read = print_legend;
  cycle.print = print_route;
  cerr_t rc = ostrel_item_cycle(cycle);
  if (rc == kCerrOk) return;
  if (rc == kOstrelNotFound) {
    std::fputs("No matching route in MRIB route-DB\n", stdout);
  } else {
    ostrel_print_not_available(kNotAvailable, rc);
  }
}

void show_list(vellum_handle_t handle, mrib_route_pod* record, WalkContext* walk) {
  ListCycle cycle;
  cycle.handle = handle;
  cycle.desc = &ostrel_mrib_route_pod_desc;
  cycle.record = record;
  cycle.record_size = sizeof *record;
  cycle.not_available = kNotAvailable;
  cycle.rule = BatchRule::kMoreFlagAndDecoded;
  cycle.context = walk;
  cycle.on_first_batch = print_legend_unless_private;
  cycle.print = print_route;
  cycle.resume_key = route_resume_key;
  ListOutcome outcome = ostrel_list_cycle(cycle);
  if (!outcome.failed && !outcome.listed_any) std::fputs("No matching routes in MRIB route-DB\n", stdout);
}

}  // namespace

void mrib_route_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen,
                     bool split_lists, bool detail, bool nsf, bool rates) {
  const RouteQuery query{rates ? "routeratedb" : "routedb", source, group, group_plen, nsf};
  const PathRow* row = nullptr;
  for (const PathRow& candidate : kPaths) {
    if (candidate.applies(query)) {
      row = &candidate;
      break;
    }
  }
  if (!build_path(*row, query)) {
    std::fputs("Error building query string\n", stderr);
    return;
  }
  // One record buffer for the whole view; the cycles zero it and decoding reuses it for every route.
  static mrib_route_pod record;
  WalkContext walk{split_lists, detail, nsf, rates};
  if (row->single_item) {
    show_one(handle, &record, &walk);
  } else {
    show_list(handle, &record, &walk);
  }
}
