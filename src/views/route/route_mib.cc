// The MIB view. It walks the route list with these departures from the route view: one fixed collection,
// keyed group first; a heading instead of the legend; no more flag is asked for, and only a batch of
// exactly 256 items (of which one at least decoded) asks for the next; the resume key is the last entry's
// group, source and the constant 32; a listing that fails other than with not-found reports the MIB as
// missing. Each entry uses the route printer's interface lines and sorted lists, without AMT interfaces.
#include "views/route/route_mib.h"

#include <arpa/inet.h>

#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/query.h"
#include "access/text_helpers.h"
#include "platform/mrib_utl.h"
#include "views/route/route_flags.h"
#include "views/route/route_print.h"

namespace {

constexpr char kOverflow[] = "buffer overflow in printing MRIB route\n";
constexpr char kMdfOverflow[] = "buffer overflow in printing MRIB route mdf_mask\n";

// The collection's one directory: the whole multicast range 224.0.0.0/4, any source.
constexpr uint32_t kMibGroup = 0xe0000000;
constexpr uint32_t kMibSource = 0;
constexpr int kMibPrefixLength = 4;
// The resume key always ends in this length, whatever the entry's own.
constexpr int kMibResumeLength = 32;

// 0.0.0.1 to 0.0.0.5 as /32 entries are the server's own bookkeeping, not routes of the MIB.
constexpr uint32_t kFirstHiddenGroup = 1;
constexpr uint32_t kLastHiddenGroup = 5;

// The header line of one entry is built in a buffer of 256 bytes, after the blank line that precedes it, and
// abandoned whole when a piece does not fit there.
constexpr size_t kLineBuffer = 256;

bool known_family(const mrib_addrtype& addr) {
  return mrib_pod_addr_bytes(&addr) != nullptr;
}

bool hidden_group(const mrib_route_pod& route) {
  const mrib_group_rng_pod& range = route.GroupRange;
  if (range.GroupPrefixLength != 32 || !known_family(range.GroupPrefix)) return false;
  uint32_t group = ntohl(ostrel_ipv4_word(range.GroupPrefix));
  return group >= kFirstHiddenGroup && group <= kLastHiddenGroup;
}

// The entry designation, as the route printer writes it.
void add_designation(const mrib_route_pod& route, OstrelLine* line) {
  line->advance(ostrel_entry_designation(route.Source, route.GroupRange.GroupPrefix,
                                         route.GroupRange.GroupPrefixLength, 0, line->end(),
                                         static_cast<int>(line->room())));
}

// Appends what follows the designation; false (after its message) when a piece did not fit.
bool add_details(const mrib_route_pod& route, OstrelLine* line) {
  const mrib_attrib_entry_pod& attributes = route.EntryAttributes;
  if (attributes.IsRPFNeighborPresent) line->add(" RPF nbr: ").add(ostrel_addr_text(&route.RPFNeighbor));
  // The flag texts go through buffers of their own: written straight into the line, a text cut at the
  // line's end would not show as an overflow.
  char flags[256];
  if (ostrel_entry_flags_any(&attributes)) {
    ostrel_fmt_entry_flags(flags, sizeof flags, &attributes);
    line->add(" Flags: ").add(flags);
  }
  if (!line->fits()) {
    std::fputs(kOverflow, stderr);
    return false;
  }
  if (ostrel_entry_flags_any(&route.EntryAttrMdf)) {
    ostrel_fmt_entry_flags(flags, sizeof flags, &route.EntryAttrMdf);
    line->add(" mdf_mask: ").add(flags);
    if (!line->fits()) {
      std::fputs(kMdfOverflow, stderr);
      return false;
    }
  }
  if (route.Annotation != nullptr && route.Annotation[0] != '\0') line->addf(", %s", route.Annotation);
  const mrib_group_rng_pod& parent = route.ParentRange;
  if (!known_family(parent.GroupPrefix) || !mrib_pod_addr_is_any(&parent.GroupPrefix)) {
    line->addf(" Inherit: %s/%d", ostrel_addr_text(&parent.GroupPrefix),
               static_cast<int>(parent.GroupPrefixLength));
  }
  if (!line->fits()) std::fputs(kOverflow, stderr);
  return line->fits();
}

// One interface as the MIB lists it: the route printer's saved interface without the modified-attributes
// block and the backup flag.
void prepare_intf(const mrib_intrf_pod& source, ostrel_intf_entry* intf) {
  ostrel_intf_entry_prepare(source, intf);
  // An empty text is its terminator: clearing the whole block would cost more than the rest of the entry.
  intf->mdf.text[0] = '\0';
  intf->mdf.add_count = intf->mdf.del_count = 0;
  intf->backup_fgid = 0;
}

// The sorted incoming and outgoing lists of one entry. AMT interfaces are left out, so no AMT list is
// needed: mrib_route_intf_list_add() only uses it for them. A failure ends the entry; the lists' owners
// then give back what was saved.
void print_interfaces(const mrib_route_pod& route) {
  OstrelIntfList incoming(OstrelIntfList::Order::kSorted);
  if (!incoming.created_else_report("incoming")) return;
  OstrelIntfList outgoing(OstrelIntfList::Order::kSorted);
  if (!outgoing.created_else_report("outgoing")) return;
  ostrel_intf_entry values;
  for (uint64_t i = 0; i < route.Interfaces.count; ++i) {
    const mrib_intrf_pod& source = route.Interfaces.data[i];
    if (source.Type == kOstrelIntfTypeAmt) continue;
    prepare_intf(source, &values);
    if (!mrib_route_intf_sort_in(source, &values, incoming.get(), nullptr, outgoing.get(), nullptr)) return;
  }
  if (incoming.count() != 0) {
    ostrel_out("  Incoming Interface List\n");
    incoming.print_and_release("    ", false);
  }
  if (outgoing.count() != 0) {
    ostrel_out("  Outgoing Interface List\n");
    outgoing.print_and_release("    ", true);
  }
}

void print_heading(void*) {
  ostrel_out("MROUTE MIB values\n");
}

void print_entry(const mrib_route_pod& route, void*) {
  mrib_mib_print(&route);
}

// Group first, then source, then always the host length: the MIB's own order.
bool mib_resume_key(const mrib_route_pod& route, char* key, size_t size, void*) {
  return ostrel_route_key(route.GroupRange.GroupPrefix, route.Source, kMibResumeLength, key, size);
}

}  // namespace

void mrib_mib_print(const mrib_route_pod* route) {
  if (hidden_group(*route)) return;
  OstrelLine line(1 + kLineBuffer - 1);
  line.add('\n');
  add_designation(*route, &line);
  if (!line.fits()) {
    std::fputs(kOverflow, stderr);
    return;
  }
  const mrib_group_rng_pod& range = route->GroupRange;
  if (range.GroupPrefixLength < 32) {
    std::fprintf(stderr, "A group range snuk through: %s/%d\n", ostrel_addr_text(&range.GroupPrefix),
                 static_cast<int>(range.GroupPrefixLength));
    return;
  }
  if (!add_details(*route, &line)) return;
  line.emit('\n');
  if (route->Interfaces.count != 0) print_interfaces(*route);
}

void mrib_mib_show(vellum_handle_t handle) {
  const uint32_t group = htonl(kMibGroup), source = htonl(kMibSource);
  if (!ostrel_build_path("routedb-mib/%s,%s,%d", ip_maddr_hex_string(&group), ip_maddr_hex_string(&source),
                         kMibPrefixLength))
    return;
  ostrel_list_cycle(ListCycle<mrib_route_pod>{
      .handle = handle,
      .texts = {.not_available = "No MRIB route-MIB", .none_listed = "No matching routes in MRIB route-DB\n"},
      .rule = BatchRule::kFullBatch,
      .on_first_batch = print_heading,
      .print = print_entry,
      .resume_key = mib_resume_key});
}
