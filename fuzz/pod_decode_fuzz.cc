// pod_decode() and pod_free_indirections() on arbitrary bytes, for every record type. Besides surviving, a
// refused record must leave its structure zeroed, and an accepted one must encode canonically the same way
// from the structure and from its JSON form.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/pod_descriptors_all.h"
#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_json.h"

namespace {

bool all_zero(const std::vector<uint64_t>& structure) {
  for (uint64_t word : structure)
    if (word != 0) return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  const auto& descriptors = all_pod_descriptors();
  const pod_desc* desc = descriptors[data[0] % descriptors.size()];
  std::vector<uint64_t> structure(desc->layout[0].size / 8 + 1);
  if (pod_decode(data + 1, static_cast<uint32_t>(size - 1), structure.data(), desc) != kCerrOk) {
    if (!all_zero(structure)) __builtin_trap();
    return 0;
  }
  std::string bytes, from_json, err;
  nlohmann::json value;
  if (!ostrel::sim::pod_encode_struct(*desc, structure.data(), &bytes, &err)) __builtin_trap();
  if (!ostrel::sim::pod_json_from_struct(*desc, structure.data(), &value, &err)) __builtin_trap();
  if (!ostrel::sim::pod_encode_json(*desc, value, &from_json, &err) || from_json != bytes) __builtin_trap();
  if (pod_free_indirections(structure.data(), desc) != kCerrOk) __builtin_trap();
  return 0;
}
