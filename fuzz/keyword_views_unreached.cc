// The keyword commands' views, for keyword_read_fuzz: the keyword table names them, the harness stops
// before any runs. They stand in for the real views, which this build cannot link: clang does not take
// the route flags' table rows as template arguments (src/views/route/route_flags.cc).
#include "views/client/chkpt_stats.h"
#include "views/client/client_routes.h"
#include "views/client/clients.h"
#include "views/client/nsf.h"
#include "views/client/nsr_end.h"
#include "views/client/rc_ipc.h"
#include "views/client/rpfid.h"
#include "views/mvpn/table_info.h"

void ostrel_kw_clients_view(const ClientsKeywords&) {
  __builtin_trap();
}
void ostrel_kw_client_routes_view(const ClientRoutesKeywords&) {
  __builtin_trap();
}
void ostrel_kw_nsf_view(const NsfKeywords&) {
  __builtin_trap();
}
void ostrel_kw_rc_ipc_view(const RcIpcKeywords&) {
  __builtin_trap();
}
void ostrel_kw_table_info_view(const TableInfoKeywords&) {
  __builtin_trap();
}
void ostrel_kw_label_table_info_view(const LabelTableInfoKeywords&) {
  __builtin_trap();
}
void ostrel_kw_chkpt_stats_view(const ChkptStatsKeywords&) {
  __builtin_trap();
}
void ostrel_kw_rpfid_view(const RpfidKeywords&) {
  __builtin_trap();
}
void ostrel_kw_nsr_end_view(const NsrEndKeywords&) {
  __builtin_trap();
}
