// The simulated record codec's own surface, beside pod_decode() and pod_free_indirections() of
// platform/pod.h: the detail of the last refusal, the encoder of decoded structures, and a test hook for
// allocation failures. The wire format is described in wire_format.md beside this file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/pod.h"

namespace ostrel::sim {

// The field path and reason of the last refused pod_decode() or descriptor on this thread, for example
// "Interfaces[3].Name: text longer than 80"; empty before any refusal.
std::string pod_last_error();

// Encodes a decoded structure (as pod_decode() leaves it, or as built by hand with the descriptor's layout)
// into a record of our wire format. Fails, with `err` naming the field, only on a bad descriptor or a text
// of more than its limit.
[[nodiscard]] bool pod_encode_struct(const pod_desc& desc, const void* structure, std::string* bytes,
                                     std::string* err);

// The record type that a record's header names, or none when the header cannot be read.
std::optional<std::string> pod_record_type(const void* data, size_t length);

// Makes the allocation of the given 0-based index, counted from this call, fail as if memory had run out,
// in decoding and in building structures from JSON; -1 lets every allocation succeed.
void pod_fail_allocation(int64_t index);

}  // namespace ostrel::sim
