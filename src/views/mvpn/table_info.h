// A table's information and its label table's information (-cmd 6, -cmd 7).
#pragma once

#include <cstdint>

// The keywords of -cmd 6, as the keyword reader fills them.
struct TableInfoKeywords {
  uint32_t private_fields;  // -P
  const char* vrf;          // -v
  uint32_t vrf_given;
};

// The keywords of -cmd 7.
struct LabelTableInfoKeywords {
  const char* vrf;  // -v
  uint32_t vrf_given;
};

// Print the table's, or its label table's, information item below the view handle (bound to the VRF's
// table on the active root); -P of -cmd 6 adds the fallback line card and the counters. Any failure to
// fetch or decode the item prints "Table not found".
void ostrel_kw_table_info_view(const TableInfoKeywords& keywords);
void ostrel_kw_label_table_info_view(const LabelTableInfoKeywords& keywords);
