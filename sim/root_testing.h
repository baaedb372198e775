// Test access to the simulated root: point a running process at another root. The program never calls this;
// it reads one root per run.
#pragma once

#include <cstdint>
#include <string>

namespace ostrel::sim {

// Forgets the current root (database, inventory, faults) and uses `dir` from the next call on. Services that
// cache anything derived from the root compare root_generation() and start afresh when it moved.
void root_reset_for_testing(const std::string& dir);

// Changes on every reset; services holding prepared statements or cached rows re-derive them when it moves.
uint64_t root_generation();

}  // namespace ostrel::sim
