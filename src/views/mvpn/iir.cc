#include "views/mvpn/iir.h"

void ostrel_iir_intf_view(const ShowArgs&) {}
