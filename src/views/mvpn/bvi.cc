#include "views/mvpn/bvi.h"

void ostrel_bvi_route_view(const ShowArgs&) {}

void ostrel_bvi_ifname_view(const ShowArgs&) {}

void ostrel_bvi_table_mapping_view(const ShowArgs&) {}

void ostrel_bvi_route_summary_view(const ShowArgs&) {}
