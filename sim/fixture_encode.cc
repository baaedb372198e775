// Typed fixture values go through the record codec's JSON conversions with the program's own descriptors,
// so that a fixture can only hold records that the program's decoder reads.
#include "sim/fixture_encode.h"

#include <cctype>

#include "access/pod_descriptors.h"
#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_json.h"

namespace ostrel::sim {
namespace {

// The codec names a field as "Interfaces[2].Name"; fixtures speak JSON pointers: "/Interfaces/2/Name".
std::string as_json_pointer(std::string_view field) {
  std::string pointer;
  for (char c : field) {
    if (c == '.' || c == '[') {
      pointer += '/';
    } else if (c != ']') {
      pointer += c;
    }
  }
  return pointer.empty() || pointer[0] == '/' ? pointer : "/" + pointer;
}

bool is_field_path(std::string_view text) {
  if (text.empty()) return false;
  for (char c : text) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_' && c != '.' && c != '[' && c != ']')
      return false;
  }
  return true;
}

}  // namespace

bool encode_typed_value(const std::string& type, const nlohmann::json& value, std::string* bytes,
                        std::string* problem) {
  const pod_desc* desc = ostrel_find_pod_desc(type);
  if (!desc) {
    *problem = "unknown record type \"" + type + "\"";
    return false;
  }
  std::string err;
  if (pod_encode_json(*desc, value, bytes, &err)) return true;
  size_t colon = err.find(": ");
  if (colon != std::string::npos && is_field_path(std::string_view(err).substr(0, colon))) {
    *problem = as_json_pointer(std::string_view(err).substr(0, colon)) + err.substr(colon);
  } else {
    *problem = err;
  }
  return false;
}

bool decode_typed_value(const std::string& bytes, std::string* type, nlohmann::json* value,
                        std::string* problem) {
  auto named = pod_record_type(bytes.data(), bytes.size());
  if (!named) {
    *problem = "not a pod record: its header cannot be read";
    return false;
  }
  *type = *named;
  return pod_json_from_record(bytes.data(), bytes.size(), ostrel_find_pod_desc, value, problem);
}

}  // namespace ostrel::sim
