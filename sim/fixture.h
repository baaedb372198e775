// Building a simulated root from fixture files: the JSON description of a router's store (items, aliases,
// directories), its inventory, its files and its injected faults. vellumctl and the tests build roots here.
#pragma once

#include <string>
#include <vector>

namespace ostrel::sim {

// One fixture: `name` stands for it in error messages (normally its file name), `json` is its text.
struct FixtureText {
  std::string name;
  std::string json;
};

// Creates or replaces the root directory `root` from the fixtures, later ones adding to (and for the same
// item, interface or identifier, replacing) earlier ones. The root is built beside `root` and renamed into
// place, so a failure leaves whatever was there before untouched. On failure `*error` names the fixture and
// the JSON path of the first bad value, as "FILE: at /items/3/hex: odd number of hex digits".
[[nodiscard]] bool build_root(const std::string& root, const std::vector<FixtureText>& fixtures,
                              std::string* error);

// The same from fixture files, read whole.
[[nodiscard]] bool build_root_from_files(const std::string& root, const std::vector<std::string>& files,
                                         std::string* error);

}  // namespace ostrel::sim
