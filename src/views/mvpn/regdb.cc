// The registration database (-K): every registration, or with -T the label registration of one label. The
// records follow one another without a header; an empty database prints nothing.
#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/text.h"
#include "views/mvpn/te.h"
#include "views/mvpn/te_common.h"

namespace {

constexpr int32_t kLabelRegistration = 6;
constexpr int32_t kIpRegistration = 2;

constexpr ViewTexts kListTexts{.not_available = "No MRIB Reg-DB"};

const char* yes_no(uint32_t flag) {
  return flag != 0 ? "YES" : "NO";
}

const char* restriction_text(const mrib_regdb_pod& reg) {
  if (reg.PDActiveRestriction != 0) return "Path Restriction";
  if (reg.PDBackupRestriction != 0) return "Backup Path Restriction";
  return "No Restriction";
}

// A label registration has no next hop; every other type is keyed by one. Only type 2 is an IP
// registration, so a type the server adds later reads as a label one below.
void print_key(const mrib_regdb_pod& reg) {
  if (reg.RegistrationType == kLabelRegistration) {
    ostrel_outf("  Label             : %u\n", reg.Label);
  } else {
    char nexthop[16];
    ostrel_outf("  NH  addr          : %s\n", inet_ntoa_r(reg.NHAddr, nexthop, sizeof nexthop));
  }
  ostrel_outf("  Destination vrf   : %s\n", ostrel_text_or_empty(reg.DestVrfName));
  ostrel_outf("  Regdb Entry Type  : %s\n", reg.RegistrationType == kIpRegistration ? "IP" : "Label");
}

// Paths name their interfaces in the short form, unlike every other name of these views.
void print_paths(const pod_array<mrib_nh_path_pod>& paths) {
  for (uint64_t i = 0; i < paths.count; ++i) {
    const mrib_nh_path_pod& path = paths.data[i];
    ostrel_out(i == 0 ? "  Path(s)           : " : "                    : ");
    ostrel_outf("%-16s 0x%x %s Primary (%u) Backup (%u)\n", ostrel_text_or_empty(path.MRIBNHString),
                path.OutIntf, ostrel_ifh_name(path.OutIntf, 1).data(), path.PrimCount, path.BackupCount);
  }
}

void mrib_regdb_print(const mrib_regdb_pod& reg, void*) {
  print_key(reg);
  ostrel_outf("  IP Ole count      : %u\n", reg.RegdbIpLeafCount);
  ostrel_outf("  Label Ole count   : %u\n", reg.RegdbLblLeafCount);
  ostrel_outf("  MLC Ole count     : %u\n", reg.RegdbMlclLeafCount);
  ostrel_outf("  ECD registered    : %s\n", yes_no(reg.RegIsECDReg));
  ostrel_outf("  ECD stale         : %s\n", yes_no(reg.RegIsECDStale));
  ostrel_outf("  ECD Information   : 0x%lx\n", reg.ECDInfoPointer);
  ostrel_outf("  ECD Length        : %u\n", static_cast<uint32_t>(reg.ECDLen));
  ostrel_outf("  Number of notifs  : %u\n", reg.NotificationCount);
  ostrel_outf("  PD Capability     : %s\n", restriction_text(reg));
  ostrel_outf("  Notification rcvd : %s\n", ostrel_text_or_empty(reg.notified_ts));
  print_paths(reg.PathList);
  if (ostrel_private)
    ostrel_outf("  Ptrs              : 0x%lx 0x%lx 0x%lx\n", reg.IPOleHeadPointer, reg.LabelOleHeadPointer,
                reg.MlcOleHeadPointer);
  ostrel_out("\n");
}

// The server keys a label registration by its table, its type and the label in decimal.
void ostrel_regdb_show_one(vellum_handle_t handle, unsigned long label) {
  char decimal[66];
  if (itoa(static_cast<long>(label), decimal, sizeof decimal, 10) == nullptr) return;
  if (!ostrel_build_path("process/%s/%s,%x,%s", "regdb", "default", kLabelRegistration, decimal)) return;
  ostrel_te_show_one<mrib_regdb_pod>(handle, mrib_regdb_print);
}

void ostrel_regdb_show_all(vellum_handle_t handle) {
  if (!ostrel_build_path("process/%s", "regdb")) return;
  (void)ostrel_list_cycle(
      ListCycle<mrib_regdb_pod>{.handle = handle, .texts = kListTexts, .print = mrib_regdb_print});
}

}  // namespace

void ostrel_reg_db_view(const ShowArgs& args) {
  if (args.te_handle_set) {
    ostrel_regdb_show_one(ostrel_root_handle, args.te_handle);
  } else {
    ostrel_regdb_show_all(ostrel_root_handle);
  }
}
