// The table and item printers: when the header is printed, what reaches the record callback, the messages
// for items that cannot be shown, and the return values.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "platform/show.h"
#include "platform/text.h"
#include "sim/cerr_codes.h"
#include "test_root.h"

namespace ostrel::sim {
namespace {

using nlohmann::json;

json summary(const std::string& path, uint32_t groups) {
  return {{"path", path}, {"type", "mrib_db_summ_pod"}, {"value", {{"GroupRanges", groups}, {"GRoutes", 1}}}};
}

std::string show_fixture() {
  json items = json::array();
  for (uint32_t i = 0; i < 300; ++i) {
    char name[32];
    std::snprintf(name, sizeof name, "/big/s%04u", i);
    items.push_back(summary(name, i));
  }
  for (const char* path : {"/short/a", "/short/b", "/short/c"}) items.push_back(summary(path, 7));
  uint32_t groups = 0;
  for (const char* path : {"/faulty/a", "/faulty/b", "/faulty/c"}) items.push_back(summary(path, ++groups));
  items.push_back(summary("/mixed/a", 1));
  items.push_back(summary("/mixed/d", 4));
  items.push_back(summary("/one/summary", 42));
  for (auto [path, type] : {std::pair{"/mixed/b", 8}, {"/mixed/c", 7}, {"/bad/only", 9}, {"/one/raw", 8}})
    items.push_back({{"path", path}, {"datatype", type}, {"hex", "00"}});
  json fixture;
  fixture["dirs"] = {"/empty/"};
  fixture["items"] = items;
  fixture["faults"] = {{{"op", "next"}, {"path", "/faulty/"}, {"index", 1}, {"code", 0x40cc0003}},
                       {{"op", "more"}, {"path", "/short/"}, {"code", 0x40cc0004}}};
  return fixture.dump();
}

// What the callbacks saw, in order: "header" or the record's GroupRanges.
std::vector<std::string> seen;
int context_value = 0;

void on_header(void* context) {
  seen.push_back(context ? "header+context" : "header");
}
void on_record(void* structure, void* context) {
  seen.push_back(std::to_string(static_cast<mrib_db_summ_pod*>(structure)->GroupRanges));
  if (context) ++*static_cast<int*>(context);
}

class ShowTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() { root_ = new TestRoot(show_fixture()); }
  static void TearDownTestSuite() { delete root_; }
  void SetUp() override {
    seen.clear();
    context_value = 0;
    ASSERT_EQ(vellum_bind(&handle_, "/", 0), kCerrOk);
  }
  void TearDown() override { EXPECT_EQ(vellum_unbind(handle_), kCerrOk); }

  cerr_t table(const char* dir, std::string* err, uint32_t* listed = nullptr) {
    ::testing::internal::CaptureStderr();
    cerr_t status = mcast_show_table(handle_, dir, 256, on_header, on_record, &record_,
                                     &ostrel_mrib_db_summ_pod_desc, 0, &context_value, listed);
    *err = ::testing::internal::GetCapturedStderr();
    return status;
  }

  cerr_t item(const char* path, mcast_show_header_fn header) {
    return mcast_show_item(handle_, path, header, on_record, &record_, &ostrel_mrib_db_summ_pod_desc, 0,
                           nullptr);
  }

  static TestRoot* root_;
  vellum_handle_t handle_ = nullptr;
  mrib_db_summ_pod record_{};
};
TestRoot* ShowTest::root_ = nullptr;

TEST_F(ShowTest, TablePrintsTheHeaderOnceBeforeTheFirstRecordAcrossBatches) {
  std::string err;
  uint32_t listed = 0;
  EXPECT_EQ(table("big/", &err, &listed), kCerrOk);
  EXPECT_EQ(listed, 300u);
  ASSERT_EQ(seen.size(), 301u);
  EXPECT_EQ(seen[0], "header+context");
  for (uint32_t i = 0; i < 300; ++i) EXPECT_EQ(seen[i + 1], std::to_string(i));
  EXPECT_EQ(context_value, 300);
  EXPECT_EQ(err, "");
}

TEST_F(ShowTest, AFailedMoreFlagEndsTheTableAfterItsBatch) {
  ::testing::internal::CaptureStderr();
  EXPECT_EQ(mcast_show_table(handle_, "short/", 2, nullptr, on_record, &record_,
                             &ostrel_mrib_db_summ_pod_desc, 0, nullptr, nullptr),
            kCerrOk);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            std::string("Error in getting more flag ") + cerr_strerror(0x40cc0004) + "\n");
  EXPECT_EQ(seen, (std::vector<std::string>{"7", "7"}));
}

// An empty directory and one whose items could not be shown both succeed; what they listed tells them apart.
TEST_F(ShowTest, ItemsThatCannotBeShownAreReportedAndSkippedAndNoRecordMeansNoHeader) {
  std::string err;
  EXPECT_EQ(table("mixed", &err), kCerrOk);
  EXPECT_EQ(seen, (std::vector<std::string>{"header+context", "1", "4"}));
  EXPECT_EQ(err.rfind("Unexpected datatype: 8\nError decoding pod ", 0), 0u) << err;
  seen.clear();
  uint32_t listed = 7;
  EXPECT_EQ(table("empty/", &err, &listed), kCerrOk);
  EXPECT_EQ(listed, 0u);
  EXPECT_EQ(table("bad/", &err, &listed), kCerrOk);
  EXPECT_EQ(listed, 1u);
  EXPECT_EQ(err, "Unexpected datatype: 9\n");
  EXPECT_TRUE(seen.empty());
  listed = 7;
  EXPECT_EQ(table("missing/", &err, &listed), kStoreNotFound);
  EXPECT_EQ(listed, 0u);
  EXPECT_TRUE(seen.empty());
}

TEST_F(ShowTest, AnItemThatCannotBeReadEndsTheTable) {
  std::string err;
  EXPECT_EQ(table("faulty/", &err), 0x40cc0003u);
  EXPECT_EQ(seen, (std::vector<std::string>{"header+context", "1"}));
  EXPECT_EQ(err, std::string("Reading result data-list ") + cerr_strerror(0x40cc0003) + "\n");
}

TEST_F(ShowTest, ItemIsShownWithoutContextOrReadOnly) {
  EXPECT_EQ(item("one/summary", on_header), kCerrOk);
  EXPECT_EQ(seen, (std::vector<std::string>{"header", "42"}));
  EXPECT_EQ(context_value, 0);
  EXPECT_EQ(item("one/missing", on_header), kStoreNotFound);
  ::testing::internal::CaptureStderr();
  EXPECT_NE(item("one/raw", nullptr), kCerrOk);
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Unexpected datatype: 8\n");
  EXPECT_EQ(seen.size(), 2u);

  // Reading only needs no callbacks.
  seen.clear();
  EXPECT_EQ(mcast_show_item(handle_, "one/raw", nullptr, nullptr, nullptr, nullptr, 0, nullptr), kCerrOk);
  EXPECT_EQ(mcast_show_item(handle_, "one/missing", nullptr, nullptr, nullptr, nullptr, 0, nullptr),
            kStoreNotFound);
  EXPECT_EQ(mcast_show_table(handle_, "mixed/", 256, nullptr, nullptr, nullptr, nullptr, 0, nullptr, nullptr),
            kCerrOk);
  EXPECT_TRUE(seen.empty());
}

}  // namespace
}  // namespace ostrel::sim
