// Pod records as JSON, for fixtures and tools: an object keyed by the full schema's field names, with the
// conventions of wire_format.md ("JSON form"). Every failure names the field's path in `err`, for example
// "Interfaces[2].InterfaceAttributes.IsForward: expected a boolean".
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "platform/pod.h"

namespace ostrel::sim {

// Encodes `value` as a record of the descriptor's type. Omitted fields are zero, empty or absent.
[[nodiscard]] bool pod_encode_json(const pod_desc& desc, const nlohmann::json& value, std::string* bytes,
                                   std::string* err);

// The JSON form of an encoded record. The record's header names its type; `find` maps that name to a
// descriptor (ostrel_find_pod_desc() does).
[[nodiscard]] bool pod_json_from_record(const void* data, size_t length,
                                        const pod_desc* (*find)(std::string_view), nlohmann::json* out,
                                        std::string* err);

// The JSON form of a decoded structure.
[[nodiscard]] bool pod_json_from_struct(const pod_desc& desc, const void* structure, nlohmann::json* out,
                                        std::string* err);

// Fills `structure` (the descriptor's decoded size, zeroed here first) from `value`, allocating as
// pod_decode() does; release it with pod_free_indirections(). On failure nothing stays allocated.
[[nodiscard]] bool pod_struct_from_json(const pod_desc& desc, const nlohmann::json& value, void* structure,
                                        std::string* err);

}  // namespace ostrel::sim
