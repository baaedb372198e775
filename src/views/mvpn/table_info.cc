// A table's information (-cmd 6) and its label table's information (-cmd 7). Each is one item of the VRF's
// table, fetched, decoded and released by the platform's item printer; this file prints the fields. Any
// failure of the fetch, a missing item as much as a record of another type or one that does not decode,
// reads "Table not found" (the platform has written its own line for the latter two already).
#include "views/mvpn/table_info.h"

#include <cstdint>
#include <cstdio>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/naming.h"

namespace {

constexpr uint32_t kFapidNotSelected = 0xFFFFFFFF;

// The MDT handles of the encapsulations, in the order they print; a handle of 0 means the table has no MDT
// of that kind. The Tree-SID pair is kept by the server but not shown.
struct HandleRow {
  const char* encapsulation;
  uint32_t mrib_table_info_pod::*handle;
  uint32_t mrib_table_info_pod::*turnaround;
};
constexpr HandleRow kHandleRows[] = {
    {"GRE", &mrib_table_info_pod::TableMDTNameGRE, &mrib_table_info_pod::TableGRETurnaround},
    {"mLDP", &mrib_table_info_pod::TableMDTNameMLDP, &mrib_table_info_pod::TableMLDPTurnaround},
    {"P2MPTE", &mrib_table_info_pod::TableMDTNameP2MPTE, &mrib_table_info_pod::TableP2MPTETurnaround},
    {"IR", &mrib_table_info_pod::TableMDTNameIR, &mrib_table_info_pod::TableIRTurnaround},
};

// The counter rows: each shows the received and the redistributed count of one kind, additions on the
// plain rows and deletions on the "!" rows, whereas the record keeps both additions before both deletions.
struct CounterRow {
  const char* format;  // two "%8d"
  mrib_attr_stat_pod mrib_table_info_pod::*stat;
  uint32_t mrib_attr_stat_pod::*received;
  uint32_t mrib_attr_stat_pod::*redistributed;
};
constexpr CounterRow kCounterRows[] = {
    {" MT        %8d %8d\n", &mrib_table_info_pod::MTStat, &mrib_attr_stat_pod::AddRcvdCount,
     &mrib_attr_stat_pod::AddRedistCount},
    {"!MT        %8d %8d\n", &mrib_table_info_pod::MTStat, &mrib_attr_stat_pod::DelRcvdCount,
     &mrib_attr_stat_pod::DelRedistCount},
    {" MA        %8d %8d\n", &mrib_table_info_pod::MAStat, &mrib_attr_stat_pod::AddRcvdCount,
     &mrib_attr_stat_pod::AddRedistCount},
    {"!MA        %8d %8d\n", &mrib_table_info_pod::MAStat, &mrib_attr_stat_pod::DelRcvdCount,
     &mrib_attr_stat_pod::DelRedistCount},
};

void print_table_name(uint32_t table_id, const char* name, const char* client) {
  ostrel_outf("VRF: %s [tid 0x%x]\n", ostrel_text_or_empty(name), table_id);
  ostrel_outf("Registered Client:\n%s\n", ostrel_text_or_empty(client));
}

// The fallback line card as "(0x%08x,name)", cut to 45 characters. A processor the platform cannot name
// reads "(unknown)" here, where the TLC lines say "slot unknown".
void print_mlc_fallback(uint32_t fapid) {
  char fallback[46] = "(not selected)";
  if (fapid != kFapidNotSelected) {
    char name[32];
    if (fapid_to_str_external(fapid, name, sizeof name) != kCerrOk) {
      std::snprintf(fallback, sizeof fallback, "(unknown)");
    } else {
      std::snprintf(fallback, sizeof fallback, "(0x%08x,%s)", fapid, name);
    }
  }
  ostrel_outf("MLC Fallback : %s\n", fallback);
}

void print_counters(const mrib_table_info_pod& table) {
  ostrel_out("\nAttr       rcvd        redist\n");
  for (const CounterRow& row : kCounterRows) {
    const mrib_attr_stat_pod& stat = table.*row.stat;
    ostrel_outf(row.format, static_cast<int>(stat.*row.received), static_cast<int>(stat.*row.redistributed));
  }
}

void print_table_info(const mrib_table_info_pod& table, const TableInfoKeywords* keywords) {
  print_table_name(table.TableID, table.TableName, table.RegisteredClient);
  for (const HandleRow& row : kHandleRows) {
    if (table.*row.handle == 0) continue;
    ostrel_outf("%s MDT handle: 0x%x\n", row.encapsulation, table.*row.handle);
    ostrel_outf("%s turnaround: %s\n", row.encapsulation, table.*row.turnaround ? "TRUE" : "FALSE");
  }
  ostrel_outf("MDT group: %s\n", ostrel_ctid_text(&table.TableMDTAddress));
  ostrel_outf("MDT source: %s\n", ostrel_addr_text(&table.MDTSource));
  // The command's own -P keyword, not the letter form's switch, which a keyword run never sets.
  if (!keywords->private_fields) return;
  print_mlc_fallback(table.TableMLCFallbackFapID);
  print_counters(table);
}

void print_label_table_info(const mrib_label_table_info_pod& table, void*) {
  print_table_name(table.TableID, table.TableName, table.RegisteredClient);
}

template <typename Record, typename Context>
void show_table_item(const char* item, const ShowCallbacks<Record, Context>& callbacks) {
  if (ostrel_show_item(ostrel_view_handle, item, callbacks) != kCerrOk) ostrel_out("Table not found\n");
}

}  // namespace

void ostrel_kw_table_info_view(const TableInfoKeywords& keywords) {
  show_table_item("table-info", ShowCallbacks<mrib_table_info_pod, const TableInfoKeywords>{
                                    .print = print_table_info, .context = &keywords});
}

void ostrel_kw_label_table_info_view(const LabelTableInfoKeywords&) {
  show_table_item("label-table-info",
                  ShowCallbacks<mrib_label_table_info_pod>{.print = print_label_table_info});
}
