// The checkpoint statistics view: one row per checkpoint table, its counters in fixed columns, and under
// -detail the table's name below it.
#include "views/client/chkpt_stats.h"

#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"

namespace {

constexpr char kChkptStatsPath[] = "process/chkpt_stats";

void print_header(const ChkptStatsKeywords*) {
  ostrel_outf("%-15s %-3s %-6s %-6s %-6s %-6s %-6s %-6s %-6s %-6s\n\n", "Table Desc", "Mir", "IDT", "NDT",
              "Save", "Del", "Misc", "InvIDT", "InvNDT", "NoReg");
}

// The counters follow the header's columns as far as the table has them: a server that keeps fewer, or
// more, shows what it keeps rather than zeros it does not.
void print_table(const mrib_chkpt_table_stats& table, bool detail) {
  // An absent description leaves its column blank; the mirror flag and the counters still say which table
  // it is.
  ostrel_outf("%-15s %-3s ", table.TableDescription != nullptr ? table.TableDescription : "",
              table.IsMirrored ? "T" : "F");
  for (uint64_t i = 0; i < table.Statistics.count; ++i)
    ostrel_outf("%-6d ", static_cast<int>(table.Statistics.data[i]));
  ostrel_out("\n");
  if (detail) ostrel_outf("    TblName: 0x%x\n", table.TableName);
}

void print_chkpt_stats(const mrib_chkpt_stats& stats, const ChkptStatsKeywords* keywords) {
  for (uint64_t i = 0; i < stats.CheckpointTables.count; ++i)
    print_table(stats.CheckpointTables.data[i], keywords->detail != 0);
}

}  // namespace

void ostrel_kw_chkpt_stats_view(const ChkptStatsKeywords& keywords) {
  // A missing record fails the fetch; keyword runs take no -d, so the line is always the bare text.
  if (ostrel_show_item(ostrel_root_handle, kChkptStatsPath,
                       ShowCallbacks<mrib_chkpt_stats, const ChkptStatsKeywords>{
                           .header = print_header, .print = print_chkpt_stats, .context = &keywords}) !=
      kCerrOk)
    ostrel_out("No MRIB checkpoint statistics information available\n");
}
