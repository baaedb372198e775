// vellumctl dump's lines: the subtree walk's order, the item JSON form that get prints too, the line of a
// record that does not decode, and that the lines read back as fixture items give the same store.
#include <gtest/gtest.h>

#include <string>

#include "../sim/test_root.h"
#include "access/pod_descriptors.h"
#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "sim/codec/pod_sample.h"
#include "sim/store/store_walk.h"
#include "tools/fixture/fixture_encode.h"

namespace ostrel::tools {
namespace {

using nlohmann::json;
using sim::kStoreNotFound;
using sim::StoreWalk;
using sim::TestRoot;
using sim::WalkedItem;

// The lines of every item below `dir` of the current root, or the walk's status when it does not end well.
std::string dump(const std::string& dir) {
  StoreWalk walk;
  if (cerr_t status = walk.start(dir)) return std::string("start: ").append(std::to_string(status));
  ItemJsonWriter items;
  std::string lines;
  WalkedItem item;
  cerr_t status;
  while ((status = walk.next(&item)) == kCerrOk)
    items.append(item.path, item.datatype, item.data, item.length, &lines);
  return status == kStoreNotFound ? lines : std::string("next: ").append(std::to_string(status));
}

std::string hex_of(const std::string& bytes) {
  std::string hex;
  for (unsigned char byte : bytes) hex += "0123456789abcdef"[byte >> 4], hex += "0123456789abcdef"[byte & 15];
  return hex;
}

constexpr char kRoute[] = R"({"Source": "10.0.0.1",
    "GroupRange": {"GroupPrefix": "232.1.1.1", "GroupPrefixLength": 32},
    "Interfaces": [{}, {"Interface": "0x100", "InterfaceAttributes": {"IsForward": false}}],
    "Annotation": "", "Uptime": "0x10", "NSFEntryAttributes": {}, "InPDRetryList": false})";

TEST(Dump, WalksTheSubtreeInListingOrderAndGoesOnPastABadRecord) {
  std::string summary;
  std::string problem;
  ASSERT_TRUE(encode_typed_value("mrib_db_summ_pod", {{"GroupRanges", 2}}, &summary, &problem)) << problem;
  std::string cut = hex_of(summary.substr(0, summary.size() - 1));
  TestRoot root(std::string(R"({"items": [
      {"path": "/d/d", "type": "mrib_route_pod", "value": )") +
                kRoute + R"(},
      {"path": "/d/c/x", "type": "mrib_db_summ_pod", "value": {"GroupRanges": 2}},
      {"path": "/d/cut", "datatype": 7, "hex": ")" +
                cut + R"("},
      {"path": "/d/c-1", "datatype": 8, "hex": "01"},
      {"path": "/d/f", "type": "mrib_filter_pod", "value": {"FilterInterest": {}, "FilterOwned": null}},
      {"path": "/e/y", "datatype": 8, "hex": "02"}]})");
  std::string lines = dump("/d");
  // "c-1" lists before the subdirectory "c/", which lists before "cut".
  std::string before_cut =
      "{\"path\":\"/d/c-1\",\"datatype\":8,\"hex\":\"01\"}\n"
      "{\"path\":\"/d/c/x\",\"type\":\"mrib_db_summ_pod\",\"value\":{\"GroupRanges\":2}}\n"
      "{\"path\":\"/d/cut\",\"type\":\"mrib_db_summ_pod\",\"error\":\"";
  // Only fields that are set, in schema order; an empty text and a pointer to a zero value are set.
  std::string after_cut =
      "\",\"hex\":\"" + cut + "\"}\n" +
      "{\"path\":\"/d/d\",\"type\":\"mrib_route_pod\",\"value\":{\"Source\":\"10.0.0.1\","
      "\"GroupRange\":{\"GroupPrefix\":\"232.1.1.1\",\"GroupPrefixLength\":32},"
      "\"Interfaces\":[{},{\"Interface\":256}],\"Annotation\":\"\",\"Uptime\":16}}\n"
      "{\"path\":\"/d/f\",\"type\":\"mrib_filter_pod\",\"value\":{\"FilterInterest\":{}}}\n";
  ASSERT_GT(lines.size(), before_cut.size() + after_cut.size()) << lines;
  EXPECT_EQ(lines.substr(0, before_cut.size()), before_cut);
  EXPECT_EQ(lines.substr(lines.size() - after_cut.size()), after_cut);

  EXPECT_EQ(dump("/d/c/"),
            "{\"path\":\"/d/c/x\",\"type\":\"mrib_db_summ_pod\",\"value\":{\"GroupRanges\":2}}\n");
  EXPECT_EQ(dump("/d/none/"), std::string("start: ").append(std::to_string(kStoreNotFound)));
}

// Every item below `dir` as its path and its bytes in hexadecimal.
std::string records(const std::string& dir) {
  StoreWalk walk;
  std::string out;
  WalkedItem item;
  if (walk.start(dir) != kCerrOk) return out;
  while (walk.next(&item) == kCerrOk) {
    out += std::string(item.path) + " " +
           hex_of(std::string(static_cast<const char*>(item.data), item.length)) + "\n";
  }
  return out;
}

// Left-out fields are what an encoder fills in, so the lines are fixture items that build the same records:
// sparse ones, and the samples of every record type of the program on two union cases.
TEST(Dump, LinesAreFixtureItemsOfTheSameRecords) {
  nlohmann::json fixture;
  fixture["items"].push_back(
      {{"path", "/r/route"}, {"type", "mrib_route_pod"}, {"value", json::parse(kRoute)}});
  for (auto group : {ostrel_mrib_pods(), ostrel_mfwd_pods()}) {
    for (const pod_desc* desc : group) {
      for (uint32_t seed : {0u, 1u}) {
        fixture["items"].push_back({{"path", "/r/" + std::string(desc->name) + std::to_string(seed)},
                                    {"type", desc->name},
                                    {"value", sim::pod_sample_json(*desc, seed)}});
      }
    }
  }
  std::string lines, built;
  {
    TestRoot root(fixture.dump());
    lines = dump("/");
    built = records("/");
  }
  std::string items;
  for (size_t start = 0, end; (end = lines.find('\n', start)) != std::string::npos; start = end + 1) {
    if (!items.empty()) items += ',';
    items.append(lines, start, end - start);
  }
  TestRoot again("{\"items\": [" + items + "]}");
  EXPECT_EQ(records("/"), built);
}

}  // namespace
}  // namespace ostrel::tools
