// The BVI databases: routes (-o), an interface by name (-k), the interface-to-table mapping (-1) and the
// route summary (-Y).
#pragma once

#include "front/show_args.h"

void ostrel_bvi_route_view(const ShowArgs& args);
void ostrel_bvi_ifname_view(const ShowArgs& args);
void ostrel_bvi_table_mapping_view(const ShowArgs& args);
void ostrel_bvi_route_summary_view(const ShowArgs& args);
