// Writes generated items straight into a freshly built root's store, in one transaction, with statements
// prepared once: the synthetic router's millions of records go in without the fixture model's memory.
#pragma once

#include <sqlite3.h>

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

  // A pod record at `dir` + `name`. The directory must be known to the store (fixture or dir()).
  [[nodiscard]] bool item(std::string_view dir, std::string_view name, const std::string& data,
                          std::string* error);

  // A directory below `parent` that the base fixture could not know in advance; `name` ends in "/".
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

  // Declared first so that it closes after the statements are finalized.
  Connection connection_;
  Statement item_, dir_;
  std::string packed_;  // the item being written, packed; its room reused from item to item
};

}  // namespace ostrel::tools
