// The primitives of the record wire format: the header, a bounds-checked reading cursor and an appending
// writer, all little-endian, and the checks of an image against its mask. Internal to the codec; the format
// itself is described in wire_format.md.
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
inline constexpr uint16_t kFormatVersion = 2;
// The reference of an absent text, array or pointer target (a null pointer in the decoded structure).
inline constexpr uint64_t kAbsent = ~uint64_t{0};
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

// The bits of `size` bytes of a value's image that `mask` says must be zero, OR-ed together: zero for a
// clean image. For the few bytes of a union's case area, where a call and a vector loop cost more than they
// save; whole images are checked as they are copied, by copy_masked().
inline uint64_t masked_bits(const unsigned char* image, const unsigned char* mask, size_t size) {
  auto word = [&](size_t at) {
    uint64_t v, m;
    std::memcpy(&v, image + at, 8);
    std::memcpy(&m, mask + at, 8);
    return v & m;
  };
  // Most areas are one or two words: those take two moves each, not a loop.
  if (size == 8) return word(0);
  if (size == 16) return word(0) | word(8);
  uint64_t bad = 0;
  const size_t whole = size / 8 * 8;
  for (size_t i = 0; i < whole; i += 8) bad |= word(i);
  for (size_t i = whole; i < size; ++i) bad |= image[i] & mask[i];
  return bad;
}

// Copies `size` bytes of an image from `from` to `to` and returns masked_bits() of them, in one vectorised
// pass: the decoder's copy and check of a record are then one read of it, not two.
uint64_t copy_masked(unsigned char* __restrict to, const unsigned char* __restrict from,
                     const unsigned char* __restrict mask, size_t size);

// The first byte of an image that breaks its mask; `size` when none does.
inline size_t first_unclean(const unsigned char* image, const unsigned char* mask, size_t size) {
  size_t i = 0;
  while (i < size && (image[i] & mask[i]) == 0) ++i;
  return i;
}

// Allocations of decoded values: zeroed, and refused on demand by pod_fail_allocation().
void* allocate(size_t count, size_t size);
// The same, without zeroing: for memory that the decoder fills completely.
void* allocate_raw(size_t bytes);
// Releases a block of allocate() or allocate_raw(); large ones are kept for the next decode.
void give_back(void* block);

}  // namespace ostrel::sim::codec
