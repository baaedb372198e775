// The BVI databases: the multicast routes learned over bridge-group virtual interfaces (-o, and -k for one
// interface), the mapping of each BVI to its routing table (-1) and the counters of that machinery (-Y).
// The routes and the mapping are read below the oper root itself, the counters through the root handle.
#pragma once

#include <cstdint>

#include "front/show_args.h"

// Every BVI route, or those that -z, -s, -g and -p name; -v (any name) reads the VRF-bound collections.
void ostrel_bvi_route_view(const ShowArgs& args);
// The same for the interface that -k names, once the platform knows it.
void ostrel_bvi_ifname_view(const ShowArgs& args);
// The table of the BVI that -z names, or every mapping. -1's own argument and -h are not read.
void ostrel_bvi_table_mapping_view(const ShowArgs& args);
// The BVI route counters.
void ostrel_bvi_route_summary_view(const ShowArgs& args);

// The handle of the interface `name`; 0, after "Interface not found" on standard error, when the platform
// does not know it.
uint32_t ostrel_bvi_find_interface(const char* name);
