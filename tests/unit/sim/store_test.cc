// The simulated state store: batches, resume keys, the more-flag, not-found codes, aliases, name lists,
// unbound handles and the store's injected faults.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>
#include <sqlite3.h>

#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "test_root.h"

namespace ostrel::sim {
namespace {

using nlohmann::json;
using Names = std::vector<std::string>;

std::string item_name(int i) {
  char name[16];
  std::snprintf(name, sizeof name, "i%04d", i);
  return name;
}

// Adds `count` raw items i0000, i0001, ... below `dir`.
void add_items(json& items, const std::string& dir, int count) {
  for (int i = 0; i < count; ++i)
    items.push_back({{"path", dir + item_name(i)}, {"datatype", 7}, {"hex", "00"}});
}

struct Handle {
  vellum_handle_t handle = nullptr;
  explicit Handle(const char* path) { EXPECT_EQ(vellum_bind(&handle, path, 0), kCerrOk) << path; }
  ~Handle() { EXPECT_TRUE(!handle || vellum_unbind(handle) == kCerrOk); }
};

struct Batch {
  cerr_t status = 0;
  Names paths;
  uint32_t more = 0;
};

// One data-list call read to its end, the list freed.
Batch read_batch(vellum_handle_t handle, const char* dir, const std::string& resume, uint32_t count) {
  Batch batch;
  vellum_datalist_t list = nullptr;
  batch.status = vellum_datalist(handle, dir, resume.c_str(), &count, &list, 0);
  if (batch.status) {
    EXPECT_EQ(list, nullptr);
    return batch;
  }
  for (uint32_t i = 0; i < count; ++i) {
    const char* path = nullptr;
    uint32_t type = 0, length = 0, flags = 1;
    const void* data = nullptr;
    EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
    batch.paths.push_back(path);
  }
  EXPECT_EQ(vellum_datalist_get_more_flag(list, &batch.more), kCerrOk);
  EXPECT_EQ(vellum_datalist_free(list), kCerrOk);
  return batch;
}

// The names a name list gives, or its status when it fails.
Names list_names(vellum_handle_t handle, const char* path, const char* after, int32_t count,
                 cerr_t* status = nullptr) {
  Names names;
  vellum_list_t list = nullptr;
  int32_t wanted = count;
  cerr_t rc = vellum_list(handle, path, after, &wanted, &list);
  if (status) *status = rc;
  if (rc) {
    EXPECT_EQ(list, nullptr);
    return names;
  }
  const char* name = nullptr;
  while (vellum_list_next(list, &name) == kCerrOk && name) names.push_back(name);
  EXPECT_EQ(static_cast<size_t>(wanted), names.size());
  return names;
}

// One root for the whole suite: nothing can change it.
class StoreTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    json items = json::array();
    add_items(items, "/big/", 600);
    add_items(items, "/exact/", 256);
    for (const char* name : {"a", "B", "_"})
      items.push_back({{"path", std::string("/order/") + name}, {"datatype", 8}, {"hex", "6869"}});
    items.push_back({{"path", "/order/sub/x"}, {"datatype", 7}, {"hex", ""}});
    items.push_back({{"path", "/routes/0a000001,e8010101,32"},
                     {"aliases", {"/routes/10.0.0.1,232.1.1.1,32"}},
                     {"datatype", 7},
                     {"hex", "c0ffee"}});
    root_ = new TestRoot(json{{"dirs", {"/empty/"}}, {"items", items}}.dump());
  }
  static void TearDownTestSuite() { delete root_; }
  static TestRoot* root_;
  Handle top_{"/"};
};
TestRoot* StoreTest::root_ = nullptr;

// A batch that ends the directory exactly has no more; resume keys count by their last element.
TEST_F(StoreTest, ListsEveryItemOnceInBatchesResumingAfterTheLastPath) {
  std::vector<size_t> sizes;
  std::vector<uint32_t> mores;
  Names all;
  std::string resume;
  Batch batch;
  do {
    batch = read_batch(top_.handle, "big/", resume, 256);
    ASSERT_EQ(batch.status, kCerrOk);
    sizes.push_back(batch.paths.size());
    mores.push_back(batch.more);
    all.insert(all.end(), batch.paths.begin(), batch.paths.end());
    if (!batch.paths.empty()) resume = batch.paths.back();
  } while (batch.more && sizes.size() < 10);
  EXPECT_EQ(sizes, (std::vector<size_t>{256, 256, 88}));
  EXPECT_EQ(mores, (std::vector<uint32_t>{1, 1, 0}));
  ASSERT_EQ(all.size(), 600u);
  for (int i = 0; i < 600; ++i) EXPECT_EQ(all[i], "/big/" + item_name(i));

  batch = read_batch(top_.handle, "/exact/", "", 256);
  EXPECT_EQ(batch.paths.size(), 256u);
  EXPECT_EQ(batch.more, 0u);
  EXPECT_EQ(read_batch(top_.handle, "/exact/", "", 255).more, 1u);
  batch = read_batch(top_.handle, "/exact/", "i0255", 256);
  EXPECT_TRUE(batch.paths.empty());
  EXPECT_EQ(batch.more, 0u);
  for (const char* resume : {"i0255", "/big/i0255", "/elsewhere/i0255", "routedb/i0255", "i0255zz"})
    EXPECT_EQ(read_batch(top_.handle, "big", resume, 1).paths, Names{"/big/i0256"}) << resume;
}

TEST_F(StoreTest, DirectoriesResolveBelowTheHandleAndMissingOnesAreNotFound) {
  Handle big("/big");
  EXPECT_EQ(read_batch(big.handle, "", "", 2).paths, (Names{"/big/i0000", "/big/i0001"}));
  EXPECT_EQ(read_batch(top_.handle, "/big", "", 1).paths, Names{"/big/i0000"});
  // Items are listed in byte order; subdirectories are not items.
  EXPECT_EQ(read_batch(top_.handle, "order/", "", 256).paths, (Names{"/order/B", "/order/_", "/order/a"}));
  for (const char* dir : {"empty/", "order/sub/", "/"}) {
    Batch batch = read_batch(top_.handle, dir, "", 256);
    EXPECT_EQ(batch.status, kCerrOk) << dir;
    EXPECT_EQ(batch.more, 0u) << dir;
  }
  // Paths are names, not file-system paths: ".." means nothing to the store.
  for (const char* dir : {"big/x/..", "nope/", "big/i0001"})
    EXPECT_EQ(read_batch(top_.handle, dir, "", 256).status, kStoreNotFound) << dir;
  Handle nowhere("/not/there/yet/");
  EXPECT_EQ(read_batch(nowhere.handle, "", "", 256).status, kStoreNotFound);
}

// The alias is reachable only by item get.
TEST_F(StoreTest, ItemGetReturnsACallerOwnedCopyByPathOrAlias) {
  for (const char* path : {"routes/0a000001,e8010101,32", "/routes/10.0.0.1,232.1.1.1,32"}) {
    uint32_t type = 0, length = 0;
    void* data = nullptr;
    ASSERT_EQ(vellum_item_get(top_.handle, path, &type, &data, &length, 0), kCerrOk) << path;
    EXPECT_EQ(type, 7u);
    EXPECT_EQ(std::string(static_cast<char*>(data), length), "\xc0\xff\xee");
    std::free(data);
  }
  EXPECT_EQ(read_batch(top_.handle, "routes/", "", 256).paths, Names{"/routes/0a000001,e8010101,32"});
  for (const char* path : {"routes/0a000002,e8010101,32", "routes/", "order/sub"}) {
    uint32_t type = 7, length = 9;
    void* data = reinterpret_cast<void*>(1);
    EXPECT_EQ(vellum_item_get(top_.handle, path, &type, &data, &length, 0), kStoreNotFound) << path;
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(length, 0u);
  }
}

TEST_F(StoreTest, ListNamesTheEntriesBelowAPathWithSubdirectoriesMarked) {
  EXPECT_EQ(list_names(top_.handle, "order", "", -1), (Names{"B", "_", "a", "sub/"}));
  EXPECT_EQ(list_names(top_.handle, "/", "", -1), (Names{"big/", "empty/", "exact/", "order/", "routes/"}));
  EXPECT_EQ(list_names(top_.handle, "order/", "B", 2), (Names{"_", "a"}));
  for (const char* path : {"empty/", "nope/"}) {
    cerr_t status = kCerrOk;
    EXPECT_TRUE(list_names(top_.handle, path, "", -1, &status).empty());
    EXPECT_EQ(status, kStoreNotFound) << path;
  }
}

TEST_F(StoreTest, BindTakesOnlyAbsolutePathsAndUnboundHandlesFailCleanly) {
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, "relative/", 0), kStoreBadPath);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(read_batch(nullptr, "big/", "", 256).status, kStoreNotBound);
  uint32_t type = 7, length = 0;
  void* data = nullptr;
  EXPECT_EQ(vellum_item_get(nullptr, "routes/x", &type, &data, &length, 0), kStoreNotBound);
  cerr_t status = kCerrOk;
  list_names(nullptr, "", "", -1, &status);
  EXPECT_EQ(status, kStoreNotBound);
  EXPECT_EQ(vellum_unbind(nullptr), kStoreNotBound);
}

// A batch keeps its items packed and unpacks each as it is handed out: each item comes with its own data,
// and one whose stored form is damaged fails then, after the items before it came whole.
TEST(StoreDataTest, EachItemComesUnpackedAndADamagedOneFailsWhenHandedOut) {
  json items = json::array();
  for (const char* hex : {"0000000000000000000000006869", "ff", "00ff"})
    items.push_back({{"path", std::string("/d/") + hex}, {"datatype", 7}, {"hex", hex}});
  TestRoot root(json{{"items", items}}.dump());
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open((root.dir() + "/vellum.db").c_str(), &db), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(db, "UPDATE items SET data = x'020501' WHERE name = 'ff'", nullptr, nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(db);
  root_reset_for_testing(root.dir());  // the store was read before the damage

  Handle top("/");
  uint32_t count = 256, type = 0, length = 0, flags = 0;
  vellum_datalist_t list = nullptr;
  const char* path = nullptr;
  const void* data = nullptr;
  ASSERT_EQ(vellum_datalist(top.handle, "d/", "", &count, &list, 0), kCerrOk);
  ASSERT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_STREQ(path, "/d/0000000000000000000000006869");
  EXPECT_EQ(std::string(static_cast<const char*>(data), length), std::string(12, '\0') + "hi");
  ASSERT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_EQ(std::string(static_cast<const char*>(data), length), std::string("\0\xff", 2));
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kStoreUnavailable);
  EXPECT_EQ(vellum_datalist_free(list), kCerrOk);
}

constexpr cerr_t kCode = 0x40cc0001;

TEST(StoreFaultTest, EachCallFailsWhereItsFaultSays) {
  json items = json::array();
  for (auto [dir, count] : {std::pair{"/f/", 5}, {"/g/", 3}, {"/d1/", 1}, {"/d2/", 1}})
    add_items(items, dir, count);
  json faults = {
      {{"op", "bind"}, {"path", "/refused"}, {"code", "0x40cc0001"}},
      {{"op", "datalist"}, {"path", "/d1/"}, {"code", kCode}},
      {{"op", "datalist"}, {"path", "/d2/"}, {"batch", 1}, {"code", kCode}},
      {{"op", "next"}, {"path", "/f/"}, {"index", 3}, {"code", kCode}},
      {{"op", "more"}, {"path", "/f/"}, {"code", kCode}},
      {{"op", "datalist_free"}, {"path", "/f/"}, {"code", kCode}},
      {{"op", "item_get"}, {"path", "/g/i0001"}, {"code", kCode}, {"hex", "abcd"}},
      {{"op", "item_get"}, {"path", "/g/i0002"}},
      {{"op", "list"}, {"path", "/f/"}, {"code", kCode}},
      {{"op", "list_next"}, {"path", "/g/"}, {"index", 1}, {"code", kCode}},
  };
  TestRoot root(json{{"items", items}, {"faults", faults}}.dump());
  Handle top("/");
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, "/refused/", 0), kCode);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(read_batch(top.handle, "d1", "", 256).status, kCode);
  // Only the second batch asked of /d2/ fails.
  for (cerr_t status : {kCerrOk, kCode, kCerrOk})
    EXPECT_EQ(read_batch(top.handle, "d2/", "", 256).status, status);

  // Reading counts items across the batches of one listing.
  uint32_t count = 2, type = 0, length = 0, flags = 0, more = 7;
  vellum_datalist_t list = nullptr;
  const char* path = nullptr;
  const void* data = nullptr;
  ASSERT_EQ(vellum_datalist(top.handle, "f/", "", &count, &list, 0), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  std::string resume = path;
  EXPECT_EQ(vellum_datalist_get_more_flag(list, &more), kCode);
  EXPECT_EQ(vellum_datalist_free(list), kCode);
  ASSERT_EQ(vellum_datalist(top.handle, "f/", resume.c_str(), &count, &list, 0), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_STREQ(path, "/f/i0002");
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCode);
  EXPECT_EQ(vellum_datalist_free(list), kCode);

  // An item-get fault may still hand over data.
  void* item = nullptr;
  EXPECT_EQ(vellum_item_get(top.handle, "g/i0001", &type, &item, &length, 0), kCode);
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(std::string(static_cast<char*>(item), length), "\xab\xcd");
  std::free(item);
  item = nullptr;
  EXPECT_EQ(vellum_item_get(top.handle, "g/i0002", &type, &item, &length, 0), kInjectedFailure);
  EXPECT_EQ(item, nullptr);
  EXPECT_EQ(vellum_item_get(top.handle, "g/i0000", &type, &item, &length, 0), kCerrOk);
  std::free(item);

  cerr_t status = kCerrOk;
  list_names(top.handle, "f", "", -1, &status);
  EXPECT_EQ(status, kCode);
  int32_t wanted = -1;
  vellum_list_t names = nullptr;
  ASSERT_EQ(vellum_list(top.handle, "g", "", &wanted, &names), kCerrOk);
  const char* name = nullptr;
  EXPECT_EQ(vellum_list_next(names, &name), kCerrOk);
  EXPECT_STREQ(name, "i0000");
  EXPECT_EQ(vellum_list_next(names, &name), kCode);
  EXPECT_EQ(name, nullptr);
}

}  // namespace
}  // namespace ostrel::sim
