// The TLC view: one record of the VRF's table, "tlc" or "tlc-remote", fetched without a look at its data
// type. A database that is not there says so; any other failure of the fetch prints nothing, with or without
// -d, and a record that does not decode ends the view after its error line.
#include "views/mvpn/tlc.h"

#include <cstdint>
#include <span>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/naming.h"

namespace {

constexpr uint32_t kFapidNotSelected = 0xFFFFFFFF;

constexpr ViewTexts kTexts{.not_found = "TLC DB not found\n"};

const char* yes_no(uint32_t flag) {
  return flag ? "/Y" : "/N";
}

void print_master(uint32_t fapid) {
  char slot[79];
  ostrel_outf("Master LC slot: %s\n",
              fapid == kFapidNotSelected ? "Not selected" : ostrel_fapid_slot_text(fapid, slot));
}

// Handle 0 leaves the text empty rather than "Null": no fallback interface is not an interface.
void print_fallback_interface(uint32_t handle) {
  ostrel_outf("Fallback Master LC virtual interface: %.79s\n", handle != 0 ? ostrel_ifh_name(handle, 0).data() : "");
}

void print_nodes(const pod_array<mrib_mdt_node_pod>& nodes) {
  ostrel_outf("Forwarding LC node: %d\n", static_cast<int>(nodes.count));
  if (nodes.count == 0) return;
  ostrel_out(
      "  fapid            slot                Fwd/Acc/Enc/MLCFallback/Remote/NSF Remote/Remote Encap\n");
  for (const mrib_mdt_node_pod& node : std::span(nodes.data, nodes.count)) {
    char slot[79];
    ostrel_outf("  0x%-15x%-20s%d/%d/%d%s%s%s%s\n", node.Fapid, ostrel_fapid_slot_text(node.Fapid, slot),
                static_cast<int>(node.ReferenceCount1), static_cast<int>(node.ReferenceCount2),
                static_cast<int>(node.ReferenceCount3), yes_no(node.IsMLCFallback), yes_no(node.IsRemote),
                yes_no(node.IsNSFRemote), yes_no(node.IsRemoteEncap));
  }
}

// The remote table and line cards of each MDT are kept by the server but not shown.
void print_mdt_groups(const pod_array<mrib_tlc_mdt_pod>& mdts) {
  ostrel_outf("\nAssociated MDT group: %d\n", static_cast<int>(mdts.count));
  if (mdts.count == 0) return;
  ostrel_out("  MDT group addr           tid       remote\n");
  for (const mrib_tlc_mdt_pod& mdt : std::span(mdts.data, mdts.count))
    ostrel_outf("  %-25s0x%-10x0x%-10x\n", ostrel_ctid_text(&mdt.MDTCoreTreeIdentifier), mdt.MDTTableID,
                mdt.MDTRemoteTableID);
}

void print_tlc(const mrib_tlc_pod& tlc, void*) {
  ostrel_outf("VRF: %s [tid 0x%x]\n", tlc.TLCTableName != nullptr ? tlc.TLCTableName : "", tlc.TLCTableID);
  print_master(tlc.MLCFapid);
  print_fallback_interface(tlc.vFallbackMasterLCInterfaceHandle);
  print_nodes(tlc.NodeList);
  print_mdt_groups(tlc.MDTList);
  ostrel_out("\n");
}

}  // namespace

const char* ostrel_fapid_slot_text(uint32_t fapid, char (&buffer)[79]) {
  if (fapid_to_str_external(fapid, buffer, sizeof buffer) != kCerrOk) return "slot unknown";
  return buffer;
}

void ostrel_tlc_view(const ShowArgs& args) {
  if (!ostrel_build_path("%s", args.tlc_flag_r ? "tlc-remote" : "tlc")) return;
  (void)ostrel_item_cycle(ItemCycle<mrib_tlc_pod>{
      .handle = ostrel_view_handle, .texts = kTexts, .check_data_type = false, .print = print_tlc});
}
