// The encoder: a decoded structure into a record of the wire format. A value's image is its structure's
// bytes with booleans as 0 or 1, padding and unused union bytes zero, and references in place of addresses;
// the parts that the references point to follow in the order of their slots, so that decoding and encoding
// again gives the same bytes.
#include <cstdint>
#include <cstring>

#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_program.h"
#include "sim/codec/pod_wire.h"

namespace ostrel::sim {
namespace codec {
namespace {

class Encoder {
 public:
  Encoder(const CompiledType& type, std::string* out) : t_(type), out_(*out) {}

  // Appends a part: the images of `count` values of program `index` at `first`, then the parts that their
  // slots refer to, value by value and slot by slot.
  bool part(int32_t index, const unsigned char* first, uint64_t count, bool indexed, int depth) {
    if (depth > kMaxDepth) return fail("nested more than " + std::to_string(kMaxDepth) + " deep");
    const Program& p = t_.program(index);
    const size_t at = out_.size();
    out_.resize(at + count * p.size, '\0');
    for (uint64_t e = 0; e < count; ++e) {
      if (!image(index, first + e * p.size, at + e * p.size, depth)) return failed_at(e, indexed);
    }
    for (uint64_t e = 0; e < count; ++e) {
      for (const Slot& s : p.slots) {
        if (emit(s, first + e * p.size, at + e * p.size, depth)) continue;
        if (!s.path.empty()) error_.path.push_back(s.path);
        return failed_at(e, indexed);
      }
    }
    return true;
  }

  std::string error() const { return error_.text(); }

 private:
  bool fail(std::string what) { return error_.fail(std::move(what)); }
  bool failed_at(uint64_t e, bool indexed) {
    if (indexed) error_.path.push_back(element_key(e));
    return false;
  }

  template <typename T>
  static T load(const unsigned char* at) {
    T v;
    std::memcpy(&v, at, sizeof(T));
    return v;
  }
  template <typename T>
  void store(size_t at, T v) {
    std::memcpy(&out_[at], &v, sizeof(T));
  }

  // Writes the plain fields of the value at `base` into its image at `at`. Slots stay zero for emit().
  bool image(int32_t index, const unsigned char* base, size_t at, int depth) {
    const Program& p = t_.program(index);
    for (const Step& s : p.steps) {
      if (field(s, p, base, at, depth)) continue;
      if (!s.name.empty()) error_.path.push_back(s.name);
      return false;
    }
    return true;
  }

  bool field(const Step& s, const Program& p, const unsigned char* base, size_t at, int depth) {
    const unsigned char* from = base + s.offset;
    const size_t to = at + s.offset;
    if (s.selector >= 0) {
      const Step& selector = p.steps[static_cast<size_t>(s.selector)];
      uint32_t discriminator = load<uint32_t>(from);
      uint32_t wanted = read_selector(selector.kind, base + selector.offset);
      if (discriminator != wanted)
        return fail("discriminator " + std::to_string(discriminator) + " differs from " + selector.name +
                    " " + std::to_string(wanted));
    }
    switch (s.kind) {
      case Kind::kBool:
        store<uint32_t>(to, load<uint32_t>(from) != 0 ? 1 : 0);
        return true;
      case Kind::kU8:
      case Kind::kU16:
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kEnum:
      case Kind::kIpv4:
      case Kind::kU64:
      case Kind::kI64:
      case Kind::kBytes:
        std::memcpy(&out_[to], from, s.size);
        return true;
      case Kind::kText:
      case Kind::kArray:
      case Kind::kPointer:
      case Kind::kEmpty:
        return true;
      case Kind::kStruct:
        return image(s.sub, from, to, depth + 1);
      case Kind::kFixedArray:
        for (uint32_t e = 0; e < s.count; ++e)
          if (!image(s.sub, from + size_t{e} * s.elem_size, to + size_t{e} * s.elem_size, depth + 1))
            return failed_at(e, true);
        return true;
      case Kind::kUnion: {
        uint32_t discriminator = load<uint32_t>(from);
        store<uint32_t>(to, discriminator);
        const UnionProgram& u = t_.union_at(s.sub);
        const UnionCase* c = u.find(discriminator);
        if (c == nullptr || c->program < 0 ||
            image(c->program, from + u.value_offset, to + u.value_offset, depth + 1))
          return true;
        error_.path.push_back(c->name);
        return false;
      }
    }
    return fail("unknown step");
  }

  // Fills in a slot's reference and appends the part it refers to.
  bool emit(const Slot& s, const unsigned char* base, size_t at, int depth) {
    const unsigned char* from = base + s.offset;
    const size_t to = at + s.offset;
    switch (s.kind) {
      case Kind::kText:
        return text(s, load<const char*>(from), to);
      case Kind::kArray: {
        uint64_t count = load<uint64_t>(from);
        const auto* elements = load<const unsigned char*>(from + 8);
        store<uint64_t>(to, count);
        if (count == 0) {
          store<uint64_t>(to + 8, kAbsent);
          return true;
        }
        if (elements == nullptr) return fail("a count of " + std::to_string(count) + " without elements");
        store<uint64_t>(to + 8, out_.size());
        return part(s.sub, elements, count, true, depth + 1);
      }
      case Kind::kPointer: {
        const auto* target = load<const unsigned char*>(from);
        store<uint64_t>(to, target == nullptr ? kAbsent : out_.size());
        return target == nullptr || part(s.sub, target, 1, false, depth + 1);
      }
      default: {
        const UnionProgram& u = t_.union_at(s.sub);
        const UnionCase* c = u.find(load<uint32_t>(from));
        if (c == nullptr || c->program < 0) return true;
        for (const Slot& inner : t_.program(c->program).slots) {
          if (emit(inner, from + u.value_offset, to + u.value_offset, depth + 1)) continue;
          if (!inner.path.empty()) error_.path.push_back(inner.path);
          error_.path.push_back(c->name);
          return false;
        }
        return true;
      }
    }
  }

  bool text(const Slot& s, const char* text, size_t to) {
    if (text == nullptr) {
      store<uint64_t>(to, kAbsent);
      return true;
    }
    size_t length = std::strlen(text);
    if ((s.count != 0 && length > s.count) || length > UINT32_MAX)
      return fail("text longer than " + std::to_string(s.count != 0 ? s.count : UINT32_MAX));
    if (out_.size() > UINT32_MAX) return fail("record longer than 4 GiB");
    store<uint64_t>(to, uint64_t{length} << 32 | out_.size());
    out_.append(text, length);
    return true;
  }

  const CompiledType& t_;
  std::string& out_;
  FieldError error_;
};

}  // namespace
}  // namespace codec

bool pod_encode_struct(const pod_desc& desc, const void* structure, std::string* bytes, std::string* err) {
  const codec::CompiledType* t = codec::compile(&desc, err);
  if (t == nullptr) return false;
  std::string out;
  codec::Writer w(&out);
  codec::write_header(w, t->name, t->fingerprint);
  codec::Encoder encoder(*t, &out);
  if (!encoder.part(t->root, static_cast<const unsigned char*>(structure), 1, false, 0)) {
    *err = encoder.error();
    return false;
  }
  if (out.size() > UINT32_MAX) {
    *err = "record longer than 4 GiB";
    return false;
  }
  *bytes = std::move(out);
  return true;
}

}  // namespace ostrel::sim
