// The route view (-r, -f, -N): which collection the filters name, the legend, and the walk over it.
//
// Departures from the common list cycle: a batch in which no record decoded ends the walk even when the
// store has more, and the next batch resumes after the key of the last decoded route (its source, group and
// prefix length), never after an item path, so a filtered collection resumes where its own order says. The
// single route of a source and group is fetched without checking its data type, and a decoding failure
// there ends the view.
#include "views/route/route_show.h"

#include <algorithm>
#include <iterator>

#include "access/output.h"
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

// What the view says when routes are not there: of a listing, and of the one route of a source and group.
constexpr ViewTexts kListTexts{.not_available = "No MRIB route-DB",
                               .none_listed = "No matching routes in MRIB route-DB\n"};
constexpr ViewTexts kItemTexts{.not_available = "No MRIB route-DB",
                               .not_found = "No matching route in MRIB route-DB\n"};

// The request as the path table reads it.
struct RouteQuery {
  const char* collection;  // "routedb" or "routeratedb"
  const char* source;
  const char* group;
  int group_plen;
  bool nsf;
};

bool has(const char* text) {
  return text[0] != '\0';
}

struct PathRow {
  bool (*applies)(const RouteQuery&);
  bool (*build)(const RouteQuery&);  // into ostrel_query_path
  bool single_item;
};

// The first row that applies names the collection. With a source alone the prefix length is not sent.
constexpr PathRow kPaths[] = {
    {[](const RouteQuery& q) { return q.nsf; },
     [](const RouteQuery& q) { return ostrel_build_path("%s-nsf/", q.collection); }, false},
    {[](const RouteQuery& q) { return !has(q.source) && has(q.group); },
     [](const RouteQuery& q) {
       return ostrel_build_path("%s-g/%s,%d/", q.collection, q.group, q.group_plen);
     },
     false},
    {[](const RouteQuery& q) { return !has(q.source) && !has(q.group) && ostrel_private != 0; },
     [](const RouteQuery& q) { return ostrel_build_path("%s-special/", q.collection); }, false},
    {[](const RouteQuery& q) { return !has(q.source) && !has(q.group); },
     [](const RouteQuery& q) { return ostrel_build_path("%s/", q.collection); }, false},
    {[](const RouteQuery& q) { return !has(q.group); },
     [](const RouteQuery& q) { return ostrel_build_path("%s-s/%s/", q.collection, q.source); }, false},
    {[](const RouteQuery&) { return true; },
     [](const RouteQuery& q) {
       return ostrel_build_path("%s/%s,%s,%d", q.collection, q.source, q.group, q.group_plen);
     },
     true},
};

// The printer's switches.
struct WalkContext {
  bool split_lists;
  bool detail;
  bool nsf;
  bool rates;
};

void print_legend(WalkContext*) {
  ostrel_out(kLegend);
}

void print_legend_unless_private(WalkContext*) {
  if (!ostrel_private) ostrel_out(kLegend);
}

void print_route(const mrib_route_pod& route, WalkContext* walk) {
  mrib_route_print(&route, walk->split_lists, walk->detail, walk->nsf, walk->rates);
}

// "source,group,length" with both addresses in hexadecimal; a route whose addresses have no such text gives
// no key, and the walk ends with it.
bool route_resume_key(const mrib_route_pod& route, char* key, size_t size, WalkContext*) {
  return ostrel_route_key(route.Source, route.GroupRange.GroupPrefix,
                          static_cast<int>(route.GroupRange.GroupPrefixLength), key, size);
}

}  // namespace

void mrib_route_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen,
                     bool split_lists, bool detail, bool nsf, bool rates) {
  const RouteQuery query{rates ? "routeratedb" : "routedb", source, group, static_cast<int>(group_plen), nsf};
  const PathRow* row = std::find_if(std::begin(kPaths), std::end(kPaths),
                                    [&query](const PathRow& candidate) { return candidate.applies(query); });
  if (!row->build(query)) return;
  WalkContext walk{split_lists, detail, nsf, rates};
  if (row->single_item) {
    (void)ostrel_item_cycle(ItemCycle<mrib_route_pod, WalkContext>{.handle = handle,
                                                                   .texts = kItemTexts,
                                                                   .check_data_type = false,
                                                                   .context = &walk,
                                                                   .on_read = print_legend,
                                                                   .print = print_route});
  } else {
    ostrel_list_cycle(ListCycle<mrib_route_pod, WalkContext>{.handle = handle,
                                                             .texts = kListTexts,
                                                             .rule = BatchRule::kMoreFlagAndDecoded,
                                                             .context = &walk,
                                                             .on_first_batch = print_legend_unless_private,
                                                             .print = print_route,
                                                             .resume_key = route_resume_key});
  }
}
