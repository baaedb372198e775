// The MPLS-side databases of the MRIB: registrations (-K, one label with -T), P2MP TE tunnels (-F, one tunnel
// ID context with -T) and the TE P2MP backup tunnels (-G). The first two read through the root handle, the
// backup view through the view handle, which is bound to the oper root for it.
#pragma once

#include "front/show_args.h"

void ostrel_reg_db_view(const ShowArgs& args);
void ostrel_te_db_view(const ShowArgs& args);
void ostrel_te_backup_view(const ShowArgs& args);
