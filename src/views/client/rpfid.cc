#include "views/client/rpfid.h"

void ostrel_kw_rpfid_view(const RpfidKeywords& keywords) {
  (void)keywords;
}
