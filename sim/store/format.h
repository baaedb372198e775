// The layout of a root's store database, shared by the tool that writes it and the simulation that reads it.
// sim/store/README.md describes each table and why it is shaped so.
#pragma once

namespace ostrel::sim {

// The database file below a root.
inline constexpr const char* kStoreFileName = "vellum.db";

// Bumped whenever a table below changes shape or the records it holds change their wire format; a root built
// by another format is refused, so a stale root is rebuilt rather than read item by item into errors.
// 2: records as decoded images. 3: item data packed (record_pack.h). 4: directories by number.
inline constexpr int kStoreFormatVersion = 4;

// The number of the directory "/" in `dirs`; the others are numbered from it on, in any order.
inline constexpr int kRootDirId = 1;

inline constexpr const char* kStoreSchema = R"sql(
PRAGMA page_size = 65536;
CREATE TABLE items (
  dir INTEGER NOT NULL,
  name TEXT NOT NULL,
  datatype INTEGER NOT NULL,
  data BLOB NOT NULL,
  PRIMARY KEY (dir, name)
) WITHOUT ROWID;
CREATE TABLE aliases (
  path TEXT PRIMARY KEY,
  dir INTEGER NOT NULL,
  name TEXT NOT NULL
) WITHOUT ROWID;
CREATE TABLE dirs (
  id INTEGER PRIMARY KEY,
  path TEXT NOT NULL,
  parent INTEGER NOT NULL,
  name TEXT NOT NULL
);
CREATE UNIQUE INDEX dirs_by_path ON dirs (path);
CREATE UNIQUE INDEX dirs_by_parent ON dirs (parent, name);
CREATE TABLE interfaces (handle INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE nodes (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE fapids (id INTEGER PRIMARY KEY, name TEXT NOT NULL);
CREATE TABLE settings (key TEXT PRIMARY KEY, value INTEGER NOT NULL) WITHOUT ROWID;
CREATE TABLE faults (
  op TEXT NOT NULL,
  key TEXT NOT NULL,
  idx INTEGER NOT NULL,
  code INTEGER NOT NULL,
  overflow INTEGER NOT NULL,
  data BLOB
);
)sql";

}  // namespace ostrel::sim
