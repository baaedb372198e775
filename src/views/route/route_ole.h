// The outgoing-list view (-U): one compact line per route of a VRF's table, with its uptime, its count of
// outgoing interfaces and its flags, read from the "routedb-ole" collections.
#pragma once

#include <cstdint>

#include "access/pod_records.h"
#include "platform/vellum.h"

// Prints "(S,G), Up:..., OIF count:n, " and, when the entry has flags worth showing, "flags: ...\n". An
// entry without such flags leaves its line open: the next entry continues on it.
void mrib_route_print_ole(const mrib_route_ole_pod* route);

// Lists (or, with both a source and a group, fetches) the routes below `handle`, a VRF's table directory.
// `source` and `group` are put into the path as typed; empty means not given.
void mrib_route_ole_show(vellum_handle_t handle, const char* source, const char* group, uint32_t group_plen);
