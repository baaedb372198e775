// Writes generated items straight into a freshly built root's store, in one transaction, with statements
// prepared once: the synthetic router's millions of records go in without the fixture model's memory.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace ostrel::tools {

class StoreWriter {
 public:
  StoreWriter() = default;
  StoreWriter(const StoreWriter&) = delete;
  StoreWriter& operator=(const StoreWriter&) = delete;

  // Opens the store at `file` (already created with the store's tables) and begins the transaction.
  [[nodiscard]] bool open(const std::string& file, std::string* error);

  // A pod record at `dir` + `name`; `dir` ends in "/" and is added, with its ancestors, when the store does
  // not have it yet. Consecutive items of one directory find it without a query.
  [[nodiscard]] bool item(std::string_view dir, std::string_view name, const std::string& data,
                          std::string* error);

  // A directory below `parent` that the base fixture could not know in advance, even when it stays empty;
  // `name` ends in "/".
  [[nodiscard]] bool dir(std::string_view parent, std::string_view name, std::string* error);

  [[nodiscard]] bool commit(std::string* error);

 private:
  struct Connection {
    sqlite3* db = nullptr;
    ~Connection() { sqlite3_close_v2(db); }
  };
  struct Statement {
    sqlite3_stmt* stmt = nullptr;
    ~Statement() { sqlite3_finalize(stmt); }
  };

  bool prepare(const char* sql, Statement* statement, std::string* error);
  bool fail(std::string* error);
  // The number of the directory `path`, added when missing; false when the store fails.
  bool dir_id(std::string_view path, int64_t* id, std::string* error);

  // Declared first so that it closes after the statements are finalized.
  Connection connection_;
  Statement item_, find_dir_, add_dir_;
  std::string packed_;  // the item being written, packed; its room reused from item to item
  std::string last_dir_;
  int64_t last_dir_id_ = 0;
  int64_t next_dir_id_ = 0;
};

}  // namespace ostrel::tools
