#include "tools/vellumctl/store_writer.h"

#include "platform/vellum.h"
#include "sim/store/record_pack.h"
#include "sim/store/store_paths.h"

namespace ostrel::tools {

bool StoreWriter::open(const std::string& file, std::string* error) {
  if (sqlite3_open_v2(file.c_str(), &connection_.db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
    return fail(error);
  // A page cache large enough for the pages being filled: with SQLite's default of 2 MB, pages were
  // spilled, read back and written again some twenty times each.
  const char* setup =
      "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -262144; BEGIN";
  if (sqlite3_exec(connection_.db, setup, nullptr, nullptr, nullptr) != SQLITE_OK) return fail(error);
  Statement last;
  if (!prepare("INSERT INTO items (dir, name, datatype, data) VALUES (?1, ?2, ?3, ?4)", &item_, error) ||
      !prepare("SELECT id FROM dirs WHERE path = ?1", &find_dir_, error) ||
      !prepare("INSERT INTO dirs (id, path, parent, name) VALUES (?1, ?2, ?3, ?4)", &add_dir_, error) ||
      !prepare("SELECT max(id) FROM dirs", &last, error)) {
    return false;
  }
  if (sqlite3_step(last.stmt) != SQLITE_ROW) return fail(error);
  next_dir_id_ = sqlite3_column_int64(last.stmt, 0) + 1;
  return true;
}

bool StoreWriter::dir_id(std::string_view path, int64_t* id, std::string* error) {
  if (!last_dir_.empty() && path == last_dir_) {
    *id = last_dir_id_;
    return true;
  }
  sqlite3_reset(find_dir_.stmt);
  sqlite3_bind_text(find_dir_.stmt, 1, path.data(), static_cast<int>(path.size()), SQLITE_STATIC);
  int rc = sqlite3_step(find_dir_.stmt);
  if (rc != SQLITE_ROW && rc != SQLITE_DONE) return fail(error);
  const bool found = rc == SQLITE_ROW;
  if (found) *id = sqlite3_column_int64(find_dir_.stmt, 0);
  sqlite3_reset(find_dir_.stmt);
  if (!found) {
    sim::PathSplit split = sim::split_dir(path);
    int64_t parent = 0;
    if (split.parent.empty()) {
      *error = "writing the store: " + std::string(path) + " is not a directory below the root";
      return false;
    }
    // The parent's text lives in `path`, which the recursion does not touch.
    if (!dir_id(split.parent, &parent, error)) return false;
    *id = next_dir_id_++;
    sqlite3_reset(add_dir_.stmt);
    sqlite3_bind_int64(add_dir_.stmt, 1, *id);
    sqlite3_bind_text(add_dir_.stmt, 2, path.data(), static_cast<int>(path.size()), SQLITE_STATIC);
    sqlite3_bind_int64(add_dir_.stmt, 3, parent);
    sqlite3_bind_text(add_dir_.stmt, 4, split.name.data(), static_cast<int>(split.name.size()),
                      SQLITE_STATIC);
    if (sqlite3_step(add_dir_.stmt) != SQLITE_DONE) return fail(error);
  }
  last_dir_.assign(path);
  last_dir_id_ = *id;
  return true;
}

bool StoreWriter::item(std::string_view dir, std::string_view name, const std::string& data,
                       std::string* error) {
  int64_t dir_number = 0;
  if (!dir_id(dir, &dir_number, error)) return false;
  sqlite3_reset(item_.stmt);
  sqlite3_bind_int64(item_.stmt, 1, dir_number);
  sqlite3_bind_text(item_.stmt, 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
  sqlite3_bind_int(item_.stmt, 3, static_cast<int>(kVellumDataTypePod));
  sim::pack_record(data, &packed_);
  sqlite3_bind_blob(item_.stmt, 4, packed_.data(), static_cast<int>(packed_.size()), SQLITE_STATIC);
  return sqlite3_step(item_.stmt) == SQLITE_DONE || fail(error);
}

bool StoreWriter::dir(std::string_view parent, std::string_view name, std::string* error) {
  std::string path(parent);
  path += name;
  int64_t id = 0;
  return dir_id(path, &id, error);
}

bool StoreWriter::commit(std::string* error) {
  return sqlite3_exec(connection_.db, "COMMIT", nullptr, nullptr, nullptr) == SQLITE_OK || fail(error);
}

bool StoreWriter::prepare(const char* sql, Statement* statement, std::string* error) {
  return sqlite3_prepare_v2(connection_.db, sql, -1, &statement->stmt, nullptr) == SQLITE_OK || fail(error);
}

bool StoreWriter::fail(std::string* error) {
  *error =
      std::string("writing the store: ") + (connection_.db ? sqlite3_errmsg(connection_.db) : "cannot open");
  return false;
}

}  // namespace ostrel::tools
