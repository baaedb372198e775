// The MRIB server's checkpoint table statistics (-cmd 8).
#pragma once

#include <cstdint>

// The keywords of -cmd 8, as the keyword reader fills them.
struct ChkptStatsKeywords {
  uint32_t standby;  // -standby
  uint32_t detail;   // -detail
};

// Shows the statistics record below the root handle.
void ostrel_kw_chkpt_stats_view(const ChkptStatsKeywords& keywords);
