#include "views/client/chkpt_stats.h"

void ostrel_kw_chkpt_stats_view(const ChkptStatsKeywords& keywords) {
  (void)keywords;
}
