// Fixture files to a root: parse and check every fixture into one model, then write the model's store
// database and router files into a fresh directory and rename it into place.
#include "sim/fixture.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <nlohmann/json.hpp>

#include "sim/cerr_codes.h"
#include "sim/fixture_encode.h"
#include "sim/store/format.h"
#include "sim/store/store_paths.h"

namespace ostrel::sim {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// A bad value in a fixture: where it is (a JSON pointer) and what is wrong with it.
struct FixtureError : std::runtime_error {
  FixtureError(std::string where, const std::string& what)
      : std::runtime_error(what), where(std::move(where)) {}
  std::string where;
};

struct StoredItem {
  uint32_t datatype = 0;
  std::string data;
};

struct StoredFault {
  std::string op;
  std::string key;
  int64_t index = -1;
  cerr_t code = kInjectedFailure;
  bool overflow = false;
  std::optional<std::string> data;
};

// Every fixture merged: maps keep rows in key order, which is also the order the database wants them in.
struct Model {
  std::map<uint32_t, std::string> interfaces;
  std::map<uint32_t, std::string> nodes;
  std::map<uint32_t, std::string> fapids;
  bool library = true;
  bool control_server = true;
  std::set<std::string> dirs;
  std::map<std::pair<std::string, std::string>, StoredItem> items;
  std::map<std::string, std::pair<std::string, std::string>> aliases;
  std::vector<StoredFault> faults;
};

std::string at(const std::string& where, std::string_view member) {
  return where + "/" + std::string(member);
}
std::string at(const std::string& where, size_t index) {
  return where + "/" + std::to_string(index);
}

void check_members(const json& object, const std::string& where,
                   std::initializer_list<std::string_view> known) {
  if (!object.is_object()) throw FixtureError(where, "expected an object");
  for (const auto& [key, value] : object.items()) {
    bool found = false;
    for (std::string_view name : known) found = found || key == name;
    if (!found) throw FixtureError(at(where, key), "unknown member");
  }
}

const json& member(const json& object, const std::string& where, const char* name) {
  auto found = object.find(name);
  if (found == object.end()) throw FixtureError(at(where, name), "missing");
  return *found;
}

std::string text(const json& value, const std::string& where) {
  if (!value.is_string()) throw FixtureError(where, "expected a string");
  return value.get<std::string>();
}

bool flag(const json& value, const std::string& where) {
  if (!value.is_boolean()) throw FixtureError(where, "expected true or false");
  return value.get<bool>();
}

// A number given as a JSON integer or as text in C notation ("0x100", "256", "0400").
uint64_t number(const json& value, const std::string& where, uint64_t max) {
  uint64_t result = 0;
  if (value.is_number_unsigned()) {
    result = value.get<uint64_t>();
  } else if (value.is_string()) {
    std::string digits = value.get<std::string>();
    char* end = nullptr;
    errno = 0;
    result = std::strtoull(digits.c_str(), &end, 0);
    if (digits.empty() || digits[0] == '-' || *end != '\0' || errno == ERANGE) {
      throw FixtureError(where, "not a number: \"" + digits + "\"");
    }
  } else {
    throw FixtureError(where, "expected a non-negative number");
  }
  if (result > max) throw FixtureError(where, "number out of range");
  return result;
}

std::string bytes_from_hex(const json& value, const std::string& where) {
  std::string digits = text(value, where);
  if (digits.size() % 2 != 0) throw FixtureError(where, "odd number of hex digits");
  std::string bytes;
  for (size_t i = 0; i < digits.size(); i += 2) {
    auto nibble = [&](char c) -> int {
      if (c >= '0' && c <= '9') return c - '0';
      if (c >= 'a' && c <= 'f') return c - 'a' + 10;
      if (c >= 'A' && c <= 'F') return c - 'A' + 10;
      throw FixtureError(where, std::string("not a hex digit: '") + c + "'");
    };
    bytes += static_cast<char>(nibble(digits[i]) << 4 | nibble(digits[i + 1]));
  }
  return bytes;
}

std::string absolute_item_path(const json& value, const std::string& where) {
  std::string path = text(value, where);
  if (path.size() < 2 || path.front() != '/' || path.back() == '/' || path.find("//") != std::string::npos) {
    throw FixtureError(where, "expected an absolute item path such as \"/a/b/item\"");
  }
  return path;
}

std::string absolute_dir_path(const json& value, const std::string& where) {
  std::string path = text(value, where);
  if (path.empty() || path.front() != '/' || path.find("//") != std::string::npos) {
    throw FixtureError(where, "expected an absolute directory path such as \"/a/b/\"");
  }
  return as_dir(path);
}

void read_names(const json& list, const std::string& where, const char* id_member,
                std::map<uint32_t, std::string>* names) {
  if (!list.is_array()) throw FixtureError(where, "expected an array");
  for (size_t i = 0; i < list.size(); ++i) {
    std::string entry = at(where, i);
    check_members(list[i], entry, {id_member, "name"});
    uint32_t id =
        static_cast<uint32_t>(number(member(list[i], entry, id_member), at(entry, id_member), UINT32_MAX));
    (*names)[id] = text(member(list[i], entry, "name"), at(entry, "name"));
  }
}

void read_item(const json& item, const std::string& where, Model* model) {
  check_members(item, where, {"path", "aliases", "type", "value", "datatype", "hex"});
  std::string path = absolute_item_path(member(item, where, "path"), at(where, "path"));
  StoredItem stored;
  bool typed = item.contains("type") || item.contains("value");
  if (typed && item.contains("hex"))
    throw FixtureError(at(where, "hex"), "an item has either \"type\" or \"hex\"");
  stored.datatype = item.contains("datatype")
                        ? static_cast<uint32_t>(number(item["datatype"], at(where, "datatype"), UINT32_MAX))
                        : 7;
  if (typed) {
    std::string type = text(member(item, where, "type"), at(where, "type"));
    std::string value_where = at(where, "value");
    std::string problem;
    if (!encode_typed_value(type, member(item, where, "value"), &stored.data, &problem)) {
      if (problem.rfind("unknown record type", 0) == 0) throw FixtureError(at(where, "type"), problem);
      // The encoder reports "/Field/0/Sub: message"; its path continues the item's.
      if (!problem.empty() && problem[0] == '/') {
        size_t colon = problem.find(": ");
        if (colon != std::string::npos) {
          throw FixtureError(value_where + problem.substr(0, colon), problem.substr(colon + 2));
        }
      }
      throw FixtureError(value_where, problem);
    }
  } else {
    if (!item.contains("datatype"))
      throw FixtureError(at(where, "datatype"), "missing (or give \"type\" and \"value\")");
    stored.data = bytes_from_hex(member(item, where, "hex"), at(where, "hex"));
  }
  PathSplit split = split_item(path);
  std::pair<std::string, std::string> key(split.parent, split.name);
  model->items[key] = std::move(stored);
  if (item.contains("aliases")) {
    const json& aliases = item["aliases"];
    if (!aliases.is_array()) throw FixtureError(at(where, "aliases"), "expected an array");
    for (size_t i = 0; i < aliases.size(); ++i) {
      model->aliases[absolute_item_path(aliases[i], at(at(where, "aliases"), i))] = key;
    }
  }
}

enum class FaultKey { kNone, kDir, kItem, kType, kName, kHandle };

struct FaultKind {
  const char* op;
  FaultKey key;
  const char* index_member;  // the member giving the index, or none
};

constexpr FaultKind kFaultKinds[] = {
    {"bind", FaultKey::kDir, nullptr},
    {"datalist", FaultKey::kDir, "batch"},
    {"next", FaultKey::kDir, "index"},
    {"more", FaultKey::kDir, nullptr},
    {"datalist_free", FaultKey::kDir, nullptr},
    {"item_get", FaultKey::kItem, nullptr},
    {"list", FaultKey::kDir, nullptr},
    {"list_next", FaultKey::kDir, "index"},
    {"free_indirections", FaultKey::kType, nullptr},
    {"pool", FaultKey::kName, nullptr},
    {"pool_alloc", FaultKey::kName, "index"},
    {"list_create", FaultKey::kNone, nullptr},
    {"list_add", FaultKey::kNone, "index"},
    {"build_path", FaultKey::kNone, nullptr},
    {"print_entry", FaultKey::kNone, nullptr},
    {"control_server", FaultKey::kNone, nullptr},
    {"interface_name", FaultKey::kHandle, nullptr},
    {"display_name", FaultKey::kHandle, nullptr},
};

std::string fault_key(const json& fault, const std::string& where, FaultKey kind) {
  switch (kind) {
    case FaultKey::kNone:
      return {};
    case FaultKey::kDir:
      return absolute_dir_path(member(fault, where, "path"), at(where, "path"));
    case FaultKey::kItem:
      return absolute_item_path(member(fault, where, "path"), at(where, "path"));
    case FaultKey::kType:
      return text(member(fault, where, "type"), at(where, "type"));
    case FaultKey::kName:
      return text(member(fault, where, "name"), at(where, "name"));
    case FaultKey::kHandle: {
      char handle[16];
      std::snprintf(
          handle, sizeof handle, "0x%x",
          static_cast<uint32_t>(number(member(fault, where, "handle"), at(where, "handle"), UINT32_MAX)));
      return handle;
    }
  }
  return {};
}

void read_fault(const json& fault, const std::string& where, Model* model) {
  const json& op = member(fault, where, "op");
  std::string name = text(op, at(where, "op"));
  const FaultKind* kind = nullptr;
  for (const FaultKind& candidate : kFaultKinds) {
    if (name == candidate.op) kind = &candidate;
  }
  if (!kind) throw FixtureError(at(where, "op"), "unknown fault operation \"" + name + "\"");
  check_members(
      fault, where,
      {"op", "code", "path", "type", "name", "handle", kind->index_member ? kind->index_member : "op",
       name == "item_get" ? "hex" : "op", name == "print_entry" ? "overflow" : "op"});
  StoredFault stored;
  stored.op = name;
  stored.key = fault_key(fault, where, kind->key);
  if (kind->index_member && fault.contains(kind->index_member)) {
    stored.index = static_cast<int64_t>(
        number(fault[kind->index_member], at(where, kind->index_member), static_cast<uint64_t>(INT64_MAX)));
  }
  if (fault.contains("code"))
    stored.code = static_cast<cerr_t>(number(fault["code"], at(where, "code"), UINT32_MAX));
  if (stored.code == 0) throw FixtureError(at(where, "code"), "a fault's code cannot be 0");
  if (fault.contains("overflow")) stored.overflow = flag(fault["overflow"], at(where, "overflow"));
  if (fault.contains("hex")) stored.data = bytes_from_hex(fault["hex"], at(where, "hex"));
  model->faults.push_back(std::move(stored));
}

template <typename Reader>
void read_array(const json& fixture, const char* name, Reader read) {
  if (!fixture.contains(name)) return;
  const json& list = fixture[name];
  std::string where = at("", name);
  if (!list.is_array()) throw FixtureError(where, "expected an array");
  for (size_t i = 0; i < list.size(); ++i) read(list[i], at(where, i));
}

void read_fixture(const json& fixture, Model* model) {
  check_members(fixture, "",
                {"interfaces", "nodes", "fapids", "library", "control_server", "dirs", "items", "faults"});
  if (fixture.contains("interfaces"))
    read_names(fixture["interfaces"], "/interfaces", "handle", &model->interfaces);
  if (fixture.contains("nodes")) read_names(fixture["nodes"], "/nodes", "id", &model->nodes);
  if (fixture.contains("fapids")) read_names(fixture["fapids"], "/fapids", "id", &model->fapids);
  if (fixture.contains("library")) model->library = flag(fixture["library"], "/library");
  if (fixture.contains("control_server"))
    model->control_server = flag(fixture["control_server"], "/control_server");
  read_array(fixture, "dirs", [&](const json& dir, const std::string& where) {
    model->dirs.insert(absolute_dir_path(dir, where));
  });
  read_array(fixture, "items",
             [&](const json& item, const std::string& where) { read_item(item, where, model); });
  read_array(fixture, "faults",
             [&](const json& fault, const std::string& where) { read_fault(fault, where, model); });
}

// Every directory that holds something, up to (not including) the root.
std::set<std::string> all_dirs(const Model& model) {
  std::set<std::string> dirs;
  auto add_with_ancestors = [&](std::string_view dir) {
    while (dir.size() > 1 && dirs.insert(std::string(dir)).second) dir = split_dir(dir).parent;
  };
  for (const std::string& dir : model.dirs) add_with_ancestors(dir);
  for (const auto& [key, item] : model.items) add_with_ancestors(key.first);
  return dirs;
}

// SQLite failures while writing are programming or disk errors, reported with SQLite's own text.
struct Writer {
  sqlite3* db = nullptr;
  ~Writer() { sqlite3_close(db); }

  void exec(const char* sql) {
    char* message = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &message) != SQLITE_OK) {
      std::string text = message ? message : sqlite3_errmsg(db);
      sqlite3_free(message);
      throw std::runtime_error("writing the store: " + text);
    }
  }

  // Runs `sql` once per call of `rows(bind)`, where bind(stmt) binds one row's values.
  template <typename Rows>
  void insert(const char* sql, Rows rows) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) {
      throw std::runtime_error(std::string("writing the store: ") + sqlite3_errmsg(db));
    }
    std::unique_ptr<sqlite3_stmt, int (*)(sqlite3_stmt*)> owned(stmt, sqlite3_finalize);
    rows([&](auto bind) {
      sqlite3_reset(stmt);
      sqlite3_clear_bindings(stmt);
      bind(stmt);
      if (sqlite3_step(stmt) != SQLITE_DONE) {
        throw std::runtime_error(std::string("writing the store: ") + sqlite3_errmsg(db));
      }
    });
  }
};

void bind_text(sqlite3_stmt* stmt, int index, const std::string& text) {
  sqlite3_bind_text(stmt, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void insert_names(Writer& writer, const char* sql, const std::map<uint32_t, std::string>& names) {
  writer.insert(sql, [&](auto row) {
    for (const auto& [id, name] : names) {
      row([&](sqlite3_stmt* stmt) {
        sqlite3_bind_int64(stmt, 1, id);
        bind_text(stmt, 2, name);
      });
    }
  });
}

void write_store(const fs::path& file, const Model& model) {
  Writer writer;
  if (sqlite3_open(file.c_str(), &writer.db) != SQLITE_OK) {
    throw std::runtime_error("cannot create " + file.string() + ": " + sqlite3_errmsg(writer.db));
  }
  // A root is written once, by one process, and thrown away whole on failure: no journal, no syncs.
  writer.exec("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
  writer.exec(kStoreSchema);
  writer.exec("BEGIN");
  writer.insert("INSERT INTO items (dir, name, datatype, data) VALUES (?1, ?2, ?3, ?4)", [&](auto row) {
    for (const auto& [key, item] : model.items) {
      row([&](sqlite3_stmt* stmt) {
        bind_text(stmt, 1, key.first);
        bind_text(stmt, 2, key.second);
        sqlite3_bind_int64(stmt, 3, item.datatype);
        sqlite3_bind_blob(stmt, 4, item.data.data(), static_cast<int>(item.data.size()), SQLITE_TRANSIENT);
      });
    }
  });
  writer.insert("INSERT INTO aliases (path, dir, name) VALUES (?1, ?2, ?3)", [&](auto row) {
    for (const auto& [alias, target] : model.aliases) {
      row([&](sqlite3_stmt* stmt) {
        bind_text(stmt, 1, alias);
        bind_text(stmt, 2, target.first);
        bind_text(stmt, 3, target.second);
      });
    }
  });
  writer.insert("INSERT INTO dirs (parent, name) VALUES (?1, ?2)", [&](auto row) {
    for (const std::string& dir : all_dirs(model)) {
      PathSplit split = split_dir(dir);
      row([&](sqlite3_stmt* stmt) {
        bind_text(stmt, 1, std::string(split.parent));
        bind_text(stmt, 2, std::string(split.name));
      });
    }
  });
  insert_names(writer, "INSERT INTO interfaces (handle, name) VALUES (?1, ?2)", model.interfaces);
  insert_names(writer, "INSERT INTO nodes (id, name) VALUES (?1, ?2)", model.nodes);
  insert_names(writer, "INSERT INTO fapids (id, name) VALUES (?1, ?2)", model.fapids);
  writer.insert("INSERT INTO settings (key, value) VALUES (?1, ?2)", [&](auto row) {
    std::pair<std::string, int> settings[] = {{"format", kStoreFormatVersion},
                                              {"library", model.library},
                                              {"control_server", model.control_server}};
    for (const auto& [key, value] : settings) {
      row([&](sqlite3_stmt* stmt) {
        bind_text(stmt, 1, key);
        sqlite3_bind_int(stmt, 2, value);
      });
    }
  });
  writer.insert("INSERT INTO faults (op, key, idx, code, overflow, data) VALUES (?1, ?2, ?3, ?4, ?5, ?6)",
                [&](auto row) {
                  for (const StoredFault& fault : model.faults) {
                    row([&](sqlite3_stmt* stmt) {
                      bind_text(stmt, 1, fault.op);
                      bind_text(stmt, 2, fault.key);
                      sqlite3_bind_int64(stmt, 3, fault.index);
                      sqlite3_bind_int64(stmt, 4, fault.code);
                      sqlite3_bind_int(stmt, 5, fault.overflow);
                      if (fault.data) {
                        sqlite3_bind_blob(stmt, 6, fault.data->data(), static_cast<int>(fault.data->size()),
                                          SQLITE_TRANSIENT);
                      }
                    });
                  }
                });
  writer.exec("COMMIT");
}

// The router files a fixture declares: the store's client library when it says the library is there.
void write_files(const fs::path& dir, const Model& model) {
  if (!model.library) return;
  fs::create_directories(dir / "pkg/lib");
  std::ofstream library(dir / "pkg/lib/libvellum.so", std::ios::binary);
  library << "simulated vellum client library\n";
  if (!library) throw std::runtime_error("cannot write " + (dir / "pkg/lib/libvellum.so").string());
}

// Swaps the finished directory in for `root`, so readers see the old root or the new one, never a mix.
void replace_root(const fs::path& built, const fs::path& root) {
  std::error_code ec;
  if (!fs::exists(root, ec)) {
    fs::rename(built, root);
    return;
  }
  fs::path old = built;
  old += ".old";
  fs::rename(root, old);
  try {
    fs::rename(built, root);
  } catch (...) {
    fs::rename(old, root, ec);
    throw;
  }
  fs::remove_all(old, ec);
}

// A fresh directory beside `root` (so that the final rename stays on one file system).
fs::path make_build_dir(const fs::path& root) {
  fs::path parent = root.parent_path().empty() ? fs::path(".") : root.parent_path();
  fs::create_directories(parent);
  std::string name = root.filename().string();
  name.insert(name.begin(), '.');
  name.append(".building-XXXXXX");
  std::string pattern = (parent / name).string();
  if (!mkdtemp(pattern.data()))
    throw std::runtime_error("cannot create a directory beside " + root.string() + ": " +
                             std::strerror(errno));
  return pattern;
}

}  // namespace

bool build_root(const std::string& root, const std::vector<FixtureText>& fixtures, std::string* error) {
  Model model;
  for (const FixtureText& fixture : fixtures) {
    try {
      read_fixture(json::parse(fixture.json, nullptr, true, true), &model);
    } catch (const json::parse_error& e) {
      *error = fixture.name + ": not valid JSON: " + e.what();
      return false;
    } catch (const FixtureError& e) {
      *error = fixture.name + ": at " + (e.where.empty() ? "/" : e.where) + ": " + e.what();
      return false;
    }
  }
  fs::path target = fs::path(root).lexically_normal();
  if (target.filename().empty()) target = target.parent_path();
  fs::path built;
  try {
    built = make_build_dir(target);
    write_store(built / kStoreFileName, model);
    write_files(built, model);
    // mkdtemp() made it private; a root is read by whoever runs ostrel.
    fs::permissions(built, fs::perms::owner_all | fs::perms::group_read | fs::perms::group_exec |
                               fs::perms::others_read | fs::perms::others_exec);
    replace_root(built, target);
    return true;
  } catch (const std::exception& e) {
    std::error_code ec;
    if (!built.empty()) fs::remove_all(built, ec);
    *error = root + ": " + e.what();
    return false;
  }
}

bool build_root_from_files(const std::string& root, const std::vector<std::string>& files,
                           std::string* error) {
  std::vector<FixtureText> fixtures;
  for (const std::string& file : files) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in) {
      *error = file + ": cannot read: " + std::strerror(errno);
      return false;
    }
    fixtures.push_back({file, text.str()});
  }
  return build_root(root, fixtures, error);
}

}  // namespace ostrel::sim
