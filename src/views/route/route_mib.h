// The MIB view (-X): the routes of a VRF's table in the order of the multicast routing MIB, each as a
// header line followed by its incoming and outgoing interfaces, read from the "routedb-mib" collection.
#pragma once

#include "access/pod_records.h"
#include "platform/vellum.h"

// Prints one MIB entry: a header line (designation, RPF neighbour, flags, modified flags, annotation,
// inherited range) and the sorted interface lists without AMT interfaces. Entries for the groups 0.0.0.1 to
// 0.0.0.5 are skipped silently; a group range is reported on standard error and skipped.
void mrib_mib_print(const mrib_route_pod* route);

// Lists the MIB entries below `handle`, a VRF's table directory.
void mrib_mib_show(vellum_handle_t handle);
