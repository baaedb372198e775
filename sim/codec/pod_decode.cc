// pod_decode() and pod_free_indirections(): a record of the wire format into its decoded structure and back
// to nothing. A cursor moves field by field through the compiled program; the first bad field ends the
// decode, is named in pod_last_error(), and everything allocated so far is released.
#include <algorithm>
#include <cstdlib>
#include <cstring>

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

class Decoder {
 public:
  Decoder(const CompiledType& type, Reader& reader) : t_(type), r_(reader) {}

  bool run(int32_t index, unsigned char* base, int depth) {
    if (depth > kMaxDepth)
      return fail(kPodCorrupt, "nested more than " + std::to_string(kMaxDepth) + " deep");
    const Program& p = t_.program(index);
    for (const DecodeOp& op : p.decode_plan) {
      bool ok = true;
      switch (op.code) {
        case DecodeOp::kBools:
          ok = bools(p, op, base);
          break;
        case DecodeOp::kCopy:
          ok = copy(p, op, base);
          break;
        case DecodeOp::kStep: {
          const Step& s = p.steps[op.first];
          ok = step(s, base + s.offset, depth);
          if (ok && s.selector >= 0) ok = check_selector(s, p.steps[static_cast<size_t>(s.selector)], base);
          if (!ok) return failed_in(s);
          break;
        }
      }
      if (!ok) return false;
    }
    return true;
  }

  Failure& failure() { return failure_; }

 private:
  bool fail(cerr_t code, std::string what) {
    failure_.code = code;
    failure_.what = std::move(what);
    return false;
  }
  bool truncated() { return fail(kPodTruncated, "record ends inside this field"); }

  bool failed_in(const Step& s) {
    if (!s.name.empty()) failure_.path.push_back(s.name);
    return false;
  }

  // A run of booleans: the first byte other than 0 or 1, or the first that is missing, names its field.
  bool bools(const Program& p, const DecodeOp& op, unsigned char* base) {
    size_t available = std::min<size_t>(op.count, r_.remaining());
    const unsigned char* bytes = r_.take(available);
    unsigned char* at = base + op.offset;
    for (size_t i = 0; i < available; ++i) {
      if (bytes[i] > 1) {
        fail(kPodCorrupt, "boolean byte " + std::to_string(bytes[i]));
        return failed_in(p.steps[op.first + i]);
      }
      uint32_t v = bytes[i];
      std::memcpy(at + 4 * i, &v, 4);
    }
    if (available == op.count) return true;
    truncated();
    return failed_in(p.steps[op.first + available]);
  }

  // A run of plain numbers: where the record ends inside it, the field it ends in is named.
  bool copy(const Program& p, const DecodeOp& op, unsigned char* base) {
    if (r_.read(base + op.offset, op.count)) return true;
    size_t left = r_.remaining();
    uint32_t i = op.first;
    for (uint32_t width; (width = number_width(p.steps[i].kind)) <= left; ++i) left -= width;
    truncated();
    return failed_in(p.steps[i]);
  }

  // The union's own discriminator must repeat the earlier field that selects it, or the structure would
  // say two things about which case it holds.
  bool check_selector(const Step& s, const Step& selector, const unsigned char* base) {
    uint32_t discriminator;
    std::memcpy(&discriminator, base + s.offset, 4);
    uint32_t wanted = read_selector(selector, base + selector.offset);
    if (discriminator == wanted) return true;
    return fail(kPodCorrupt, "discriminator " + std::to_string(discriminator) + " differs from " +
                                 selector.name + " " + std::to_string(wanted));
  }

  bool step(const Step& s, unsigned char* at, int depth) {
    switch (s.kind) {
      case Kind::kBool: {
        uint8_t b;
        if (!r_.read(&b)) return truncated();
        if (b > 1) return fail(kPodCorrupt, "boolean byte " + std::to_string(b));
        uint32_t v = b;
        std::memcpy(at, &v, 4);
        return true;
      }
      case Kind::kU8:
        return r_.read(at, 1) || truncated();
      case Kind::kU16:
        return r_.read(at, 2) || truncated();
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kEnum:
      case Kind::kIpv4:
        return r_.read(at, 4) || truncated();
      case Kind::kU64:
      case Kind::kI64:
        return r_.read(at, 8) || truncated();
      case Kind::kText:
        return text(s, at);
      case Kind::kBytes:
        return bytes(s, at);
      case Kind::kArray:
        return array(s, at, depth);
      case Kind::kFixedArray:
        return fixed_array(s, at, depth);
      case Kind::kPointer:
        return pointer(s, at, depth);
      case Kind::kStruct:
        return run(s.sub, at, depth + 1);
      case Kind::kUnion:
        return union_value(s, at, depth);
      case Kind::kEmpty:
        return true;
    }
    return fail(kPodBadDescriptor, "unknown step");
  }

  bool text(const Step& s, unsigned char* at) {
    uint32_t length;
    if (!r_.read(&length)) return truncated();
    if (length == kAbsentText) return true;
    if (s.count != 0 && length > s.count)
      return fail(kPodTextTooLong, "text longer than " + std::to_string(s.count));
    const unsigned char* chars = r_.take(length);
    if (chars == nullptr) return truncated();
    if (std::memchr(chars, 0, length) != nullptr) return fail(kPodCorrupt, "text holds a NUL byte");
    auto* copy = static_cast<char*>(allocate(length + size_t{1}, 1));
    if (copy == nullptr) return fail(kPodNoMemory, "no memory for a text of " + std::to_string(length));
    std::memcpy(copy, chars, length);
    std::memcpy(at, &copy, sizeof(copy));
    return true;
  }

  bool bytes(const Step& s, unsigned char* at) {
    uint32_t length;
    if (!r_.read(&length)) return truncated();
    if (length > s.count)
      return fail(kPodCorrupt, std::to_string(length) + " bytes for a field of " + std::to_string(s.count));
    return r_.read(at, length) || truncated();
  }

  bool array(const Step& s, unsigned char* at, int depth) {
    uint32_t count;
    if (!r_.read(&count)) return truncated();
    if (count == 0) return true;
    // The count is checked against what the rest of the record could hold before anything is allocated.
    uint64_t least = t_.program(s.sub).min_wire;
    if (least == 0) least = 1;
    if (count > r_.remaining() / least)
      return fail(kPodArrayCount, "count " + std::to_string(count) + " exceeds what the record holds");
    auto* elements = static_cast<unsigned char*>(allocate(count, s.elem_size));
    if (elements == nullptr)
      return fail(kPodNoMemory, "no memory for " + std::to_string(count) + " elements");
    uint64_t n = count;
    std::memcpy(at, &n, 8);
    std::memcpy(at + 8, &elements, sizeof(elements));
    for (uint32_t i = 0; i < count; ++i) {
      if (!run(s.sub, elements + size_t{i} * s.elem_size, depth + 1)) {
        failure_.path.push_back(element_key(i));
        return false;
      }
    }
    return true;
  }

  bool fixed_array(const Step& s, unsigned char* at, int depth) {
    uint32_t count;
    if (!r_.read(&count)) return truncated();
    if (count > s.count)
      return fail(kPodCorrupt,
                  std::to_string(count) + " elements for an array of " + std::to_string(s.count));
    for (uint32_t i = 0; i < count; ++i) {
      if (!run(s.sub, at + size_t{i} * s.elem_size, depth + 1)) {
        failure_.path.push_back(element_key(i));
        return false;
      }
    }
    return true;
  }

  bool pointer(const Step& s, unsigned char* at, int depth) {
    uint8_t present;
    if (!r_.read(&present)) return truncated();
    if (present > 1) return fail(kPodCorrupt, "presence byte " + std::to_string(present));
    if (present == 0) return true;
    auto* target = static_cast<unsigned char*>(allocate(1, s.elem_size));
    if (target == nullptr) return fail(kPodNoMemory, "no memory for the target");
    std::memcpy(at, &target, sizeof(target));
    return run(s.sub, target, depth + 1);
  }

  // A discriminator that matches no case leaves the case area zeroed: a newer server may know families
  // that this program does not.
  bool union_value(const Step& s, unsigned char* at, int depth) {
    uint32_t discriminator;
    if (!r_.read(&discriminator)) return truncated();
    std::memcpy(at, &discriminator, 4);
    const UnionProgram& u = t_.union_at(s.sub);
    const UnionCase* c = u.find(discriminator);
    if (c == nullptr || c->program < 0) return true;
    if (run(c->program, at + u.value_offset, depth + 1)) return true;
    failure_.path.push_back(c->name);
    return false;
  }

  const CompiledType& t_;
  Reader& r_;
  Failure failure_;
};

cerr_t refuse(cerr_t code, const std::string& detail) {
  last_error = detail;
  return code;
}

// The header's refusals; the record's fields start where it leaves the reader.
cerr_t read_header(Reader& r, const CompiledType& t) {
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

}  // namespace

void* allocate(size_t count, size_t size) {
  if (allocations_until_failure == 0) {
    allocations_until_failure = -1;
    return nullptr;
  }
  if (allocations_until_failure > 0) --allocations_until_failure;
  return std::calloc(count, size == 0 ? 1 : size);
}

void release(const CompiledType& t, int32_t index, unsigned char* base) {
  const Program& p = t.program(index);
  for (uint32_t step : p.indirect_steps) {
    const Step& s = p.steps[step];
    unsigned char* at = base + s.offset;
    switch (s.kind) {
      case Kind::kText: {
        char* text;
        std::memcpy(&text, at, sizeof(text));
        std::free(text);
        std::memset(at, 0, sizeof(void*));
        break;
      }
      case Kind::kArray: {
        uint64_t count;
        unsigned char* elements;
        std::memcpy(&count, at, 8);
        std::memcpy(&elements, at + 8, sizeof(elements));
        if (elements != nullptr)
          for (uint64_t i = 0; i < count; ++i) release(t, s.sub, elements + i * s.elem_size);
        std::free(elements);
        std::memset(at, 0, 16);
        break;
      }
      case Kind::kFixedArray:
        for (uint32_t i = 0; i < s.count; ++i) release(t, s.sub, at + size_t{i} * s.elem_size);
        break;
      case Kind::kPointer: {
        unsigned char* target;
        std::memcpy(&target, at, sizeof(target));
        if (target != nullptr) release(t, s.sub, target);
        std::free(target);
        std::memset(at, 0, sizeof(void*));
        break;
      }
      case Kind::kStruct:
        release(t, s.sub, at);
        break;
      case Kind::kUnion: {
        uint32_t discriminator;
        std::memcpy(&discriminator, at, 4);
        const UnionProgram& u = t.union_at(s.sub);
        const UnionCase* c = u.find(discriminator);
        if (c != nullptr && c->program >= 0) release(t, c->program, at + u.value_offset);
        break;
      }
      default:
        break;
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
  std::memset(base, 0, size);
  codec::Reader r(static_cast<const unsigned char*>(data), data == nullptr ? 0 : length);
  if (cerr_t rc = codec::read_header(r, *t); rc != kCerrOk) return rc;
  codec::Decoder decoder(*t, r);
  bool ok = decoder.run(t->root, base, 0);
  codec::Failure& f = decoder.failure();
  if (ok && r.remaining() == 0) return kCerrOk;
  if (ok) {
    f.code = kPodCorrupt;
    f.what = std::to_string(r.remaining()) + " bytes after the record";
  }
  codec::release(*t, t->root, base);
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
