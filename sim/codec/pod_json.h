// Pod records as JSON, for fixtures and tools: an object keyed by the full schema's field names, with the
// conventions of wire_format.md ("JSON form"). Every failure names the field's path in `err`, for example
// "Interfaces[2].InterfaceAttributes.IsForward: expected a boolean".
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

// Appends the JSON text of a decoded structure to `out`, on one line, with only the fields that are set: a
// field that is zero, false, null or empty is left out, as the encoder reads it back from an omitted field.
// Fields come in schema order. Fails only on a text that is not UTF-8 (JSON cannot carry it), and then
// leaves `out` as it was.
[[nodiscard]] bool pod_json_write_struct(const pod_desc& desc, const void* structure, std::string* out,
                                         std::string* err);

// Appends `text` as a JSON string; false, with `out` as it was, when `text` is not UTF-8.
[[nodiscard]] bool pod_json_append_string(std::string_view text, std::string* out);

// Writes records as JSON text one after another, decoding each into room kept from the last, so that a walk
// over a million records allocates only what the records themselves point to.
class PodJsonWriter {
 public:
  // `find` maps a record type's name to its descriptor (ostrel_find_pod_desc() does).
  explicit PodJsonWriter(const pod_desc* (*find)(std::string_view));

  // Appends the JSON text of the record's value (as pod_json_write_struct() writes it) to `out` and names its
  // record type in `*type` (a view into `data`). On failure `out` is as it was and `*err` says why: not a pod
  // record, a type without a descriptor, the decoder's refusal, or a text that is not UTF-8; `*type` is set
  // when the header could be read.
  [[nodiscard]] bool write(const void* data, size_t length, std::string_view* type, std::string* out,
                           std::string* err);

 private:
  const pod_desc* (*find_)(std::string_view);
  std::string last_type_;
  const pod_desc* last_desc_ = nullptr;
  std::vector<uint64_t> structure_;
};

// Fills `structure` (the descriptor's decoded size, zeroed here first) from `value`, allocating as
// pod_decode() does; release it with pod_free_indirections(). On failure nothing stays allocated.
[[nodiscard]] bool pod_struct_from_json(const pod_desc& desc, const nlohmann::json& value, void* structure,
                                        std::string* err);

}  // namespace ostrel::sim
