// The pod schema notation, shared by the program's descriptors and the platform's record decoder: a parser
// for full schema strings, the decoded layout rule, and the compact form. Everything here is constexpr, so
// that descriptors get their sizes and offset tables at compile time; the decoder runs the same parser once
// per record type at run time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ostrel::pod {

enum class Kind : uint8_t {
  kBool,        // b
  kU8,          // C
  kU16,         // I
  kU32,         // D
  kI32,         // d
  kU64,         // H
  kI64,         // h
  kIpv4,        // N
  kEnum,        // e, [name_]e
  kText,        // s, ns (count = limit, 0 for none)
  kBytes,       // nx
  kArray,       // a(T): 64-bit count, then a pointer to the elements
  kFixedArray,  // nA(T)
  kPointer,     // p(T)
  kStruct,      // $N
  kUnion,       // ?(...)
  kEmpty,       // v, a union case without a value
};

struct Field {
  std::string_view name;       // empty in the compact form and for array elements
  std::string_view enum_name;  // [name_]e
  Kind kind = Kind::kEmpty;
  bool is_private = false;
  char hint = 0;        // 'h', 'n', 's', 'S' or 0
  uint32_t count = 0;   // text limit, byte count or fixed element count
  uint32_t ref = 0;     // N of $N
  int16_t elem = -1;    // element of a(T), nA(T), p(T): index into Schema::inner
  int16_t union_index = -1;
  uint64_t offset = 0;  // within the enclosing structure; 0 for elements
  uint64_t size = 0;
  uint64_t align = 1;
};

struct Case {
  int64_t value = 0;
  int16_t field = -1;  // index into Schema::inner; its kind is kEmpty for "v"
};

struct Union {
  std::string_view selector;       // the field whose value chooses the case; empty in the compact form
  std::string_view selector_enum;
  int16_t first_case = 0;
  int16_t case_count = 0;
  uint64_t value_offset = 4;
  uint64_t size = 4;
  uint64_t align = 4;
};

struct TypeDef {
  uint32_t number = 0;
  bool is_list = false;    // L: records chain through their next field
  bool is_union = false;   // the definition is a union of its own
  bool raw_bytes = false;  // made only of nx fields: no offset table
  int16_t union_index = -1;
  int16_t first_field = 0;  // top-level fields: Schema::fields[first_field, first_field + field_count)
  int16_t field_count = 0;
  uint64_t size = 0;
  uint64_t align = 1;
  uint16_t offset_count = 0;  // entries of its field-offset table
  uint8_t state = 0;          // layout: 0 not yet, 1 in progress, 2 done
};

enum class Error : uint8_t {
  kNone,
  kSyntax,
  kUnknownType,
  kTooLarge,
  kDuplicateType,
  kUndefinedType,
  kUnusedType,
  kRecursiveType,
  kBadUnion,
};

constexpr const char* error_text(Error e) {
  switch (e) {
    case Error::kNone: return "no error";
    case Error::kSyntax: return "syntax error";
    case Error::kUnknownType: return "unknown type letter";
    case Error::kTooLarge: return "schema larger than the parser's capacity";
    case Error::kDuplicateType: return "type defined twice";
    case Error::kUndefinedType: return "reference to an undefined type";
    case Error::kUnusedType: return "type defined but not referenced";
    case Error::kRecursiveType: return "type embeds itself";
    case Error::kBadUnion: return "union case defined twice";
  }
  return "unknown error";
}

// A parsed schema: the first definition is the record type, the others its sub-types in definition order.
// Capacities are fixed so that the parser can run at compile time.
struct Schema {
  static constexpr int kMaxTypes = 40;
  static constexpr int kMaxFields = 400;
  static constexpr int kMaxInner = 96;
  static constexpr int kMaxCases = 48;
  static constexpr int kMaxUnions = 16;

  TypeDef types[kMaxTypes]{};
  Field fields[kMaxFields]{};
  Field inner[kMaxInner]{};
  Case cases[kMaxCases]{};
  Union unions[kMaxUnions]{};
  int type_count = 0;
  int field_count = 0;
  int inner_count = 0;
  int case_count = 0;
  int union_count = 0;
  Error error = Error::kNone;
  size_t error_pos = 0;

  constexpr bool ok() const { return error == Error::kNone; }
  constexpr const TypeDef& record() const { return types[0]; }

  constexpr const TypeDef* find_type(uint32_t number) const {
    for (int i = 0; i < type_count; ++i)
      if (types[i].number == number) return &types[i];
    return nullptr;
  }
  constexpr int type_index(uint32_t number) const {
    for (int i = 0; i < type_count; ++i)
      if (types[i].number == number) return i;
    return -1;
  }
  // A top-level field of type `number` by name, or none.
  constexpr const Field* find_field(uint32_t number, std::string_view name) const {
    const TypeDef* t = find_type(number);
    if (t == nullptr) return nullptr;
    for (int i = t->first_field; i < t->first_field + t->field_count; ++i)
      if (fields[i].name == name) return &fields[i];
    return nullptr;
  }
  constexpr const Field* find_field(std::string_view name) const { return find_field(record().number, name); }
  constexpr const Field& element(const Field& f) const { return inner[f.elem]; }
  constexpr const Union& union_of(const Field& f) const { return unions[f.union_index]; }
  constexpr const Union& union_of(const TypeDef& t) const { return unions[t.union_index]; }
  constexpr const Field& case_field(const Case& c) const { return inner[c.field]; }
  // The number of entries of the layout record's offset tables taken together.
  constexpr int offset_entry_count() const {
    int n = 0;
    for (int i = 0; i < type_count; ++i) n += types[i].offset_count;
    return n;
  }
};

namespace detail {

constexpr bool is_digit(char c) { return c >= '0' && c <= '9'; }

class Parser {
 public:
  constexpr Parser(std::string_view text, Schema& out) : s_(text), out_(out) {}

  constexpr void parse() {
    while (pos_ < s_.size() && out_.ok()) parse_definition();
    if (out_.ok() && out_.type_count == 0) fail(Error::kSyntax);
  }

 private:
  constexpr bool fail(Error e) {
    if (out_.ok()) {
      out_.error = e;
      out_.error_pos = pos_;
    }
    return false;
  }
  constexpr bool at(char c) const { return pos_ < s_.size() && s_[pos_] == c; }
  constexpr bool eat(char c) {
    if (!at(c)) return false;
    ++pos_;
    return true;
  }
  constexpr bool expect(char c) { return eat(c) || fail(Error::kSyntax); }

  constexpr uint64_t number() {
    if (pos_ >= s_.size() || !is_digit(s_[pos_])) return fail(Error::kSyntax), 0;
    uint64_t n = 0;
    while (pos_ < s_.size() && is_digit(s_[pos_])) {
      n = n * 10 + static_cast<uint64_t>(s_[pos_++] - '0');
      if (n > 0xffffffffu) return fail(Error::kTooLarge), 0;
    }
    return n;
  }

  // Text up to (not including) `end`, which is consumed.
  constexpr std::string_view until(char end) {
    size_t start = pos_;
    while (pos_ < s_.size() && s_[pos_] != end) ++pos_;
    if (pos_ >= s_.size()) return fail(Error::kSyntax), std::string_view{};
    return s_.substr(start, pos_++ - start);
  }

  constexpr void parse_definition() {
    if (!expect('$')) return;
    uint32_t number = static_cast<uint32_t>(this->number());
    if (!expect('=')) return;
    if (out_.find_type(number) != nullptr) {
      fail(Error::kDuplicateType);
      return;
    }
    if (out_.type_count == Schema::kMaxTypes) {
      fail(Error::kTooLarge);
      return;
    }
    TypeDef& t = out_.types[out_.type_count++];
    t.number = number;
    t.is_list = eat('L');
    t.first_field = static_cast<int16_t>(out_.field_count);
    if (at('?')) {
      t.is_union = true;
      t.union_index = parse_union();
      expect(';');
      return;
    }
    while (out_.ok() && !eat(';')) {
      if (pos_ >= s_.size()) {
        fail(Error::kSyntax);
        return;
      }
      if (out_.field_count == Schema::kMaxFields) {
        fail(Error::kTooLarge);
        return;
      }
      Field& f = out_.fields[out_.field_count++];
      parse_field(f);
      ++t.field_count;
    }
  }

  constexpr void parse_field(Field& f) {
    if (eat('{')) f.name = until('}');
    f.is_private = eat('P');
    parse_type(f);
    parse_hint(f);
  }

  constexpr void parse_hint(Field& f) {
    if (!eat('%')) return;
    if (at('h') || at('n') || at('s') || at('S')) {
      f.hint = s_[pos_++];
    } else {
      fail(Error::kSyntax);
    }
  }

  constexpr int16_t new_inner() {
    if (out_.inner_count == Schema::kMaxInner) return fail(Error::kTooLarge), int16_t{0};
    return static_cast<int16_t>(out_.inner_count++);
  }

  // The type in parentheses after a(, nA( or p(, with its display hint.
  constexpr int16_t parse_element() {
    if (!expect('(')) return 0;
    int16_t index = new_inner();
    if (!out_.ok()) return 0;
    parse_type(out_.inner[index]);
    parse_hint(out_.inner[index]);
    expect(')');
    return index;
  }

  constexpr void parse_type(Field& f) {
    if (pos_ >= s_.size()) {
      fail(Error::kSyntax);
      return;
    }
    if (is_digit(s_[pos_])) {
      f.count = static_cast<uint32_t>(number());
      if (eat('s')) {
        f.kind = Kind::kText;
      } else if (eat('x')) {
        f.kind = Kind::kBytes;
      } else if (eat('A')) {
        f.kind = Kind::kFixedArray;
        f.elem = parse_element();
      } else {
        fail(Error::kUnknownType);
      }
      return;
    }
    if (eat('[')) {
      f.enum_name = until(']');
      if (!expect('e')) return;
      f.kind = Kind::kEnum;
      return;
    }
    char c = s_[pos_++];
    switch (c) {
      case 'b': f.kind = Kind::kBool; return;
      case 'C': f.kind = Kind::kU8; return;
      case 'I': f.kind = Kind::kU16; return;
      case 'D': f.kind = Kind::kU32; return;
      case 'd': f.kind = Kind::kI32; return;
      case 'H': f.kind = Kind::kU64; return;
      case 'h': f.kind = Kind::kI64; return;
      case 'N': f.kind = Kind::kIpv4; return;
      case 'e': f.kind = Kind::kEnum; return;
      case 's': f.kind = Kind::kText; return;
      case 'a':
        f.kind = Kind::kArray;
        f.elem = parse_element();
        return;
      case 'p':
        f.kind = Kind::kPointer;
        f.elem = parse_element();
        return;
      case '$':
        f.kind = Kind::kStruct;
        f.ref = static_cast<uint32_t>(number());
        eat('.');  // the compact form marks an embedded reference
        return;
      case '?':
        --pos_;
        f.kind = Kind::kUnion;
        f.union_index = parse_union();
        return;
      default:
        --pos_;
        fail(Error::kUnknownType);
    }
  }

  constexpr int16_t parse_union() {
    if (!expect('?') || !expect('(')) return 0;
    if (out_.union_count == Schema::kMaxUnions) return fail(Error::kTooLarge), int16_t{0};
    int16_t index = static_cast<int16_t>(out_.union_count++);
    Union& u = out_.unions[index];
    if (eat('<')) {
      u.selector = until(',');
      u.selector_enum = until('>');
    }
    u.first_case = static_cast<int16_t>(out_.case_count);
    while (out_.ok() && eat(',')) {
      if (out_.case_count == Schema::kMaxCases) return fail(Error::kTooLarge), index;
      Case& c = out_.cases[out_.case_count++];
      bool negative = eat('-');
      c.value = static_cast<int64_t>(number());
      if (negative) c.value = -c.value;
      for (int i = u.first_case; i < out_.case_count - 1; ++i)
        if (out_.cases[i].value == c.value) fail(Error::kBadUnion);
      if (!expect(':')) return index;
      c.field = new_inner();
      if (!out_.ok()) return index;
      Field& f = out_.inner[c.field];
      if (eat('{')) f.name = until('}');
      if (eat('v')) {
        f.kind = Kind::kEmpty;
        f.size = 0;
      } else {
        parse_type(f);
        parse_hint(f);
      }
      ++u.case_count;
    }
    expect(')');
    return index;
  }

  std::string_view s_;
  Schema& out_;
  size_t pos_ = 0;
};

// The layout rule: sizes, alignments and offsets of every type, computed on demand so that a type may refer
// to one defined after it.
class Layout {
 public:
  constexpr explicit Layout(Schema& s) : s_(s) {}

  constexpr void run() {
    for (int i = 0; i < s_.type_count && s_.ok(); ++i) lay_out_type(i);
    if (s_.ok()) check_reachable();
  }

 private:
  constexpr bool fail(Error e) {
    if (s_.ok()) s_.error = e;
    return false;
  }

  static constexpr uint64_t round_up(uint64_t n, uint64_t align) { return (n + align - 1) / align * align; }

  constexpr void lay_out_type(int index) {
    TypeDef& t = s_.types[index];
    if (t.state == 2) return;
    if (t.state == 1) {
      fail(Error::kRecursiveType);
      return;
    }
    t.state = 1;
    if (t.is_union) {
      Union& u = s_.unions[t.union_index];
      lay_out_union(u);
      t.size = u.size;
      t.align = u.align;
      t.offset_count = 2;
    } else {
      uint64_t end = 0;
      uint64_t align = 1;
      bool raw = t.field_count > 0;
      int entries = 0;
      for (int i = t.first_field; i < t.first_field + t.field_count; ++i) {
        Field& f = s_.fields[i];
        size_of(f);
        f.offset = round_up(end, f.align);
        end = f.offset + f.size;
        if (f.align > align) align = f.align;
        raw = raw && f.kind == Kind::kBytes;
        entries += f.kind == Kind::kArray ? 2 : 1;
      }
      t.size = round_up(end, align);
      t.align = align;
      t.raw_bytes = raw;
      t.offset_count = raw ? 0 : static_cast<uint16_t>(entries);
    }
    t.state = 2;
  }

  constexpr void lay_out_union(Union& u) {
    uint64_t widest = 0;
    uint64_t case_align = 1;
    for (int i = u.first_case; i < u.first_case + u.case_count; ++i) {
      Field& f = s_.inner[s_.cases[i].field];
      if (f.kind != Kind::kEmpty) size_of(f);
      if (f.size > widest) widest = f.size;
      if (f.align > case_align) case_align = f.align;
    }
    // The value sits after the 32-bit discriminator, or on the next 8-byte boundary once any case is wider.
    bool narrow = widest <= 4 && case_align <= 4;
    u.value_offset = narrow ? 4 : 8;
    u.align = narrow ? 4 : 8;
    u.size = round_up(u.value_offset + widest, u.align);
  }

  constexpr void size_of(Field& f) {
    switch (f.kind) {
      case Kind::kU8: f.size = f.align = 1; return;
      case Kind::kU16: f.size = f.align = 2; return;
      case Kind::kBool:
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kIpv4:
      case Kind::kEnum: f.size = f.align = 4; return;
      case Kind::kU64:
      case Kind::kI64:
      case Kind::kText:
      case Kind::kPointer: f.size = f.align = 8; return;
      case Kind::kBytes:
        f.size = f.count;
        f.align = 1;
        return;
      case Kind::kArray:
        f.size = 16;
        f.align = 8;
        size_element(f);
        return;
      case Kind::kFixedArray: {
        Field& e = size_element(f);
        f.size = e.size * f.count;
        f.align = e.align;
        return;
      }
      case Kind::kStruct: {
        int index = s_.type_index(f.ref);
        if (index < 0) {
          fail(Error::kUndefinedType);
          return;
        }
        lay_out_type(index);
        f.size = s_.types[index].size;
        f.align = s_.types[index].align;
        return;
      }
      case Kind::kUnion: {
        Union& u = s_.unions[f.union_index];
        lay_out_union(u);
        f.size = u.size;
        f.align = u.align;
        return;
      }
      case Kind::kEmpty: f.size = 0; return;
    }
  }

  // Elements behind a pointer may be of the enclosing type itself (a list through its next field), so a
  // pointer's element is only checked to exist, not laid out from here.
  constexpr Field& size_element(Field& f) {
    Field& e = s_.inner[f.elem];
    if (f.kind == Kind::kPointer) return e;
    size_of(e);
    return e;
  }

  constexpr void mark(uint32_t number, bool* seen) {
    int index = s_.type_index(number);
    if (index < 0) {
      fail(Error::kUndefinedType);
      return;
    }
    if (seen[index]) return;
    seen[index] = true;
    const TypeDef& t = s_.types[index];
    if (t.is_union) {
      mark_union(s_.unions[t.union_index], seen);
      return;
    }
    for (int i = t.first_field; i < t.first_field + t.field_count; ++i) mark_field(s_.fields[i], seen);
  }
  constexpr void mark_union(const Union& u, bool* seen) {
    for (int i = u.first_case; i < u.first_case + u.case_count; ++i)
      mark_field(s_.inner[s_.cases[i].field], seen);
  }
  constexpr void mark_field(const Field& f, bool* seen) {
    if (f.kind == Kind::kStruct) mark(f.ref, seen);
    if (f.kind == Kind::kUnion) mark_union(s_.unions[f.union_index], seen);
    if (f.elem >= 0) mark_field(s_.inner[f.elem], seen);
  }

  constexpr void check_reachable() {
    bool seen[Schema::kMaxTypes]{};
    mark(s_.types[0].number, seen);
    for (int i = 0; i < s_.type_count && s_.ok(); ++i)
      if (!seen[i]) fail(Error::kUnusedType);
  }

  Schema& s_;
};

}  // namespace detail

// Parses a schema string (full or compact form) and lays out every type it defines.
constexpr Schema parse_schema(std::string_view text) {
  Schema s;
  detail::Parser(text, s).parse();
  if (s.ok()) detail::Layout(s).run();
  return s;
}

// The compact form of a full schema: field and enumeration names dropped, unions without their selector, and
// "." after each embedded $N reference. `out` must hold full.size() + 1 characters; returns the length.
constexpr size_t write_compact(std::string_view full, char* out) {
  size_t n = 0;
  bool at_definition = true;  // a "$N=" that opens a definition keeps its form
  for (size_t i = 0; i < full.size(); ++i) {
    char c = full[i];
    if (c == '{' || c == '[') {
      char end = c == '{' ? '}' : ']';
      while (i < full.size() && full[i] != end) ++i;
      continue;
    }
    if (c == '<') {
      while (i < full.size() && full[i] != '>') ++i;
      continue;
    }
    if (c == '$') {
      out[n++] = c;
      while (i + 1 < full.size() && detail::is_digit(full[i + 1])) out[n++] = full[++i];
      if (!at_definition) out[n++] = '.';
      at_definition = false;
      continue;
    }
    out[n++] = c;
    if (c == ';') at_definition = true;
  }
  out[n] = '\0';
  return n;
}

}  // namespace ostrel::pod
