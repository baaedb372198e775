#include "views/client/rc_ipc.h"

void ostrel_kw_rc_ipc_view(const RcIpcKeywords& keywords) {
  (void)keywords;
}
