// A walk over every item below a store directory, for tools that show a whole subtree (vellumctl dump). It is
// not a platform service: the program lists directories through platform/vellum.h, in batches.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/status.h"

struct sqlite3_stmt;

namespace ostrel::sim {

// One item of a walk; the views stay valid until the walk moves on.
struct WalkedItem {
  std::string_view path;
  uint32_t datatype = 0;
  const void* data = nullptr;
  uint32_t length = 0;
};

// Depth first, each directory's items and subdirectories in the order a listing gives them (names in byte
// order, a subdirectory's name with its closing "/"), which is also the byte order of the items' full paths.
// It reads the root's database directly, so injected faults do not apply, and holds one cursor per level of
// depth: memory does not grow with the number of items.
// REQUIRES: the root stays the same (no root_reset_for_testing()) for the walk's life.
class StoreWalk {
 public:
  StoreWalk();
  ~StoreWalk();
  StoreWalk(const StoreWalk&) = delete;
  StoreWalk& operator=(const StoreWalk&) = delete;

  // Starts below the directory `dir` (an absolute path; the closing "/" may be left out). kStoreNotFound
  // when it does not exist, kStoreUnavailable when the root has no readable store.
  [[nodiscard]] cerr_t start(std::string_view dir);

  // The next item. kStoreNotFound once every item was given, kStoreUnavailable when the database fails.
  [[nodiscard]] cerr_t next(WalkedItem* item);

 private:
  struct Level;
  [[nodiscard]] cerr_t enter(std::string_view dir, int64_t id);

  std::vector<std::unique_ptr<Level>> levels_;  // kept when left, with their prepared statements
  size_t depth_ = 0;                            // levels in use
  std::string path_;
  std::string data_;  // the item given last, unpacked
};

}  // namespace ostrel::sim
