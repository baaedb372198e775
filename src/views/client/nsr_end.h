// The history of NSR-end purges (-cmd 10): when each client's purge ran and what it purged.
#pragma once

#include <cstdint>

// The keywords of -cmd 10, as the keyword reader fills them.
struct NsrEndKeywords {
  uint32_t standby;               // -standby
  uint32_t detail;                // -detail
  uint32_t client, client_given;  // -client
  uint32_t first, first_given;    // -first
  uint32_t last, last_given;      // -last
};

// Lists the purges below the root handle, filtered by the keywords given.
void ostrel_kw_nsr_end_view(const NsrEndKeywords& keywords);
