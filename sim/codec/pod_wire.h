// The primitives of the record wire format: the header, a bounds-checked reading cursor and an appending
// writer, all little-endian. Internal to the codec; the format itself is described in wire_format.md.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace ostrel::sim::codec {

static_assert(std::endian::native == std::endian::little,
              "the codec copies little-endian numbers as they are");

inline constexpr char kMagic[4] = {'P', 'O', 'D', 'R'};
inline constexpr uint16_t kFormatVersion = 1;
// The length prefix of a text that is absent (a null pointer), as opposed to empty.
inline constexpr uint32_t kAbsentText = 0xffffffffu;
// How deep pointers, arrays and embedded values may nest: a list chained through pointers is decoded
// recursively, and a hostile record must not exhaust the stack.
inline constexpr int kMaxDepth = 2000;

class Reader {
 public:
  Reader(const unsigned char* data, size_t length) : p_(data), end_(data + length) {}

  size_t remaining() const { return static_cast<size_t>(end_ - p_); }
  bool read(void* out, size_t n) {
    if (remaining() < n) return false;
    if (n != 0) std::memcpy(out, p_, n);
    p_ += n;
    return true;
  }
  template <typename T>
  bool read(T* out) {
    return read(out, sizeof(T));
  }
  const unsigned char* take(size_t n) {
    if (remaining() < n) return nullptr;
    const unsigned char* at = p_;
    p_ += n;
    return at;
  }

 private:
  const unsigned char* p_;
  const unsigned char* end_;
};

class Writer {
 public:
  explicit Writer(std::string* out) : out_(out) {}
  void bytes(const void* data, size_t n) { out_->append(static_cast<const char*>(data), n); }
  template <typename T>
  void put(T value) {
    bytes(&value, sizeof(T));
  }

 private:
  std::string* out_;
};

// The header: magic, format version, the record type's name, the compact schema's fingerprint.
inline void write_header(Writer& w, std::string_view name, uint64_t fingerprint) {
  w.bytes(kMagic, sizeof(kMagic));
  w.put<uint16_t>(kFormatVersion);
  w.put<uint16_t>(static_cast<uint16_t>(name.size()));
  w.bytes(name.data(), name.size());
  w.put<uint64_t>(fingerprint);
}

// Allocations of decoded values: zeroed, and refused on demand by pod_fail_allocation().
void* allocate(size_t count, size_t size);

}  // namespace ostrel::sim::codec
