// The record codec against records written by hand from the wire format: the layout rule it relies on,
// decoding, canonical re-encoding, every refusal and the field it names, and what stays allocated afterwards.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "access/pod_descriptors.h"
#include "sim/cerr_codes.h"
#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_json.h"
#include "tests/unit/sim/codec_test_schema.h"
#include "tests/unit/sim/test_root.h"

namespace ostrel::sim {
namespace {

using codec_test::All;
using codec_test::all_record;
using codec_test::kV6;
using codec_test::Marks;
using ostrel::pod::parse_schema;

pod_desc test_desc(const char* name, const pod_layout* layout, const char* schema, const char* compact) {
  return {1, name, {7, 1}, "test", layout, schema, compact};
}

// The codec's own record type covers wide unions, fixed arrays and alignment; a union of narrow cases does
// not: it keeps its value at 4.
TEST(PodLayout, AUnionOfNarrowCasesKeepsItsValueAt4) {
  constexpr auto narrow = parse_schema("$1={K}e{U}?(<K,k_>,0:{A}D,1:{B}I,2:v);");
  static_assert(narrow.ok() && narrow.fields[1].offset == 4 && narrow.unions[0].value_offset == 4);
  static_assert(narrow.unions[0].size == 8 && narrow.record().size == 12);
}

bool all_zero(const All& a) {
  const auto* p = reinterpret_cast<const unsigned char*>(&a);
  for (size_t i = 0; i < sizeof(a); ++i)
    if (p[i] != 0) return false;
  return true;
}

cerr_t decode(const std::string& record, void* structure, const pod_desc* desc = codec_test::all_desc(),
              size_t length = std::string::npos) {
  return pod_decode(record.data(), static_cast<uint32_t>(std::min(length, record.size())), structure, desc);
}
cerr_t release(All* a) {
  return pod_free_indirections(a, codec_test::all_desc());
}
std::string encode(const All& a) {
  std::string bytes, err;
  EXPECT_TRUE(pod_encode_struct(*codec_test::all_desc(), &a, &bytes, &err)) << err;
  return bytes;
}

// Decoding into a structure full of garbage must leave nothing of it, padding included: once released, it
// matches one decoded into a zeroed structure byte for byte.
TEST(PodDecode, DecodesEveryFieldKindReencodesTheSameBytesAndKeepsNoGarbage) {
  std::string record = all_record();
  All a;
  std::memset(&a, 0xab, sizeof(a));
  ASSERT_EQ(decode(record, &a), kCerrOk) << pod_last_error();
  nlohmann::json value;
  std::string err;
  ASSERT_TRUE(pod_json_from_struct(*codec_test::all_desc(), &a, &value, &err)) << err;
  EXPECT_EQ(value, codec_test::all_json()) << value.dump(1);
  // Members of each kind read without the codec's help, at the structure's own offsets.
  EXPECT_EQ(a.mid, 0x1234);
  EXPECT_EQ(a.signed_value, -2);
  EXPECT_EQ(std::memcmp(a.label, "eth\0\0\0", 6), 0);
  EXPECT_EQ(std::vector<uint32_t>(a.values, a.values + a.values_count), (std::vector<uint32_t>{7, 8}));
  EXPECT_STREQ(a.names[0], "x");
  EXPECT_EQ(a.fixed[0].b, 6u);
  EXPECT_EQ(std::memcmp(a.where.bytes, kV6, 16), 0);
  EXPECT_EQ(a.choice.value.pair.b, 10u);
  ASSERT_NE(a.next, nullptr);
  EXPECT_EQ(a.next->choice.discriminator, 2u);
  EXPECT_EQ(encode(a), record);
  // The encoder writes a boolean as 1 and padding as zeros, whatever the structure holds there.
  unsigned char& padding = reinterpret_cast<unsigned char*>(&a)[offsetof(All, small) + 1];
  a.flag = 0x55;
  padding = 0xab;
  EXPECT_EQ(encode(a), record);
  a.flag = 1;
  padding = 0;

  EXPECT_EQ(release(&a), kCerrOk);
  EXPECT_TRUE(!a.name && !a.values && !a.values_count && !a.names && !a.next);
  All clean{};
  ASSERT_EQ(decode(record, &clean), kCerrOk);
  EXPECT_EQ(release(&clean), kCerrOk);
  EXPECT_EQ(std::memcmp(&clean, &a, sizeof(All)), 0);
}

struct Refusal {
  const char* what;
  std::function<void(std::string&, const Marks&)> alter;
  cerr_t code;
  std::string detail;
  const pod_desc* desc = codec_test::all_desc();
};

void put32(std::string& s, size_t at, uint32_t v) {
  std::memcpy(&s[at], &v, 4);
}
void put64(std::string& s, size_t at, uint64_t v) {
  std::memcpy(&s[at], &v, 8);
}

TEST(PodDecode, RefusesBadFieldsNamingThemAndKeepsNothing) {
  static const pod_desc other = test_desc("codec_other", codec_test::AllTables::kLayout.data(),
                                          codec_test::kAllSchema, codec_test::AllTables::kCompact.data());
  Marks at;
  all_record(&at);
  const Refusal refusals[] = {
      {"magic", [](std::string& s, const Marks&) { s[0] = 'X'; }, kPodCorrupt, "header: not a pod record"},
      {"version 1", [](std::string& s, const Marks&) { s[4] = 1; }, kPodCorrupt,
       "header: format version 1 is not known"},
      {"fingerprint", [](std::string& s, const Marks& m) { s[m.fingerprint] ^= 1; }, kPodSchemaMismatch,
       "header: the record's schema of codec_all differs from the descriptor's"},
      {"boolean", [](std::string& s, const Marks& m) { put32(s, m.image + offsetof(All, flag), 2); },
       kPodCorrupt, "Flag: boolean value 2"},
      {"padding", [](std::string& s, const Marks& m) { s[m.image + offsetof(All, small) + 1] = 1; },
       kPodCorrupt, "Small: padding after this field is not zero"},
      {"element padding",
       [](std::string& s, const Marks& m) {
         s[m.image + offsetof(All, fixed) + sizeof(codec_test::Pair) + 2] = 1;
       },
       kPodCorrupt, "Fixed[1].A: padding after this field is not zero"},
      {"text with NUL", [](std::string& s, const Marks& m) { s[m.name_part + 4] = 0; }, kPodCorrupt,
       "Name: text holds a NUL byte"},
      {"text elsewhere",
       [](std::string& s, const Marks& m) { put32(s, m.name, static_cast<uint32_t>(m.name_part + 1)); },
       kPodCorrupt,
       "Name: refers to byte " + std::to_string(at.name_part + 1) + " where its part must begin at " +
           std::to_string(at.name_part)},
      {"text limit",
       [](std::string& s, const Marks& m) { put64(s, m.short_text, uint64_t{9} << 32 | (m.name_part + 5)); },
       kPodTextTooLong, "Short: text longer than 8"},
      {"array count", [](std::string& s, const Marks& m) { put64(s, m.values, 0xffffffff); }, kPodArrayCount,
       "Values: count 4294967295 exceeds what the record holds"},
      {"element", [](std::string& s, const Marks& m) { s[m.names_part + 16] = 0; }, kPodCorrupt,
       "Names[0]: text holds a NUL byte"},
      {"nested", [](std::string& s, const Marks& m) { put32(s, m.next_image + offsetof(All, flag), 3); },
       kPodCorrupt, "Next.Flag: boolean value 3"},
      {"case area", [](std::string& s, const Marks& m) { put32(s, m.where, 0); }, kPodCorrupt,
       "Where.IPV4Address: the union's area after this case is not zero"},
      {"unknown case", [](std::string& s, const Marks& m) { put32(s, m.where, 7); }, kPodCorrupt,
       "Where: discriminator 7 has no value, but its area is not zero"},
      {"selector", [](std::string& s, const Marks& m) { put32(s, m.image + offsetof(All, choice), 0); },
       kPodCorrupt, "Choice: discriminator 0 differs from Sel 1"},
      {"leftover", [](std::string& s, const Marks&) { s += '\0'; }, kPodCorrupt, "1 bytes after the record"},
      {"type", [](std::string&, const Marks&) {}, kPodWrongType,
       "header: a record of type codec_all, not codec_other", &other},
  };
  for (const Refusal& r : refusals) {
    Marks m;
    std::string record = all_record(&m);
    r.alter(record, m);
    All a{};
    EXPECT_EQ(decode(record, &a, r.desc), r.code) << r.what;
    EXPECT_EQ(pod_last_error(), r.detail) << r.what;
    EXPECT_TRUE(all_zero(a)) << r.what;
  }
}

TEST(PodDecode, FailsEachAllocationInTurnWithoutLeaking) {
  std::string record = all_record();
  int failures = 0;
  for (int64_t index = 0;; ++index) {
    All a{};
    pod_fail_allocation(index);
    cerr_t rc = decode(record, &a);
    pod_fail_allocation(-1);
    if (rc == kCerrOk) {
      EXPECT_EQ(release(&a), kCerrOk);
      break;
    }
    EXPECT_EQ(rc, kPodNoMemory) << index;
    EXPECT_TRUE(all_zero(a)) << index;
    ++failures;
  }
  // Name, Values, Names and its one text, Next: one allocation each.
  EXPECT_EQ(failures, 5);
}

TEST(PodDecode, KeepsAnUnknownDiscriminatorWithItsCaseZeroed) {
  Marks m;
  std::string record = all_record(&m);
  put32(record, m.where, 7);
  std::memset(&record[m.where + offsetof(codec_test::Address, bytes)], 0, 16);  // no case, so no value
  All a{};
  ASSERT_EQ(decode(record, &a), kCerrOk) << pod_last_error();
  EXPECT_EQ(a.where.family, 7u);
  EXPECT_EQ(std::memcmp(a.where.bytes, std::string(16, '\0').data(), 16), 0);
  EXPECT_EQ(encode(a), record);
  EXPECT_EQ(release(&a), kCerrOk);
}

// Large arrays' blocks are kept for later decodes: each decode must still get a block of its own size and
// see only its own values, whatever the record before it held.
TEST(PodDecode, ArraysOfChangingSizesDecodeWholeOneAfterAnother) {
  for (uint32_t count : {300u, 900u, 290u, 300u, 1u, 2000u}) {
    std::vector<uint32_t> values(count);
    for (uint32_t i = 0; i < count; ++i) values[i] = count * 1000 + i;
    All source{};
    source.values_count = count;
    source.values = values.data();
    All decoded{};
    ASSERT_EQ(decode(encode(source), &decoded), kCerrOk) << pod_last_error();
    ASSERT_EQ(decoded.values_count, count);
    EXPECT_EQ(std::vector<uint32_t>(decoded.values, decoded.values + count), values);
    EXPECT_EQ(release(&decoded), kCerrOk);
  }
}

TEST(PodDecode, RefusesDescriptorsThatDisagreeWithTheirSchema) {
  using Other = ostrel::pod::Tables<codec_test::kAllSchema>;
  static constexpr char kShifted[] = "$1={A}D{B}H;";
  using Shifted = ostrel::pod::Tables<kShifted>;
  static const pod_desc wrong_layout =
      test_desc("codec_all", Shifted::kLayout.data(), codec_test::kAllSchema, Other::kCompact.data());
  static const pod_desc wrong_compact =
      test_desc("codec_all", Other::kLayout.data(), codec_test::kAllSchema, "$1=D;");
  static const pod_desc unparsable = test_desc("codec_bad", Other::kLayout.data(), "$1={A}Q;", "$1=Q;");
  All a{};
  for (const pod_desc* d : {&wrong_layout, &wrong_compact, &unparsable}) {
    EXPECT_EQ(pod_decode("", 0, &a, d), kPodBadDescriptor) << d->schema_compact;
    EXPECT_EQ(pod_free_indirections(&a, d), kPodBadDescriptor);
  }
  EXPECT_EQ(pod_decode("", 0, &a, &unparsable), kPodBadDescriptor);
  EXPECT_EQ(pod_last_error(), "schema of codec_bad: unknown type letter at position 6");
}

TEST(PodFree, AnInjectedFaultStillReleasesEverything) {
  TestRoot root(R"({"faults": [{"op": "free_indirections", "type": "codec_all", "code": 1234}]})");
  std::string record = all_record();
  All a{};
  ASSERT_EQ(decode(record, &a), kCerrOk);
  EXPECT_EQ(release(&a), 1234u);
  EXPECT_EQ(a.name, nullptr);
  EXPECT_EQ(a.next, nullptr);
}

}  // namespace
}  // namespace ostrel::sim
