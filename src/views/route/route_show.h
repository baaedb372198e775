// The route view behind -r, -f and -N: one VRF's route table, or the routes held for non-stop forwarding,
// read from the collection that the filters name and printed entry by entry.
#pragma once

#include <cstdint>

#include "platform/vellum.h"

// Reads the routes below `handle` (a VRF's table directory; the oper root for `nsf`) and prints each with
// mrib_route_print(). `source` and `group` are the filter texts as typed, empty when absent; with both the
// one route they name is fetched. `group_plen` goes with the group only. `rates` reads the rate-annotated
// collection and prints the node rates; `split_lists` and `detail` go to the printer. Every outcome is
// printed; nothing is returned.
void mrib_route_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen,
                     bool split_lists, bool detail, bool nsf, bool rates);
