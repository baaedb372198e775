// The encoder: a decoded structure into a record of the wire format, in its canonical form (byte strings
// and fixed arrays without their trailing zeros), so that decoding and encoding again gives the same bytes.
#include <cstring>

#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_program.h"
#include "sim/codec/pod_wire.h"

namespace ostrel::sim {
namespace codec {
namespace {

bool all_zero(const unsigned char* p, size_t n) {
  for (size_t i = 0; i < n; ++i)
    if (p[i] != 0) return false;
  return true;
}

class Encoder {
 public:
  Encoder(const CompiledType& type, std::string* out) : t_(type), w_(out) {}

  bool run(int32_t index, const unsigned char* base, int depth) {
    if (depth > kMaxDepth) return fail("nested more than " + std::to_string(kMaxDepth) + " deep");
    const Program& p = t_.program(index);
    for (const Step& s : p.steps) {
      bool ok = s.selector < 0 || check_selector(s, p.steps[static_cast<size_t>(s.selector)], base);
      if (!ok || !step(s, base + s.offset, depth)) {
        if (!s.name.empty()) error_.path.push_back(s.name);
        return false;
      }
    }
    return true;
  }

  std::string error() const { return error_.text(); }

 private:
  bool fail(std::string what) { return error_.fail(std::move(what)); }

  bool check_selector(const Step& s, const Step& selector, const unsigned char* base) {
    uint32_t discriminator;
    std::memcpy(&discriminator, base + s.offset, 4);
    uint32_t wanted = read_selector(selector, base + selector.offset);
    if (discriminator == wanted) return true;
    return fail("discriminator " + std::to_string(discriminator) + " differs from " + selector.name + " " +
                std::to_string(wanted));
  }

  template <typename T>
  T load(const unsigned char* at) {
    T v;
    std::memcpy(&v, at, sizeof(T));
    return v;
  }

  bool step(const Step& s, const unsigned char* at, int depth) {
    switch (s.kind) {
      case Kind::kBool:
        w_.put<uint8_t>(load<uint32_t>(at) != 0 ? 1 : 0);
        return true;
      case Kind::kU8:
        w_.bytes(at, 1);
        return true;
      case Kind::kU16:
        w_.bytes(at, 2);
        return true;
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kEnum:
      case Kind::kIpv4:
        w_.bytes(at, 4);
        return true;
      case Kind::kU64:
      case Kind::kI64:
        w_.bytes(at, 8);
        return true;
      case Kind::kText:
        return text(s, load<const char*>(at));
      case Kind::kBytes: {
        uint32_t length = s.count;
        while (length > 0 && at[length - 1] == 0) --length;
        w_.put<uint32_t>(length);
        w_.bytes(at, length);
        return true;
      }
      case Kind::kArray:
        return array(s, load<uint64_t>(at), load<const unsigned char*>(at + 8), depth);
      case Kind::kFixedArray: {
        uint32_t count = s.count;
        while (count > 0 && all_zero(at + size_t{count - 1} * s.elem_size, s.elem_size)) --count;
        w_.put<uint32_t>(count);
        return elements(s, at, count, depth);
      }
      case Kind::kPointer: {
        auto* target = load<const unsigned char*>(at);
        w_.put<uint8_t>(target != nullptr ? 1 : 0);
        return target == nullptr || run(s.sub, target, depth + 1);
      }
      case Kind::kStruct:
        return run(s.sub, at, depth + 1);
      case Kind::kUnion: {
        uint32_t discriminator = load<uint32_t>(at);
        w_.put<uint32_t>(discriminator);
        const UnionProgram& u = t_.union_at(s.sub);
        const UnionCase* c = u.find(discriminator);
        if (c == nullptr || c->program < 0 || run(c->program, at + u.value_offset, depth + 1)) return true;
        error_.path.push_back(c->name);
        return false;
      }
      case Kind::kEmpty:
        return true;
    }
    return fail("unknown step");
  }

  bool text(const Step& s, const char* text) {
    if (text == nullptr) {
      w_.put<uint32_t>(kAbsentText);
      return true;
    }
    size_t length = std::strlen(text);
    if ((s.count != 0 && length > s.count) || length >= kAbsentText)
      return fail("text longer than " + std::to_string(s.count != 0 ? s.count : kAbsentText - 1));
    w_.put<uint32_t>(static_cast<uint32_t>(length));
    w_.bytes(text, length);
    return true;
  }

  bool array(const Step& s, uint64_t count, const unsigned char* elements_at, int depth) {
    if (count > 0xffffffffu) return fail("more than 4294967295 elements");
    if (count != 0 && elements_at == nullptr)
      return fail("a count of " + std::to_string(count) + " without elements");
    w_.put<uint32_t>(static_cast<uint32_t>(count));
    return elements(s, elements_at, static_cast<uint32_t>(count), depth);
  }

  bool elements(const Step& s, const unsigned char* first, uint32_t count, int depth) {
    for (uint32_t i = 0; i < count; ++i) {
      if (!run(s.sub, first + size_t{i} * s.elem_size, depth + 1)) {
        error_.path.push_back(element_key(i));
        return false;
      }
    }
    return true;
  }

  const CompiledType& t_;
  Writer w_;
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
  if (!encoder.run(t->root, static_cast<const unsigned char*>(structure), 0)) {
    *err = encoder.error();
    return false;
  }
  *bytes = std::move(out);
  return true;
}

}  // namespace ostrel::sim
