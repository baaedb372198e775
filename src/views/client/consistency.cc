#include "views/client/consistency.h"

void ostrel_consistency_view(const ShowArgs&) {}
