// The consistency checker (-c): per node, how the line cards' forwarding tables agree with the MRIB.
#pragma once

#include "front/show_args.h"

void ostrel_consistency_view(const ShowArgs& args);
