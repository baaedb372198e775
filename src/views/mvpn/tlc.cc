#include "views/mvpn/tlc.h"

void ostrel_tlc_view(const ShowArgs&) {}
