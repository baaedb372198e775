// The route_collapse view, -C (with -m and -y): the customer routes collapsed onto each MDT.
#pragma once

#include "front/show_args.h"

void ostrel_route_collapse_view(const ShowArgs& args);
