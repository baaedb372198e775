// JSON to decoded structures and back. Both directions walk the same compiled programs as the decoder, so a
// record goes JSON -> structure -> bytes with one encoder and bytes -> structure -> JSON with one decoder.
#include "sim/codec/pod_json.h"

#include <arpa/inet.h>

#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <optional>

#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_program.h"
#include "sim/codec/pod_wire.h"

namespace ostrel::sim {
namespace codec {
namespace {

using nlohmann::json;

// An integer as JSON gives it, or as text in C notation ("0x1a0", "017", "-5").
struct Integer {
  bool negative = false;
  uint64_t magnitude = 0;
};

std::optional<Integer> integer_of(const json& v) {
  if (v.is_number_unsigned()) return Integer{false, v.get<uint64_t>()};
  if (v.is_number_integer()) {
    int64_t n = v.get<int64_t>();
    return Integer{n < 0, n < 0 ? 0 - static_cast<uint64_t>(n) : static_cast<uint64_t>(n)};
  }
  if (!v.is_string()) return std::nullopt;
  const std::string& text = v.get_ref<const std::string&>();
  bool negative = !text.empty() && text[0] == '-';
  const char* digits = text.c_str() + (negative ? 1 : 0);
  if (*digits < '0' || *digits > '9') return std::nullopt;
  char* end = nullptr;
  errno = 0;
  uint64_t n = std::strtoull(digits, &end, 0);
  if (errno != 0 || *end != '\0') return std::nullopt;
  return Integer{negative && n != 0, n};
}

struct Range {
  int64_t min;
  uint64_t max;
  const char* what;
};

Range range_of(Kind kind) {
  switch (kind) {
    case Kind::kU8:
      return {0, 0xff, "an unsigned 8-bit"};
    case Kind::kU16:
      return {0, 0xffff, "an unsigned 16-bit"};
    case Kind::kU32:
      return {0, 0xffffffffu, "an unsigned 32-bit"};
    case Kind::kI32:
      return {INT32_MIN, INT32_MAX, "a signed 32-bit"};
    case Kind::kU64:
      return {0, UINT64_MAX, "an unsigned 64-bit"};
    case Kind::kI64:
      return {INT64_MIN, INT64_MAX, "a signed 64-bit"};
    default:
      return {INT32_MIN, 0xffffffffu, "an enumeration"};
  }
}

std::string latin1_to_utf8(const unsigned char* p, size_t n) {
  std::string out;
  for (size_t i = 0; i < n; ++i) {
    if (p[i] < 0x80) {
      out += static_cast<char>(p[i]);
    } else {
      out += static_cast<char>(0xc0 | (p[i] >> 6));
      out += static_cast<char>(0x80 | (p[i] & 0x3f));
    }
  }
  return out;
}

std::string ipv4_text(const unsigned char* at) {
  char text[INET_ADDRSTRLEN];
  inet_ntop(AF_INET, at, text, sizeof(text));
  return text;
}

// Raw bytes shown as text travel as characters U+0000 to U+00FF, one per byte, so that any bytes survive.
bool utf8_to_latin1(const std::string& text, std::string* out) {
  out->clear();
  for (size_t i = 0; i < text.size(); ++i) {
    auto c = static_cast<unsigned char>(text[i]);
    if (c < 0x80) {
      out->push_back(static_cast<char>(c));
      continue;
    }
    if ((c != 0xc2 && c != 0xc3) || i + 1 == text.size()) return false;
    auto next = static_cast<unsigned char>(text[++i]);
    if ((next & 0xc0) != 0x80) return false;
    out->push_back(static_cast<char>(((c & 0x03) << 6) | (next & 0x3f)));
  }
  return true;
}

int hex_digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// The record type that a record's header names, as a view into the record; none when the header cannot be
// read. pod_record_type() gives the same as a copy.
std::optional<std::string_view> record_type_name(const void* data, size_t length) {
  if (data == nullptr) return std::nullopt;
  Reader r(static_cast<const unsigned char*>(data), length);
  char magic[sizeof(kMagic)];
  uint16_t version = 0;
  uint16_t name_length = 0;
  if (!r.read(magic, sizeof(magic)) || std::memcmp(magic, kMagic, sizeof(magic)) != 0 || !r.read(&version) ||
      version != kFormatVersion || !r.read(&name_length))
    return std::nullopt;
  const unsigned char* name = r.take(name_length);
  if (name == nullptr) return std::nullopt;
  return std::string_view(reinterpret_cast<const char*>(name), name_length);
}

// The case that a union's own discriminator 0 holds an IPv4 address: written as bare dotted-quad text.
bool is_ipv4_case(const CompiledType& t, const UnionCase* c) {
  if (c == nullptr || c->value != 0 || c->program < 0) return false;
  const Program& p = t.program(c->program);
  return p.single_value() && p.steps[0].kind == Kind::kIpv4;
}

class FromJson {
 public:
  explicit FromJson(const CompiledType& type) : t_(type) {}

  bool run(int32_t index, const json& v, unsigned char* base, int depth) {
    if (depth > kMaxDepth) return fail("nested more than " + std::to_string(kMaxDepth) + " deep");
    const Program& p = t_.program(index);
    if (p.single_value()) return step(p.steps[0], v, base + p.steps[0].offset, depth, base, p);
    if (!v.is_object()) return fail("expected an object");
    for (const auto& item : v.items()) {
      bool known = false;
      for (size_t i = 0; i < p.steps.size() && !known; ++i) known = field_key(p.steps[i], i) == item.key();
      if (!known) {
        error_.path.push_back(item.key());
        return fail("unknown field");
      }
    }
    static const json kOmitted;
    for (size_t i = 0; i < p.steps.size(); ++i) {
      const Step& s = p.steps[i];
      auto found = v.find(field_key(s, i));
      const json& field = found == v.end() ? kOmitted : *found;
      // An omitted field stays zero, except that a union chosen by an earlier field still takes its
      // discriminator from it.
      if (found == v.end() && s.selector < 0) continue;
      if (!step(s, field, base + s.offset, depth, base, p)) {
        error_.path.push_back(field_key(s, i));
        return false;
      }
    }
    return true;
  }

  std::string error() const { return error_.text(); }

 private:
  bool fail(std::string what) { return error_.fail(std::move(what)); }

  bool step(const Step& s, const json& v, unsigned char* at, int depth, const unsigned char* base,
            const Program& p) {
    if (s.selector >= 0) {
      const Step& selector = p.steps[static_cast<size_t>(s.selector)];
      return union_value(*t_.union_of(s), v, at, depth, read_selector(selector.kind, base + selector.offset));
    }
    switch (s.kind) {
      case Kind::kBool: {
        std::optional<Integer> n = v.is_boolean() ? std::nullopt : integer_of(v);
        if (!v.is_boolean() && (!n || n->negative || n->magnitude > 1 || v.is_string()))
          return fail("expected a boolean");
        uint32_t b = v.is_boolean() ? v.get<bool>() : static_cast<uint32_t>(n->magnitude);
        std::memcpy(at, &b, 4);
        return true;
      }
      case Kind::kU8:
      case Kind::kU16:
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kU64:
      case Kind::kI64:
      case Kind::kEnum:
        return integer(s, v, at);
      case Kind::kIpv4:
        return ipv4(v, at);
      case Kind::kText:
        return text(s, v, at);
      case Kind::kBytes:
        return bytes(s, v, at);
      case Kind::kArray:
        return array(s, v, at, depth);
      case Kind::kFixedArray: {
        if (!v.is_array()) return fail("expected an array");
        if (v.size() > s.count) return fail("more than " + std::to_string(s.count) + " elements");
        return elements(s, v, at, depth);
      }
      case Kind::kPointer: {
        if (v.is_null()) return true;
        auto* target = static_cast<unsigned char*>(allocate(1, s.elem_size));
        if (target == nullptr) return fail("no memory");
        std::memcpy(at, &target, sizeof(target));
        return run(s.sub, v, target, depth + 1);
      }
      case Kind::kStruct:
        return run(s.sub, v, at, depth + 1);
      case Kind::kUnion:
        return union_value(t_.union_at(s.sub), v, at, depth, std::nullopt);
      case Kind::kEmpty:
        return true;
    }
    return fail("unknown step");
  }

  bool integer(const Step& s, const json& v, unsigned char* at) {
    std::optional<Integer> n = integer_of(v);
    if (!n) return fail("expected an integer");
    Range r = range_of(s.kind);
    bool fits =
        n->negative ? r.min < 0 && n->magnitude <= 0 - static_cast<uint64_t>(r.min) : n->magnitude <= r.max;
    if (!fits)
      return fail((v.is_string() ? v.get<std::string>() : v.dump()) + " is out of range for " + r.what +
                  " field");
    uint64_t bits = n->negative ? 0 - n->magnitude : n->magnitude;
    size_t width = s.kind == Kind::kU8                            ? 1
                   : s.kind == Kind::kU16                         ? 2
                   : s.kind == Kind::kU64 || s.kind == Kind::kI64 ? 8
                                                                  : 4;
    std::memcpy(at, &bits, width);
    return true;
  }

  bool ipv4(const json& v, unsigned char* at) {
    if (!v.is_string() || inet_pton(AF_INET, v.get_ref<const std::string&>().c_str(), at) != 1)
      return fail("expected an IPv4 address in dotted-quad text");
    return true;
  }

  bool text(const Step& s, const json& v, unsigned char* at) {
    if (v.is_null()) return true;
    if (!v.is_string()) return fail("expected a text or null");
    const std::string& t = v.get_ref<const std::string&>();
    if (s.count != 0 && t.size() > s.count) return fail("text longer than " + std::to_string(s.count));
    if (t.find('\0') != std::string::npos) return fail("text holds a NUL character");
    auto* copy = static_cast<char*>(allocate(t.size() + 1, 1));
    if (copy == nullptr) return fail("no memory");
    std::memcpy(copy, t.data(), t.size());
    std::memcpy(at, &copy, sizeof(copy));
    return true;
  }

  bool bytes(const Step& s, const json& v, unsigned char* at) {
    std::string raw;
    if (s.hint == 's') {
      if (!v.is_string() || !utf8_to_latin1(v.get_ref<const std::string&>(), &raw) || raw.size() > s.count)
        return fail("expected a text of at most " + std::to_string(s.count) + " characters up to U+00FF");
    } else {
      const std::string* hex = v.is_string() ? &v.get_ref<const std::string&>() : nullptr;
      bool ok = hex != nullptr && hex->size() % 2 == 0 && hex->size() <= 2 * size_t{s.count};
      for (size_t i = 0; ok && i < hex->size(); i += 2) {
        int high = hex_digit((*hex)[i]);
        int low = hex_digit((*hex)[i + 1]);
        ok = high >= 0 && low >= 0;
        raw.push_back(static_cast<char>(high * 16 + low));
      }
      if (!ok) return fail("expected hexadecimal text of at most " + std::to_string(s.count) + " bytes");
    }
    std::memcpy(at, raw.data(), raw.size());
    return true;
  }

  bool array(const Step& s, const json& v, unsigned char* at, int depth) {
    if (!v.is_array()) return fail("expected an array");
    if (v.empty()) return true;
    auto* first = static_cast<unsigned char*>(allocate(v.size(), s.elem_size));
    if (first == nullptr) return fail("no memory");
    uint64_t count = v.size();
    std::memcpy(at, &count, 8);
    std::memcpy(at + 8, &first, sizeof(first));
    return elements(s, v, first, depth);
  }

  bool elements(const Step& s, const json& v, unsigned char* first, int depth) {
    for (size_t i = 0; i < v.size(); ++i) {
      if (!run(s.sub, v[i], first + i * s.elem_size, depth + 1)) {
        error_.path.push_back(element_key(i));
        return false;
      }
    }
    return true;
  }

  // A union chosen by an earlier field (`outer`) is an object of at most its case; a union that carries its
  // discriminator names it as a member beside the case, and family 0 of an address may be bare text.
  bool union_value(const UnionProgram& u, const json& v, unsigned char* at, int depth,
                   std::optional<uint32_t> outer) {
    std::string selector = u.selector.empty() ? "discriminator" : u.selector;
    uint32_t discriminator = outer.value_or(0);
    const UnionCase* chosen = nullptr;
    const json* value = nullptr;
    if (!outer && v.is_string() && is_ipv4_case(t_, u.find(0))) {
      chosen = u.find(0);
      value = &v;
    } else if (!v.is_null() || !outer) {
      if (!v.is_object()) return fail("expected an object");
      std::optional<uint32_t> given;
      for (const auto& item : v.items()) {
        if (!outer && item.key() == selector) {
          std::optional<Integer> n = integer_of(item.value());
          Range r = range_of(Kind::kEnum);
          if (!n || (n->negative ? n->magnitude > 0 - static_cast<uint64_t>(r.min) : n->magnitude > r.max)) {
            error_.path.push_back(selector);
            return fail("expected a 32-bit integer");
          }
          given = static_cast<uint32_t>(n->negative ? 0 - n->magnitude : n->magnitude);
          continue;
        }
        const UnionCase* c = nullptr;
        for (const UnionCase& candidate : u.cases)
          if (candidate.name == item.key()) c = &candidate;
        if (c == nullptr || chosen != nullptr) {
          error_.path.push_back(item.key());
          return fail(c == nullptr ? "unknown field" : "a second case");
        }
        chosen = c;
        value = &item.value();
      }
      if (outer) given = outer;
      if (chosen != nullptr && given && static_cast<uint32_t>(chosen->value) != *given) {
        error_.path.push_back(chosen->name);
        return fail("this case is " + std::to_string(chosen->value) + " but " + selector + " is " +
                    std::to_string(*given));
      }
      discriminator = given ? *given : chosen != nullptr ? static_cast<uint32_t>(chosen->value) : 0;
    }
    std::memcpy(at, &discriminator, 4);
    if (chosen == nullptr || chosen->program < 0) return true;
    if (run(chosen->program, *value, at + u.value_offset, depth + 1)) return true;
    error_.path.push_back(chosen->name);
    return false;
  }

  const CompiledType& t_;
  FieldError error_;
};

// The value form of a decoded structure, every field present. Texts are kept as the bytes they are, which a
// value can hold whether or not they are UTF-8.
class ToJson {
 public:
  explicit ToJson(const CompiledType& type) : t_(type) {}

  json run(int32_t index, const unsigned char* base) {
    const Program& p = t_.program(index);
    if (p.single_value()) return value(p.steps[0], base + p.steps[0].offset);
    json out = json::object();
    for (size_t i = 0; i < p.steps.size(); ++i)
      out[field_key(p.steps[i], i)] = value(p.steps[i], base + p.steps[i].offset);
    return out;
  }

 private:
  template <typename T>
  static T load(const unsigned char* at) {
    T v;
    std::memcpy(&v, at, sizeof(T));
    return v;
  }

  json value(const Step& s, const unsigned char* at) {
    if (s.selector >= 0) return union_value(*t_.union_of(s), at, true);
    switch (s.kind) {
      case Kind::kBool:
        return load<uint32_t>(at) != 0;
      case Kind::kU8:
        return at[0];
      case Kind::kU16:
        return load<uint16_t>(at);
      case Kind::kU32:
      case Kind::kEnum:
        return load<uint32_t>(at);
      case Kind::kI32:
        return load<int32_t>(at);
      case Kind::kU64:
        return load<uint64_t>(at);
      case Kind::kI64:
        return load<int64_t>(at);
      case Kind::kIpv4:
        return ipv4_text(at);
      case Kind::kText: {
        const char* text = load<const char*>(at);
        return text == nullptr ? json(nullptr) : json(text);
      }
      case Kind::kBytes:
        return bytes(s, at);
      case Kind::kArray:
        return elements(s, load<const unsigned char*>(at + 8), load<uint64_t>(at));
      case Kind::kFixedArray:
        return elements(s, at, s.count);
      case Kind::kPointer: {
        const auto* target = load<const unsigned char*>(at);
        return target == nullptr ? json(nullptr) : run(s.sub, target);
      }
      case Kind::kStruct:
        return run(s.sub, at);
      case Kind::kUnion:
        return union_value(t_.union_at(s.sub), at, false);
      case Kind::kEmpty:
        break;
    }
    return nullptr;
  }

  static json bytes(const Step& s, const unsigned char* at) {
    if (s.hint == 's') {
      size_t length = s.count;
      while (length > 0 && at[length - 1] == 0) --length;
      return latin1_to_utf8(at, length);
    }
    static const char kDigits[] = "0123456789abcdef";
    std::string hex;
    for (uint32_t i = 0; i < s.count; ++i) {
      hex += kDigits[at[i] >> 4];
      hex += kDigits[at[i] & 0xf];
    }
    return hex;
  }

  json elements(const Step& s, const unsigned char* first, uint64_t count) {
    json out = json::array();
    for (uint64_t i = 0; i < count; ++i) out.push_back(run(s.sub, first + i * s.elem_size));
    return out;
  }

  json union_value(const UnionProgram& u, const unsigned char* at, bool outer) {
    uint32_t discriminator = load<uint32_t>(at);
    const UnionCase* c = u.find(discriminator);
    if (!outer && discriminator == 0 && is_ipv4_case(t_, c)) return ipv4_text(at + u.value_offset);
    json out = json::object();
    if (!outer) out[u.selector.empty() ? "discriminator" : u.selector] = discriminator;
    if (c != nullptr && c->program >= 0) out[c->name] = run(c->program, at + u.value_offset);
    return out;
  }

  const CompiledType& t_;
};

bool all_zero(const unsigned char* at, size_t size) {
  if (size <= 8) {
    unsigned char bits = 0;
    for (size_t i = 0; i < size; ++i) bits |= at[i];
    return bits == 0;
  }
  // Every byte equals the one after it and the first is zero: one pass of the C library's compare.
  return at[0] == 0 && std::memcmp(at, at + 1, size - 1) == 0;
}

// The length of the UTF-8 sequence that starts `text`, or 0 when it is not one (overlong forms, surrogates
// and code points above U+10FFFF included), as a JSON reader checks it.
size_t utf8_sequence(const unsigned char* text, size_t available) {
  unsigned char c = text[0];
  if (c < 0x80) return 1;
  size_t length = c >= 0xc2 && c < 0xe0 ? 2 : c >= 0xe0 && c < 0xf0 ? 3 : c >= 0xf0 && c < 0xf5 ? 4 : 0;
  if (length == 0 || length > available) return 0;
  for (size_t i = 1; i < length; ++i)
    if ((text[i] & 0xc0) != 0x80) return 0;
  if ((c == 0xe0 && text[1] < 0xa0) || (c == 0xed && text[1] >= 0xa0) || (c == 0xf0 && text[1] < 0x90) ||
      (c == 0xf4 && text[1] >= 0x90))
    return 0;
  return length;
}

void append_escaped(unsigned char c, std::string* out) {
  static const char kDigits[] = "0123456789abcdef";
  switch (c) {
    case '"':
      *out += "\\\"";
      return;
    case '\\':
      *out += "\\\\";
      return;
    case '\n':
      *out += "\\n";
      return;
    case '\r':
      *out += "\\r";
      return;
    case '\t':
      *out += "\\t";
      return;
    default:
      break;
  }
  if (c >= 0x20) {
    out->push_back(static_cast<char>(c));
    return;
  }
  const char escape[] = {'\\', 'u', '0', '0', kDigits[c >> 4], kDigits[c & 15]};
  out->append(escape, sizeof escape);
}

bool needs_escape(unsigned char c) {
  return c < 0x20 || c == '"' || c == '\\';
}

// A UTF-8 text as a JSON string; false when it is not UTF-8.
bool append_string(std::string_view text, std::string* out) {
  const auto* p = reinterpret_cast<const unsigned char*>(text.data());
  size_t n = text.size();
  out->push_back('"');
  size_t plain = 0;  // the start of the run of bytes copied as they are
  for (size_t i = 0; i < n;) {
    if (p[i] >= 0x80) {
      size_t length = utf8_sequence(p + i, n - i);
      if (length == 0) return false;
      i += length;
    } else if (needs_escape(p[i])) {
      out->append(text.data() + plain, i - plain);
      append_escaped(p[i], out);
      plain = ++i;
    } else {
      ++i;
    }
  }
  out->append(text.data() + plain, n - plain);
  out->push_back('"');
  return true;
}

// Bytes shown as text, one character U+0000 to U+00FF per byte.
void append_latin1(const unsigned char* p, size_t n, std::string* out) {
  out->push_back('"');
  for (size_t i = 0; i < n; ++i) {
    if (p[i] < 0x80) {
      append_escaped(p[i], out);
    } else {
      out->push_back(static_cast<char>(0xc0 | (p[i] >> 6)));
      out->push_back(static_cast<char>(0x80 | (p[i] & 0x3f)));
    }
  }
  out->push_back('"');
}

template <typename T>
void append_number(T value, std::string* out) {
  char digits[24];
  auto [end, ec] = std::to_chars(digits, digits + sizeof digits, value);
  out->append(digits, static_cast<size_t>(end - digits));
}

void append_ipv4(const unsigned char* at, std::string* out) {
  out->push_back('"');
  for (int i = 0; i < 4; ++i) {
    if (i) out->push_back('.');
    append_number(unsigned{at[i]}, out);
  }
  out->push_back('"');
}

// Writes a decoded structure as JSON text in the forms ToJson gives, leaving out the fields that are not set,
// straight into a buffer that the caller reuses: a dump of a million records builds no value tree per record.
// Every writer reports through `*zero` whether what it wrote stands for the value an omitted field gets
// (zero, false, null, empty); the enclosing object then takes it back.
class ToText {
 public:
  ToText(const CompiledType& type, std::string* out) : t_(type), out_(*out) {}

  bool run(int32_t index, const unsigned char* base, bool* zero) {
    const Program& p = t_.program(index);
    if (p.single_value()) return value(p.steps[0], base + p.steps[0].offset, zero);
    out_.push_back('{');
    bool empty = true;
    for (size_t i = 0; i < p.steps.size(); ++i) {
      const Step& s = p.steps[i];
      const unsigned char* at = base + s.offset;
      // A field of zero bytes throughout is what an omitted field decodes to, whatever its kind.
      if (all_zero(at, s.size)) continue;
      size_t mark = out_.size();
      if (!empty) out_.push_back(',');
      append_key(s, i);
      bool field_zero = false;
      if (!value(s, at, &field_zero)) {
        error_.path.push_back(field_key(s, i));
        return false;
      }
      if (field_zero) {
        out_.resize(mark);
      } else {
        empty = false;
      }
    }
    out_.push_back('}');
    *zero = empty;
    return true;
  }

  std::string error() const { return error_.text(); }

 private:
  template <typename T>
  static T load(const unsigned char* at) {
    T v;
    std::memcpy(&v, at, sizeof(T));
    return v;
  }

  void append_key(const Step& s, size_t index) {
    if (s.name.empty()) {
      out_ += "\"_";
      append_number(index, &out_);
      out_ += "\":";
      return;
    }
    out_.push_back('"');
    out_ += s.name;
    out_ += "\":";
  }

  template <typename T>
  void number(T value, bool* zero) {
    append_number(value, &out_);
    *zero = value == 0;
  }

  bool value(const Step& s, const unsigned char* at, bool* zero) {
    if (s.selector >= 0) return union_value(*t_.union_of(s), at, true, zero);
    *zero = false;
    switch (s.kind) {
      case Kind::kBool: {
        bool on = load<uint32_t>(at) != 0;
        out_ += on ? "true" : "false";
        *zero = !on;
        return true;
      }
      case Kind::kU8:
        number(unsigned{at[0]}, zero);
        return true;
      case Kind::kU16:
        number(load<uint16_t>(at), zero);
        return true;
      case Kind::kU32:
      case Kind::kEnum:
        number(load<uint32_t>(at), zero);
        return true;
      case Kind::kI32:
        number(load<int32_t>(at), zero);
        return true;
      case Kind::kU64:
        number(load<uint64_t>(at), zero);
        return true;
      case Kind::kI64:
        number(load<int64_t>(at), zero);
        return true;
      case Kind::kIpv4:
        append_ipv4(at, &out_);
        *zero = all_zero(at, 4);
        return true;
      case Kind::kText: {
        const char* text = load<const char*>(at);
        if (text == nullptr) {
          out_ += "null";
          *zero = true;
          return true;
        }
        if (append_string(text, &out_)) return true;
        return error_.fail("text is not UTF-8");
      }
      case Kind::kBytes:
        bytes(s, at, zero);
        return true;
      case Kind::kArray: {
        uint64_t count = load<uint64_t>(at);
        *zero = count == 0;
        bool elements_zero = false;
        return elements(s, load<const unsigned char*>(at + 8), count, &elements_zero);
      }
      case Kind::kFixedArray:
        return elements(s, at, s.count, zero);
      case Kind::kPointer: {
        const auto* target = load<const unsigned char*>(at);
        if (target == nullptr) {
          out_ += "null";
          *zero = true;
          return true;
        }
        bool target_zero = false;
        return run(s.sub, target, &target_zero);
      }
      case Kind::kStruct:
        return run(s.sub, at, zero);
      case Kind::kUnion:
        return union_value(t_.union_at(s.sub), at, false, zero);
      case Kind::kEmpty:
        break;
    }
    out_ += "null";
    *zero = true;
    return true;
  }

  void bytes(const Step& s, const unsigned char* at, bool* zero) {
    if (s.hint == 's') {
      size_t length = s.count;
      while (length > 0 && at[length - 1] == 0) --length;
      append_latin1(at, length, &out_);
      *zero = length == 0;
      return;
    }
    static const char kDigits[] = "0123456789abcdef";
    out_.push_back('"');
    for (uint32_t i = 0; i < s.count; ++i) {
      out_.push_back(kDigits[at[i] >> 4]);
      out_.push_back(kDigits[at[i] & 0xf]);
    }
    out_.push_back('"');
    *zero = all_zero(at, s.count);
  }

  bool elements(const Step& s, const unsigned char* first, uint64_t count, bool* zero) {
    out_.push_back('[');
    *zero = true;
    for (uint64_t i = 0; i < count; ++i) {
      if (i) out_.push_back(',');
      bool element_zero = false;
      if (!run(s.sub, first + i * s.elem_size, &element_zero)) {
        error_.path.push_back(element_key(i));
        return false;
      }
      *zero = *zero && element_zero;
    }
    out_.push_back(']');
    return true;
  }

  // A union chosen by an earlier field (`outer`) is written as an object of its case alone; one that carries
  // its discriminator names it beside the case unless it is 0, and family 0 of an address is bare
  // dotted-quad text.
  bool union_value(const UnionProgram& u, const unsigned char* at, bool outer, bool* zero) {
    uint32_t discriminator = load<uint32_t>(at);
    const UnionCase* c = u.find(discriminator);
    if (!outer && discriminator == 0 && is_ipv4_case(t_, c)) {
      append_ipv4(at + u.value_offset, &out_);
      *zero = all_zero(at + u.value_offset, 4);
      return true;
    }
    out_.push_back('{');
    bool empty = true;
    if (!outer && discriminator != 0) {
      out_.push_back('"');
      out_ += u.selector.empty() ? "discriminator" : u.selector;
      out_ += "\":";
      append_number(discriminator, &out_);
      empty = false;
    }
    if (c != nullptr && c->program >= 0) {
      size_t mark = out_.size();
      if (!empty) out_.push_back(',');
      out_.push_back('"');
      out_ += c->name;
      out_ += "\":";
      bool case_zero = false;
      if (!run(c->program, at + u.value_offset, &case_zero)) {
        error_.path.push_back(c->name);
        return false;
      }
      if (case_zero) {
        out_.resize(mark);
      } else {
        empty = false;
      }
    }
    out_.push_back('}');
    *zero = empty;
    return true;
  }

  const CompiledType& t_;
  std::string& out_;
  FieldError error_;
};

// A decoded structure owned for the length of one conversion, released and freed on every path.
class Scratch {
 public:
  explicit Scratch(const CompiledType& t) : t_(t), memory_((t.program(t.root).size + 7) / 8 + 1, 0) {}
  ~Scratch() { release(t_, t_.root, static_cast<unsigned char*>(data())); }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  void* data() { return memory_.data(); }

 private:
  const CompiledType& t_;
  std::vector<uint64_t> memory_;
};

}  // namespace
}  // namespace codec

bool pod_struct_from_json(const pod_desc& desc, const nlohmann::json& value, void* structure,
                          std::string* err) {
  const codec::CompiledType* t = codec::compile(&desc, err);
  if (t == nullptr) return false;
  auto* base = static_cast<unsigned char*>(structure);
  const size_t size = t->program(t->root).size;
  std::memset(base, 0, size);
  codec::FromJson from(*t);
  bool ok = false;
  try {
    ok = from.run(t->root, value, base, 0);
    if (!ok) *err = from.error();
  } catch (const std::exception& e) {
    *err = e.what();
  }
  if (!ok) {
    codec::release(*t, t->root, base);
    std::memset(base, 0, size);
  }
  return ok;
}

bool pod_encode_json(const pod_desc& desc, const nlohmann::json& value, std::string* bytes,
                     std::string* err) {
  const codec::CompiledType* t = codec::compile(&desc, err);
  if (t == nullptr) return false;
  codec::Scratch structure(*t);
  return pod_struct_from_json(desc, value, structure.data(), err) &&
         pod_encode_struct(desc, structure.data(), bytes, err);
}

bool pod_json_write_struct(const pod_desc& desc, const void* structure, std::string* out, std::string* err) {
  const codec::CompiledType* t = codec::compile(&desc, err);
  if (t == nullptr) return false;
  size_t mark = out->size();
  codec::ToText text(*t, out);
  bool zero = false;
  if (text.run(t->root, static_cast<const unsigned char*>(structure), &zero)) return true;
  out->resize(mark);
  *err = text.error();
  return false;
}

bool pod_json_append_string(std::string_view text, std::string* out) {
  size_t mark = out->size();
  if (codec::append_string(text, out)) return true;
  out->resize(mark);
  return false;
}

bool pod_json_from_struct(const pod_desc& desc, const void* structure, nlohmann::json* out,
                          std::string* err) {
  const codec::CompiledType* t = codec::compile(&desc, err);
  if (t == nullptr) return false;
  try {
    *out = codec::ToJson(*t).run(t->root, static_cast<const unsigned char*>(structure));
  } catch (const std::exception& e) {
    *err = e.what();
    return false;
  }
  return true;
}

bool pod_json_from_record(const void* data, size_t length, const pod_desc* (*find)(std::string_view),
                          nlohmann::json* out, std::string* err) {
  std::optional<std::string> type = pod_record_type(data, length);
  if (!type) {
    *err = "not a pod record";
    return false;
  }
  const pod_desc* desc = find(*type);
  if (desc == nullptr) {
    *err = "no descriptor for record type " + *type;
    return false;
  }
  const codec::CompiledType* t = codec::compile(desc, err);
  if (t == nullptr) return false;
  if (length > UINT32_MAX) {
    *err = "record longer than 4 GiB";
    return false;
  }
  codec::Scratch structure(*t);
  if (pod_decode(data, static_cast<uint32_t>(length), structure.data(), desc) != kCerrOk) {
    *err = pod_last_error();
    return false;
  }
  return pod_json_from_struct(*desc, structure.data(), out, err);
}

PodJsonWriter::PodJsonWriter(const pod_desc* (*find)(std::string_view)) : find_(find) {}

bool PodJsonWriter::write(const void* data, size_t length, std::string_view* type, std::string* out,
                          std::string* err) {
  *type = {};
  std::optional<std::string_view> named = codec::record_type_name(data, length);
  if (!named) {
    *err = "not a pod record";
    return false;
  }
  *type = *named;
  if (last_desc_ == nullptr || *named != last_type_) {
    last_desc_ = find_(*named);
    last_type_.assign(*named);
  }
  if (last_desc_ == nullptr) {
    *err = "no descriptor for record type " + last_type_;
    return false;
  }
  const codec::CompiledType* t = codec::compile(last_desc_, err);
  if (t == nullptr) return false;
  if (length > UINT32_MAX) {
    *err = "record longer than 4 GiB";
    return false;
  }
  size_t words = (t->program(t->root).size + 7) / 8 + 1;
  if (structure_.size() < words) structure_.resize(words);
  void* structure = structure_.data();
  if (pod_decode(data, static_cast<uint32_t>(length), structure, last_desc_) != kCerrOk) {
    *err = pod_last_error();
    return false;
  }
  bool written = pod_json_write_struct(*last_desc_, structure, out, err);
  codec::release(*t, t->root, static_cast<unsigned char*>(structure));
  return written;
}

}  // namespace ostrel::sim
