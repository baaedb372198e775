// The gateway-ID database (-w): every gateway ID for -w 0, one otherwise, with its traffic counters.
#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "views/mvpn/encap.h"

namespace {

constexpr ViewTexts kListTexts{.not_available = "No MRIB GW ID-DB"};
constexpr ViewTexts kItemTexts{.not_found = "Entry not found\n"};

// The outgoing counters come first, and the labels keep the server's spelling.
void mrib_gw_id_print(const mrib_gw_id_pod& gateway, void*) {
  ostrel_outf("\nGW ID    : %d\n", static_cast<int>(gateway.ID));
  ostrel_outf("Out Bytes/Packtes : %lu/%lu\n", gateway.out_bytes, gateway.out_pkts);
  ostrel_outf("In Bytes/Packtes : %lu/%lu\n", gateway.in_bytes, gateway.in_pkts);
}

// The single ID is taken whatever its data type; why it is not there is said on standard output, the
// same with or without -d.
void ostrel_gw_id_db(vellum_handle_t handle, const ShowArgs& args) {
  if (args.gw_id == 0) {
    if (!ostrel_build_path("process/%s", "gw-id-db")) return;
    (void)ostrel_list_cycle(
        ListCycle<mrib_gw_id_pod>{.handle = handle, .texts = kListTexts, .print = mrib_gw_id_print});
    return;
  }
  if (!ostrel_build_path("process/%s/%d", "gw-id-db", static_cast<int>(args.gw_id))) return;
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_gw_id_pod>{
      .handle = handle, .texts = kItemTexts, .check_data_type = false, .print = mrib_gw_id_print});
  if (rc != kCerrOk && rc != kOstrelNotFound) ostrel_out("No GW ID database\n");
}

}  // namespace

void ostrel_gw_id_view(const ShowArgs& args) {
  ostrel_gw_id_db(ostrel_root_handle, args);
}
