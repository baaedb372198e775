#include "views/mvpn/route_collapse.h"

void ostrel_route_collapse_view(const ShowArgs&) {}
