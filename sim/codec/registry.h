// The simulated record type registry. Decoding needs no registration here; the registry only records the
// calls, so that tests can watch the registration protocol and make any step of it fail.
#pragma once

#include <string>
#include <vector>

#include "platform/pod.h"

namespace ostrel::sim {

struct RegistryLog {
  std::vector<std::string> calls;  // "start", "register <type name>", "end", "abort"
};

// Starts a fresh log. `fail_call` (0-based, counting every registry call) fails with `code`; -1 fails none.
void registry_reset(int fail_call = -1, cerr_t code = 0);
const RegistryLog& registry_log();

}  // namespace ostrel::sim
