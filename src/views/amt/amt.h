// The AMT views: routes (-u) and gateways (-V), each active, expired (-Q) or summarised (-H, which wins over
// -Q). Both read below the VRF's table directory and print every outcome themselves.
#pragma once

#include "front/show_args.h"
#include "platform/vellum.h"

// The AMT routes of the -s source and the -g group as typed, or all of them; `handle` is bound to the VRF's
// table directory.
void ostrel_amt_routes(vellum_handle_t handle, const ShowArgs& args);
// The AMT gateways of the address and the port given after -V (its gw_address and gw_port), or all of them.
void ostrel_amt_gateways(vellum_handle_t handle, const ShowArgs& args);

// The same on the run's view handle, for the dispatch.
void ostrel_amt_route_view(const ShowArgs& args);
void ostrel_amt_gateway_view(const ShowArgs& args);
