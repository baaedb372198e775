// The consistency checker (-c): per node, how many prefixes the line card scanned, how many agree with the
// MRIB, and with detail which entries do not and why; for one VRF, or, once confirmed, for every VRF.
#pragma once

#include "front/show_args.h"

// Reads -v, -g, -s and -D of `args`. With the VRF "all" it asks the operator on standard input first.
void ostrel_consistency_view(const ShowArgs& args);
