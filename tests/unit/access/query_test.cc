// The shared cycles over a simulated store: batches and resume keys under each batch rule, and the single
// item's data-type check. (Other per-item and listing failures are tested through the views, in the route
// cases.)
#include "access/query.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "../sim/test_root.h"
#include "access/pod_records.h"

namespace {

constexpr char kDir[] = "/oper/ipv4-mrib/gl/act/table/default/";

// A fixture of `count` summary records named s0000, s0001, ... whose GRoutes count their position.
std::string summaries(int count, const std::string& extra_items = "") {
  std::string items;
  for (int i = 0; i < count; ++i) {
    char name[16];
    std::snprintf(name, sizeof name, "s%04d", i);
    items += std::string(i ? "," : "") + R"({"path": ")" + kDir + "sums/" + name +
             R"(", "type": "mrib_db_summ_pod", "value": {"GRoutes": )" + std::to_string(i) + "}}";
  }
  if (!extra_items.empty()) items += (count ? "," : "") + extra_items;
  return R"({"items": [)" + items + "]}";
}

struct Walk {
  std::vector<uint32_t> seen;
  int first_calls = 0;
};

class QueryTest : public ::testing::Test {
 protected:
  void bind() { ASSERT_EQ(vellum_bind(&handle_, kDir, 0), 0u); }
  void TearDown() override {
    if (handle_ != nullptr) (void)vellum_unbind(handle_);
  }

  ListOutcome list(const char* dir, Walk* walk, BatchRule rule = BatchRule::kMoreFlag, bool keyed = false) {
    std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "%s", dir);
    ListCycle<mrib_db_summ_pod, Walk> cycle{
        .handle = handle_,
        .texts = {.not_available = "No MRIB summaries"},
        .rule = rule,
        .context = walk,
        .on_first_batch = [](Walk* w) { ++w->first_calls; },
        .print = [](const mrib_db_summ_pod& r, Walk* w) { w->seen.push_back(r.GRoutes); }};
    // A view's own key, from the record: the name of the summary whose GRoutes it holds. It gives up after
    // a thousand records, so that a walk that goes round in circles ends the test instead of hanging it.
    if (keyed) {
      cycle.resume_key = [](const mrib_db_summ_pod& r, char* key, size_t size, Walk* w) {
        if (w->seen.size() > 1000) return false;
        std::snprintf(key, size, "s%04u", r.GRoutes);
        return true;
      };
    }
    return ostrel_list_cycle(cycle);
  }

  vellum_handle_t handle_ = nullptr;
};

// The default key is the last item's path; each rule ends the walk after the last batch.
TEST_F(QueryTest, EveryItemOnceAcrossBatchesResumingAfterTheLastPath) {
  ostrel::sim::TestRoot root(summaries(600));
  bind();
  for (BatchRule rule : {BatchRule::kMoreFlag, BatchRule::kFullBatch}) {
    Walk walk;
    testing::internal::CaptureStderr();
    ListOutcome outcome = list("sums/", &walk, rule);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    ASSERT_EQ(walk.seen.size(), 600u);
    for (uint32_t i = 0; i < walk.seen.size(); ++i) EXPECT_EQ(walk.seen[i], i);
    EXPECT_EQ(walk.first_calls, 1);
    EXPECT_TRUE(outcome.listed_any);
    EXPECT_STREQ(ostrel_resume_key, (std::string(kDir) + "sums/s0599").c_str());
  }
}

// A view's key comes from the last record printed: an item that fails to decode at the end of a batch is
// read again with the next batch, but the walk neither restarts nor skips anything.
TEST_F(QueryTest, AViewsKeyComesFromTheLastRecordPrinted) {
  // "s0254z" sorts between s0254 and s0255: the 256th item, the last of the first batch.
  std::string bad = std::string(R"({"path": ")") + kDir + R"(sums/s0254z", "datatype": 7, "hex": "00ff"})";
  std::string fixture = summaries(300, bad);
  ostrel::sim::TestRoot root(fixture);
  bind();
  Walk walk;
  testing::internal::CaptureStderr();
  list("sums/", &walk, BatchRule::kMoreFlagAndDecoded, true);
  std::string err = testing::internal::GetCapturedStderr();
  ASSERT_EQ(walk.seen.size(), 300u);
  for (uint32_t i = 0; i < 300; ++i) EXPECT_EQ(walk.seen[i], i);
  EXPECT_EQ(std::count(err.begin(), err.end(), '\n'), 2) << err;
}

// A view that checks the data type skips an item of another type before decoding it. (One that does not,
// and a missing item, are in the route_ole and route_show cases.)
TEST_F(QueryTest, TheItemCycleChecksTheDataTypeWhenTheViewAsks) {
  std::string odd = std::string(R"({"path": ")") + kDir + R"(odd", "datatype": 8, "hex": "00"})";
  ostrel::sim::TestRoot root(summaries(1, odd));
  bind();
  int printed = 0;
  testing::internal::CaptureStderr();
  for (const char* path : {"odd", "sums/s0000"}) {
    std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "%s", path);
    EXPECT_EQ(ostrel_item_cycle(ItemCycle<mrib_db_summ_pod, int>{
                  .handle = handle_,
                  .texts = {.not_available = "No MRIB summaries"},
                  .check_data_type = true,
                  .context = &printed,
                  .print = [](const mrib_db_summ_pod&, int* count) { ++*count; }}),
              kCerrOk);
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Unexpected datatype: 8\n");
  EXPECT_EQ(printed, 1);
}

// A view with texts of its own gets them; a key that would not move the walk past the last item read ends
// it with the view's line instead of reading the same batch for ever; a failed listing gives its code.
TEST_F(QueryTest, AViewsOwnTextsAndAKeyThatDoesNotMoveTheWalkOn) {
  std::string odd = std::string(R"({"path": ")") + kDir + R"(sums/s0001a", "datatype": 8, "hex": "00"})";
  ostrel::sim::TestRoot root(summaries(300, odd));
  bind();
  static constexpr CycleMessages kMessages{.data_type = "odd type %x\n"};
  Walk walk;
  ListCycle<mrib_db_summ_pod, Walk> cycle{
      .handle = handle_,
      .messages = &kMessages,
      .context = &walk,
      .print = [](const mrib_db_summ_pod& r, Walk* w) { w->seen.push_back(r.GRoutes); },
      .resume_key = [](const mrib_db_summ_pod&, char* key, size_t size,
                       Walk*) { return std::snprintf(key, size, "s0001") > 0; },
      .stalled = "the listing cannot be resumed\n"};
  std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "sums/");
  testing::internal::CaptureStderr();
  EXPECT_FALSE(ostrel_list_cycle(cycle).failed);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "odd type 8\nthe listing cannot be resumed\n");
  EXPECT_EQ(walk.seen.size(), 255u);

  std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "missing/");
  ListOutcome outcome = ostrel_list_cycle(cycle);
  EXPECT_TRUE(outcome.failed);
  EXPECT_EQ(outcome.code, kOstrelNotFound);

  // A view whose walk ends at the first item it cannot show, named in its message; unchecked, the odd item
  // goes to the decoder instead.
  static constexpr CycleMessages kNamed{.name = "view", .data_type = {"%s: odd type %x\n", true}};
  cycle.messages = &kNamed;
  cycle.item_failure = ItemFailure::kEndWalk;
  cycle.rule = BatchRule::kOneBatch;
  std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "sums/");
  for (bool check : {true, false}) {
    walk.seen.clear();
    cycle.check_data_type = check;
    testing::internal::CaptureStderr();
    ostrel_list_cycle(cycle);
    std::string err = testing::internal::GetCapturedStderr();
    EXPECT_EQ(err.rfind(check ? "view: odd type 8\n" : "Error decoding pod ", 0), 0u) << err;
    EXPECT_EQ(walk.seen, (std::vector<uint32_t>{0, 1}));
  }
}

}  // namespace
