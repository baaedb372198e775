// The simulated state store: handles, data-list batches, item get and name lists, all answered from the
// root's database (format in sim/store/format.h). Nothing here writes; the database is opened immutable.
#include <sqlite3.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "sim/root_testing.h"
#include "sim/store/record_pack.h"
#include "sim/store/store_paths.h"

struct vellum_list_s {
  std::string dir;
  std::vector<std::string> names;
  size_t next = 0;
};

struct vellum_handle_s {
  std::string dir;  // absolute, ending in "/"
  std::vector<std::unique_ptr<vellum_list_s>> lists;
};

// A batch owns its rows in one buffer: each row's absolute path with its terminator, then its data aligned
// for whatever the decoder reads in place.
struct vellum_datalist_s {
  struct Row {
    size_t path;
    size_t packed;
    uint32_t packed_size;
    uint32_t type;
  };
  std::string dir;
  std::string buffer;  // the rows' paths and packed data
  // The item last handed out, unpacked. A batch keeps its items packed and unpacks each as it is handed
  // out, into this one buffer: the reader finds it in the cache, where a batch unpacked whole would be a
  // few hundred kilobytes written long before they are read.
  std::string record;
  std::vector<Row> rows;
  size_t next = 0;
  bool more = false;
  int64_t first_index = 0;  // the listing position of the batch's first item, counted only for faults

  // Empties the batch for reuse, keeping the room of its buffers.
  void reset() {
    dir.clear();
    buffer.clear();
    record.clear();
    rows.clear();
    next = 0;
    more = false;
    first_index = 0;
  }
};

namespace ostrel::sim {
namespace {

struct StmtFinalizer {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StmtFinalizer>;

enum StatementId { kBatch, kDirExists, kItem, kAlias, kNames, kRank, kStatementCount };

// A directory path (?1) to its number: SQLite runs the subquery once per statement run, and a directory
// that does not exist gives NULL, which matches no row.
#define OSTREL_DIR_ID "(SELECT id FROM dirs WHERE path = ?1)"
constexpr const char* kStatementSql[kStatementCount] = {
    "SELECT name, datatype, data FROM items WHERE dir = " OSTREL_DIR_ID
    " AND name > ?2 ORDER BY name LIMIT ?3",
    "SELECT 1 FROM dirs WHERE path = ?1",
    "SELECT datatype, data FROM items WHERE dir = " OSTREL_DIR_ID " AND name = ?2",
    "SELECT i.datatype, i.data FROM aliases a JOIN items i ON i.dir = a.dir AND i.name = a.name "
    "WHERE a.path = ?1",
    "SELECT name FROM (SELECT name FROM dirs WHERE parent = " OSTREL_DIR_ID
    " UNION ALL SELECT name FROM items WHERE dir = " OSTREL_DIR_ID ") WHERE name > ?2 ORDER BY name LIMIT ?3",
    "SELECT count(*) FROM items WHERE dir = " OSTREL_DIR_ID " AND name <= ?2",
};
#undef OSTREL_DIR_ID

// Per-process store state: statements prepared once against the current root, the live handles, and how
// many batches each directory has been asked for (the "datalist" fault counts batches).
struct StoreState {
  uint64_t generation = ~uint64_t{0};
  Statement statements[kStatementCount];
  std::unordered_set<vellum_handle_s*> handles;
  std::unordered_map<std::string, int64_t> batches;
  // The last batch freed, kept with its buffers' room: a walk of a million items reuses one batch instead
  // of growing and trimming the heap for every 256 of them.
  std::unique_ptr<vellum_datalist_s> spare;
};

StoreState& store() {
  static StoreState state;
  if (state.generation != root_generation()) {
    for (Statement& statement : state.statements) statement.reset();
    state.batches.clear();
    state.generation = root_generation();
  }
  return state;
}

// A statement reset and ready for binding, or none when the root has no readable store.
sqlite3_stmt* statement(StatementId id) {
  Statement& slot = store().statements[id];
  if (!slot) {
    sqlite3* db = root_db();
    sqlite3_stmt* prepared = nullptr;
    if (!db || sqlite3_prepare_v3(db, kStatementSql[id], -1, SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) !=
                   SQLITE_OK) {
      sqlite3_finalize(prepared);
      return nullptr;
    }
    slot.reset(prepared);
  }
  sqlite3_reset(slot.get());
  sqlite3_clear_bindings(slot.get());
  return slot.get();
}

void bind_text(sqlite3_stmt* stmt, int index, std::string_view text) {
  sqlite3_bind_text(stmt, index, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

bool bound(vellum_handle_t handle) {
  return handle && store().handles.count(handle) != 0;
}

bool dir_exists(std::string_view dir) {
  sqlite3_stmt* stmt = statement(kDirExists);
  if (!stmt) return false;
  bind_text(stmt, 1, dir);
  return sqlite3_step(stmt) == SQLITE_ROW;
}

// The number of items of `dir` up to and including `name`: the listing position of the item after it.
int64_t rank_of(std::string_view dir, std::string_view name) {
  sqlite3_stmt* stmt = statement(kRank);
  if (!stmt) return 0;
  bind_text(stmt, 1, dir);
  bind_text(stmt, 2, name);
  return sqlite3_step(stmt) == SQLITE_ROW ? sqlite3_column_int64(stmt, 0) : 0;
}

// False when the row's data is damaged.
bool append_row(vellum_datalist_s* list, sqlite3_stmt* stmt) {
  vellum_datalist_s::Row row;
  row.path = list->buffer.size();
  list->buffer += list->dir;
  list->buffer.append(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)),
                      sqlite3_column_bytes(stmt, 0));
  list->buffer += '\0';
  row.packed = list->buffer.size();
  row.type = static_cast<uint32_t>(sqlite3_column_int64(stmt, 1));
  const void* blob = sqlite3_column_blob(stmt, 2);
  const int size = sqlite3_column_bytes(stmt, 2);
  if (!blob) return false;  // no packed record is empty
  list->buffer.append(static_cast<const char*>(blob), static_cast<size_t>(size));
  row.packed_size = static_cast<uint32_t>(size);
  list->rows.push_back(row);
  return true;
}

// Reads up to `count` rows after `after`, and one more to learn whether the directory goes on.
cerr_t read_batch(vellum_datalist_s* list, std::string_view after, uint32_t count) {
  sqlite3_stmt* stmt = statement(kBatch);
  if (!stmt) return kStoreUnavailable;
  bind_text(stmt, 1, list->dir);
  bind_text(stmt, 2, after);
  sqlite3_bind_int64(stmt, 3, int64_t{count} + 1);
  list->rows.reserve(count < 1024 ? count : 1024);
  int rc;
  while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
    if (list->rows.size() == count) {
      list->more = true;
      break;
    }
    if (!append_row(list, stmt)) return kStoreUnavailable;
  }
  if (rc != SQLITE_ROW && rc != SQLITE_DONE) return kStoreUnavailable;
  sqlite3_reset(stmt);
  return kCerrOk;
}

cerr_t fetch_item(std::string_view path, uint32_t* data_type, void** data, uint32_t* data_length) {
  PathSplit split = split_item(path);
  sqlite3_stmt* stmt = statement(kItem);
  if (!stmt) return kStoreUnavailable;
  bind_text(stmt, 1, split.parent);
  bind_text(stmt, 2, split.name);
  int rc = sqlite3_step(stmt);
  if (rc != SQLITE_ROW) {
    stmt = statement(kAlias);
    if (!stmt) return kStoreUnavailable;
    bind_text(stmt, 1, path);
    rc = sqlite3_step(stmt);
  }
  if (rc != SQLITE_ROW) return rc == SQLITE_DONE ? kStoreNotFound : kStoreUnavailable;
  const auto* packed = static_cast<const uint8_t*>(sqlite3_column_blob(stmt, 1));
  if (!packed) return kStoreUnavailable;  // no packed record is empty
  const uint8_t* packed_end = packed + sqlite3_column_bytes(stmt, 1);
  const uint8_t* segments = nullptr;
  uint32_t length = 0;
  if (!packed_length(packed, static_cast<size_t>(packed_end - packed), &length, &segments))
    return kStoreUnavailable;
  // One byte more than asked so that an empty item still gets a block the caller can free.
  void* block = std::calloc(size_t{length} + 1, 1);
  if (!block) return kNoMemory;
  if (!unpack_segments(segments, packed_end, static_cast<char*>(block), length)) {
    std::free(block);
    return kStoreUnavailable;
  }
  *data_type = static_cast<uint32_t>(sqlite3_column_int64(stmt, 0));
  *data = block;
  *data_length = length;
  sqlite3_reset(stmt);
  return kCerrOk;
}

cerr_t read_names(vellum_list_s* list, std::string_view after, int32_t count) {
  sqlite3_stmt* stmt = statement(kNames);
  if (!stmt) return kStoreUnavailable;
  bind_text(stmt, 1, list->dir);
  bind_text(stmt, 2, after);
  sqlite3_bind_int64(stmt, 3, count < 0 ? -1 : count);
  int rc;
  while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
    list->names.emplace_back(reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0)),
                             sqlite3_column_bytes(stmt, 0));
  }
  sqlite3_reset(stmt);
  return rc == SQLITE_DONE ? kCerrOk : kStoreUnavailable;
}

}  // namespace
}  // namespace ostrel::sim

using namespace ostrel::sim;

cerr_t vellum_bind(vellum_handle_t* handle, const char* path, uint32_t flags) {
  if (!handle || !path || flags != 0) return kBadArgument;
  *handle = nullptr;
  if (path[0] != '/') return kStoreBadPath;
  std::string dir = as_dir(path);
  if (auto fault = find_fault("bind", dir)) return fault->code;
  auto owned = std::make_unique<vellum_handle_s>();
  owned->dir = std::move(dir);
  *handle = owned.release();
  store().handles.insert(*handle);
  return kCerrOk;
}

cerr_t vellum_unbind(vellum_handle_t handle) {
  if (!bound(handle)) return kStoreNotBound;
  store().handles.erase(handle);
  delete handle;
  return kCerrOk;
}

cerr_t vellum_datalist(vellum_handle_t handle, const char* directory, const char* resume_key, uint32_t* count,
                       vellum_datalist_t* list, uint32_t flags) {
  if (!count || !list || flags != 0) return kBadArgument;
  *list = nullptr;
  uint32_t wanted = *count;
  *count = 0;
  if (!bound(handle)) return kStoreNotBound;
  std::unique_ptr<vellum_datalist_s> batch = std::move(store().spare);
  if (batch == nullptr) batch = std::make_unique<vellum_datalist_s>();
  batch->reset();
  batch->dir = as_dir(join(handle->dir, directory ? directory : ""));
  int64_t batch_index = store().batches[batch->dir]++;
  if (auto fault = find_fault("datalist", batch->dir, batch_index)) return fault->code;
  std::string_view after = last_element(resume_key ? resume_key : "");
  if (cerr_t status = read_batch(batch.get(), after, wanted)) return status;
  if (batch->rows.empty() && !dir_exists(batch->dir)) return kStoreNotFound;
  if (!after.empty() && has_fault("next", batch->dir)) batch->first_index = rank_of(batch->dir, after);
  *count = static_cast<uint32_t>(batch->rows.size());
  *list = batch.release();
  return kCerrOk;
}

cerr_t vellum_datalist_next(vellum_datalist_t list, const char** item_path, uint32_t* data_type,
                            const void** data, uint32_t* data_length, uint32_t* flags) {
  if (!list || !item_path || !data_type || !data || !data_length) return kBadArgument;
  if (list->next >= list->rows.size()) return kStoreNotFound;
  int64_t index = list->first_index + static_cast<int64_t>(list->next);
  if (auto fault = find_fault("next", list->dir, index)) return fault->code;
  const vellum_datalist_s::Row& row = list->rows[list->next++];
  list->record.clear();
  if (!unpack_record_append(list->buffer.data() + row.packed, row.packed_size, &list->record))
    return kStoreUnavailable;
  *item_path = list->buffer.data() + row.path;
  *data_type = row.type;
  *data = list->record.data();
  *data_length = static_cast<uint32_t>(list->record.size());
  if (flags) *flags = 0;
  return kCerrOk;
}

cerr_t vellum_datalist_get_more_flag(vellum_datalist_t list, uint32_t* more) {
  if (!list || !more) return kBadArgument;
  if (auto fault = find_fault("more", list->dir)) return fault->code;
  *more = list->more ? 1 : 0;
  return kCerrOk;
}

cerr_t vellum_datalist_free(vellum_datalist_t list) {
  if (!list) return kBadArgument;
  std::unique_ptr<vellum_datalist_s> owned(list);
  // The list is released even when a fault reports failure: a caller has no way to retry the free.
  std::optional<Fault> fault = find_fault("datalist_free", owned->dir);
  store().spare = std::move(owned);
  return fault ? fault->code : kCerrOk;
}

cerr_t vellum_item_get(vellum_handle_t handle, const char* item_path, uint32_t* data_type, void** data,
                       uint32_t* data_length, uint32_t flags) {
  if (!item_path || !data_type || !data || !data_length || flags != 0) return kBadArgument;
  *data = nullptr;
  *data_length = 0;
  if (!bound(handle)) return kStoreNotBound;
  std::string path = join(handle->dir, item_path);
  if (auto fault = find_fault("item_get", path)) {
    if (fault->has_data) {
      *data = std::malloc(fault->data.size() + 1);
      if (*data) {
        std::memcpy(*data, fault->data.data(), fault->data.size());
        *data_length = static_cast<uint32_t>(fault->data.size());
      }
    }
    return fault->code;
  }
  return fetch_item(path, data_type, data, data_length);
}

cerr_t vellum_list(vellum_handle_t handle, const char* path, const char* start_after, int32_t* count,
                   vellum_list_t* list) {
  if (!path || !count || !list) return kBadArgument;
  *list = nullptr;
  int32_t wanted = *count;
  *count = 0;
  if (!bound(handle)) return kStoreNotBound;
  auto names = std::make_unique<vellum_list_s>();
  names->dir = as_dir(join(handle->dir, path));
  if (auto fault = find_fault("list", names->dir)) return fault->code;
  if (cerr_t status = read_names(names.get(), start_after ? start_after : "", wanted)) return status;
  if (names->names.empty()) return kStoreNotFound;
  *count = static_cast<int32_t>(names->names.size());
  *list = names.get();
  handle->lists.push_back(std::move(names));
  return kCerrOk;
}

cerr_t vellum_list_next(vellum_list_t list, const char** name) {
  if (!list || !name) return kBadArgument;
  *name = nullptr;
  if (auto fault = find_fault("list_next", list->dir, static_cast<int64_t>(list->next))) return fault->code;
  if (list->next < list->names.size()) *name = list->names[list->next++].c_str();
  return kCerrOk;
}
