// The MRIB server's RPF-ID allocations (-cmd 9): per address, or as a summary.
#pragma once

#include <cstdint>

// The keywords of -cmd 9, as the keyword reader fills them.
struct RpfidKeywords {
  uint32_t standby;                 // -standby
  uint32_t summary;                 // -summary
  uint32_t address, address_given;  // -address: an IPv4 address, network byte order
};

// Lists the RPF-IDs, or shows their summary, below the root handle.
void ostrel_kw_rpfid_view(const RpfidKeywords& keywords);
