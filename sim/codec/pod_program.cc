#include "sim/codec/pod_program.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "sim/codec/pod_wire.h"

namespace ostrel::sim::codec {
namespace {

using ostrel::pod::Field;
using ostrel::pod::Schema;
using ostrel::pod::TypeDef;

bool is_integer(Kind kind) {
  switch (kind) {
    case Kind::kBool:
    case Kind::kU8:
    case Kind::kU16:
    case Kind::kU32:
    case Kind::kI32:
    case Kind::kU64:
    case Kind::kI64:
    case Kind::kEnum:
      return true;
    default:
      return false;
  }
}

// Builds the programs of one parsed schema. Programs are addressed by index because compiling a type may
// append others (its elements, its cases) while it is being built.
class Compiler {
 public:
  Compiler(const Schema& schema, CompiledType& out)
      : s_(schema),
        out_(out),
        type_program_(static_cast<size_t>(schema.type_count), -1),
        union_program_(static_cast<size_t>(schema.union_count), -1) {}

  bool run(std::string* err) {
    out_.root = program_of_type(0);
    if (!error_.empty()) {
      *err = error_;
      return false;
    }
    program_state_.assign(out_.programs.size(), 0);
    union_state_.assign(out_.unions.size(), 0);
    for (size_t i = 0; i < out_.programs.size(); ++i) finish(static_cast<int32_t>(i));
    return true;
  }

 private:
  int32_t program_of_type(int type_index) {
    if (type_index < 0) return fail("reference to an undefined type");
    int32_t& known = type_program_[static_cast<size_t>(type_index)];
    if (known >= 0) return known;
    const TypeDef& t = s_.types[type_index];
    int32_t index = new_program(t.size);
    known = index;
    if (t.is_union) {
      Step step;
      step.kind = Kind::kUnion;
      step.size = static_cast<uint32_t>(t.size);
      step.sub = union_program(t.union_index);
      out_.programs[static_cast<size_t>(index)].steps.push_back(std::move(step));
      return index;
    }
    for (int i = t.first_field; i < t.first_field + t.field_count; ++i) {
      Step step = step_of(s_.fields[i], s_.fields[i].offset);
      step.size = static_cast<uint32_t>(s_.fields[i].size);
      out_.programs[static_cast<size_t>(index)].steps.push_back(std::move(step));
    }
    resolve_selectors(out_.programs[static_cast<size_t>(index)]);
    return index;
  }

  // A union whose selector names an earlier field of the same structure takes its discriminator from it.
  void resolve_selectors(Program& p) {
    for (size_t i = 0; i < p.steps.size(); ++i) {
      if (p.steps[i].sub < 0) continue;
      const UnionProgram* u = out_.union_of(p.steps[i]);
      if (u == nullptr || u->selector.empty()) continue;
      for (size_t j = 0; j < i; ++j)
        if (p.steps[j].name == u->selector && is_integer(p.steps[j].kind))
          p.steps[i].selector = static_cast<int32_t>(j);
    }
  }

  // The program of an array element, a pointer target or a union case.
  int32_t program_of_element(const Field& f) {
    if (f.kind == Kind::kStruct) return program_of_type(s_.type_index(f.ref));
    uint64_t size = field_size(f);
    int32_t index = new_program(size);
    Step step = step_of(f, 0);
    step.size = static_cast<uint32_t>(size);
    step.name.clear();
    out_.programs[static_cast<size_t>(index)].steps.push_back(std::move(step));
    return index;
  }

  Step step_of(const Field& f, uint64_t offset) {
    Step step;
    step.kind = f.kind;
    step.hint = f.hint == 'S' ? 's' : f.hint;
    step.offset = static_cast<uint32_t>(offset);
    step.count = f.count;
    step.name = std::string(f.name);
    switch (f.kind) {
      case Kind::kArray:
      case Kind::kFixedArray:
      case Kind::kPointer:
        step.sub = program_of_element(s_.inner[f.elem]);
        if (step.sub >= 0) step.elem_size = static_cast<uint32_t>(out_.program(step.sub).size);
        break;
      case Kind::kStruct:
        step.sub = program_of_type(s_.type_index(f.ref));
        break;
      case Kind::kUnion:
        step.sub = union_program(f.union_index);
        break;
      default:
        break;
    }
    return step;
  }

  int32_t union_program(int union_index) {
    int32_t& known = union_program_[static_cast<size_t>(union_index)];
    if (known >= 0) return known;
    const ostrel::pod::Union& u = s_.unions[union_index];
    int32_t index = static_cast<int32_t>(out_.unions.size());
    out_.unions.emplace_back();
    known = index;
    UnionProgram made;
    made.value_offset = static_cast<uint32_t>(u.value_offset);
    made.size = static_cast<uint32_t>(u.size);
    made.selector = std::string(u.selector);
    for (int i = u.first_case; i < u.first_case + u.case_count; ++i) {
      const Field& f = s_.inner[s_.cases[i].field];
      UnionCase c;
      c.value = s_.cases[i].value;
      c.name = f.name.empty() ? "value" : std::string(f.name);
      if (f.kind != Kind::kEmpty) c.program = program_of_element(f);
      made.cases.push_back(std::move(c));
    }
    out_.unions[static_cast<size_t>(index)] = std::move(made);
    return index;
  }

  // The decoded size of a field; pointer targets are not laid out by the schema parser, so they are sized
  // here from their kind.
  uint64_t field_size(const Field& f) {
    switch (f.kind) {
      case Kind::kU8:
        return 1;
      case Kind::kU16:
        return 2;
      case Kind::kBool:
      case Kind::kU32:
      case Kind::kI32:
      case Kind::kIpv4:
      case Kind::kEnum:
        return 4;
      case Kind::kU64:
      case Kind::kI64:
      case Kind::kText:
      case Kind::kPointer:
        return 8;
      case Kind::kBytes:
        return f.count;
      case Kind::kArray:
        return 16;
      case Kind::kStruct: {
        const TypeDef* t = s_.find_type(f.ref);
        return t == nullptr ? 0 : t->size;
      }
      default:
        if (f.size == 0) fail("a pointer to an inline union or fixed array");
        return f.size;
    }
  }

  int32_t new_program(uint64_t size) {
    Program p;
    p.size = size;
    out_.programs.push_back(std::move(p));
    return static_cast<int32_t>(out_.programs.size() - 1);
  }

  int32_t fail(const char* what) {
    if (error_.empty()) error_ = what;
    return -1;
  }

  // Fills in a program's mask, slots and ownership once those of the types it embeds are known. Embedded
  // types never contain themselves (the layout rule refuses it); pointers and arrays need no recursion here.
  void finish(int32_t index) {
    int8_t& state = program_state_[static_cast<size_t>(index)];
    if (state != 0) return;
    state = 1;
    Program& p = out_.programs[static_cast<size_t>(index)];
    p.mask.assign((p.size + 7) / 8 * 8, 0);
    std::memset(p.mask.data(), 0xff, p.size);
    lay(index, 0, std::string(), p);
    for (unsigned char m : p.mask) p.has_mask = p.has_mask || m != 0;
    for (uint32_t i = 0; i < p.slots.size(); ++i)
      if (p.slots[i].owns) p.owning.push_back(i);
    p.has_indirections = !p.owning.empty();
    for (uint32_t i : p.owning) {
      if (p.slots[i].kind != Kind::kText) {
        p.owned_texts.clear();
        break;
      }
      p.owned_texts.push_back(p.slots[i].offset);
    }
  }

  void finish_union(int32_t index) {
    int8_t& state = union_state_[static_cast<size_t>(index)];
    if (state != 0) return;
    state = 1;
    UnionProgram& u = out_.unions[static_cast<size_t>(index)];
    const size_t area = u.size - u.value_offset;
    const size_t padded = (area + 7) / 8 * 8;
    u.empty_mask.assign(padded, 0);
    std::memset(u.empty_mask.data(), 0xff, area);
    for (UnionCase& c : u.cases) {
      c.mask = u.empty_mask;
      c.has_mask = area != 0;
      if (c.program < 0) continue;
      c.has_mask = false;
      finish(c.program);
      const Program& p = out_.program(c.program);
      std::memcpy(c.mask.data(), p.mask.data(), std::min<size_t>(p.size, area));
      for (unsigned char m : c.mask) c.has_mask = c.has_mask || m != 0;
      u.has_indirections = u.has_indirections || p.has_indirections;
    }
  }

  static std::string join(const std::string& prefix, const std::string& name) {
    if (prefix.empty()) return name;
    if (name.empty()) return prefix;
    return prefix + "." + name;
  }

  // Clears the mask over the fields of program `index` laid at `base` within `into`, and collects their
  // slots, descending into embedded structures and fixed arrays.
  void lay(int32_t index, uint32_t base, const std::string& prefix, Program& into) {
    const Program& p = out_.program(index);
    for (const Step& s : p.steps) {
      const uint32_t at = base + s.offset;
      std::string path = join(prefix, s.name);
      // Embedded structures and fixed arrays keep their own padding: their fields clear what they cover.
      if (s.kind != Kind::kStruct || s.selector >= 0)
        if (s.kind != Kind::kFixedArray) std::memset(into.mask.data() + at, 0, s.size);
      Slot slot;
      slot.kind = s.kind;
      slot.offset = at;
      slot.count = s.count;
      slot.elem_size = s.elem_size;
      slot.sub = s.sub;
      slot.path = path;
      if (s.kind == Kind::kUnion || s.selector >= 0) {
        int32_t u_index = s.kind == Kind::kUnion ? s.sub : out_.program(s.sub).steps[0].sub;
        finish_union(u_index);
        const UnionProgram& u = out_.union_at(u_index);
        std::memset(into.mask.data() + at + 4, 0xff, u.value_offset - 4);
        slot.kind = Kind::kUnion;
        slot.sub = u_index;
        slot.owns = u.has_indirections;
        if (s.selector >= 0) {
          const Step& selector = p.steps[static_cast<size_t>(s.selector)];
          slot.selector_offset = static_cast<int32_t>(base + selector.offset);
          slot.selector_kind = selector.kind;
        }
        into.slots.push_back(std::move(slot));
        continue;
      }
      switch (s.kind) {
        case Kind::kBool:
          into.mask[at] = 0xfe;
          std::memset(into.mask.data() + at + 1, 0xff, 3);
          break;
        case Kind::kText:
        case Kind::kArray:
        case Kind::kPointer:
          slot.owns = true;
          into.slots.push_back(std::move(slot));
          break;
        case Kind::kStruct:
          lay(s.sub, at, path, into);
          break;
        case Kind::kFixedArray:
          for (uint32_t e = 0; e < s.count; ++e)
            lay(s.sub, at + e * s.elem_size, path + element_key(e), into);
          break;
        default:
          break;
      }
    }
  }

  const Schema& s_;
  CompiledType& out_;
  std::vector<int32_t> type_program_;
  std::vector<int32_t> union_program_;
  std::vector<int8_t> program_state_;
  std::vector<int8_t> union_state_;
  std::string error_;
};

// The offsets that the layout rule gives a type's field-offset table.
std::vector<uint64_t> expected_offsets(const Schema& s, const TypeDef& t) {
  std::vector<uint64_t> out;
  if (t.offset_count == 0) return out;
  if (t.is_union) return {0, s.unions[t.union_index].value_offset};
  for (int i = t.first_field; i < t.first_field + t.field_count; ++i) {
    out.push_back(s.fields[i].offset);
    if (s.fields[i].kind == Kind::kArray) out.push_back(s.fields[i].offset + 8);
  }
  return out;
}

bool check_entry(const Schema& s, int index, const pod_layout& entry, std::string* err) {
  const TypeDef& t = s.types[index];
  uint64_t number = index == 0 ? static_cast<uint64_t>(s.type_count - 1) : t.number;
  std::string which = index == 0 ? "the record type" : "type $" + std::to_string(t.number);
  if (entry.number != number) {
    *err = index == 0 ? "layout record has " + std::to_string(entry.number) +
                            " sub-type entries, the schema " + std::to_string(number)
                      : "layout entry " + std::to_string(index) + " is $" + std::to_string(entry.number) +
                            ", the schema's $" + std::to_string(number);
    return false;
  }
  if (entry.size != t.size) {
    *err = "layout gives " + which + " size " + std::to_string(entry.size) + ", the schema " +
           std::to_string(t.size);
    return false;
  }
  std::vector<uint64_t> offsets = expected_offsets(s, t);
  if (offsets.empty() != (entry.offsets == nullptr)) {
    *err = "layout of " + which +
           (offsets.empty() ? " has an offset table it should not have" : " lacks its offset table");
    return false;
  }
  for (size_t i = 0; i < offsets.size(); ++i) {
    if (entry.offsets[i] != offsets[i]) {
      *err = "layout gives " + which + " offset " + std::to_string(entry.offsets[i]) + " in entry " +
             std::to_string(i) + ", the schema " + std::to_string(offsets[i]);
      return false;
    }
  }
  return true;
}

// Elements of up to a few KiB are checked a tile at a time.
void tile(Program& p) {
  if (!p.has_mask || p.tile_count != 0 || p.size == 0) return;
  constexpr uint64_t kTileBytes = 4096;
  p.tile_count = static_cast<uint32_t>(std::max<uint64_t>(1, kTileBytes / p.size));
  const size_t bytes = p.tile_count * p.size;
  p.tile.assign((bytes + 7) / 8 * 8, 0);
  for (uint32_t i = 0; i < p.tile_count; ++i) std::memcpy(p.tile.data() + i * p.size, p.mask.data(), p.size);
}

std::unique_ptr<CompiledType> build(const pod_desc* desc, std::string* err) {
  if (desc->name == nullptr || (desc->schema == nullptr && desc->schema_compact == nullptr)) {
    *err = "descriptor without a name or a schema";
    return nullptr;
  }
  std::string_view text = desc->schema != nullptr ? desc->schema : desc->schema_compact;
  auto schema = std::make_unique<Schema>(ostrel::pod::parse_schema(text));
  if (!schema->ok()) {
    *err = std::string("schema of ") + desc->name + ": " + ostrel::pod::error_text(schema->error) +
           " at position " + std::to_string(schema->error_pos);
    return nullptr;
  }
  std::string compact(text.size() + 1, '\0');
  compact.resize(ostrel::pod::write_compact(text, compact.data()));
  if (desc->schema_compact != nullptr && compact != desc->schema_compact) {
    *err = std::string("compact schema of ") + desc->name + " differs from its full schema";
    return nullptr;
  }
  if (desc->layout == nullptr) {
    *err = std::string("descriptor of ") + desc->name + " has no layout record";
    return nullptr;
  }
  for (int i = 0; i < schema->type_count; ++i)
    if (!check_entry(*schema, i, desc->layout[i], err)) return nullptr;

  auto out = std::make_unique<CompiledType>();
  out->desc = desc;
  out->name = desc->name;
  out->fingerprint = fingerprint_of(compact);
  Writer header(&out->header);
  write_header(header, out->name, out->fingerprint);
  if (!Compiler(*schema, *out).run(err)) return nullptr;
  for (const Program& p : out->programs)
    for (const Step& step : p.steps)
      if (step.kind == Kind::kArray) tile(out->programs[static_cast<size_t>(step.sub)]);
  return out;
}

// A descriptor is known by its address, but tests build descriptors on the stack, so an entry is trusted
// only while the descriptor still points at what it was compiled from.
struct CacheEntry {
  pod_desc seen{};
  std::unique_ptr<CompiledType> compiled;
  std::string error;
};

bool same(const pod_desc& a, const pod_desc& b) {
  return a.name == b.name && a.layout == b.layout && a.schema == b.schema &&
         a.schema_compact == b.schema_compact;
}

}  // namespace

const UnionProgram* CompiledType::union_of(const Step& step) const {
  if (step.kind == Kind::kUnion) return &union_at(step.sub);
  if (step.kind != Kind::kStruct) return nullptr;
  const Program& p = program(step.sub);
  if (p.steps.size() == 1 && p.steps[0].kind == Kind::kUnion) return &union_at(p.steps[0].sub);
  return nullptr;
}

const CompiledType* compile(const pod_desc* desc, std::string* err) {
  // A walk decodes one record type after another: the last one compiled answers without the lock.
  struct LastHit {
    const pod_desc* desc;
    pod_desc seen;
    const CompiledType* compiled;
  };
  static thread_local LastHit last{};
  if (desc == last.desc && same(last.seen, *desc)) return last.compiled;
  static std::mutex mutex;
  static std::unordered_map<const pod_desc*, std::unique_ptr<CacheEntry>> cache;
  // Replaced entries stay alive: a caller may still hold their programs.
  static std::vector<std::unique_ptr<CacheEntry>> replaced;
  std::lock_guard<std::mutex> lock(mutex);
  std::unique_ptr<CacheEntry>& entry = cache[desc];
  if (entry != nullptr && !same(entry->seen, *desc)) replaced.push_back(std::move(entry));
  if (entry == nullptr) {
    entry = std::make_unique<CacheEntry>();
    entry->seen = *desc;
    entry->compiled = build(desc, &entry->error);
  }
  if (entry->compiled == nullptr) {
    *err = entry->error;
    return nullptr;
  }
  last = LastHit{desc, *desc, entry->compiled.get()};
  return entry->compiled.get();
}

uint64_t fingerprint_of(std::string_view compact) {
  uint64_t h = 0xcbf29ce484222325ull;
  for (char c : compact) {
    h ^= static_cast<unsigned char>(c);
    h *= 0x100000001b3ull;
  }
  return h;
}

std::string join_path(const std::vector<std::string>& innermost_first) {
  std::string out;
  for (auto it = innermost_first.rbegin(); it != innermost_first.rend(); ++it) {
    if (!out.empty() && (*it)[0] != '[') out += '.';
    out += *it;
  }
  return out;
}

uint32_t read_selector(Kind kind, const unsigned char* at) {
  switch (kind) {
    case Kind::kU8:
      return at[0];
    case Kind::kU16: {
      uint16_t v;
      std::memcpy(&v, at, 2);
      return v;
    }
    case Kind::kU64:
    case Kind::kI64: {
      uint64_t v;
      std::memcpy(&v, at, 8);
      return static_cast<uint32_t>(v);
    }
    default: {
      uint32_t v;
      std::memcpy(&v, at, 4);
      return v;
    }
  }
}

}  // namespace ostrel::sim::codec
