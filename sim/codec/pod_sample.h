// Sample values of a record type in its JSON form, with something non-trivial in every field: a boolean
// set, numbers wide enough to fill their width, texts up to their limit, arrays with elements, pointers
// present, unions on varying cases. Fixtures, round-trip tests and the fuzzer's seed corpus start from them.
#pragma once

#include <cstdint>

#include <nlohmann/json.hpp>

#include "platform/pod.h"

namespace ostrel::sim {

// A sample value of the descriptor's type; `seed` varies the values and the union cases chosen. Null when
// the descriptor does not compile.
nlohmann::json pod_sample_json(const pod_desc& desc, uint32_t seed);

}  // namespace ostrel::sim
