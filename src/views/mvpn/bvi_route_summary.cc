// The BVI route summary (-Y): the event and error counters of the BVI machinery, one line each, read through
// the root handle whatever -v says.
//
// The lines do not follow the record: the database moves on an IPARM add come right after the moves between
// VRFs, and the insert-delete failures are not shown, so 58 of the 59 counters print.
#include <cstdint>
#include <iterator>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "platform/text.h"
#include "views/mvpn/bvi.h"

namespace {

struct CounterRow {
  const char* label;  // printed before ": " and the count
  uint64_t mrib_bvi_route_summ_pod::*counter;
};

using Summ = mrib_bvi_route_summ_pod;
constexpr CounterRow kCounterRows[] = {
    {"Rx L2FIB Mroute Add", &Summ::RxMrouteAdd},
    {"Rx L2FIB Mroute Delete", &Summ::RxMrouteDel},
    {"Rx L2FIB Mroute Unknown", &Summ::RxMrouteUnk},
    {"Rx L2FIB Bulk Start", &Summ::RxBulkStart},
    {"Rx L2FIB Bulk End", &Summ::RxBulkEnd},
    {"Rx L2FIB Mark Stale", &Summ::RxMarkStale},
    {"Rx L2FIB EOD", &Summ::RxEod},
    {"Rx L2FIB Unknown notification", &Summ::RxNfnUnk},
    {"Rx L2FIB Connect", &Summ::l2fibConnect},
    {"Move BVI DB from default to VRF table", &Summ::moveBVIDBfromdflt2vrf},
    {"Move BVI DB from VRF to default table", &Summ::moveBVIDBfromvrf2dflt},
    {"BVI DB entries moved", &Summ::move1BVIDB},
    {"Attempted BVI DB moves between VRFs", &Summ::moveBVIDBVrfToVrf},
    {"BVI DB moves due to IPARM add", &Summ::IparmAddDbMove},
    {"Insert BVI DB Entry", &Summ::insertBVIDBEn},
    {"Delete BVI DB Entry", &Summ::deleteBVIDBEn},
    {"Explicit Delete BVI DB Entry", &Summ::expDelBVIDBEn},
    {"No BVI-VRF mapping during Mroute Add", &Summ::mrteAddNoMapUseDfltTbl},
    {"No VRF table during Mroute Add", &Summ::mrteAddNoVrfTblUseDflt},
    {"No Default table during Mroute Add", &Summ::mrteAddNoDfltTbl},
    {"No table when moving BVI Entry", &Summ::MoveBviDbNoTable},
    {"Program BVI IF Err during Mroute Add", &Summ::mrouteAddPrgmBviIfErr},
    {"Program BVI IF ERR during Mroute Del", &Summ::mrouteDelPrgmBVIIfErr},
    {"Move BVI IF ERR", &Summ::moveBVIIfErr},
    {"Move 1_bvi_en_ ERR", &Summ::move1BVIEnErr},
    {"Move BVI DB during BVI Update ERR", &Summ::BVIUpdMoveBVIDBErr},
    {"Move BVI DB during IM IPAddr NFN ERR", &Summ::IMIPAddrNfnMoveBVIDBErr},
    {"L2FIB Connect ERR", &Summ::l2fibConnectErr},
    {"L2FIB Disconnect", &Summ::l2fibDisconnect},
    // The platform's four interface-modify errors share one label.
    {"Platform bvi_intf_mdf error", &Summ::BviIntfMdfErr},
    {"Platform bvi_intf_mdf error", &Summ::BviIntfMdfErr1},
    {"Platform bvi_intf_mdf error", &Summ::BviIntfMdfErr2},
    {"Platform bvi_intf_mdf error", &Summ::BviIntfMdfErr3},
    {"Iparm add table error", &Summ::IparmAddErr},
    {"*,G/S,G upd no flood entry", &Summ::StgSgUpdNoFloodEntry},
    {"BVI OLE delete missing all l2fib", &Summ::BviOleDelMissingL2Fib},
    {"BVI IF insert no memory", &Summ::BviIfInsertNoMem},
    {"BVI IF insert no mrib entry", &Summ::BviIfInsertNoMribEn},
    {"IFC insert duplicate", &Summ::IfcInsert0Dup},
    {"BVI IFc insert on old tree", &Summ::BviIfInsertOnOldTree},
    {"BVI IFc insert -- del old tree failure", &Summ::BviIfCantDelOldTree},
    {"Ifc insert failure", &Summ::IfcInsertFailer},
    {"Ifc delete with bad parameter", &Summ::IfcDelBadParam},
    {"Ifc delete without bvi entry", &Summ::IfcDelNoBviEn},
    {"Ifc delete failure", &Summ::IfcDelFailed},
    {"Move iface with no OLE ", &Summ::MoveInterfaceNoOle},
    {"Ifc Node Link without L3 Ole", &Summ::IfcNodeLinkNoL3Ole},
    {"Ifc Node Link without bvi_if_data", &Summ::IfcNodeLinkNoBviIfData},
    {"Ifc Node Link without bvi entry pointer", &Summ::IfcNodeLinkNoBviEnpt},
    {"L2 (*,G)(S,G) update with no_l3_ole", &Summ::L2fibSgStarGNoL3Ole},
    {"l2upd_not_linked", &Summ::L2UpdNotLinked},
    {"l2upd_xc_bvi_entry", &Summ::L2UpdXcBviEntry},
    {"del_bvi_entry_failed", &Summ::DelBviEntryFailed},
    {"Dangling Ole Delete", &Summ::BviIfDanglingOleDel},
    {"Dangling Ole Not Deleted", &Summ::BviIfDanglingOleDelNot},
    {"LSM node add failure", &Summ::BviLsmNodeAddFail},
    {"LSM node del not found", &Summ::BviLsmNodeDelNotFound},
    {"LSM node del failure", &Summ::BviLsmNodeDelFail},
};
static_assert(std::size(kCounterRows) == 58, "every counter but the insert-delete failures is shown");

void print_summary(const mrib_bvi_route_summ_pod& summary, void*) {
  ostrel_out("MRIB BVI Route Summary Information:\n");
  for (const CounterRow& row : kCounterRows)
    ostrel_outf("%s: %lu\n", row.label, static_cast<unsigned long>(summary.*row.counter));
}

}  // namespace

// The record holds only counters, so whether its indirections are released before or after it is printed
// changes nothing shown. The two not-available texts differ in more than the error text.
void ostrel_bvi_route_summary_view(const ShowArgs&) {
  if (!ostrel_build_path("process/%s", "bvi_route_summary")) return;
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_bvi_route_summ_pod>{
      .handle = ostrel_root_handle, .check_data_type = false, .print = print_summary});
  if (rc == kCerrOk) return;
  if (ostrel_debug) {
    ostrel_outf("No MRIB BVI route Summary information available: %s\n", cerr_strerror(rc));
  } else {
    ostrel_out("No MRIB BVI route summary information available\n");
  }
}
