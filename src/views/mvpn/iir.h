// The iir view, -b (with -z): the interfaces that take part in IIR, their parents, children and routes.
#pragma once

#include "front/show_args.h"

void ostrel_iir_intf_view(const ShowArgs& args);
