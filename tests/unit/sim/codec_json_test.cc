// Records as JSON: the conventions both ways, the errors that name a field's path, and the round trip over
// the record types that the views decode.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

#include "access/pod_descriptors.h"
#include "sim/cerr_codes.h"
#include "sim/codec/pod_codec.h"
#include "sim/codec/pod_json.h"
#include "sim/codec/pod_sample.h"
#include "tests/unit/sim/codec_test_schema.h"

namespace ostrel::sim {
namespace {

using codec_test::All;
using nlohmann::json;

const pod_desc* find_test_desc(std::string_view name) {
  return name == "codec_all" ? codec_test::all_desc() : nullptr;
}

// The JSON form of the hand-written record, which the decoder's tests read back as that JSON, encodes to the
// record's own bytes.
TEST(PodJson, EncodesEveryFieldKindAsTheWireFormatHasIt) {
  std::string bytes, err;
  ASSERT_TRUE(pod_encode_json(*codec_test::all_desc(), codec_test::all_json(), &bytes, &err)) << err;
  EXPECT_EQ(bytes, codec_test::all_record());
}

TEST(PodJson, AcceptsCNotationAndShortForms) {
  json value = json::parse(R"({"Flag": 1, "Small": "0xfe", "Mid": "011064", "Delta": "-5", "Big": "0x10",
                               "Raw": "ab", "Fixed": [{"B": "7"}],
                               "Where": {"IPV6Address": "abc"}, "Sel": "2", "Choice": {},
                               "Next": {"Where": "192.0.2.1"}})");
  std::string bytes, err;
  ASSERT_TRUE(pod_encode_json(*codec_test::all_desc(), value, &bytes, &err)) << err;
  All a{};
  ASSERT_EQ(pod_decode(bytes.data(), static_cast<uint32_t>(bytes.size()), &a, codec_test::all_desc()),
            kCerrOk);
  EXPECT_EQ(a.flag, 1u);
  EXPECT_EQ(a.small, 0xfe);
  EXPECT_EQ(a.mid, 0x1234);
  EXPECT_EQ(a.delta, -5);
  EXPECT_EQ(a.big, 16u);
  EXPECT_EQ(a.raw[0], 0xab);
  EXPECT_EQ(a.fixed[0].b, 7u);
  EXPECT_EQ(a.where.family, 1u);  // the case given alone chooses its family
  EXPECT_EQ(std::memcmp(a.where.bytes, "abc", 4), 0);
  EXPECT_EQ(a.choice.discriminator, 2u);  // an omitted union still follows its selector
  ASSERT_NE(a.next, nullptr);
  EXPECT_EQ(a.next->where.family, 0u);
  EXPECT_EQ(std::memcmp(a.next->where.bytes, "\xc0\x00\x02\x01", 4), 0);
  EXPECT_EQ(pod_free_indirections(&a, codec_test::all_desc()), kCerrOk);
}

TEST(PodJson, NamesTheFieldOfEveryError) {
  const struct {
    const char* value;
    const char* error;
  } cases[] = {
      {R"({"Flag": 2})", "Flag: expected a boolean"},
      {R"({"Flag": "true"})", "Flag: expected a boolean"},
      {R"({"Small": 256})", "Small: 256 is out of range for an unsigned 8-bit field"},
      {R"({"Delta": "0x80000000"})", "Delta: 0x80000000 is out of range for a signed 32-bit field"},
      {R"({"Count": -1})", "Count: -1 is out of range for an unsigned 32-bit field"},
      {R"({"Count": "12abc"})", "Count: expected an integer"},
      {R"({"Values": [1, 1.5]})", "Values[1]: expected an integer"},
      {R"({"Addr": "10.0.0"})", "Addr: expected an IPv4 address in dotted-quad text"},
      {R"({"Short": "123456789"})", "Short: text longer than 8"},
      {R"({"Name": 5})", "Name: expected a text or null"},
      {R"({"Raw": "abc"})", "Raw: expected hexadecimal text of at most 4 bytes"},
      {R"({"Raw": "0102030405"})", "Raw: expected hexadecimal text of at most 4 bytes"},
      {R"({"Label": "1234567"})", "Label: expected a text of at most 6 characters up to U+00FF"},
      {R"({"Bogus": 1})", "Bogus: unknown field"},
      {R"({"Fixed": [{}, {}, {}, {}]})", "Fixed: more than 3 elements"},
      {R"({"Fixed": [{}, {"C": 1}]})", "Fixed[1].C: unknown field"},
      {R"({"Names": ["a", 5]})", "Names[1]: expected a text or null"},
      {R"({"Next": {"Where": {"AFName": 1, "IPV4Address": "10.0.0.1"}}})",
       "Next.Where.IPV4Address: this case is 0 but AFName is 1"},
      {R"({"Where": {"AFName": 0, "Port": 1}})", "Where.Port: unknown field"},
      {R"({"Where": 5})", "Where: expected an object"},
      {R"({"Sel": 1, "Choice": {"Number": 5}})", "Choice.Number: this case is 0 but Sel is 1"},
      {R"({"Sel": 1, "Choice": {"Pair": {"A": 70000}}})",
       "Choice.Pair.A: 70000 is out of range for an unsigned 16-bit field"},
      {R"([1])", "expected an object"},
  };
  for (const auto& c : cases) {
    std::string bytes, err;
    EXPECT_FALSE(pod_encode_json(*codec_test::all_desc(), json::parse(c.value), &bytes, &err)) << c.value;
    EXPECT_EQ(err, c.error) << c.value;
  }
}

// JSON -> bytes -> JSON settles after one pass, and bytes -> JSON -> bytes is the identity, for
// samples on several union cases; every cut of a record is refused as truncated.
void round_trip(const pod_desc& desc, const pod_desc* (*find)(std::string_view)) {
  for (uint32_t seed = 0; seed < 4; ++seed) {
    std::string bytes, again, err;
    ASSERT_TRUE(pod_encode_json(desc, pod_sample_json(desc, seed), &bytes, &err)) << desc.name << ": " << err;
    json first, second;
    ASSERT_TRUE(pod_json_from_record(bytes.data(), bytes.size(), find, &first, &err)) << err;
    ASSERT_TRUE(pod_encode_json(desc, first, &again, &err)) << desc.name << ": " << err;
    EXPECT_EQ(again, bytes) << desc.name;
    ASSERT_TRUE(pod_json_from_record(again.data(), again.size(), find, &second, &err)) << err;
    EXPECT_EQ(second, first) << desc.name;
    if (seed != 0) continue;
    // A cut inside an array's elements leaves too few bytes for its count, which is refused first; a refused
    // record leaves the structure zero, whatever it held.
    const size_t size = desc.layout[0].size;
    std::vector<uint64_t> structure(size / 8 + 1);
    auto* image = reinterpret_cast<unsigned char*>(structure.data());
    for (size_t length = 0; length < bytes.size(); ++length) {
      std::memset(image, 0xff, size);
      cerr_t rc = pod_decode(bytes.data(), static_cast<uint32_t>(length), image, &desc);
      EXPECT_TRUE(rc == kPodTruncated || rc == kPodArrayCount) << desc.name << " cut at " << length;
      EXPECT_EQ(std::count(image, image + size, 0), static_cast<std::ptrdiff_t>(size)) << desc.name;
    }
  }
}

TEST(PodJson, RoundTripsTheTestTypeAndEveryTypeOfTheProgram) {
  round_trip(*codec_test::all_desc(), find_test_desc);
  for (auto group : {ostrel_mrib_pods(), ostrel_mfwd_pods()})
    for (const pod_desc* desc : group) round_trip(*desc, ostrel_find_pod_desc);
}

}  // namespace
}  // namespace ostrel::sim
