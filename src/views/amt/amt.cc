#include "views/amt/amt.h"

void ostrel_amt_route_view(const ShowArgs&) {}

void ostrel_amt_gateway_view(const ShowArgs&) {}
