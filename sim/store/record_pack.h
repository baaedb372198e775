// How the store keeps an item's data: packed, without its long runs of zero bytes. A record image is mostly
// zero (unused array elements, false booleans, padding: a generated route is 95% zero bytes), and a table
// that holds it whole is many times larger than its contents. Shared by the tools that write stores, the
// store that reads them and the benchmark floor that reads as the store does.
//
// A packed record is its length as a varint, then segments up to the end of the blob, each a varint count of
// zero bytes, a varint count of literal bytes and those bytes. What the segments leave out, up to the
// record's length, is zero. Varints are little-endian base 128 (seven bits a byte, the high bit set on all
// but the last byte).
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace ostrel::sim {

// Zero runs shorter than this stay inside a literal: a segment costs two varints, and unpacking pays per
// segment, so splitting a literal at every short gap saves a few bytes for many more segments.
inline constexpr size_t kPackedMinZeroRun = 8;

inline void pack_varint(uint64_t value, std::string* out) {
  while (value >= 0x80) {
    *out += static_cast<char>(value | 0x80);
    value >>= 7;
  }
  *out += static_cast<char>(value);
}

// Reads a varint at `*at`, moving past it; false when the input ends inside it or it is over 32 bits.
[[nodiscard]] inline bool unpack_varint(const uint8_t** at, const uint8_t* end, uint32_t* value) {
  const uint8_t* p = *at;
  if (p < end && *p < 0x80) {
    *value = *p;
    *at = p + 1;
    return true;
  }
  uint64_t result = 0;
  for (int shift = 0; p < end && shift < 35; shift += 7) {
    uint8_t byte = *p++;
    result |= uint64_t{byte & 0x7fu} << shift;
    if (byte < 0x80) {
      if (result > UINT32_MAX) return false;
      *value = static_cast<uint32_t>(result);
      *at = p;
      return true;
    }
  }
  return false;
}

// Replaces `*packed` with the packed form of `record`.
inline void pack_record(std::string_view record, std::string* packed) {
  packed->clear();
  pack_varint(record.size(), packed);
  const size_t n = record.size();
  size_t written = 0;  // every byte before it is in a segment or a zero run before one
  size_t i = 0;
  for (;;) {
    while (i < n && record[i] == 0) ++i;
    if (i == n) return;
    const size_t start = i;
    size_t end = i;  // one past the last non-zero byte of the literal
    for (; i < n && i - end < kPackedMinZeroRun; ++i) {
      if (record[i] != 0) end = i + 1;
    }
    pack_varint(start - written, packed);
    pack_varint(end - start, packed);
    packed->append(record.data() + start, end - start);
    written = end;
    i = end;
  }
}

// The unpacked length of `packed`, and where its segments begin; false when it has no valid length.
[[nodiscard]] inline bool packed_length(const uint8_t* packed, size_t size, uint32_t* length,
                                        const uint8_t** segments) {
  *segments = packed;
  return unpack_varint(segments, packed + size, length);
}

// Writes the segments from `segments` to `end` into `out`, which holds `length` bytes that are already zero.
// False, with `out` partly written, when a segment reaches past either end: the store is damaged.
[[nodiscard]] inline bool unpack_segments(const uint8_t* segments, const uint8_t* end, char* out,
                                          uint32_t length) {
  uint32_t at = 0;
  while (segments < end) {
    uint32_t zeros = 0, literal = 0;
    if (!unpack_varint(&segments, end, &zeros) || !unpack_varint(&segments, end, &literal) ||
        zeros > length - at || literal > length - at - zeros ||
        literal > static_cast<size_t>(end - segments)) {
      return false;
    }
    at += zeros;
    std::memcpy(out + at, segments, literal);
    at += literal;
    segments += literal;
  }
  return true;
}

// Appends the record packed in `packed` (`size` bytes) to `*out`; false, leaving `*out` as it was, when
// the packed form is damaged.
[[nodiscard]] inline bool unpack_record_append(const void* packed, size_t size, std::string* out) {
  // SQLite gives no pointer for an empty blob, and no packed record is empty.
  if (!packed) return false;
  const auto* bytes = static_cast<const uint8_t*>(packed);
  const uint8_t* segments = nullptr;
  uint32_t length = 0;
  if (!packed_length(bytes, size, &length, &segments)) return false;
  const size_t start = out->size();
  out->resize(start + length);
  if (unpack_segments(segments, bytes + size, out->data() + start, length)) return true;
  out->resize(start);
  return false;
}

}  // namespace ostrel::sim
