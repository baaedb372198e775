// pod_decode() and pod_free_indirections(): a record of the wire format into its decoded structure and back
// to nothing. A record's fixed part is the structure's own image, so a value decodes as one copy, one masked
// check that the bits that must be zero are zero, and fix-ups of its slots only: references become copies of
// texts, arrays and pointer targets from the record's later parts, union case areas are checked against
// their discriminator. Nothing on that path builds text: a refusal finds and names its field afterwards.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/pod.h"
#include "sim/cerr_codes.h"
#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_program.h"
#include "sim/codec/pod_wire.h"
#include "sim/root.h"

namespace ostrel::sim {
namespace codec {
namespace {

thread_local std::string last_error;
int64_t allocations_until_failure = -1;

struct Failure {
  cerr_t code = kCerrOk;
  std::string what;
  std::vector<std::string> path;  // innermost first
};

// Where a byte of a value's image lies: the innermost field that holds it, or the field that the padding
// holding it follows.
struct Spot {
  std::string path;
  const Step* step = nullptr;
  uint64_t offset = 0;  // of the step within the value
  bool padding = false;
};

std::string join(const std::string& outer, const std::string& inner) {
  if (outer.empty()) return inner;
  if (inner.empty()) return outer;
  return inner[0] == '[' ? outer + inner : outer + "." + inner;
}

class Decoder {
 public:
  Decoder(const CompiledType& type, const unsigned char* data, uint32_t length, uint32_t cursor,
          std::vector<void*>& owned)
      : t_(type), data_(data), length_(length), cursor_(cursor), owned_(owned) {}

  // Decodes the part at the cursor, `count` values of program `index` back to back, into `dest`; `indexed`
  // when they are an array's elements, whose failures name the element.
  bool part(int32_t index, unsigned char* dest, uint64_t count, bool indexed, int depth) {
    if (depth > kMaxDepth) return fail(kPodCorrupt, "nested more than ", kMaxDepth, " deep");
    const Program& p = t_.program(index);
    const uint64_t bytes = count * p.size;  // arrays bound their count by the bytes left before this
    if (bytes > length_ - cursor_) return truncated_image(index, length_ - cursor_);
    const unsigned char* from = data_ + cursor_;
    cursor_ += static_cast<uint32_t>(bytes);
    if (!p.has_mask) {
      std::memcpy(dest, from, bytes);
    } else {
      uint64_t bad = 0;
      if (p.tile_count == 0) {
        for (uint64_t e = 0; e < count; ++e)
          bad |= copy_masked(dest + e * p.size, from + e * p.size, p.mask.data(), p.size);
      } else {
        for (uint64_t e = 0; e < count; e += p.tile_count)
          bad |= copy_masked(dest + e * p.size, from + e * p.size, p.tile.data(),
                             std::min<uint64_t>(p.tile_count, count - e) * p.size);
      }
      if (bad != 0) return unclean(index, dest, count, indexed);
    }
    if (p.slots.empty()) return true;
    for (uint64_t e = 0; e < count; ++e) {
      unsigned char* value = dest + e * p.size;
      for (const Slot& s : p.slots) {
        // Texts and unions, most slots of a record, are fixed here; arrays and pointers recurse through a
        // call of their own, so that the common slots do not pay for a frame that recursion needs.
        bool ok;
        switch (s.kind) {
          case Kind::kText:
            ok = text(s, value + s.offset);
            break;
          case Kind::kUnion:
            ok = union_value(s, value, depth);
            break;
          default:
            ok = fix(s, value, depth);
            break;
        }
        if (ok) continue;
        if (!s.path.empty()) failure_.path.push_back(s.path);
        if (indexed) failure_.path.push_back(element_key(e));
        return false;
      }
    }
    return true;
  }

  uint32_t cursor() const { return cursor_; }
  Failure& failure() { return failure_; }

 private:
  // Failures build their text out of line, so that the checks on the good path stay small.
  [[gnu::cold, gnu::noinline]] bool fail(cerr_t code, std::string what) {
    failure_.code = code;
    failure_.what = std::move(what);
    return false;
  }
  [[gnu::cold, gnu::noinline]] bool fail(cerr_t code, const char* before, uint64_t n,
                                         const char* after = "") {
    return fail(code, before + std::to_string(n) + after);
  }
  [[gnu::cold, gnu::noinline]] bool truncated() {
    return fail(kPodTruncated, "record ends inside this field");
  }

  [[gnu::noinline]] bool fix(const Slot& s, unsigned char* value, int depth) {
    unsigned char* at = value + s.offset;
    switch (s.kind) {
      case Kind::kText:
        return text(s, at);
      case Kind::kArray:
        return array(s, at, depth);
      case Kind::kPointer:
        return pointer(s, at, depth);
      default:
        return union_value(s, value, depth);
    }
  }

  void* own(size_t bytes) {
    void* memory = allocate_raw(bytes == 0 ? 1 : bytes);
    if (memory != nullptr) owned_.push_back(memory);
    return memory;
  }

  // Parts follow each other without gaps in the order of their references, so a reference can only be to
  // the cursor: anything else overlaps another part or leaves bytes unaccounted for.
  [[gnu::cold, gnu::noinline]] bool misplaced(uint64_t reference) {
    return fail(kPodCorrupt, "refers to byte " + std::to_string(reference) +
                                 " where its part must begin at " + std::to_string(cursor_));
  }

  bool text(const Slot& s, unsigned char* at) {
    uint64_t reference;
    std::memcpy(&reference, at, 8);
    if (reference == kAbsent) {
      std::memset(at, 0, 8);
      return true;
    }
    const auto offset = static_cast<uint32_t>(reference);
    const auto length = static_cast<uint32_t>(reference >> 32);
    if (offset != cursor_) return misplaced(offset);
    if (s.count != 0 && length > s.count) return fail(kPodTextTooLong, "text longer than ", s.count);
    if (length > length_ - cursor_) return truncated();
    const unsigned char* chars = data_ + cursor_;
    if (std::memchr(chars, 0, length) != nullptr) return fail(kPodCorrupt, "text holds a NUL byte");
    auto* copy = static_cast<char*>(own(size_t{length} + 1));
    if (copy == nullptr) return fail(kPodNoMemory, "no memory for a text of ", length);
    std::memcpy(copy, chars, length);
    copy[length] = '\0';
    std::memcpy(at, &copy, sizeof(copy));
    cursor_ += length;
    return true;
  }

  bool array(const Slot& s, unsigned char* at, int depth) {
    uint64_t count, reference;
    std::memcpy(&count, at, 8);
    std::memcpy(&reference, at + 8, 8);
    if (count == 0) {
      if (reference != kAbsent) return fail(kPodCorrupt, "an empty array refers to elements");
      std::memset(at + 8, 0, 8);
      return true;
    }
    if (reference != cursor_) return misplaced(reference);
    // The count is checked against what the rest of the record holds before anything is allocated.
    if (count > (length_ - cursor_) / std::max<uint32_t>(s.elem_size, 1))
      return fail(kPodArrayCount, "count ", count, " exceeds what the record holds");
    auto* elements = static_cast<unsigned char*>(own(count * s.elem_size));
    if (elements == nullptr) return fail(kPodNoMemory, "no memory for ", count, " elements");
    std::memcpy(at + 8, &elements, sizeof(elements));
    return part(s.sub, elements, count, true, depth + 1);
  }

  bool pointer(const Slot& s, unsigned char* at, int depth) {
    uint64_t reference;
    std::memcpy(&reference, at, 8);
    if (reference == kAbsent) {
      std::memset(at, 0, 8);
      return true;
    }
    if (reference != cursor_) return misplaced(reference);
    auto* target = static_cast<unsigned char*>(own(s.elem_size));
    if (target == nullptr) return fail(kPodNoMemory, "no memory for the target");
    std::memcpy(at, &target, sizeof(target));
    return part(s.sub, target, 1, false, depth + 1);
  }

  // The case area must hold the chosen case's value and zeros after it; a discriminator that matches no
  // case leaves it all zero, so that a newer server's families still decode, to nothing.
  bool union_value(const Slot& s, unsigned char* value, int depth) {
    unsigned char* at = value + s.offset;
    const UnionProgram& u = t_.union_at(s.sub);
    uint32_t discriminator;
    std::memcpy(&discriminator, at, 4);
    if (s.selector_offset >= 0) {
      // The union's own discriminator must repeat the field that selects it, or the structure would say
      // two things about which case it holds.
      uint32_t wanted = read_selector(s.selector_kind, value + s.selector_offset);
      if (discriminator != wanted) return wrong_discriminator(discriminator, u.selector, wanted);
    }
    const UnionCase* c = u.find(discriminator);
    unsigned char* area = at + u.value_offset;
    const size_t area_size = u.size - u.value_offset;
    if (c == nullptr || c->has_mask) {
      const unsigned char* mask = c != nullptr ? c->mask.data() : u.empty_mask.data();
      if (masked_bits(area, mask, area_size) != 0)
        return unclean_case(c, area, mask, area_size, discriminator);
    }
    if (c == nullptr || c->program < 0) return true;
    const Program& p = t_.program(c->program);
    if (p.slots.empty()) return true;
    if (depth >= kMaxDepth) return fail(kPodCorrupt, "nested more than ", kMaxDepth, " deep");
    for (const Slot& inner : p.slots) {
      if (fix(inner, area, depth + 1)) continue;
      if (!inner.path.empty()) failure_.path.push_back(inner.path);
      failure_.path.push_back(c->name);
      return false;
    }
    return true;
  }

  // The refusals that the fast checks found, named by a search that only failures pay for.

  [[gnu::cold, gnu::noinline]] bool wrong_discriminator(uint32_t discriminator, const std::string& selector,
                                                        uint32_t wanted) {
    return fail(kPodCorrupt, "discriminator " + std::to_string(discriminator) + " differs from " + selector +
                                 " " + std::to_string(wanted));
  }

  Spot locate(int32_t index, uint64_t offset) const {
    const Program& p = t_.program(index);
    Spot spot;
    for (const Step& s : p.steps) {
      if (offset < s.offset) break;
      spot.step = &s;
      spot.offset = s.offset;
      spot.path = s.name;
      spot.padding = offset >= uint64_t{s.offset} + s.size;
    }
    if (spot.step == nullptr || spot.padding) return spot;
    const Step& s = *spot.step;
    Spot inner;
    if (s.kind == Kind::kStruct) {
      inner = locate(s.sub, offset - s.offset);
      inner.path = join(s.name, inner.path);
    } else if (s.kind == Kind::kFixedArray && s.elem_size != 0) {
      uint64_t e = (offset - s.offset) / s.elem_size;
      inner = locate(s.sub, offset - s.offset - e * s.elem_size);
      inner.path = join(s.name + element_key(e), inner.path);
      inner.offset += e * s.elem_size;
    } else {
      return spot;
    }
    inner.offset += s.offset;
    return inner;
  }

  // A byte of a value that its mask says must be zero: a boolean other than 0 or 1, or padding.
  [[gnu::cold, gnu::noinline]] bool name_unclean(int32_t index, const unsigned char* value, size_t byte) {
    Spot spot = locate(index, byte);
    if (!spot.path.empty()) failure_.path.push_back(spot.path);
    if (spot.step == nullptr || spot.padding)
      return fail(kPodCorrupt, "padding after this field is not zero");
    if (spot.step->kind == Kind::kBool) {
      uint32_t word;
      std::memcpy(&word, value + spot.offset, 4);
      return fail(kPodCorrupt, "boolean value " + std::to_string(word));
    }
    if (spot.step->kind == Kind::kUnion || spot.step->selector >= 0)
      return fail(kPodCorrupt, "padding after the discriminator is not zero");
    return fail(kPodCorrupt, "bits that must be zero are set");
  }

  [[gnu::cold, gnu::noinline]] bool unclean(int32_t index, const unsigned char* dest, uint64_t count,
                                            bool indexed) {
    const Program& p = t_.program(index);
    for (uint64_t e = 0; e < count; ++e) {
      const unsigned char* value = dest + e * p.size;
      size_t byte = first_unclean(value, p.mask.data(), p.size);
      if (byte == p.size) continue;
      name_unclean(index, value, byte);
      if (indexed) failure_.path.push_back(element_key(e));
      return false;
    }
    return fail(kPodCorrupt, "bits that must be zero are set");
  }

  [[gnu::cold, gnu::noinline]] bool unclean_case(const UnionCase* c, const unsigned char* area,
                                                 const unsigned char* mask, size_t size,
                                                 uint32_t discriminator) {
    size_t byte = first_unclean(area, mask, size);
    if (c == nullptr || c->program < 0)
      return fail(kPodCorrupt, "discriminator " + std::to_string(discriminator) +
                                   " has no value, but its area is not zero");
    const Program& p = t_.program(c->program);
    if (byte >= p.size) {
      failure_.path.push_back(c->name);
      return fail(kPodCorrupt, "the union's area after this case is not zero");
    }
    name_unclean(c->program, area, byte);
    failure_.path.push_back(c->name);
    return false;
  }

  [[gnu::cold, gnu::noinline]] bool truncated_image(int32_t index, uint64_t left) {
    Spot spot = locate(index, left);
    if (!spot.path.empty()) failure_.path.push_back(spot.path);
    if (spot.padding) return fail(kPodTruncated, "record ends inside the padding after this field");
    return truncated();
  }

  const CompiledType& t_;
  const unsigned char* data_;
  const uint32_t length_;
  uint32_t cursor_;
  std::vector<void*>& owned_;
  Failure failure_;
};

cerr_t refuse(cerr_t code, const std::string& detail) {
  last_error = detail;
  return code;
}

// The header's refusals; on success, where the record's image begins. A record of the expected type begins
// with the very bytes of its type's header, so one comparison passes it; the fields are read one by one only
// to name what is wrong.
cerr_t read_header(Reader& r, const CompiledType& t) {
  if (r.remaining() >= t.header.size() && std::memcmp(r.take(0), t.header.data(), t.header.size()) == 0) {
    r.take(t.header.size());
    return kCerrOk;
  }
  char magic[sizeof(kMagic)];
  uint16_t version;
  uint16_t name_length;
  if (!r.read(magic, sizeof(magic)) || !r.read(&version)) return refuse(kPodTruncated, "header: truncated");
  if (std::memcmp(magic, kMagic, sizeof(kMagic)) != 0) return refuse(kPodCorrupt, "header: not a pod record");
  if (version != kFormatVersion)
    return refuse(kPodCorrupt, "header: format version " + std::to_string(version) + " is not known");
  if (!r.read(&name_length)) return refuse(kPodTruncated, "header: truncated");
  const unsigned char* name = r.take(name_length);
  uint64_t fingerprint;
  if (name == nullptr || !r.read(&fingerprint)) return refuse(kPodTruncated, "header: truncated");
  std::string_view type(reinterpret_cast<const char*>(name), name_length);
  if (type != t.name)
    return refuse(kPodWrongType, "header: a record of type " + std::string(type) + ", not " + t.name);
  if (fingerprint != t.fingerprint)
    return refuse(kPodSchemaMismatch,
                  "header: the record's schema of " + t.name + " differs from the descriptor's");
  return kCerrOk;
}

bool take_allocation() {
  if (allocations_until_failure == 0) {
    allocations_until_failure = -1;
    return false;
  }
  if (allocations_until_failure > 0) --allocations_until_failure;
  return true;
}

// Every block of decoded values begins after a header that holds its capacity, the bytes asked for when it
// was made: released, a block is kept by that capacity without asking the C library for its size. The
// header keeps the block aligned as the library aligns its own.
constexpr size_t kHeader = 16;

void* with_capacity(void* allocation, size_t capacity) {
  if (allocation == nullptr) return nullptr;
  std::memcpy(allocation, &capacity, sizeof capacity);
  return static_cast<unsigned char*>(allocation) + kHeader;
}

size_t capacity_of(const void* block) {
  size_t capacity;
  std::memcpy(&capacity, static_cast<const unsigned char*>(block) - kHeader, sizeof capacity);
  return capacity;
}

void free_block(void* block) {
  std::free(static_cast<unsigned char*>(block) - kHeader);
}

// Blocks given back by release(), kept for the next decode: the next record of a listing asks for blocks of
// the same sizes. A route's interface array is a few kilobytes, beyond the sizes that the C library's own
// per-thread cache keeps; an encapsulation ID's or an IIR interface's several small arrays and texts
// outnumber what that cache keeps of one size. Either way a million records would otherwise make millions
// of trips through the general allocator and back.
class SpareBlocks {
 public:
  static constexpr size_t kSmallest = 1024;  // of the large blocks

  // A kept block of at least `bytes` (a large one wasting no more than as much again), or none.
  void* take(size_t bytes) {
    if (bytes < kSmallest) {
      // A small block's class is its capacity in 16-byte steps, rounded down. The class that rounds `bytes`
      // down may hold blocks large enough; every block of the class after it is.
      SmallClass& near = small_[bytes / kStep];
      if (near.count != 0 && near.blocks[near.count - 1].size >= bytes)
        return near.blocks[--near.count].block;
      SmallClass& above = small_[bytes / kStep + 1];
      return above.count != 0 ? above.blocks[--above.count].block : nullptr;
    }
    for (int i = count_ - 1; i >= 0; --i) {
      if (blocks_[i].size >= bytes && blocks_[i].size <= 2 * bytes) {
        void* block = blocks_[i].block;
        blocks_[i] = blocks_[--count_];
        return block;
      }
    }
    return nullptr;
  }

  void give_back(void* block) {
    if (block == nullptr) return;
    const size_t size = capacity_of(block);
    if (size < kSmallest) {
      SmallClass& c = small_[size / kStep];
      if (c.count == kKeptSmall) {
        free_block(block);
      } else {
        c.blocks[c.count++] = {block, size};
      }
      return;
    }
    if (count_ == kKept) {
      free_block(block);
      return;
    }
    blocks_[count_++] = {block, size};
  }

  ~SpareBlocks() {
    while (count_ != 0) free_block(blocks_[--count_].block);
    for (SmallClass& c : small_)
      while (c.count != 0) free_block(c.blocks[--c.count].block);
  }

 private:
  static constexpr int kKept = 8;
  static constexpr size_t kStep = 16;
  static constexpr int kKeptSmall = 16;
  struct Kept {
    void* block;
    size_t size;
  };
  struct SmallClass {
    Kept blocks[kKeptSmall];
    int count = 0;
  };
  Kept blocks_[kKept];
  int count_ = 0;
  SmallClass small_[kSmallest / kStep + 1];
};

thread_local SpareBlocks spare_blocks;

}  // namespace

// Built twice where the processor may have wider vectors than the baseline, chosen once at load time. GCC
// would split the loop back into a library copy and a second pass over the copy.
#if defined(__x86_64__) && defined(__clang__)
__attribute__((target_clones("avx2", "default")))
#elif defined(__x86_64__) && defined(__GNUC__)
__attribute__((target_clones("avx2", "default"), optimize("no-tree-loop-distribute-patterns")))
#endif
uint64_t
copy_masked(unsigned char* __restrict to, const unsigned char* __restrict from,
            const unsigned char* __restrict mask, size_t size) {
  uint64_t bad = 0;
  const size_t words = size / 8;
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC unroll 4
#endif
  for (size_t i = 0; i < words; ++i) {
    uint64_t v, m;
    std::memcpy(&v, from + 8 * i, 8);
    std::memcpy(&m, mask + 8 * i, 8);
    std::memcpy(to + 8 * i, &v, 8);
    bad |= v & m;
  }
  for (size_t i = words * 8; i < size; ++i) {
    to[i] = from[i];
    bad |= from[i] & mask[i];
  }
  return bad;
}

void* allocate(size_t count, size_t size) {
  if (!take_allocation()) return nullptr;
  if (size == 0) size = 1;
  if (count > (SIZE_MAX - kHeader) / size) return nullptr;
  return with_capacity(std::calloc(1, kHeader + count * size), count * size);
}

void* allocate_raw(size_t bytes) {
  if (!take_allocation()) return nullptr;
  if (void* block = spare_blocks.take(bytes)) return block;
  if (bytes > SIZE_MAX - kHeader) return nullptr;
  return with_capacity(std::malloc(kHeader + bytes), bytes);
}

void give_back(void* block) {
  spare_blocks.give_back(block);
}

void release(const CompiledType& t, int32_t index, unsigned char* base) {
  const Program& p = t.program(index);
  for (uint32_t i : p.owning) {
    const Slot& s = p.slots[i];
    unsigned char* at = base + s.offset;
    switch (s.kind) {
      case Kind::kText: {
        char* text;
        std::memcpy(&text, at, sizeof(text));
        if (text == nullptr) break;  // most optional texts are absent, and a call to free nothing is not free
        give_back(text);
        std::memset(at, 0, sizeof(void*));
        break;
      }
      case Kind::kArray: {
        uint64_t count;
        unsigned char* elements;
        std::memcpy(&count, at, 8);
        std::memcpy(&elements, at + 8, sizeof(elements));
        const Program& element = t.program(s.sub);
        if (elements != nullptr && !element.owned_texts.empty()) {
          for (uint64_t e = 0; e < count; ++e) {
            for (uint32_t offset : element.owned_texts) {
              unsigned char* slot = elements + e * s.elem_size + offset;
              char* text;
              std::memcpy(&text, slot, sizeof(text));
              if (text == nullptr) continue;
              give_back(text);
              std::memset(slot, 0, sizeof(void*));
            }
          }
        } else if (elements != nullptr && element.has_indirections) {
          for (uint64_t e = 0; e < count; ++e) release(t, s.sub, elements + e * s.elem_size);
        }
        give_back(elements);
        std::memset(at, 0, 16);
        break;
      }
      case Kind::kPointer: {
        unsigned char* target;
        std::memcpy(&target, at, sizeof(target));
        if (target != nullptr) release(t, s.sub, target);
        give_back(target);
        std::memset(at, 0, sizeof(void*));
        break;
      }
      default: {
        uint32_t discriminator;
        std::memcpy(&discriminator, at, 4);
        const UnionProgram& u = t.union_at(s.sub);
        const UnionCase* c = u.find(discriminator);
        if (c != nullptr && c->program >= 0) release(t, c->program, at + u.value_offset);
        break;
      }
    }
  }
}

}  // namespace codec

std::string pod_last_error() {
  return codec::last_error;
}

void pod_fail_allocation(int64_t index) {
  codec::allocations_until_failure = index;
}

std::optional<std::string> pod_record_type(const void* data, size_t length) {
  if (data == nullptr) return std::nullopt;
  codec::Reader r(static_cast<const unsigned char*>(data), length);
  char magic[sizeof(codec::kMagic)];
  uint16_t version;
  uint16_t name_length;
  if (!r.read(magic, sizeof(magic)) || std::memcmp(magic, codec::kMagic, sizeof(magic)) != 0)
    return std::nullopt;
  if (!r.read(&version) || version != codec::kFormatVersion || !r.read(&name_length)) return std::nullopt;
  const unsigned char* name = r.take(name_length);
  if (name == nullptr) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(name), name_length);
}

}  // namespace ostrel::sim

using ostrel::sim::codec::CompiledType;

cerr_t pod_decode(const void* data, uint32_t length, void* structure, const pod_desc* desc) {
  using namespace ostrel::sim;
  std::string err;
  const CompiledType* t = desc == nullptr ? nullptr : codec::compile(desc, &err);
  if (t == nullptr) return codec::refuse(kPodBadDescriptor, desc == nullptr ? "no descriptor" : err);
  if (structure == nullptr) return codec::refuse(kBadArgument, "no structure to decode into");
  auto* base = static_cast<unsigned char*>(structure);
  const size_t size = t->program(t->root).size;
  if (data == nullptr) length = 0;
  const auto* bytes = static_cast<const unsigned char*>(data);
  codec::Reader r(bytes, length);
  if (cerr_t rc = codec::read_header(r, *t); rc != kCerrOk) {
    std::memset(base, 0, size);
    return rc;
  }
  // What this decode allocated, so that a refusal can release it whatever state its slots were left in.
  static thread_local std::vector<void*> owned;
  owned.clear();
  codec::Decoder decoder(*t, bytes, length, static_cast<uint32_t>(length - r.remaining()), owned);
  bool ok = decoder.part(t->root, base, 1, false, 0);
  if (ok && decoder.cursor() == length) return kCerrOk;
  codec::Failure& f = decoder.failure();
  if (ok) {
    f.code = kPodCorrupt;
    f.what = std::to_string(length - decoder.cursor()) + " bytes after the record";
  }
  for (void* p : owned) codec::give_back(p);
  owned.clear();
  std::memset(base, 0, size);
  std::string path = codec::join_path(f.path);
  return codec::refuse(f.code, (path.empty() ? "" : path + ": ") + f.what);
}

cerr_t pod_free_indirections(void* structure, const pod_desc* desc) {
  using namespace ostrel::sim;
  std::string err;
  const CompiledType* t = desc == nullptr ? nullptr : codec::compile(desc, &err);
  if (t == nullptr) return codec::refuse(kPodBadDescriptor, desc == nullptr ? "no descriptor" : err);
  if (structure == nullptr) return kBadArgument;
  codec::release(*t, t->root, static_cast<unsigned char*>(structure));
  // An injected fault still releases everything: the caller reports the failure and moves on.
  if (std::optional<Fault> fault = find_fault("free_indirections", desc->name))
    return fault->code != kCerrOk ? fault->code : kInjectedFailure;
  return kCerrOk;
}
