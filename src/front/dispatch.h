// Hands a parsed single-letter run to the one view its command code selects.
#pragma once

#include "front/show_args.h"

// Runs the view of args.cmd; a code without a view does nothing.
void ostrel_dispatch(const ShowArgs& args);
