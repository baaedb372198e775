#include "views/client/nsr_end.h"

void ostrel_kw_nsr_end_view(const NsrEndKeywords& keywords) {
  (void)keywords;
}
