// vellumctl: builds simulated router roots from fixtures and looks inside them, through the same store
// service that ostrel reads.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "platform/vellum.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
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

// Points the store service at `root` and binds its top; none (after a message) when there is no store.
bool open_root(const char* root, HandleOwner* top) {
  setenv("OSTREL_ROOT", root, 1);
  if (!root_db()) {
    std::fprintf(stderr, "vellumctl: %s: no readable store (vellum.db) there\n", root);
    return false;
  }
  if (cerr_t status = vellum_bind(&top->handle, "/", 0)) {
    std::fprintf(stderr, "vellumctl: %s: %s\n", root, code_text(status).c_str());
    return false;
  }
  return true;
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

std::string hex_of(const void* data, uint32_t length) {
  static const char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (uint32_t i = 0; i < length; ++i) {
    unsigned char byte = static_cast<const unsigned char*>(data)[i];
    hex += kDigits[byte >> 4];
    hex += kDigits[byte & 15];
  }
  return hex;
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
  nlohmann::ordered_json item;
  item["path"] = argv[1];
  item["datatype"] = type;
  std::string record_type, problem;
  nlohmann::json value;
  if (type == kVellumDataTypePod && decode_typed_value(std::string(static_cast<const char*>(data), length),
                                                       &record_type, &value, &problem)) {
    item["type"] = record_type;
    item["value"] = value;
  } else {
    item["hex"] = hex_of(data, length);
    if (!problem.empty()) item["problem"] = problem;
  }
  std::printf("%s\n", item.dump(2).c_str());
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
    {"get", "ROOT PATH", "print the item at PATH (or an alias) as JSON, its record decoded", 2, 2, get},
    {"gen",
     "ROOT [--routes N] [--interfaces K] [--amt-every M] [--star-every M] [--seed S] [--vrf NAME] "
     "[--filtered]",
     "create or replace ROOT with a synthetic router of N routes in every route collection", 1, -1, gen},
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
    return command.run(args, argv + 2);
  }
  return usage();
}
