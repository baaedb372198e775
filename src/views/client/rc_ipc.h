// The route-collapse IPC channel between producer and consumer (-cmd 5).
#pragma once

#include <cstdint>

// The keywords of -cmd 5, as the keyword reader fills them.
struct RcIpcKeywords {
  uint32_t validation_errors;  // -P
  const char* ipc_name;        // -W; required
};

// Shows the channel's record below the view handle; a missing one prints nothing.
void ostrel_kw_rc_ipc_view(const RcIpcKeywords& keywords);
