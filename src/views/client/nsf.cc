#include "views/client/nsf.h"

void ostrel_kw_nsf_view(const NsfKeywords& keywords) {
  (void)keywords;
}
