// The mdt_ifh view, -x (with -h): the MDT interface handles and the routes that refer to them.
#pragma once

#include "front/show_args.h"

void ostrel_mdt_ifh_view(const ShowArgs& args);
