// Opening the run's access to the store before its view and closing it after: the library check, the two
// store handles, the interface-name server and the route printer's two pools.
#pragma once

#include "front/show_args.h"

// Binds and creates everything a single-letter run needs for `args.cmd`, printing the failure and returning
// false when any step fails (the caller exits with status 1). For table codes `args.vrf` becomes the VRF's
// path element, which always ends in "/".
[[nodiscard]] bool ostrel_setup(ShowArgs& args);

// Releases the interface-name server when bound. The store handles and pools are left to the process end.
void ostrel_teardown();
