// The generator's store writer: items go to the directory they name, however the writes alternate between
// directories, and a directory the base root did not have is added with its ancestors.
#include "tools/vellumctl/store_writer.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../sim/test_root.h"
#include "platform/vellum.h"
#include "sim/cerr_codes.h"

namespace ostrel::tools {
namespace {

using ostrel::sim::kStoreNotFound;
using ostrel::sim::TestRoot;
using Names = std::vector<std::string>;

// The paths and data of one batch of `dir`, or its status when there is none.
struct Listing {
  cerr_t status = kCerrOk;
  Names paths;
  Names data;
};

Listing list_dir(vellum_handle_t handle, const char* dir) {
  Listing listing;
  uint32_t count = 16;
  vellum_datalist_t list = nullptr;
  listing.status = vellum_datalist(handle, dir, "", &count, &list, 0);
  for (uint32_t i = 0; i < count; ++i) {
    const char* path = nullptr;
    uint32_t type = 0, length = 0;
    const void* data = nullptr;
    EXPECT_EQ(vellum_datalist_next(list, &path, &type, &data, &length, nullptr), kCerrOk);
    listing.paths.push_back(path);
    listing.data.emplace_back(static_cast<const char*>(data), length);
  }
  if (list) {
    EXPECT_EQ(vellum_datalist_free(list), kCerrOk);
  }
  return listing;
}

TEST(StoreWriter, ItemsLandInTheirDirectoriesAndNewDirectoriesGetTheirAncestors) {
  TestRoot root("{}");
  std::string error;
  const std::string zeros(40, '\0'), record = zeros + "x" + zeros;
  ASSERT_TRUE(build_root(root.dir(), {{"base", R"({"dirs": ["/base/"]})"}}, &error,
                         [&](const std::string& dir, std::string* e) {
                           StoreWriter w;
                           return w.open(dir + "/vellum.db", e) && w.item("/base/", "b1", "one", e) &&
                                  w.item("/new/deep/", "d1", record, e) && w.item("/base/", "b2", "two", e) &&
                                  w.item("/new/deep/", "d2", "", e) && w.dir("/new/", "empty/", e) &&
                                  w.dir("/new/", "deep/", e) && w.commit(e);
                         }))
      << error;
  ostrel::sim::root_reset_for_testing(root.dir());
  vellum_handle_t handle = nullptr;
  ASSERT_EQ(vellum_bind(&handle, "/", 0), kCerrOk);

  Listing base = list_dir(handle, "/base/");
  EXPECT_EQ(base.paths, (Names{"/base/b1", "/base/b2"}));
  EXPECT_EQ(base.data, (Names{"one", "two"}));
  Listing deep = list_dir(handle, "/new/deep/");
  EXPECT_EQ(deep.paths, (Names{"/new/deep/d1", "/new/deep/d2"}));
  EXPECT_EQ(deep.data, (Names{record, ""}));
  EXPECT_EQ(list_dir(handle, "/new/empty/").status, kCerrOk);
  EXPECT_EQ(list_dir(handle, "/new/missing/").status, kStoreNotFound);

  int32_t count = -1;
  vellum_list_t names = nullptr;
  ASSERT_EQ(vellum_list(handle, "/new/", "", &count, &names), kCerrOk);
  Names below;
  for (const char* name = nullptr; vellum_list_next(names, &name) == kCerrOk && name;) below.push_back(name);
  EXPECT_EQ(below, (Names{"deep/", "empty/"}));
  EXPECT_EQ(vellum_unbind(handle), kCerrOk);
}

}  // namespace
}  // namespace ostrel::tools
