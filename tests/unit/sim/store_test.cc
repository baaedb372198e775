// The simulated state store: batches, resume keys, the more-flag, not-found codes, aliases, name lists,
// read-only access and the store's injected faults.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "test_root.h"

namespace ostrel::sim {
namespace {

using nlohmann::json;

std::string item_name(int i) {
  char name[16];
  std::snprintf(name, sizeof name, "i%04d", i);
  return name;
}

json raw_items(const std::string& dir, int count) {
  json items = json::array();
  for (int i = 0; i < count; ++i) {
    char hex[16];
    std::snprintf(hex, sizeof hex, "%08x", i);
    items.push_back({{"path", dir + item_name(i)}, {"datatype", 7}, {"hex", hex}});
  }
  return items;
}

std::string store_fixture() {
  json fixture;
  fixture["dirs"] = {"/empty/"};
  json items = raw_items("/big/", 600);
  for (const json& item : raw_items("/exact/", 256)) items.push_back(item);
  for (const char* name : {"a", "B", "_"}) {
    items.push_back({{"path", std::string("/order/") + name}, {"datatype", 8}, {"hex", "6869"}});
  }
  items.push_back({{"path", "/order/sub/x"}, {"datatype", 7}, {"hex", ""}});
  items.push_back({{"path", "/routes/0a000001,e8010101,32"},
                   {"aliases", {"/routes/10.0.0.1,232.1.1.1,32"}},
                   {"datatype", 7},
                   {"hex", "c0ffee"}});
  fixture["items"] = items;
  return fixture.dump();
}

struct Handle {
  vellum_handle_t handle = nullptr;
  explicit Handle(const char* path) { EXPECT_EQ(vellum_bind(&handle, path, 0), kCerrOk) << path; }
  ~Handle() {
    if (handle) {
      EXPECT_EQ(vellum_unbind(handle), kCerrOk);
    }
  }
};

struct Batch {
  cerr_t status = 0;
  std::vector<std::string> paths;
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

std::vector<std::string> list_names(vellum_handle_t handle, const char* path, const char* after,
                                    int32_t count, cerr_t* status) {
  std::vector<std::string> names;
  vellum_list_t list = nullptr;
  int32_t wanted = count;
  *status = vellum_list(handle, path, after, &wanted, &list);
  if (*status) {
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
  static void SetUpTestSuite() { root_ = new TestRoot(store_fixture()); }
  static void TearDownTestSuite() { delete root_; }
  static TestRoot* root_;
  Handle top_{"/"};
};
TestRoot* StoreTest::root_ = nullptr;

TEST_F(StoreTest, ListsEveryItemOnceInBatchesResumingAfterTheLastPath) {
  std::vector<size_t> sizes;
  std::vector<uint32_t> mores;
  std::vector<std::string> all;
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
}

TEST_F(StoreTest, BatchThatEndsTheDirectoryExactlyHasNoMoreAndResumeKeysCountByTheirLastElement) {
  Batch batch = read_batch(top_.handle, "/exact/", "", 256);
  EXPECT_EQ(batch.paths.size(), 256u);
  EXPECT_EQ(batch.more, 0u);
  EXPECT_EQ(read_batch(top_.handle, "/exact/", "", 255).more, 1u);
  batch = read_batch(top_.handle, "/exact/", "i0255", 256);
  EXPECT_TRUE(batch.paths.empty());
  EXPECT_EQ(batch.more, 0u);
  for (const char* resume : {"i0255", "/big/i0255", "/elsewhere/i0255", "routedb/i0255", "i0255zz"}) {
    batch = read_batch(top_.handle, "big", resume, 1);
    ASSERT_EQ(batch.paths.size(), 1u) << resume;
    EXPECT_EQ(batch.paths[0], "/big/i0256") << resume;
  }
}

TEST_F(StoreTest, DirectoriesResolveBelowTheHandleAndMissingOnesAreNotFound) {
  Handle big("/big");
  EXPECT_EQ(read_batch(big.handle, "", "", 2).paths, (std::vector<std::string>{"/big/i0000", "/big/i0001"}));
  EXPECT_EQ(read_batch(top_.handle, "/big", "", 1).paths, (std::vector<std::string>{"/big/i0000"}));
  // Items are listed in byte order; subdirectories are not items.
  EXPECT_EQ(read_batch(top_.handle, "order/", "", 256).paths,
            (std::vector<std::string>{"/order/B", "/order/_", "/order/a"}));
  for (const char* dir : {"empty/", "order/sub/", "/"}) {
    Batch batch = read_batch(top_.handle, dir, "", 256);
    EXPECT_EQ(batch.status, kCerrOk) << dir;
    EXPECT_EQ(batch.more, 0u) << dir;
  }
  // Paths are names, not file-system paths: ".." means nothing to the store.
  for (const char* dir : {"big/x/..", "nope/", "big/i0001"})
    EXPECT_EQ(read_batch(top_.handle, dir, "", 256).status, kStoreNotFound) << dir;
}

TEST_F(StoreTest, ItemGetReturnsACallerOwnedCopyByPathOrAlias) {
  for (const char* path : {"routes/0a000001,e8010101,32", "/routes/10.0.0.1,232.1.1.1,32"}) {
    uint32_t type = 0, length = 0;
    void* data = nullptr;
    ASSERT_EQ(vellum_item_get(top_.handle, path, &type, &data, &length, 0), kCerrOk) << path;
    EXPECT_EQ(type, 7u);
    EXPECT_EQ(std::string(static_cast<char*>(data), length), "\xc0\xff\xee");
    std::free(data);
  }
  // The alias is reachable only by item get.
  EXPECT_EQ(read_batch(top_.handle, "routes/", "", 256).paths,
            (std::vector<std::string>{"/routes/0a000001,e8010101,32"}));
  for (const char* path : {"routes/0a000002,e8010101,32", "routes/", "order/sub"}) {
    uint32_t type = 7, length = 9;
    void* data = reinterpret_cast<void*>(1);
    EXPECT_EQ(vellum_item_get(top_.handle, path, &type, &data, &length, 0), kStoreNotFound) << path;
    EXPECT_EQ(data, nullptr);
    EXPECT_EQ(length, 0u);
  }
}

TEST_F(StoreTest, ListNamesTheEntriesBelowAPathWithSubdirectoriesMarked) {
  cerr_t status = 1;
  EXPECT_EQ(list_names(top_.handle, "order", "", -1, &status),
            (std::vector<std::string>{"B", "_", "a", "sub/"}));
  EXPECT_EQ(status, kCerrOk);
  EXPECT_EQ(list_names(top_.handle, "/", "", -1, &status),
            (std::vector<std::string>{"big/", "empty/", "exact/", "order/", "routes/"}));
  EXPECT_EQ(list_names(top_.handle, "order/", "B", 2, &status), (std::vector<std::string>{"_", "a"}));
  EXPECT_TRUE(list_names(top_.handle, "empty/", "", -1, &status).empty());
  EXPECT_EQ(status, kStoreNotFound);
  EXPECT_TRUE(list_names(top_.handle, "nope/", "", -1, &status).empty());
  EXPECT_EQ(status, kStoreNotFound);
}

TEST_F(StoreTest, BindTakesAnyAbsolutePathAndUnboundHandlesFailCleanly) {
  Handle nowhere("/not/there/yet/");
  Batch batch = read_batch(nowhere.handle, "", "", 256);
  EXPECT_EQ(batch.status, kStoreNotFound);
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, "relative/", 0), kStoreBadPath);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(read_batch(nullptr, "big/", "", 256).status, kStoreNotBound);
  uint32_t type = 7, length = 0;
  void* data = nullptr;
  EXPECT_EQ(vellum_item_get(nullptr, "routes/x", &type, &data, &length, 0), kStoreNotBound);
  int32_t count = -1;
  vellum_list_t list = nullptr;
  EXPECT_EQ(vellum_list(nullptr, "", "", &count, &list), kStoreNotBound);
  EXPECT_EQ(vellum_unbind(nullptr), kStoreNotBound);
}

std::string file_bytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

TEST_F(StoreTest, TheStoreCannotBeChanged) {
  std::string before = file_bytes(root_->dir() + "/vellum.db");
  EXPECT_EQ(read_batch(top_.handle, "big/", "", 256).status, kCerrOk);
  int rc = sqlite3_exec(root_db(), "DELETE FROM items", nullptr, nullptr, nullptr);
  EXPECT_EQ(rc, SQLITE_READONLY);
  EXPECT_EQ(read_batch(top_.handle, "big/", "", 256).paths.size(), 256u);
  EXPECT_EQ(file_bytes(root_->dir() + "/vellum.db"), before);
}

constexpr cerr_t kCode = 0x40cc0001;

std::string fault_fixture() {
  json fixture;
  json items = json::array();
  for (auto [dir, count] : {std::pair{"/f/", 5}, {"/g/", 3}, {"/d1/", 1}, {"/d2/", 1}})
    for (const json& item : raw_items(dir, count)) items.push_back(item);
  fixture["items"] = items;
  fixture["faults"] = {
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
  return fixture.dump();
}

class StoreFaultTest : public ::testing::Test {
 protected:
  TestRoot root_{fault_fixture()};
  Handle top_{"/"};
};

TEST_F(StoreFaultTest, BindDataListAndItsReadingFail) {
  vellum_handle_t handle = nullptr;
  EXPECT_EQ(vellum_bind(&handle, "/refused/", 0), kCode);
  EXPECT_EQ(handle, nullptr);
  EXPECT_EQ(read_batch(top_.handle, "d1", "", 256).status, kCode);
  EXPECT_EQ(read_batch(top_.handle, "d1/", "", 256).status, kCode);
  // Only the second batch asked of /d2/ fails.
  EXPECT_EQ(read_batch(top_.handle, "d2/", "", 256).status, kCerrOk);
  EXPECT_EQ(read_batch(top_.handle, "d2/", "", 256).status, kCode);
  EXPECT_EQ(read_batch(top_.handle, "d2/", "", 256).status, kCerrOk);

  // Reading counts items across the batches of one listing.
  uint32_t count = 2;
  vellum_datalist_t list = nullptr;
  const char* path = nullptr;
  uint32_t type = 0, length = 0, flags = 0, more = 7;
  const void* data = nullptr;
  ASSERT_EQ(vellum_datalist(top_.handle, "f/", "", &count, &list, 0), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  std::string resume = path;
  EXPECT_EQ(vellum_datalist_get_more_flag(list, &more), kCode);
  EXPECT_EQ(vellum_datalist_free(list), kCode);
  ASSERT_EQ(vellum_datalist(top_.handle, "f/", resume.c_str(), &count, &list, 0), kCerrOk);
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCerrOk);
  EXPECT_STREQ(path, "/f/i0002");
  EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, &flags), kCode);
  EXPECT_EQ(vellum_datalist_free(list), kCode);
}

TEST_F(StoreFaultTest, ItemGetListAndListNextFail) {
  uint32_t type = 7, length = 0;
  void* data = nullptr;
  EXPECT_EQ(vellum_item_get(top_.handle, "g/i0001", &type, &data, &length, 0), kCode);
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(std::string(static_cast<char*>(data), length), "\xab\xcd");
  std::free(data);
  data = nullptr;
  EXPECT_EQ(vellum_item_get(top_.handle, "g/i0002", &type, &data, &length, 0), kInjectedFailure);
  EXPECT_EQ(data, nullptr);
  EXPECT_EQ(vellum_item_get(top_.handle, "g/i0000", &type, &data, &length, 0), kCerrOk);
  std::free(data);

  int32_t count = -1;
  vellum_list_t list = nullptr;
  EXPECT_EQ(vellum_list(top_.handle, "f", "", &count, &list), kCode);
  EXPECT_EQ(list, nullptr);
  count = -1;
  ASSERT_EQ(vellum_list(top_.handle, "g", "", &count, &list), kCerrOk);
  const char* name = nullptr;
  EXPECT_EQ(vellum_list_next(list, &name), kCerrOk);
  EXPECT_STREQ(name, "i0000");
  EXPECT_EQ(vellum_list_next(list, &name), kCode);
  EXPECT_EQ(name, nullptr);
}

}  // namespace
}  // namespace ostrel::sim
