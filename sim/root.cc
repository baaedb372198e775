// The simulated router root: where it lives, its store database, and the inventory, settings and faults that
// the fixture stored beside the items. Everything is loaded on first use and kept for the process.
#include "sim/root.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <unordered_map>
#include <vector>

#include "sim/root_testing.h"
#include "sim/store/format.h"

#if !defined(OSTREL_DEMO_ROOT) || !defined(OSTREL_INSTALLED_DEMO_ROOT)
#error "the build names the demo root with OSTREL_DEMO_ROOT and OSTREL_INSTALLED_DEMO_ROOT"
#endif

namespace ostrel::sim {
namespace {

struct DbCloser {
  void operator()(sqlite3* db) const { sqlite3_close_v2(db); }
};
struct StmtFinalizer {
  void operator()(sqlite3_stmt* stmt) const { sqlite3_finalize(stmt); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StmtFinalizer>;

struct FaultRow {
  int64_t index;  // -1: every index
  Fault fault;
};

// What the fixture declared besides items, read in one pass over the small tables.
struct Declared {
  std::unordered_map<uint32_t, std::string> interface_names;
  std::unordered_map<std::string, uint32_t> interface_handles;
  std::unordered_map<uint32_t, std::string> node_names;
  std::unordered_map<uint32_t, std::string> fapid_names;
  bool control_server = false;
  // Keyed by op, a NUL, then the key: one probe answers "is there any fault here".
  std::unordered_map<std::string, std::vector<FaultRow>> faults;
};

struct RootState {
  std::optional<std::string> dir;
  bool db_tried = false;
  std::unique_ptr<sqlite3, DbCloser> db;
  std::unique_ptr<Declared> declared;
  uint64_t generation = 0;
};

RootState& state() {
  static RootState root;
  return root;
}

// SQLite's URI form lets the file be opened immutable: no locks, no journal, no chance of a write.
std::string immutable_uri(const std::string& file) {
  std::string uri = "file:";
  for (unsigned char c : file) {
    if (c == '%' || c == '?' || c == '#' || c < 0x20 || c >= 0x7f) {
      char escaped[4];
      std::snprintf(escaped, sizeof escaped, "%%%02X", c);
      uri += escaped;
    } else {
      uri += static_cast<char>(c);
    }
  }
  return uri + "?immutable=1";
}

Statement prepare(sqlite3* db, const char* sql) {
  sqlite3_stmt* stmt = nullptr;
  if (sqlite3_prepare_v2(db, sql, -1, &stmt, nullptr) != SQLITE_OK) return nullptr;
  return Statement(stmt);
}

std::string column_text(sqlite3_stmt* stmt, int column) {
  const unsigned char* text = sqlite3_column_text(stmt, column);
  return text ? std::string(reinterpret_cast<const char*>(text), sqlite3_column_bytes(stmt, column)) : "";
}

void load_names(sqlite3* db, const char* sql, std::unordered_map<uint32_t, std::string>* names) {
  Statement stmt = prepare(db, sql);
  while (stmt && sqlite3_step(stmt.get()) == SQLITE_ROW) {
    (*names)[static_cast<uint32_t>(sqlite3_column_int64(stmt.get(), 0))] = column_text(stmt.get(), 1);
  }
}

std::string fault_key(std::string_view op, std::string_view key) {
  std::string joined(op);
  joined += '\0';
  joined += key;
  return joined;
}

void load_faults(sqlite3* db, Declared* declared) {
  Statement stmt = prepare(db, "SELECT op, key, idx, code, overflow, data FROM faults");
  while (stmt && sqlite3_step(stmt.get()) == SQLITE_ROW) {
    FaultRow row;
    row.index = sqlite3_column_int64(stmt.get(), 2);
    row.fault.code = static_cast<cerr_t>(sqlite3_column_int64(stmt.get(), 3));
    row.fault.overflow = sqlite3_column_int(stmt.get(), 4) != 0;
    if (sqlite3_column_type(stmt.get(), 5) != SQLITE_NULL) {
      const void* blob = sqlite3_column_blob(stmt.get(), 5);
      int size = sqlite3_column_bytes(stmt.get(), 5);
      row.fault.data.assign(static_cast<const char*>(blob), blob ? size : 0);
      row.fault.has_data = true;
    }
    declared->faults[fault_key(column_text(stmt.get(), 0), column_text(stmt.get(), 1))].push_back(row);
  }
}

// Loaded on first use, apart from declared(): every fault check and name lookup asks for the inventory, and
// a small function that only tests the pointer costs them a few instructions rather than a full frame.
[[gnu::noinline, gnu::cold]] const Declared& load_declared(RootState& root) {
  root.declared = std::make_unique<Declared>();
  Declared& out = *root.declared;
  sqlite3* db = root_db();
  if (!db) return out;
  load_names(db, "SELECT handle, name FROM interfaces", &out.interface_names);
  for (const auto& [handle, name] : out.interface_names) out.interface_handles.emplace(name, handle);
  load_names(db, "SELECT id, name FROM nodes", &out.node_names);
  load_names(db, "SELECT id, name FROM fapids", &out.fapid_names);
  Statement setting = prepare(db, "SELECT value FROM settings WHERE key = 'control_server'");
  out.control_server =
      setting && sqlite3_step(setting.get()) == SQLITE_ROW && sqlite3_column_int(setting.get(), 0);
  load_faults(db, &out);
  detail::no_faults = out.faults.empty();
  return out;
}

const Declared& declared() {
  RootState& root = state();
  if (root.declared) [[likely]]
    return *root.declared;
  return load_declared(root);
}

// A database written by another format version would answer queries wrongly rather than fail; refuse it.
bool format_matches(sqlite3* db) {
  Statement stmt = prepare(db, "SELECT value FROM settings WHERE key = 'format'");
  return stmt && sqlite3_step(stmt.get()) == SQLITE_ROW &&
         sqlite3_column_int(stmt.get(), 0) == kStoreFormatVersion;
}

const std::string* find(const std::unordered_map<uint32_t, std::string>& names, uint32_t id) {
  auto found = names.find(id);
  return found == names.end() ? nullptr : &found->second;
}

// An installed program finds the demo router where the installation put it, relative to its own binary so
// that the installation can move (a package's staging directory, another prefix); a program run from the
// build tree finds none there and reads the root that the build made.
std::string demo_root() {
  char exe[4096];
  ssize_t size = readlink("/proc/self/exe", exe, sizeof exe);
  if (size > 0 && static_cast<size_t>(size) < sizeof exe) {
    std::string dir(exe, static_cast<size_t>(size));
    dir.resize(dir.rfind('/') + 1);
    std::string installed = dir + OSTREL_INSTALLED_DEMO_ROOT;
    if (access((installed + "/" + kStoreFileName).c_str(), R_OK) == 0) return installed;
  }
  return OSTREL_DEMO_ROOT;
}

}  // namespace

const std::string& root_dir() {
  RootState& root = state();
  if (!root.dir) {
    const char* env = std::getenv("OSTREL_ROOT");
    root.dir = (env && *env) ? std::string(env) : demo_root();
  }
  return *root.dir;
}

sqlite3* root_db() {
  RootState& root = state();
  if (root.db_tried) return root.db.get();
  root.db_tried = true;
  std::string file = root_dir() + "/" + kStoreFileName;
  sqlite3* db = nullptr;
  // One connection, used by one thread: SQLite need not lock it on every column read.
  int rc = sqlite3_open_v2(immutable_uri(file).c_str(), &db,
                           SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX, nullptr);
  std::unique_ptr<sqlite3, DbCloser> owned(db);
  if (rc == SQLITE_OK && format_matches(db)) root.db = std::move(owned);
  return root.db.get();
}

std::string root_path(std::string_view router_path) {
  std::string path = root_dir();
  if (!router_path.empty() && router_path.front() != '/') path += '/';
  path += router_path;
  return path;
}

std::optional<std::string> interface_name_of(uint32_t handle) {
  const std::string* name = find(declared().interface_names, handle);
  return name ? std::optional<std::string>(*name) : std::nullopt;
}

const std::string* find_interface_name(uint32_t handle) {
  return find(declared().interface_names, handle);
}

std::optional<uint32_t> interface_handle_of(std::string_view name) {
  const auto& handles = declared().interface_handles;
  auto found = handles.find(std::string(name));
  if (found == handles.end()) return std::nullopt;
  return found->second;
}

const std::string* node_name_of(uint32_t id) {
  return find(declared().node_names, id);
}

const std::string* fapid_name_of(uint32_t id) {
  return find(declared().fapid_names, id);
}

bool control_server_available() {
  return declared().control_server;
}

namespace detail {
bool no_faults = false;
}

std::optional<Fault> detail::find_declared_fault(std::string_view op, std::string_view key, int64_t index) {
  const auto& faults = declared().faults;
  if (faults.empty()) return std::nullopt;
  auto found = faults.find(fault_key(op, key));
  if (found == faults.end()) return std::nullopt;
  for (const FaultRow& row : found->second) {
    if (row.index < 0 || row.index == index) return row.fault;
  }
  return std::nullopt;
}

bool detail::faults_declared_slow() {
  return !declared().faults.empty();
}

bool has_fault(std::string_view op, std::string_view key) {
  const auto& faults = declared().faults;
  return !faults.empty() && faults.count(fault_key(op, key)) != 0;
}

void root_reset_for_testing(const std::string& dir) {
  RootState& root = state();
  root.declared.reset();
  detail::no_faults = false;
  root.db.reset();
  root.db_tried = false;
  root.dir = dir;
  ++root.generation;
}

uint64_t root_generation() {
  return state().generation;
}

}  // namespace ostrel::sim
