// The route-collapse view, -C: per MDT, the customer routes collapsed onto it, its encapsulation
// identifiers, its core routes and core egress line cards. -y and -m together name one MDT; otherwise the
// whole database is listed.
#pragma once

#include "front/show_args.h"

void ostrel_route_collapse_view(const ShowArgs& args);
