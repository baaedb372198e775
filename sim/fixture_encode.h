// Typed fixture values to records and back, through the record codec and the program's descriptors.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace ostrel::sim {

// Encodes `value` as a record of the record type `type`. On failure `*problem` says why: "unknown record
// type ..." for a type without a descriptor, else "/Field/0/Sub: reason" naming the bad value within `value`.
[[nodiscard]] bool encode_typed_value(const std::string& type, const nlohmann::json& value,
                                      std::string* bytes, std::string* problem);

// Decodes a record into its record type's name and its value as JSON; `*problem` says why it could not.
[[nodiscard]] bool decode_typed_value(const std::string& bytes, std::string* type, nlohmann::json* value,
                                      std::string* problem);

}  // namespace ostrel::sim
