// The MPLS multicast route (LSM) database (-B 0 s): the routes of the default table's MPLS tunnels, each
// with the encapsulation IDs it links to, or with s non-zero one line per tunnel with its route count. A
// -z name shows that interface's entry alone. The database lives in the default table whatever -v says.
//
// The listing departs from the common walk: there is no more flag, so a batch of fewer than 256 items is
// the last; items are taken as records whatever their data type; and the first item that cannot be read,
// decoded or released ends the view. Every failure of the listing goes to standard error, as does a missing
// single entry; the single entry's other failures are said only under -d.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/mrib_utl.h"
#include "platform/text.h"
#include "views/mvpn/encap.h"

namespace {

constexpr uint32_t kLsmIdType = 5;  // the tunnel is an LSM ID, not an interface
constexpr uint32_t kRouteKeyKind = 2;

struct LsmWalk {
  bool summary;
  bool headed = false;
};

// The tunnel as its lines name it, at most 63 characters.
std::string_view tunnel_text(const mrib_mpls_db_pod& entry, OstrelLine& buffer) {
  if (entry.CTIDType == kLsmIdType) {
    buffer.add(uint64_t{entry.MTEInterface});
  } else {
    buffer.add(entry.MTEInterface == 0 ? std::string_view("<unknown>") : ostrel_ifh_name(entry.MTEInterface, 0));
  }
  return buffer.text();
}

// Seven identifiers to a line. A count beyond what the array holds shows what it holds (an empty array
// leaves the tunnel's line bare): the rest was never sent, and reading on would show whatever memory
// follows. Entries are printed by the million, so their lines are assembled in place.
void print_identifiers(const mrib_mpls_db_pod& entry, OstrelLine& line) {
  if (entry.EncapCount == 0) {
    line.add("\n    No encap ole linked to MRIB CE entry\n");
    return;
  }
  uint64_t shown = std::min<uint64_t>(entry.EncapCount, entry.EncapIdentifiers.count);
  for (uint64_t i = 0; i < shown; ++i) {
    if (i % 7 == 0) {
      line.emit();
      line.add("\n   ");
    }
    line.add(' ').add(uint64_t{entry.EncapIdentifiers.data[i]});
  }
  line.add('\n');
}

void print_entry(const mrib_mpls_db_pod& entry, LsmWalk* walk) {
  OstrelLine tunnel(63);
  tunnel_text(entry, tunnel);
  OstrelLine line;
  if (!walk->summary) {
    line.add("Tunnel Interface/LSMID: ").add(tunnel.text());
    print_identifiers(entry, line);
    line.emit();
    return;
  }
  if (!walk->headed) line.add("Interface/LSMID N. of routes\n--------------- ------------\n");
  walk->headed = true;
  line.add(tunnel.text());
  for (size_t pad = tunnel.text().size(); pad < 15; ++pad) line.add(' ');
  line.add(' ').add(uint64_t{entry.EncapCount}).add('\n');
  line.emit();
}

void show_interface(vellum_handle_t handle, const char* ifname, LsmWalk* walk) {
  if (!ostrel_build_path("table/default/mpls-mroute/%u,%u", ostrel_ifstr_ifh(ifname), kRouteKeyKind)) return;
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_mpls_db_pod, LsmWalk>{
      .handle = handle, .check_data_type = false, .context = walk, .print = print_entry});
  if (rc == kOstrelNotFound) {
    std::fprintf(stderr, "Route is not found for %s\n", ifname);
  } else if (rc != kCerrOk && ostrel_debug) {
    std::fprintf(stderr, "Error query(%s) %s\n", ostrel_query_path, cerr_strerror(rc));
  }
}

void show_table(vellum_handle_t handle, LsmWalk* walk) {
  if (!ostrel_build_path("table/default/mpls-mroute/")) return;
  ListOutcome outcome =
      ostrel_list_cycle(ListCycle<mrib_mpls_db_pod, LsmWalk>{.handle = handle,
                                                             .rule = BatchRule::kFullBatch,
                                                             .check_data_type = false,
                                                             .item_failure = ItemFailure::kEndWalk,
                                                             .context = walk,
                                                             .print = print_entry});
  if (!outcome.failed) return;
  if (outcome.code == kOstrelNotFound) {
    std::fputs("Table not found\n", stderr);
  } else {
    std::fprintf(stderr, "Error query(%s) %s\n", ostrel_query_path, cerr_strerror(outcome.code));
  }
}

void ostrel_mpls_db(vellum_handle_t handle, const ShowArgs& args) {
  LsmWalk walk{.summary = args.lsm_count_summary};
  if (args.ifname[0] != '\0') {
    show_interface(handle, args.ifname, &walk);
  } else {
    show_table(handle, &walk);
  }
}

}  // namespace

void ostrel_lsm_db_view(const ShowArgs& args) {
  ostrel_mpls_db(ostrel_view_handle, args);
}
