// The tlc view, -t (with -R): the line cards that forward for one VRF and its MDT groups.
#pragma once

#include "front/show_args.h"

void ostrel_tlc_view(const ShowArgs& args);
