// The MDT interface-handle view, -x: each MDT interface with its table, reference counts and uptime, and
// under -D the routes that refer to it; -h names one interface by its handle.
#pragma once

#include "front/show_args.h"

void ostrel_mdt_ifh_view(const ShowArgs& args);
