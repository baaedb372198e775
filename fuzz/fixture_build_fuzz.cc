// The fixture reader on whole documents: each input is one fixture, built into a root in a directory that
// all inputs share. A refusal must say why and leave nothing behind it: the directory then holds at most
// the root of an earlier input. An exception out of the reader counts as a refusal.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "tools/fixture/fixture.h"

namespace fs = std::filesystem;

namespace {

fs::path& work_dir() {
  static fs::path dir;
  return dir;
}

void remove_work_dir() {
  std::error_code ec;
  fs::remove_all(work_dir(), ec);
}

// Only the root may be there, and it is a root.
bool nothing_half_built(const fs::path& root) {
  for (const fs::directory_entry& entry : fs::directory_iterator(work_dir()))
    if (entry.path() != root) return false;
  return !fs::exists(root) || fs::is_regular_file(root / "vellum.db");
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  std::string pattern = (fs::temp_directory_path() / "ostrel-fixture-fuzz-XXXXXX").string();
  if (mkdtemp(pattern.data()) == nullptr) std::abort();
  work_dir() = pattern;
  std::atexit(remove_work_dir);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const fs::path root = work_dir() / "root";
  std::string error;
  bool built = false;
  bool threw = false;
  try {
    built = ostrel::tools::build_root(root.string(), {{"fuzz.json", std::string(data, data + size)}}, &error);
  } catch (const std::exception&) {
    threw = true;
  }
  if (!built && !threw && error.empty()) __builtin_trap();
  if (!nothing_half_built(root)) __builtin_trap();
  return 0;
}
