// The route-collapse view: one MDT fetched by its key, or the database listed in batches.
//
// The listing departs from the common walk. A listing that is not there is the one reported on standard
// output ("No MRIB route collapse database", with the error text under -d), and any other failure goes to
// standard error. The store's more flag is not asked: a batch of exactly 256 items with at least one
// record printed asks for the next, which resumes after a key made from the last printed record's core
// tree. That key names the tree's payloads and, for a type-6 tree only, its address; for the other types it
// stops short of the item's own name, and resuming there would read the same batch for ever, so such a walk
// ends with a line on standard error.
//
// The single MDT goes through the common single-item cycle, data-type check included (the TLC record alone
// skips it); a failure other than not-found prints nothing.
#include "views/mvpn/route_collapse.h"

#include <cstdint>
#include <cstdio>
#include <span>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/text.h"
#include "views/mvpn/tlc.h"

namespace {

constexpr ViewTexts kItemTexts{.not_found = "MDT entry not found\n"};

constexpr CycleMessages kListMessages{.read = "Error reading result from datalist %s\n",
                                      .free_after_read = "Error freeing result data-list %s\n",
                                      .free = "Error freeing result data-list %s\n"};

constexpr char kStalled[] = "Cannot resume the MRIB route collapse listing after its last entry\n";

// ---- Record ----------------------------------------------------------------------------------------------

void print_customer_routes(const pod_array<mrib_rc_routedb_pod>& routes) {
  ostrel_outf("  Customer route database count: %d\n", static_cast<int>(routes.count));
  for (const mrib_rc_routedb_pod& route : std::span(routes.data, routes.count))
    ostrel_outf("    (%s,%s/%d) [tid 0x%x]\n", ostrel_source_text(&route.RCSourceAddress),
                ostrel_addr_text(&route.RCGroupAddress), route.RCGroupPrefixLength, route.RCTableID);
}

void print_encap_oles(const pod_array<mrib_rc_eole_db_pod>& oles) {
  ostrel_outf("  Customer encap ole database count: %d\n", static_cast<int>(oles.count));
  for (const mrib_rc_eole_db_pod& ole : std::span(oles.data, oles.count))
    ostrel_outf("    [EID %u]\n", ole.RCEncapsulationIdentifier);
}

// Core routes live in the core table, so their lines carry no table ID.
void print_core_routes(const pod_array<mrib_rc_routedb_pod>& routes) {
  ostrel_outf("  Core route database count: %d\n", static_cast<int>(routes.count));
  for (const mrib_rc_routedb_pod& route : std::span(routes.data, routes.count))
    ostrel_outf("    (%s,%s/%d)\n", ostrel_source_text(&route.RCSourceAddress),
                ostrel_addr_text(&route.RCGroupAddress), route.RCGroupPrefixLength);
}

void print_core_egress(const pod_array<mrib_mdt_node_pod>& nodes) {
  ostrel_outf("  Core egress node database count: %d\n", static_cast<int>(nodes.count));
  if (nodes.count == 0) return;
  ostrel_out("    fapid        slot            Refcount/Remote/NSF Remote\n");
  for (const mrib_mdt_node_pod& node : std::span(nodes.data, nodes.count)) {
    char slot[79];
    ostrel_outf("    0x%-12x%-16s%d%s%s\n", node.Fapid, ostrel_fapid_slot_text(node.Fapid, slot),
                static_cast<int>(node.ReferenceCount1), node.IsRemote ? "/Y" : "/N",
                node.IsNSFRemote ? "/Y" : "/N");
  }
}

void print_mdt(const mrib_rc_mdt_pod& mdt, void*) {
  ostrel_outf("%s  TID: 0x%x RMT TID: 0x%x TLC TID: 0x%x RMT TLC TID: 0x%x\n",
              ostrel_ctid_text(&mdt.RC_MDTAddress), mdt.RC_MDTTableID, mdt.RC_MDTRemoteTableID,
              mdt.RC_TLCTableID, mdt.RCRemoteTLCTableID);
  print_customer_routes(mdt.CustomerList);
  print_encap_oles(mdt.EncapOLEList);
  print_core_routes(mdt.CoreList);
  print_core_egress(mdt.CoreEgressList);
  ostrel_out("\n");
}

// The single MDT stands apart from what came before it; the listing's records follow one another.
void print_single_mdt(const mrib_rc_mdt_pod& mdt, void*) {
  ostrel_out("\n");
  print_mdt(mdt, nullptr);
}

// ---- Listing ---------------------------------------------------------------------------------------------

// "payloads,address": the payloads that the core tree's type carries, and the address written as the store
// writes addresses in keys, only for type 6.
bool mdt_resume_key(const mrib_rc_mdt_pod& mdt, char* key, size_t size, void*) {
  const mrib_ctid_pod& tree = mdt.RC_MDTAddress;
  int length = std::snprintf(key, size, "%s,%s", ostrel_payload_text(static_cast<uint32_t>(tree.TYPE)),
                             tree.TYPE == 6 ? ip_maddr_hex_string(&tree.ID) : "");
  return length >= 1 && static_cast<size_t>(length) < size;
}

void list_database() {
  if (!ostrel_build_path("route-collapse/")) return;
  ListOutcome outcome = ostrel_list_cycle(ListCycle<mrib_rc_mdt_pod>{.handle = ostrel_view_handle,
                                                                     .messages = &kListMessages,
                                                                     .rule = BatchRule::kFullBatch,
                                                                     .print = print_mdt,
                                                                     .resume_key = mdt_resume_key,
                                                                     .stalled = kStalled});
  if (!outcome.failed) return;
  if (outcome.code == kOstrelNotFound) {
    ostrel_print_not_available("No MRIB route collapse database", outcome.code);
  } else {
    std::fprintf(stderr, "Failed to retrieve MRIB route collapse entries from EDM - %s\n",
                 cerr_strerror(outcome.code));
  }
}

}  // namespace

void ostrel_route_collapse_view(const ShowArgs& args) {
  if (args.collapse_key1[0] == '\0' || args.mdt_address[0] == '\0') {
    list_database();
    return;
  }
  if (!ostrel_build_path("route-collapse/%s,%s", args.collapse_key1, args.mdt_address)) return;
  (void)ostrel_item_cycle(ItemCycle<mrib_rc_mdt_pod>{
      .handle = ostrel_view_handle, .texts = kItemTexts, .print = print_single_mdt});
}
