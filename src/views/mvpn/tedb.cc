// The TE tunnel database (-F): every P2MP TE tunnel with its LSPs and outgoing entries, or with -T the one
// tunnel of a tunnel ID context. The records follow one another without a header.
#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/text.h"
#include "views/mvpn/batched_listing.h"
#include "views/mvpn/te.h"
#include "views/mvpn/te_common.h"

namespace {

constexpr ViewTexts kListTexts{.not_available = "No MRIB TE-DB"};

// The continuation of the OLE lines lines up under the first entry.
constexpr char kOleContinuation[] = "\n                      ";
static_assert(sizeof kOleContinuation - 2 == 22);

void print_interface(const char* label, uint32_t handle) {
  ostrel_outf("%s%s\n", label, ostrel_ifh_name(handle, 0).data());
}

void print_address(const char* label, uint32_t address) {
  char text[16];
  ostrel_outf("%s%s\n", label, inet_ntoa_r(address, text, sizeof text));
}

void print_lsp(const mrib_tedb_lsp_pod& lsp) {
  ostrel_outf("  LSP Label         : %u\n", lsp.LocalLabel);
  ostrel_outf("  TE Bind Done      : %s\n", lsp.TeBindDone != 0 ? "Yes" : "No");
  print_interface("  Primary Out Intf  : ", lsp.PrimOutIntf);
  print_address("  Primary NH  addr  : ", lsp.PrimNH);
  ostrel_outf("  Primary Out Label : %u\n", lsp.PrimOutLabel);
  print_interface("  Backup Intf       : ", lsp.BackupIntf);
  print_interface("  Backup Out Intf   : ", lsp.BackupOutIntf);
  print_address("  Backup NH  addr   : ", lsp.BkupNH);
  ostrel_outf("  Merge Point Label : %u\n", lsp.MPLabel);
  ostrel_outf("  Backup Tun Label  : %u\n", lsp.BkupTunLabel);
  ostrel_out("\n");
}

// The first line holds one entry, each further line four.
void print_oles(const pod_array<mrib_ole_pod>& oles) {
  ostrel_out("  OLEs              : ");
  for (uint64_t i = 0; i < oles.count; ++i) {
    char nexthop[16];
    ostrel_outf("(%u, %s) ", oles.data[i].Label, inet_ntoa_r(oles.data[i].OleNH, nexthop, sizeof nexthop));
    if (i % 4 == 0) ostrel_out(kOleContinuation);
  }
  ostrel_out("\n");
}

void mrib_tedb_print(const mrib_tedb_pod& tunnel, void*) {
  ostrel_outf("  Tunnel ID Context : 0x%x\n", tunnel.TunnelIDCtx);
  print_interface("  Primary Intf      : ", tunnel.TunnelIFh);
  for (const mrib_tedb_lsp_pod& lsp : ostrel_items(tunnel.LSPList)) print_lsp(lsp);
  ostrel_outf("  Ole count         : %u\n", tunnel.OleCount);
  ostrel_outf("  Number of notifs  : %u\n", tunnel.NotificationCount);
  ostrel_outf("  Notification rcvd : %s\n", ostrel_text_or_empty(tunnel.notified_ts));
  ostrel_outf("  Ole Head          : 0x%lx\n", tunnel.OleHeadPointer);
  print_oles(tunnel.OLEList);
}

void ostrel_tedb_show_one(vellum_handle_t handle, unsigned long context) {
  if (!ostrel_build_path("process/%s/%x", "tedb", static_cast<uint32_t>(context))) return;
  ostrel_te_show_one<mrib_tedb_pod>(handle, mrib_tedb_print);
}

void ostrel_tedb_show_all(vellum_handle_t handle) {
  if (!ostrel_build_path("process/%s", "tedb")) return;
  (void)ostrel_list_cycle(
      ListCycle<mrib_tedb_pod>{.handle = handle, .texts = kListTexts, .print = mrib_tedb_print});
}

}  // namespace

void ostrel_te_db_view(const ShowArgs& args) {
  if (args.te_handle_set) {
    ostrel_tedb_show_one(ostrel_root_handle, args.te_handle);
  } else {
    ostrel_tedb_show_all(ostrel_root_handle);
  }
}
