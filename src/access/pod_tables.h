// Builds a record type's layout record and compact schema from its full schema string at compile time, so
// that no size or offset is ever typed by hand.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "platform/pod.h"
#include "platform/pod_schema.h"

namespace ostrel::pod {

namespace detail {

template <size_t kCount>
constexpr std::array<uint64_t, kCount> flatten_offsets(const Schema& s) {
  std::array<uint64_t, kCount> out{};
  size_t n = 0;
  for (int t = 0; t < s.type_count; ++t) {
    const TypeDef& type = s.types[t];
    if (type.offset_count == 0) continue;
    if (type.is_union) {
      out[n++] = 0;
      out[n++] = s.unions[type.union_index].value_offset;
      continue;
    }
    for (int i = type.first_field; i < type.first_field + type.field_count; ++i) {
      out[n++] = s.fields[i].offset;
      if (s.fields[i].kind == Kind::kArray) out[n++] = s.fields[i].offset + 8;
    }
  }
  return out;
}

template <size_t kTypes>
constexpr std::array<pod_layout, kTypes> build_layout(const Schema& s, const uint64_t* offsets) {
  std::array<pod_layout, kTypes> out{};
  size_t next = 0;
  for (int t = 0; t < s.type_count; ++t) {
    const TypeDef& type = s.types[t];
    uint64_t number = t == 0 ? static_cast<uint64_t>(s.type_count - 1) : type.number;
    out[t] = pod_layout{number, type.size, type.offset_count == 0 ? nullptr : offsets + next};
    next += type.offset_count;
  }
  return out;
}

template <size_t kSize>
constexpr std::array<char, kSize> compact_of(std::string_view full) {
  std::array<char, kSize> out{};
  write_compact(full, out.data());
  return out;
}

}  // namespace detail

// Everything a descriptor needs, derived from one full schema string with static storage.
template <const char* kFullSchema>
struct Tables {
  static constexpr std::string_view kFull{kFullSchema};
  static constexpr Schema kSchema = parse_schema(kFull);
  static_assert(kSchema.ok(), "a schema does not parse: the descriptor unit test names it and the position");
  static constexpr size_t kTypeCount = static_cast<size_t>(kSchema.type_count);
  static constexpr size_t kOffsetCount = static_cast<size_t>(kSchema.offset_entry_count());
  // One spare entry keeps the array non-empty for records that are plain byte arrays.
  static constexpr std::array<uint64_t, kOffsetCount + 1> kOffsets =
      detail::flatten_offsets<kOffsetCount + 1>(kSchema);
  static constexpr std::array<pod_layout, kTypeCount> kLayout =
      detail::build_layout<kTypeCount>(kSchema, kOffsets.data());
  static constexpr std::array<char, kFull.size() + 1> kCompact = detail::compact_of<kFull.size() + 1>(kFull);

  static constexpr uint64_t size() { return kSchema.record().size; }
  // Offset of a top-level field of the record type, or of sub-type `number`.
  static constexpr uint64_t offset_of(std::string_view field) { return kSchema.find_field(field)->offset; }
  static constexpr uint64_t offset_of(uint32_t number, std::string_view field) {
    return kSchema.find_field(number, field)->offset;
  }
  static constexpr uint64_t size_of(uint32_t number) { return kSchema.find_type(number)->size; }
};

}  // namespace ostrel::pod
