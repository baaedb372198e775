#include "views/mvpn/mdt_ifh.h"

void ostrel_mdt_ifh_view(const ShowArgs&) {}
