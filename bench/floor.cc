// The floor: what "scan the route table and print it" costs this machine with nothing else in the way. It
// reads the items of one store directory with the same batched range query as the simulated store (256 a
// batch, resuming after the last name) and prints, with printf, as many bytes per item as the view it stands
// beside printed per route. Records are unpacked into a reused buffer as the store unpacks them, and unless
// asked not decoded: the difference to ostrel is the program's own work.
//
// Given a record type as well, the floor also decodes each record with the platform's decoder and releases
// it, as every view must before it prints: what is left between a view and this floor is its printing.
//
// usage: floor ROOT DIRECTORY BYTES_PER_ITEM [RECORD_TYPE]
#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "access/pod_descriptors.h"
#include "platform/pod.h"
#include "sim/store/record_pack.h"

namespace {

constexpr int kBatch = 256;

int fail(sqlite3* db, const char* what) {
  std::fprintf(stderr, "floor: %s: %s\n", what, db ? sqlite3_errmsg(db) : "no database");
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4 && argc != 5) {
    std::fprintf(stderr, "usage: floor ROOT DIRECTORY BYTES_PER_ITEM [RECORD_TYPE]\n");
    return 2;
  }
  const pod_desc* desc = argc == 5 ? ostrel_find_pod_desc(argv[4]) : nullptr;
  if (argc == 5 && desc == nullptr) {
    std::fprintf(stderr, "floor: no record type %s\n", argv[4]);
    return 2;
  }
  // The decoded structure, in one block reused for every record as a view reuses its own.
  std::unique_ptr<std::max_align_t[]> decoded;
  if (desc != nullptr)
    decoded.reset(new std::max_align_t[desc->layout[0].size / sizeof(std::max_align_t) + 1]);
  std::string uri = std::string("file:") + argv[1] + "/vellum.db?immutable=1";
  int bytes = std::atoi(argv[3]);
  if (bytes < 16) bytes = 16;
  sqlite3* db = nullptr;
  // Opened as the simulated store opens it.
  if (sqlite3_open_v2(uri.c_str(), &db, SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK)
    return fail(db, "open");
  sqlite3_stmt* batch = nullptr;
  const char* sql =
      "SELECT name, datatype, data FROM items WHERE dir = (SELECT id FROM dirs WHERE path = ?1) "
      "AND name > ?2 ORDER BY name LIMIT ?3";
  if (sqlite3_prepare_v2(db, sql, -1, &batch, nullptr) != SQLITE_OK) return fail(db, "prepare");

  static char out[1 << 16];
  std::setvbuf(stdout, out, _IOFBF, sizeof out);
  std::string resume;
  std::string record;
  std::string line(static_cast<size_t>(bytes) - 1, '.');
  for (;;) {
    sqlite3_reset(batch);
    sqlite3_bind_text(batch, 1, argv[2], -1, SQLITE_STATIC);
    sqlite3_bind_text(batch, 2, resume.c_str(), -1, SQLITE_TRANSIENT);
    sqlite3_bind_int(batch, 3, kBatch + 1);  // the extra row answers "are there more"
    int rows = 0;
    bool more = false;
    while (sqlite3_step(batch) == SQLITE_ROW) {
      if (++rows > kBatch) {
        more = true;
        break;
      }
      const char* name = reinterpret_cast<const char*>(sqlite3_column_text(batch, 0));
      // The record is read as ostrel reads it, and left undecoded.
      record.clear();
      const void* packed = sqlite3_column_blob(batch, 2);
      if (!ostrel::sim::unpack_record_append(packed, static_cast<size_t>(sqlite3_column_bytes(batch, 2)),
                                             &record))
        return fail(db, "read");
      if (desc != nullptr) {
        if (pod_decode(record.data(), static_cast<uint32_t>(record.size()), decoded.get(), desc) != kCerrOk) {
          std::fprintf(stderr, "floor: %s does not decode\n", name);
          return 1;
        }
        pod_free_indirections(decoded.get(), desc);
      }
      // One line of the view's width per item: the key, then filler up to the width.
      int n = std::printf("%s %zu ", name, record.size());
      std::printf("%.*s\n", bytes - 1 - n > 0 ? bytes - 1 - n : 0, line.c_str());
      if (rows == kBatch) resume = name;
    }
    if (!more) break;
  }
  sqlite3_finalize(batch);
  sqlite3_close(db);
  std::fflush(stdout);
  return 0;
}
