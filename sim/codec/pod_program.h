// A record type's schema compiled into flat programs of steps, one per type, that the decoder, the encoder,
// the JSON conversions and pod_free_indirections() all walk. Compiled once per descriptor and kept for the
// life of the process. Internal to the codec.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "access/pod_schema.h"
#include "platform/pod.h"

namespace ostrel::sim::codec {

using ostrel::pod::Kind;

// One field of a structure: where it sits in the decoded structure and how it travels on the wire.
struct Step {
  Kind kind = Kind::kEmpty;
  char hint = 0;           // 's' or 'S' after nx: the bytes are text
  uint32_t offset = 0;     // within the structure the program describes
  uint32_t count = 0;      // text limit (0: none), byte count, fixed element count
  uint32_t elem_size = 0;  // arrays and pointers: decoded size of one element
  int32_t sub = -1;        // struct, array, pointer: program index; union: union index
  int32_t selector = -1;   // a union chosen by an earlier field: that field's step index
  std::string name;        // the schema's field name; empty for elements and in compact schemas
};

// One operation of the decoder's plan of a program. A record carries long runs of booleans (the attribute
// sets) and of plain numbers, which travel on the wire in the order and, for numbers, the width that they
// have in the structure: each such run is one operation instead of one per field.
struct DecodeOp {
  enum Code : uint8_t {
    kBools,  // `count` booleans of one byte each, widened to 32 bits
    kCopy,   // `count` bytes of numbers copied as they are
    kStep,   // the step `first`, decoded on its own
  };
  Code code = kStep;
  uint32_t offset = 0;  // of the run's first field
  uint32_t count = 0;
  uint32_t first = 0;  // index of the run's first step
};

struct Program {
  std::vector<Step> steps;
  std::vector<DecodeOp> decode_plan;
  std::vector<uint32_t> indirect_steps;  // the steps that own, or hold something that owns, allocations
  uint64_t size = 0;                     // decoded size
  uint64_t min_wire = 0;                 // the fewest wire bytes any value of this type takes
  bool has_indirections = false;
  // A program of one unnamed step (an array element, a union case, a type of a single unnamed field) stands
  // for that step's value rather than for a structure of fields.
  bool single_value() const { return steps.size() == 1 && steps[0].name.empty(); }
};

// The JSON key of a program's step: its field name, or "_<index>" for a field that the schema leaves unnamed.
inline std::string field_key(const Step& step, size_t index) {
  if (!step.name.empty()) return step.name;
  std::string key = std::to_string(index);
  key.insert(key.begin(), '_');
  return key;
}

struct UnionCase {
  int64_t value = 0;
  int32_t program = -1;  // run at the value offset; -1 for an empty case
  std::string name;      // "value" when the schema names none
};

struct UnionProgram {
  uint32_t value_offset = 4;
  uint32_t size = 8;
  std::string selector;  // the discriminator's name when the union carries it as its own member
  std::vector<UnionCase> cases;
  bool has_indirections = false;

  // The case of a discriminator, or none.
  const UnionCase* find(uint32_t discriminator) const {
    for (const UnionCase& c : cases)
      if (c.value == static_cast<int64_t>(discriminator) ||
          c.value == static_cast<int64_t>(static_cast<int32_t>(discriminator)))
        return &c;
    return nullptr;
  }
};

struct CompiledType {
  const pod_desc* desc = nullptr;
  std::string name;
  uint64_t fingerprint = 0;
  int32_t root = 0;  // program of the record type
  std::vector<Program> programs;
  std::vector<UnionProgram> unions;

  const Program& program(int32_t index) const { return programs[static_cast<size_t>(index)]; }
  const UnionProgram& union_at(int32_t index) const { return unions[static_cast<size_t>(index)]; }
  // The union that a step holds: an inline union, or a numbered type that is a union of its own.
  const UnionProgram* union_of(const Step& step) const;
};

// The compiled form of a descriptor, or none with `err` set when its schema does not parse or its layout
// record disagrees with the schema. The result lives as long as the process.
const CompiledType* compile(const pod_desc* desc, std::string* err);

// Releases what texts, arrays and pointers of the structure at `base`, described by `program`, refer to, and
// clears those pointers and counts.
void release(const CompiledType& type, int32_t program, unsigned char* base);

// FNV-1a, 64 bits, of a compact schema string: the fingerprint that a record's header carries.
uint64_t fingerprint_of(std::string_view compact);

// Joins the components of a field path collected while a failure unwound, innermost first: names and
// case names ("Name") and element indexes ("[3]"), giving "Interfaces[3].Name".
std::string join_path(const std::vector<std::string>& innermost_first);

// The path component of element `index` of an array: "[3]".
inline std::string element_key(size_t index) {
  std::string key = std::to_string(index);
  key.insert(key.begin(), '[');
  key.push_back(']');
  return key;
}

// The first bad field of an encoding or a conversion: what was wrong, and where, collected innermost first
// while the failure unwinds.
struct FieldError {
  std::vector<std::string> path;
  std::string what;

  bool fail(std::string reason) {
    what = std::move(reason);
    return false;
  }
  std::string text() const {
    std::string joined = join_path(path);
    return joined.empty() ? what : joined + ": " + what;
  }
};

// The wire width of a plain number (the same as its width in the structure), 0 for other kinds.
uint32_t number_width(Kind kind);

// Reads the integer of a numeric step at `at` (a selector field), widened to 32 bits.
uint32_t read_selector(const Step& step, const unsigned char* at);

}  // namespace ostrel::sim::codec
