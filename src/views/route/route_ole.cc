// The outgoing-list view. It walks the route list like the route view, with these departures: its own
// shorter legend, written with a trailing empty line and also under -P; a listing that fails with status 2
// (rather than the store's not-found code) ends it silently; a fetch with status 2 is its not-found case;
// a single item's data type is not checked.
#include "views/route/route_ole.h"

#include "access/output.h"
#include "access/query.h"
#include "access/text_helpers.h"
#include "views/route/route_flags.h"

namespace {

constexpr char kOleLegend[] =
    "\n"
    "IP Multicast Routing Information Base\n"
    "Entry flags: L - Domain-Local Source, E - External Source to the Domain,\n"
    "    C - Directly-Connected Check, S - Signal, IA - Inherit Accept,\n"
    "    IF - Inherit From, D - Drop, ME - MDT Encap, EID - Encap ID,\n"
    "    MD - MDT Decap, MT - MDT Threshold Crossed, MH - MDT interface handle\n"
    "    CD - Conditional Decap, MPLS - MPLS Decap, EX - Extranet\n"
    "    MoFE - MoFRR Enabled, MoFS - MoFRR State, RPFID - RPF ID Set\n";
static_assert(sizeof kOleLegend - 1 == 444);

// The server's own "nothing matches" status for this collection; its not-found code means something else
// here (see the top of the file).
constexpr cerr_t kOleNoMatch = 2;

constexpr ViewTexts kListTexts{.not_available = "No MRIB route-DB",
                               .not_found_code = kOleNoMatch,
                               .none_listed = "No matching routes in MRIB route-DB\n"};
constexpr ViewTexts kItemTexts{.not_available = "No MRIB route-DB",
                               .not_found_code = kOleNoMatch,
                               .not_found = "No matching route in MRIB route-DB\n"};

struct Filters {
  const char* source;
  const char* group;
  int group_plen;
};

// One row of the path choice: which filters it needs, how it writes the path, and whether it names one item.
struct OlePath {
  bool source;
  bool group;
  bool (*build)(const Filters& filters);  // into ostrel_query_path
  bool single;
};

constexpr OlePath kOlePaths[] = {
    {true, true,
     [](const Filters& f) {
       return ostrel_build_path("routedb-ole/%s,%s,%d", f.source, f.group, f.group_plen);
     },
     true},
    {true, false, [](const Filters& f) { return ostrel_build_path("routedb-ole-s/%s/", f.source); }, false},
    {false, true,
     [](const Filters& f) { return ostrel_build_path("routedb-ole-g/%s,%d/", f.group, f.group_plen); },
     false},
    {false, false, [](const Filters&) { return ostrel_build_path("routedb-ole/"); }, false},
};

void print_legend(void*) {
  ostrel_outf("%s\n", kOleLegend);
}

void print_entry(const mrib_route_ole_pod& route, void*) {
  mrib_route_print_ole(&route);
}

// An address as this line shows it; `zero_text` stands for the address 0 when given.
const char* address_text(const mrib_addrtype* addr, const char* zero_text) {
  const uint8_t* bytes = mrib_pod_addr_bytes(addr);
  if (bytes == nullptr) return ostrel_addr_text(addr);
  if (zero_text != nullptr && mrib_pod_addr_is_any(addr)) return zero_text;
  return ip_maddr_dotted_string(bytes);
}

// The key after which the next batch starts: the entry's source and group in hexadecimal and its prefix
// length. An address of an unknown family gives no key, and the walk ends.
bool ole_resume_key(const mrib_route_ole_pod& route, char* key, size_t size, void*) {
  return ostrel_route_key(route.Source, route.GroupRange.GroupPrefix,
                          static_cast<int>(route.GroupRange.GroupPrefixLength), key, size);
}

}  // namespace

void mrib_route_print_ole(const mrib_route_ole_pod* route) {
  const mrib_group_rng_pod& range = route->GroupRange;
  OstrelLine line;
  line.add('(')
      .add(address_text(&route->Source, "*"))
      .add(',')
      .add(address_text(&range.GroupPrefix, nullptr));
  if (range.GroupPrefixLength < 32) line.add('/').add_signed(static_cast<int>(range.GroupPrefixLength));
  line.add("), Up:").add(ostrel_dhms_text(route->Uptime));
  line.add(", OIF count:").add_signed(static_cast<int>(route->OLECount)).add(", ");
  if (ostrel_entry_flags_any(&route->EntryAttributes)) {
    char flags[256];
    ostrel_fmt_entry_flags(flags, sizeof flags, &route->EntryAttributes);
    line.add("flags: ").add(flags).add('\n');
  }
  line.emit();
}

void mrib_route_ole_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen) {
  const Filters filters{source, group, static_cast<int>(group_plen)};
  const bool has_source = source[0] != '\0', has_group = group[0] != '\0';
  for (const OlePath& row : kOlePaths) {
    if (row.source != has_source || row.group != has_group) continue;
    if (!row.build(filters)) return;
    if (row.single) {
      (void)ostrel_item_cycle(ItemCycle<mrib_route_ole_pod>{.handle = handle,
                                                            .texts = kItemTexts,
                                                            .check_data_type = false,
                                                            .on_read = print_legend,
                                                            .print = print_entry});
    } else {
      ostrel_list_cycle(ListCycle<mrib_route_ole_pod>{.handle = handle,
                                                      .texts = kListTexts,
                                                      .rule = BatchRule::kMoreFlagAndDecoded,
                                                      .on_first_batch = print_legend,
                                                      .print = print_entry,
                                                      .resume_key = ole_resume_key});
    }
    return;
  }
}
