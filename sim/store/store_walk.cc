// The subtree walk: per level of depth, one cursor over the directory's items and one over its
// subdirectories, both in key order, merged by name.
#include "sim/store/store_walk.h"

#include <sqlite3.h>

#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "sim/store/record_pack.h"
#include "sim/store/store_paths.h"

namespace ostrel::sim {
namespace {

struct StmtFinalizer {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StmtFinalizer>;

[[nodiscard]] bool prepare(const char* sql, Statement* out) {
  if (*out) return true;
  sqlite3* db = root_db();
  sqlite3_stmt* stmt = nullptr;
  if (!db || sqlite3_prepare_v3(db, sql, -1, SQLITE_PREPARE_PERSISTENT, &stmt, nullptr) != SQLITE_OK) {
    sqlite3_finalize(stmt);
    return false;
  }
  out->reset(stmt);
  return true;
}

// Moves a cursor to its next row; `*on_row` says whether there is one.
[[nodiscard]] cerr_t step(sqlite3_stmt* stmt, bool* on_row) {
  int rc = sqlite3_step(stmt);
  *on_row = rc == SQLITE_ROW;
  return rc == SQLITE_ROW || rc == SQLITE_DONE ? kCerrOk : kStoreUnavailable;
}

std::string_view column_text(sqlite3_stmt* stmt, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, column));
  return text ? std::string_view(text, static_cast<size_t>(sqlite3_column_bytes(stmt, column)))
              : std::string_view();
}

void bind_text(sqlite3_stmt* stmt, int index, std::string_view text) {
  sqlite3_bind_text(stmt, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

}  // namespace

struct StoreWalk::Level {
  std::string dir;  // its path, ending in "/"
  Statement items;
  Statement subdirs;
  bool on_item = false;
  bool on_subdir = false;
  // The item row was handed out; its column data stays valid until the cursor moves, on the next call.
  bool item_given = false;
};

StoreWalk::StoreWalk() = default;
StoreWalk::~StoreWalk() = default;

cerr_t StoreWalk::start(std::string_view dir) {
  depth_ = 0;
  std::string top = as_dir(join("/", dir));
  Statement find;
  if (!prepare("SELECT id FROM dirs WHERE path = ?1", &find)) return kStoreUnavailable;
  bind_text(find.get(), 1, top);
  bool found = false;
  if (cerr_t status = step(find.get(), &found)) return status;
  if (!found) return kStoreNotFound;
  return enter(top, sqlite3_column_int64(find.get(), 0));
}

cerr_t StoreWalk::enter(std::string_view dir, int64_t id) {
  if (depth_ == levels_.size()) levels_.push_back(std::make_unique<Level>());
  Level& level = *levels_[depth_];
  if (!prepare("SELECT name, datatype, data FROM items WHERE dir = ?1 ORDER BY name", &level.items) ||
      !prepare("SELECT name, id FROM dirs WHERE parent = ?1 ORDER BY name", &level.subdirs)) {
    return kStoreUnavailable;
  }
  sqlite3_reset(level.items.get());
  sqlite3_reset(level.subdirs.get());
  level.dir.assign(dir);
  sqlite3_bind_int64(level.items.get(), 1, id);
  sqlite3_bind_int64(level.subdirs.get(), 1, id);
  level.item_given = false;
  ++depth_;
  if (cerr_t status = step(level.items.get(), &level.on_item)) return status;
  return step(level.subdirs.get(), &level.on_subdir);
}

cerr_t StoreWalk::next(WalkedItem* item) {
  while (depth_ > 0) {
    Level& level = *levels_[depth_ - 1];
    if (level.item_given) {
      level.item_given = false;
      if (cerr_t status = step(level.items.get(), &level.on_item)) return status;
    }
    sqlite3_stmt* items = level.items.get();
    if (level.on_item && (!level.on_subdir || column_text(items, 0) < column_text(level.subdirs.get(), 0))) {
      path_.assign(level.dir).append(column_text(items, 0));
      data_.clear();
      const void* packed = sqlite3_column_blob(items, 2);
      if (!unpack_record_append(packed, static_cast<size_t>(sqlite3_column_bytes(items, 2)), &data_))
        return kStoreUnavailable;
      item->path = path_;
      item->datatype = static_cast<uint32_t>(sqlite3_column_int64(items, 1));
      item->data = data_.data();
      item->length = static_cast<uint32_t>(data_.size());
      level.item_given = true;
      return kCerrOk;
    }
    if (level.on_subdir) {
      // The child's directory is copied before the parent's cursor moves past its name.
      path_.assign(level.dir).append(column_text(level.subdirs.get(), 0));
      if (cerr_t status = enter(path_, sqlite3_column_int64(level.subdirs.get(), 1))) return status;
      if (cerr_t status = step(level.subdirs.get(), &level.on_subdir)) return status;
      continue;
    }
    --depth_;
  }
  return kStoreNotFound;
}

}  // namespace ostrel::sim
