// A record type of the codec tests' own that holds every field kind, its descriptor, the plain structure
// it decodes into, and a byte builder for writing records of the wire format by hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

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
  Bytes& u8(uint8_t v) { return raw(&v, 1); }
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

}  // namespace ostrel::sim::codec_test
