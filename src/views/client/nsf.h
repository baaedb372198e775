// The MRIB server's non-stop forwarding status (-cmd 3): one record, one block of text.
#pragma once

#include <cstdint>

// The keywords of -cmd 3, as the keyword reader fills them.
struct NsfKeywords {
  uint32_t private_fields;  // -private
  uint32_t standby;         // -standby
  uint32_t detail;          // -detail
};

// Shows the NSF record below the root handle.
void ostrel_kw_nsf_view(const NsfKeywords& keywords);
