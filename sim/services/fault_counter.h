// A count of calls that an indexed fault ("the k-th ...") is matched against. It starts again at 0 when the
// process moves to another root, so each root's fixture counts from the first call made under it.
#pragma once

#include <cstdint>

#include "sim/root.h"
#include "sim/root_testing.h"

namespace ostrel::sim {

class FaultCounter {
 public:
  // The 0-based index of this call.
  int64_t next() {
    // A root without faults matches no index, so there is nothing to count.
    if (detail::no_faults) return -1;
    if (generation_ != root_generation()) {
      generation_ = root_generation();
      count_ = 0;
    }
    return count_++;
  }

 private:
  uint64_t generation_ = 0;
  int64_t count_ = 0;
};

}  // namespace ostrel::sim
