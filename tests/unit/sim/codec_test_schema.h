// A record type of the codec tests' own that holds every field kind, its descriptor, the plain structure
// it decodes into, a byte builder for writing records of the wire format by hand, and one record of every
// field kind written with it, also in its JSON form.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "access/pod_tables.h"
#include "platform/pod.h"

namespace ostrel::sim::codec_test {

inline constexpr char kAllSchema[] =
    "$1={Flag}b{Small}C{Mid}I{Count}D{Delta}d{Big}H{Signed}h{Addr}N{Kind}[k_]e{Name}s{Short}8s{Raw}4x"
    "{Label}6x%s{Values}a(D){Names}a(s){Fixed}3A($2){Next}p($1){Where}$3{Sel}[sel_]e"
    "{Choice}?(<Sel,sel_>,0:{Number}D,1:{Pair}$2,2:v);"
    "$2={A}I{B}H;$3=?(<AFName,afi_>,0:{IPV4Address}N,1:{IPV6Address}$4);$4=16x%s;";
using AllTables = ostrel::pod::Tables<kAllSchema>;

struct Pair {
  uint16_t a;
  uint64_t b;
};
struct Address {
  uint32_t family;
  alignas(8) unsigned char bytes[16];
};
struct All {
  uint32_t flag;
  uint8_t small;
  uint16_t mid;
  uint32_t count;
  int32_t delta;
  uint64_t big;
  int64_t signed_value;
  unsigned char addr[4];
  uint32_t kind;
  char* name;
  char* short_text;
  unsigned char raw[4];
  char label[6];
  uint64_t values_count;
  uint32_t* values;
  uint64_t names_count;
  char** names;
  Pair fixed[3];
  All* next;
  Address where;
  uint32_t sel;
  struct {
    uint32_t discriminator;
    union {
      uint32_t number;
      Pair pair;
    } value;
  } choice;
};
static_assert(sizeof(All) == AllTables::size());
// Fields by their index in the schema: Values 13, Fixed 15, Next 16, Where 17, Choice 19.
static_assert(offsetof(All, values) == AllTables::kSchema.fields[13].offset + 8);
static_assert(offsetof(All, fixed) == AllTables::kSchema.fields[15].offset);
static_assert(offsetof(All, next) == AllTables::kSchema.fields[16].offset);
static_assert(offsetof(All, where) == AllTables::kSchema.fields[17].offset);
static_assert(offsetof(All, choice) == AllTables::kSchema.fields[19].offset);

inline const pod_desc* all_desc() {
  static const pod_desc desc{
      1, "codec_all", {7, 1}, "test", AllTables::kLayout.data(), kAllSchema, AllTables::kCompact.data()};
  return &desc;
}

// FNV-1a 64, written here again so that the header's fingerprint is checked against an independent sum.
inline uint64_t fnv1a(std::string_view text) {
  uint64_t h = 14695981039346656037ull;
  for (char c : text) h = (h ^ static_cast<unsigned char>(c)) * 1099511628211ull;
  return h;
}

// Writes records of the wire format: a header, then images and parts appended or patched at known offsets.
class Bytes {
 public:
  Bytes& u16(uint16_t v) { return raw(&v, 2); }
  Bytes& u32(uint32_t v) { return raw(&v, 4); }
  Bytes& u64(uint64_t v) { return raw(&v, 8); }
  Bytes& zeros(size_t n) {
    s_.append(n, '\0');
    return *this;
  }
  Bytes& raw(const void* p, size_t n) {
    s_.append(static_cast<const char*>(p), n);
    return *this;
  }
  Bytes& header(std::string_view name, std::string_view compact, uint16_t version = 2) {
    return raw("PODR", 4)
        .u16(version)
        .u16(static_cast<uint16_t>(name.size()))
        .raw(name.data(), name.size())
        .u64(fnv1a(compact));
  }
  // Writes `v` over the bytes at `at`.
  template <typename T>
  void put(size_t at, T v) {
    std::memcpy(&s_[at], &v, sizeof(T));
  }
  void put_raw(size_t at, const void* p, size_t n) { std::memcpy(&s_[at], p, n); }
  // Appends a text part and writes its reference (offset, then length in the high half) at `slot`.
  Bytes& text_at(size_t slot, std::string_view t) {
    put<uint64_t>(slot, uint64_t{t.size()} << 32 | s_.size());
    return raw(t.data(), t.size());
  }
  size_t size() const { return s_.size(); }
  std::string& str() { return s_; }

 private:
  std::string s_;
};

inline constexpr uint64_t kAbsent = ~uint64_t{0};

// Offsets in the hand-written record of what the refusal cases alter.
struct Marks {
  size_t fingerprint, image, name, name_part, short_text, values, names_part, next_image, where;
};

inline constexpr char kV6[] = "\x20\x01\x0d\xb8\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x01";

// A record with every field set; its Next points at a second record with zero values, absent texts and
// empty arrays. Images are laid out by the structure's own offsets.
inline std::string all_record(Marks* m = nullptr) {
  Marks unused;
  if (m == nullptr) m = &unused;
  Bytes b;
  b.header("codec_all", AllTables::kCompact.data());
  m->fingerprint = b.size() - 8;
  const size_t r = m->image = b.size();
  b.zeros(sizeof(All));
  b.put<uint32_t>(r + offsetof(All, flag), 1);
  b.put<uint8_t>(r + offsetof(All, small), 0xfe);
  b.put<uint16_t>(r + offsetof(All, mid), 0x1234);
  b.put<uint32_t>(r + offsetof(All, count), 0xdeadbeef);
  b.put<int32_t>(r + offsetof(All, delta), -5);
  b.put<uint64_t>(r + offsetof(All, big), 0x0102030405060708);
  b.put<int64_t>(r + offsetof(All, signed_value), -2);
  b.put_raw(r + offsetof(All, addr), "\x0a\x00\x00\x01", 4);
  b.put<uint32_t>(r + offsetof(All, kind), 3);
  b.put_raw(r + offsetof(All, raw), "\xab\xcd", 2);
  b.put_raw(r + offsetof(All, label), "eth", 3);
  b.put<uint16_t>(r + offsetof(All, fixed), 5);
  b.put<uint64_t>(r + offsetof(All, fixed) + offsetof(Pair, b), 6);
  m->where = r + offsetof(All, where);
  b.put<uint32_t>(m->where, 1);
  b.put_raw(m->where + offsetof(Address, bytes), kV6, 16);
  b.put<uint32_t>(r + offsetof(All, sel), 1);
  b.put<uint32_t>(r + offsetof(All, choice), 1);
  b.put<uint16_t>(r + offsetof(All, choice.value.pair.a), 9);
  b.put<uint64_t>(r + offsetof(All, choice.value.pair.b), 10);
  // The parts, in the order of their slots: Name, Values, Names and its elements' texts, Next.
  m->name = r + offsetof(All, name);
  m->name_part = b.size();
  b.text_at(m->name, "hello");
  m->short_text = r + offsetof(All, short_text);
  b.put<uint64_t>(m->short_text, kAbsent);
  m->values = r + offsetof(All, values_count);
  b.put<uint64_t>(m->values, 2);
  b.put<uint64_t>(m->values + 8, b.size());
  b.u32(7).u32(8);
  b.put<uint64_t>(r + offsetof(All, names_count), 2);
  b.put<uint64_t>(r + offsetof(All, names), b.size());
  m->names_part = b.size();
  b.zeros(16).text_at(m->names_part, "x");
  b.put<uint64_t>(m->names_part + 8, kAbsent);
  b.put<uint64_t>(r + offsetof(All, next), b.size());
  const size_t n = m->next_image = b.size();
  b.zeros(sizeof(All));
  for (size_t slot : {offsetof(All, name), offsetof(All, short_text), offsetof(All, values),
                      offsetof(All, names), offsetof(All, next)})
    b.put<uint64_t>(n + slot, kAbsent);
  b.put_raw(n + offsetof(All, where) + offsetof(Address, bytes), "\x0a\x00\x00\x02", 4);
  b.put<uint32_t>(n + offsetof(All, sel), 2);
  b.put<uint32_t>(n + offsetof(All, choice), 2);
  return b.str();
}

// The record of all_record() in its JSON form.
inline nlohmann::json all_json() {
  nlohmann::json value = nlohmann::json::parse(R"({
    "Flag": true, "Small": 254, "Mid": 4660, "Count": 3735928559, "Delta": -5, "Big": 72623859790382856,
    "Signed": -2, "Addr": "10.0.0.1", "Kind": 3, "Name": "hello", "Short": null, "Raw": "abcd0000",
    "Label": "eth", "Values": [7, 8], "Names": ["x", null],
    "Fixed": [{"A": 5, "B": 6}, {"A": 0, "B": 0}, {"A": 0, "B": 0}],
    "Next": {"Flag": false, "Small": 0, "Mid": 0, "Count": 0, "Delta": 0, "Big": 0, "Signed": 0,
             "Addr": "0.0.0.0", "Kind": 0, "Name": null, "Short": null, "Raw": "00000000", "Label": "",
             "Values": [], "Names": [], "Fixed": [{"A": 0, "B": 0}, {"A": 0, "B": 0}, {"A": 0, "B": 0}],
             "Next": null, "Where": "10.0.0.2", "Sel": 2, "Choice": {}},
    "Where": {"AFName": 1}, "Sel": 1, "Choice": {"Pair": {"A": 9, "B": 10}}
  })");
  // The IPv6 bytes as text, one character per byte: 0xb8 is U+00B8, two bytes in UTF-8.
  value["Where"]["IPV6Address"] = std::string("\x20\x01\x0d\xc2\xb8") + std::string(11, '\0') + "\x01";
  return value;
}

}  // namespace ostrel::sim::codec_test
