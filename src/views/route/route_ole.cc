// The outgoing-list view. It walks the route list like the route view, with these departures: its own
// shorter legend, written with a trailing empty line and also under -P; a listing that fails with status 2
// (rather than the store's not-found code) ends it silently; a fetch with status 2 is its not-found case;
// a single item's data type is not checked.
#include "views/route/route_ole.h"

#include <arpa/inet.h>

#include <cstdio>

#include "access/out_line.h"
#include "access/pod_descriptors.h"
#include "access/query.h"
#include "access/text_helpers.h"
#include "platform/text.h"
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

constexpr char kNotAvailable[] = "No MRIB route-DB";

struct Filters {
  const char* source;
  const char* group;
  uint32_t group_plen;
};

// One row of the path choice: which filters it needs, how it writes the path, and whether it names one item.
struct OlePath {
  bool source;
  bool group;
  int (*build)(char* path, size_t size, const Filters& filters);
  bool single;
};

constexpr OlePath kOlePaths[] = {
    {true, true,
     [](char* path, size_t size, const Filters& f) {
       return std::snprintf(path, size, "routedb-ole/%s,%s,%d", f.source, f.group,
                            static_cast<int>(f.group_plen));
     },
     true},
    {true, false,
     [](char* path, size_t size, const Filters& f) {
       return std::snprintf(path, size, "routedb-ole-s/%s/", f.source);
     },
     false},
    {false, true,
     [](char* path, size_t size, const Filters& f) {
       return std::snprintf(path, size, "routedb-ole-g/%s,%d/", f.group, static_cast<int>(f.group_plen));
     },
     false},
    {false, false,
     [](char* path, size_t size, const Filters&) { return std::snprintf(path, size, "routedb-ole/"); },
     false},
};

void print_legend(void*) {
  std::printf("%s\n", kOleLegend);
}

void print_entry(void* record, void*) {
  mrib_route_print_ole(static_cast<const mrib_route_ole_pod*>(record));
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
bool ole_resume_key(const void* record, char* key, size_t size, void*) {
  const auto* route = static_cast<const mrib_route_ole_pod*>(record);
  return ostrel_route_key(route->Source, route->GroupRange.GroupPrefix,
                          static_cast<int>(route->GroupRange.GroupPrefixLength), key, size);
}

void show_item(vellum_handle_t handle, mrib_route_ole_pod* record) {
  ItemCycle cycle;
  cycle.handle = handle;
  cycle.desc = &ostrel_mrib_route_ole_pod_desc;
  cycle.record = record;
  cycle.record_size = sizeof *record;
  cycle.check_data_type = false;
  cycle.on_read = print_legend;
  cycle.print = print_entry;
  cerr_t rc = ostrel_item_cycle(cycle);
  if (rc == kCerrOk) return;
  if (rc == kOleNoMatch) {
    std::printf("No matching route in MRIB route-DB\n");
  } else {
    ostrel_print_not_available(kNotAvailable, rc);
  }
}

void show_list(vellum_handle_t handle, mrib_route_ole_pod* record) {
  ListCycle cycle;
  cycle.handle = handle;
  cycle.desc = &ostrel_mrib_route_ole_pod_desc;
  cycle.record = record;
  cycle.record_size = sizeof *record;
  cycle.not_available = kNotAvailable;
  cycle.silent_code = kOleNoMatch;
  cycle.rule = BatchRule::kMoreFlagAndDecoded;
  cycle.on_first_batch = print_legend;
  cycle.print = print_entry;
  cycle.resume_key = ole_resume_key;
  ListOutcome outcome = ostrel_list_cycle(cycle);
  if (!outcome.failed && !outcome.listed_any) std::printf("No matching routes in MRIB route-DB\n");
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
  const char* uptime = sprint_dhms64(route->Uptime);
  line.add("), Up:").add(uptime != nullptr ? uptime : "??:??:??");
  line.add(", OIF count:").add_signed(static_cast<int>(route->OLECount)).add(", ");
  if (ostrel_entry_flags_any(&route->EntryAttributes)) {
    char flags[256];
    ostrel_fmt_entry_flags(flags, sizeof flags, &route->EntryAttributes);
    line.add("flags: ").add(flags).add('\n');
  }
  line.emit();
}

void mrib_route_ole_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen) {
  Filters filters{source, group, group_plen};
  bool has_source = source[0] != '\0', has_group = group[0] != '\0';
  for (const OlePath& row : kOlePaths) {
    if (row.source != has_source || row.group != has_group) continue;
    int length = row.build(ostrel_query_path, sizeof ostrel_query_path, filters);
    if (length < 0 || static_cast<size_t>(length) >= sizeof ostrel_query_path) {
      std::fprintf(stderr, "Error building query string\n");
      return;
    }
    // One record for the whole view; decoding refills it for each entry.
    mrib_route_ole_pod record;
    if (row.single) {
      show_item(handle, &record);
    } else {
      show_list(handle, &record);
    }
    return;
  }
}
