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
#include "access/output.h"
#include "access/pod_records.h"
#include "access/switches.h"

namespace {

constexpr char kDir[] = "/oper/ipv4-mrib/gl/act/table/default/";
constexpr char kInjected[] = "'platform' detected the 'error' condition 'Injected failure'";

// A fixture of `count` summary records named s0000, s0001, ... whose GRoutes count their position.
std::string summaries(int count, const std::string& extra_items = "", const std::string& faults = "") {
  std::string items;
  for (int i = 0; i < count; ++i) {
    char name[16];
    std::snprintf(name, sizeof name, "s%04d", i);
    items += std::string(i ? "," : "") + R"({"path": ")" + kDir + "sums/" + name +
             R"(", "type": "mrib_db_summ_pod", "value": {"GRoutes": )" + std::to_string(i) + "}}";
  }
  if (!extra_items.empty()) items += (count ? "," : "") + extra_items;
  return R"({"dirs": [")" + std::string(kDir) + R"(empty/"], "items": [)" + items + R"(], "faults": [)" +
         faults + "]}";
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
    ostrel_debug = 0;
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

// A full last batch ends the walk on the more flag or, by size, on the empty batch after it.
TEST_F(QueryTest, EveryItemOnceAcrossBatchesResumingAfterTheLastPath) {
  for (int count : {600, 512}) {
    ostrel::sim::TestRoot root(summaries(count));
    bind();
    for (BatchRule rule : {BatchRule::kMoreFlag, BatchRule::kFullBatch}) {
      Walk walk;
      testing::internal::CaptureStderr();
      ListOutcome outcome = list("sums/", &walk, rule);
      EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
      ASSERT_EQ(walk.seen.size(), static_cast<size_t>(count));
      for (uint32_t i = 0; i < walk.seen.size(); ++i) EXPECT_EQ(walk.seen[i], i);
      EXPECT_EQ(walk.first_calls, 1);
      EXPECT_TRUE(outcome.listed_any);
      char last[16];
      std::snprintf(last, sizeof last, "s%04d", count - 1);
      EXPECT_STREQ(ostrel_resume_key, (std::string(kDir) + "sums/" + last).c_str());
    }
    (void)vellum_unbind(handle_);
    handle_ = nullptr;
  }
}

TEST_F(QueryTest, MoreFlagAndFreeFailuresAreReported) {
  std::string faults = std::string(R"({"op": "more", "path": ")") + kDir + R"(sums/"},)" +
                       R"({"op": "datalist_free", "path": ")" + kDir + R"(sums/"})";
  ostrel::sim::TestRoot root(summaries(300, "", faults));
  bind();
  Walk walk;
  testing::internal::CaptureStderr();
  list("sums/", &walk);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string("Error in getting more flag ") + kInjected +
                                                        "\nFreeing result data-list " + kInjected + "\n");
  EXPECT_EQ(walk.seen.size(), 256u);
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

// A view that checks the data type skips an item of another type before decoding it; one that does not
// hands it to the decoder. A missing item prints the view's text and returns the store's code.
TEST_F(QueryTest, TheItemCycleChecksTheDataTypeWhenTheViewAsks) {
  std::string odd = std::string(R"({"path": ")") + kDir + R"(odd", "datatype": 8, "hex": "00"})";
  ostrel::sim::TestRoot root(summaries(1, odd));
  bind();
  int printed = 0;
  auto fetch = [&](const char* path, bool check_data_type) {
    std::snprintf(ostrel_query_path, sizeof ostrel_query_path, "%s", path);
    return ostrel_item_cycle(ItemCycle<mrib_db_summ_pod, int>{
        .handle = handle_,
        .texts = {.not_available = "No MRIB summaries", .not_found = "No such summary\n"},
        .check_data_type = check_data_type,
        .context = &printed,
        .print = [](const mrib_db_summ_pod&, int* count) { ++*count; }});
  };
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  EXPECT_EQ(fetch("odd", true), kCerrOk);
  EXPECT_EQ(fetch("sums/s0000", true), kCerrOk);
  EXPECT_EQ(fetch("missing", true), kOstrelNotFound);
  EXPECT_EQ(fetch("odd", false), kCerrOk);
  ostrel_out_flush();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "No such summary\n");
  std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.rfind("Unexpected datatype: 8\nError decoding pod ", 0), 0u) << err;
  EXPECT_EQ(printed, 1);
}

}  // namespace
