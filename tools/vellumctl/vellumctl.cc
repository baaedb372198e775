// vellumctl: builds simulated router roots from fixtures and looks inside them: ls and get through the same
// store service that ostrel reads, dump through a walk of the whole subtree.
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "sim/store/format.h"
#include "sim/store/store_walk.h"
#include "tools/fixture/fixture.h"
#include "tools/fixture/fixture_encode.h"
#include "tools/vellumctl/generate.h"

namespace {

using namespace ostrel::sim;
using namespace ostrel::tools;

struct HandleOwner {
  vellum_handle_t handle = nullptr;
  ~HandleOwner() {
    if (handle) (void)vellum_unbind(handle);
  }
};

std::string code_text(cerr_t code) {
  for (const CerrText& entry : kCerrTexts) {
    if (entry.code == code) return entry.text;
  }
  char hex[16];
  std::snprintf(hex, sizeof hex, "0x%x", code);
  return hex;
}

// Why `root` holds no store this vellumctl reads, naming the file at fault.
std::string no_store_reason(const char* root) {
  std::string db = std::string(root) + "/" + kStoreFileName;
  struct stat status;
  if (stat(root, &status) != 0) return std::string(root) + ": " + std::strerror(errno);
  if (!S_ISDIR(status.st_mode)) return std::string(root) + ": not a directory";
  if (stat(db.c_str(), &status) != 0) return std::string(root) + ": not a router root (no vellum.db)";
  if (access(db.c_str(), R_OK) != 0) return db + ": " + std::strerror(errno);
  return db + ": not a store of this vellumctl's format; build the root again";
}

// Points the store service at `root`; false (after a message) when there is no store.
bool use_root(const char* root) {
  setenv("OSTREL_ROOT", root, 1);
  if (root_db()) return true;
  std::fprintf(stderr, "vellumctl: %s\n", no_store_reason(root).c_str());
  return false;
}

// The same, and binds the top of the store.
bool open_root(const char* root, HandleOwner* top) {
  if (!use_root(root)) return false;
  if (cerr_t status = vellum_bind(&top->handle, "/", 0)) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", root, code_text(status).c_str());
    return false;
  }
  return true;
}

// Writes `text` to standard output; false after saying why it could not.
bool write_out(const std::string& text) {
  if (std::fwrite(text.data(), 1, text.size(), stdout) == text.size()) return true;
  std::fprintf(stderr, "vellumctl: standard output: %s\n", std::strerror(errno));
  return false;
}

int build(int argc, char** argv) {
  std::vector<std::string> files(argv + 1, argv + argc);
  std::string error;
  if (!build_root_from_files(argv[0], files, &error)) {
    std::fprintf(stderr, "vellumctl: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

int ls(int, char** argv) {
  HandleOwner top;
  if (!open_root(argv[0], &top)) return 1;
  vellum_list_t names = nullptr;
  int32_t count = -1;
  cerr_t status = vellum_list(top.handle, argv[1], "", &count, &names);
  if (status == kStoreNotFound) {
    // An empty directory lists nothing; only a missing one is an error.
    uint32_t batch = 0;
    vellum_datalist_t list = nullptr;
    status = vellum_datalist(top.handle, argv[1], "", &batch, &list, 0);
    if (list) (void)vellum_datalist_free(list);
  }
  if (status) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", argv[1], code_text(status).c_str());
    return 1;
  }
  const char* name = nullptr;
  while (names && vellum_list_next(names, &name) == kCerrOk && name) std::printf("%s\n", name);
  return 0;
}

int get(int, char** argv) {
  HandleOwner top;
  if (!open_root(argv[0], &top)) return 1;
  uint32_t type = kVellumDataTypePod;
  void* data = nullptr;
  uint32_t length = 0;
  cerr_t status = vellum_item_get(top.handle, argv[1], &type, &data, &length, 0);
  std::unique_ptr<void, decltype(&std::free)> owned(data, std::free);
  if (status) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", argv[1], code_text(status).c_str());
    return 1;
  }
  std::string line;
  ItemJsonWriter().append(argv[1], type, data, length, &line);
  return write_out(line) ? 0 : 1;
}

// Lines are gathered up to this size and written together.
constexpr size_t kDumpChunk = 1 << 20;

// Walks the database rather than the store service, so that a root's injected faults do not stop it.
int dump(int, char** argv) {
  if (!use_root(argv[0])) return 1;
  StoreWalk walk;
  if (cerr_t status = walk.start(argv[1])) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", argv[1], code_text(status).c_str());
    return 1;
  }
  ItemJsonWriter items;
  std::string lines;
  lines.reserve(kDumpChunk + 65536);
  WalkedItem item;
  cerr_t status;
  while ((status = walk.next(&item)) == kCerrOk) {
    items.append(item.path, item.datatype, item.data, item.length, &lines);
    if (lines.size() < kDumpChunk) continue;
    if (!write_out(lines)) return 1;
    lines.clear();
  }
  if (!write_out(lines)) return 1;
  if (status != kStoreNotFound) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", argv[1], code_text(status).c_str());
    return 1;
  }
  return 0;
}

int gen(int argc, char** argv) {
  ostrel::tools::GenerateSettings settings;
  std::string error;
  if (!ostrel::tools::parse_generate_options(argc - 1, argv + 1, &settings, &error) ||
      !ostrel::tools::generate_root(argv[0], settings, &error)) {
    std::fprintf(stderr, "vellumctl: %s\n", error.c_str());
    return 1;
  }
  return 0;
}

struct Command {
  const char* name;
  const char* arguments;
  const char* description;
  int min_args;
  int max_args;  // -1: no limit
  int (*run)(int argc, char** argv);
};

constexpr Command kCommands[] = {
    {"build", "ROOT FIXTURE.json...",
     "create or replace ROOT from the fixtures, later ones adding to earlier", 2, -1, build},
    {"ls", "ROOT DIR", "list the names below DIR (subdirectories end in \"/\")", 2, 2, ls},
    {"get", "ROOT PATH", "print the item at PATH (or an alias) as a line of JSON, its record decoded", 2, 2,
     get},
    {"dump", "ROOT DIR",
     "print every item below DIR, subdirectories included, as lines of JSON in listing order", 2, 2, dump},
    {"gen",
     "ROOT [--routes N] [--interfaces K] [--amt-every M] [--star-every M] [--seed S] [--vrf NAME] "
     "[--filtered]",
     "create or replace ROOT with a synthetic router of N routes in every route collection, and N items in "
     "each listing view's collection",
     1, -1, gen},
};

int usage() {
  std::fprintf(stderr, "usage:\n");
  for (const Command& command : kCommands) {
    std::fprintf(stderr, "  vellumctl %s %s\n      %s\n", command.name, command.arguments,
                 command.description);
  }
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return usage();
  for (const Command& command : kCommands) {
    if (std::strcmp(argv[1], command.name) != 0) continue;
    int args = argc - 2;
    if (args < command.min_args || (command.max_args >= 0 && args > command.max_args)) return usage();
    int status = command.run(args, argv + 2);
    // A command that failed has said why already; one that did not must still get its output out.
    if (std::fflush(stdout) != 0 && status == 0) {
      std::fprintf(stderr, "vellumctl: standard output: %s\n", std::strerror(errno));
      return 1;
    }
    return status;
  }
  return usage();
}
