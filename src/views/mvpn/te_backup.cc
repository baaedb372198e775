// The TE P2MP backup database (-G): for each protected interface, the backup tunnels that protect it and
// the incoming labels that use each.
//
// The view departs from the common walk: it reads one batch of at most 256 protected interfaces and never
// asks for more, takes every item as a record without looking at its data type, and stops at the first item
// that it cannot read, decode or release. The title comes with the first record shown, so a walk that stops
// at its first item prints none.
#include <cstdint>
#include <cstdio>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/text.h"
#include "views/mvpn/batched_listing.h"
#include "views/mvpn/te.h"
#include "views/mvpn/te_common.h"

namespace {

constexpr ViewTexts kTexts{.not_found = "Backup database entries not found\n"};

constexpr char kColumns[] = "%-25s %-13s %-25s %-14s %-10s %s\n";

// The header and its rule stand over every backup tunnel, not once per interface.
void print_heading() {
  ostrel_outf(kColumns, "Protected Intf", "Bkup Tunnel", "Bkup Out Intf", "Bkup Label", "TE/Label", "Status");
  ostrel_outf(kColumns, "--------------", "-----------", "---------------", "------------", "--------",
              "------");
}

// Seven labels on the first line, eight on each further one. A label is cut to the seven characters of
// the server's field, separator included.
void print_in_labels(const pod_array<uint32_t>& labels) {
  ostrel_out("\n\tLabels using the backup:\n\t");
  for (uint64_t i = 0; i < labels.count; ++i) {
    if ((i + 1) % 8 == 0) ostrel_out("\n\t");
    char text[8];
    std::snprintf(text, sizeof text, "%d, ", static_cast<int>(labels.data[i]));
    ostrel_out(text);
  }
  ostrel_out("\n\n");
}

void print_tunnel(const mrib_mpls_bkup_pod& backup, const mrib_mpls_bkup_tun_pod& tunnel) {
  print_heading();
  ostrel_outf("%-25s %-13s ", ostrel_text_or_empty(backup.ProtIfName),
              ostrel_ifh_name(tunnel.BackupTunnel, 0).data());
  char label[8];
  char clients[8];
  std::snprintf(label, sizeof label, "%u", tunnel.BackupLabel);
  std::snprintf(clients, sizeof clients, "%c/%c", backup.TE_Client != 0 ? 'y' : 'n',
                backup.LMRIB_Entry != 0 ? 'y' : 'n');
  ostrel_outf("%-25s %-14s %-10s %s\n", ostrel_ifh_name(tunnel.BackupOutIntf, 0).data(), label, clients,
              tunnel.BackupActive != 0 ? "Act" : "Rdy");
  print_in_labels(tunnel.InLabels);
}

struct BackupWalk {
  bool titled = false;
};

void print_backup(const mrib_mpls_bkup_pod& backup, BackupWalk* walk) {
  if (!walk->titled) ostrel_out("\nTE Backup database information:\n\n");
  walk->titled = true;
  for (const mrib_mpls_bkup_tun_pod& tunnel : ostrel_items(backup.BackupTunnels))
    print_tunnel(backup, tunnel);
}

}  // namespace

void ostrel_te_backup_view(const ShowArgs&) {
  if (!ostrel_build_path("mpls-te-p2mp-bkup/")) return;
  BackupWalk walk;
  ListOutcome outcome =
      ostrel_list_cycle(ListCycle<mrib_mpls_bkup_pod, BackupWalk>{.handle = ostrel_view_handle,
                                                                  .texts = kTexts,
                                                                  .rule = BatchRule::kOneBatch,
                                                                  .check_data_type = false,
                                                                  .item_failure = ItemFailure::kEndWalk,
                                                                  .context = &walk,
                                                                  .print = print_backup});
  if (outcome.failed && outcome.code != kOstrelNotFound)
    std::fprintf(stderr, "Error query(%s) %s\n", ostrel_query_path, cerr_strerror(outcome.code));
}
