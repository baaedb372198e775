// A synthetic router for benchmarks: N routes of one VRF in every collection the route views read, and N
// items in each collection that a listing view walks, built straight into a root's store. The same settings
// and seed give the same root.
#pragma once

#include <cstdint>
#include <string>

namespace ostrel::tools {

struct GenerateSettings {
  uint64_t routes = 10000;
  uint32_t interfaces = 4;  // per route: one accepts, the others forward
  uint32_t amt_every = 50;  // every n-th route gets an AMT interface as well (0: none)
  uint32_t star_every = 4;  // every n-th route is a (*,G) entry
  uint64_t seed = 1;
  std::string vrf = "default";
  bool filtered = false;  // also the per-source and per-group collections
};

// Creates or replaces `root`. On failure `*error` says why and nothing is left at `root`.
[[nodiscard]] bool generate_root(const std::string& root, const GenerateSettings& settings,
                                 std::string* error);

// Reads "--routes N" style options into `settings`; false with `*error` on a bad one.
[[nodiscard]] bool parse_generate_options(int argc, char** argv, GenerateSettings* settings,
                                          std::string* error);

}  // namespace ostrel::tools
