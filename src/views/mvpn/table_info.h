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

// Read the table's, or its label table's, information item below the view handle; one that is missing
// prints "Table not found".
void ostrel_kw_table_info_view(const TableInfoKeywords& keywords);
void ostrel_kw_label_table_info_view(const LabelTableInfoKeywords& keywords);
