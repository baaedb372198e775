// A table's information and its label table's information. Each is one item of the VRF's table, fetched
// through the platform's item printer; the printers of its fields are not part of this program yet, so the
// item is only read and decoded.
#include "views/mvpn/table_info.h"

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"

namespace {

template <typename Record>
void show_table_item(const char* item) {
  if (ostrel_show_item(ostrel_view_handle, item, ShowCallbacks<Record>{}) != kCerrOk)
    ostrel_out("Table not found\n");
}

}  // namespace

void ostrel_kw_table_info_view(const TableInfoKeywords&) {
  show_table_item<mrib_table_info_pod>("table-info");
}

void ostrel_kw_label_table_info_view(const LabelTableInfoKeywords&) {
  show_table_item<mrib_label_table_info_pod>("label-table-info");
}
