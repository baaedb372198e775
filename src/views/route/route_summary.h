// The route summaries (-S): the route counts of one VRF's table, or their sums over every VRF that has IPv4
// multicast configuration.
#pragma once

#include <cstdint>

#include "front/show_args.h"
#include "platform/vellum.h"

// Running sums over VRFs, in the summary record's order.
struct RouteSummaryTotals {
  uint32_t group_ranges = 0;
  uint32_t g_routes = 0;
  uint32_t sg_routes = 0;
  uint32_t forwarding_interfaces = 0;
  uint32_t route_interfaces = 0;
};

// Fetches the summary of `vrf` below `root` (a handle on the oper root) and prints it, or, when `totals`
// is given, adds its counts there and prints nothing. A VRF without a summary prints its "No MRIB Route-DB"
// line either way.
void mrib_route_summary_show(vellum_handle_t root, const char* vrf, RouteSummaryTotals* totals);

// The -S view: the VRF of args.vrf, or with the name "all" every configured VRF (each on its own under -D).
void ostrel_route_summary_view(const ShowArgs& args);
