// A record type's schema compiled into flat programs of steps, one per type, that the decoder, the encoder,
// the JSON conversions and pod_free_indirections() all walk, with each program's image mask and slots.
// Compiled once per descriptor and kept for the life of the process. Internal to the codec.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/pod.h"
#include "platform/pod_schema.h"

namespace ostrel::sim::codec {

using ostrel::pod::Kind;

// One field of a structure: where it sits in the decoded structure and what it holds.
struct Step {
  Kind kind = Kind::kEmpty;
  char hint = 0;           // 's' or 'S' after nx: the bytes are text
  uint32_t offset = 0;     // within the structure the program describes
  uint32_t size = 0;       // decoded size of the field
  uint32_t count = 0;      // text limit (0: none), byte count, fixed element count
  uint32_t elem_size = 0;  // arrays and pointers: decoded size of one element
  int32_t sub = -1;        // struct, array, pointer: program index; union: union index
  int32_t selector = -1;   // a union chosen by an earlier field: that field's step index
  std::string name;        // the schema's field name; empty for elements and in compact schemas
};

// A slot of a value's image that needs more than the image's copy: a text, array or pointer whose wire
// reference becomes an address, or a union whose case area is checked against its discriminator. Slots of
// embedded structures and fixed arrays are lifted into the enclosing program, so that a value's slots are
// one flat list in the order of their offsets, which is also the order of the parts they refer to.
struct Slot {
  Kind kind = Kind::kEmpty;  // kText, kArray, kPointer or kUnion
  Kind selector_kind = Kind::kEmpty;
  uint32_t offset = 0;           // within the value
  uint32_t count = 0;            // text limit (0: none)
  uint32_t elem_size = 0;        // arrays and pointers: decoded size of one element
  int32_t sub = -1;              // array, pointer: program index; union: union index
  int32_t selector_offset = -1;  // a union chosen by an earlier field: that field's offset in the value
  bool owns = false;             // holds, or may hold, allocations that pod_free_indirections() releases
  std::string path;              // "GroupRange.GroupPrefix", "Fixed[1].Name"; empty for a bare element
};

struct Program {
  std::vector<Step> steps;
  uint64_t size = 0;  // decoded size
  // The bits of a value's image that must be zero: the high bits of boolean words, padding, the padding
  // after a union's discriminator. Padded with zero bytes to whole 64-bit words.
  std::vector<unsigned char> mask;
  bool has_mask = false;  // some bit of the mask is set
  // For an array's elements: the mask repeated `tile_count` times, so that a run of elements is checked in
  // a few long passes rather than one short pass per element.
  std::vector<unsigned char> tile;
  uint32_t tile_count = 0;
  std::vector<Slot> slots;        // every slot that needs fixing up, in offset order
  std::vector<uint32_t> owning;   // indexes into `slots` of those that own allocations
  bool has_indirections = false;  // a value may own allocations
  // When every slot that owns allocations is a text, where those texts sit: an array of such values (a
  // route's interfaces, with one optional text each) is released by a loop over them, not a walk per value.
  std::vector<uint32_t> owned_texts;
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
  // The bits of the case area (value offset to the union's end) that must be zero with this case chosen:
  // the case's own mask, then every bit past its value. Padded to whole 64-bit words.
  std::vector<unsigned char> mask;
  bool has_mask = false;  // some bit of `mask` is set
};

struct UnionProgram {
  uint32_t value_offset = 4;
  uint32_t size = 8;
  std::string selector;  // the discriminator's name when the union carries it as its own member
  std::vector<UnionCase> cases;
  std::vector<unsigned char> empty_mask;  // a discriminator of no case, or of an empty one: all bits
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
  std::string header;  // the header that a record of this type begins with, as write_header() writes it
  int32_t root = 0;    // program of the record type
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

// Reads the integer of a numeric field of kind `kind` at `at` (a selector field), widened to 32 bits.
uint32_t read_selector(Kind kind, const unsigned char* at);

}  // namespace ostrel::sim::codec
