// AMT routes (-u) and AMT gateways (-V), each active, expired (-Q) or summarised (-H).
#pragma once

#include "front/show_args.h"

void ostrel_amt_route_view(const ShowArgs& args);
void ostrel_amt_gateway_view(const ShowArgs& args);
