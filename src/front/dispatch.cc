// The dispatch table: one row per command code that has a view. Adding a view is adding a row.
#include "front/dispatch.h"

#include "access/session.h"
#include "views/amt/amt.h"
#include "views/client/consistency.h"
#include "views/mvpn/bvi.h"
#include "views/mvpn/encap.h"
#include "views/mvpn/iir.h"
#include "views/mvpn/mdt_ifh.h"
#include "views/mvpn/route_collapse.h"
#include "views/mvpn/te.h"
#include "views/mvpn/tlc.h"
#include "views/route/route_mib.h"
#include "views/route/route_ole.h"
#include "views/route/route_show.h"
#include "views/route/route_summary.h"

namespace {

struct ViewRow {
  uint32_t cmd;
  void (*run)(const ShowArgs&);
};

// A code without a row has no view yet and does nothing.
constexpr ViewRow kViews[] = {
    {ostrel_cmd_route,
     [](const ShowArgs& a) {
       mrib_route_show(ostrel_view_handle, a.source, a.group, a.group_plen, a.route_flag_o, a.platform_detail,
                       false, a.show_filter);
     }},
    // The non-stop-forwarding routes are not filtered.
    {ostrel_cmd_route_nsf,
     [](const ShowArgs& a) {
       mrib_route_show(ostrel_view_handle, "", "", 0, a.route_flag_o, a.platform_detail, true, false);
     }},
    {ostrel_cmd_routedb_ole,
     [](const ShowArgs& a) { mrib_route_ole_show(ostrel_view_handle, a.source, a.group, a.group_plen); }},
    {ostrel_cmd_mib, [](const ShowArgs&) { mrib_mib_show(ostrel_view_handle); }},
    {ostrel_cmd_route_summary_all, ostrel_route_summary_view},
    {ostrel_cmd_tlc, ostrel_tlc_view},
    {ostrel_cmd_route_collapse, ostrel_route_collapse_view},
    {ostrel_cmd_iir_intf, ostrel_iir_intf_view},
    {ostrel_cmd_mdt_ifh, ostrel_mdt_ifh_view},
    {ostrel_cmd_bvi_route, ostrel_bvi_route_view},
    {ostrel_cmd_bvi_ifname, ostrel_bvi_ifname_view},
    {ostrel_cmd_bvi_table_mapping, ostrel_bvi_table_mapping_view},
    {ostrel_cmd_bvi_route_summary, ostrel_bvi_route_summary_view},
    {ostrel_cmd_reg_db, ostrel_reg_db_view},
    {ostrel_cmd_te_db, ostrel_te_db_view},
    {ostrel_cmd_te_backup, ostrel_te_backup_view},
    {ostrel_cmd_encap_id, ostrel_encap_id_view},
    {ostrel_cmd_gw_id, ostrel_gw_id_view},
    {ostrel_cmd_encap_id_test, ostrel_encap_id_test_view},
    {ostrel_cmd_evpn_bucket, ostrel_evpn_bucket_view},
    {ostrel_cmd_lsm_db, ostrel_lsm_db_view},
    {ostrel_cmd_amt_route, ostrel_amt_route_view},
    {ostrel_cmd_amt_gateway, ostrel_amt_gateway_view},
    {ostrel_cmd_consistency, ostrel_consistency_view},
};

}  // namespace

void ostrel_dispatch(const ShowArgs& args) {
  for (const ViewRow& row : kViews)
    if (row.cmd == args.cmd) row.run(args);
}
