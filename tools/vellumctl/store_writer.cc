#include "tools/vellumctl/store_writer.h"

#include "platform/vellum.h"
#include "sim/store/record_pack.h"

namespace ostrel::tools {

bool StoreWriter::open(const std::string& file, std::string* error) {
  if (sqlite3_open_v2(file.c_str(), &connection_.db, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
    return fail(error);
  // A page cache large enough for the pages being filled: with SQLite's default of 2 MB, pages were
  // spilled, read back and written again some twenty times each.
  const char* setup =
      "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF; PRAGMA cache_size = -262144; BEGIN";
  if (sqlite3_exec(connection_.db, setup, nullptr, nullptr, nullptr) != SQLITE_OK) return fail(error);
  return prepare("INSERT INTO items (dir, name, datatype, data) VALUES (?1, ?2, ?3, ?4)", &item_, error) &&
         prepare("INSERT OR IGNORE INTO dirs (parent, name) VALUES (?1, ?2)", &dir_, error);
}

bool StoreWriter::item(std::string_view dir, std::string_view name, const std::string& data,
                       std::string* error) {
  sqlite3_reset(item_.stmt);
  sqlite3_bind_text(item_.stmt, 1, dir.data(), static_cast<int>(dir.size()), SQLITE_STATIC);
  sqlite3_bind_text(item_.stmt, 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
  sqlite3_bind_int(item_.stmt, 3, static_cast<int>(kVellumDataTypePod));
  sim::pack_record(data, &packed_);
  sqlite3_bind_blob(item_.stmt, 4, packed_.data(), static_cast<int>(packed_.size()), SQLITE_STATIC);
  return sqlite3_step(item_.stmt) == SQLITE_DONE || fail(error);
}

bool StoreWriter::dir(std::string_view parent, std::string_view name, std::string* error) {
  sqlite3_reset(dir_.stmt);
  sqlite3_bind_text(dir_.stmt, 1, parent.data(), static_cast<int>(parent.size()), SQLITE_STATIC);
  sqlite3_bind_text(dir_.stmt, 2, name.data(), static_cast<int>(name.size()), SQLITE_STATIC);
  return sqlite3_step(dir_.stmt) == SQLITE_DONE || fail(error);
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
