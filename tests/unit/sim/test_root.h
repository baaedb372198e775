// A simulated root built from fixture text in a temporary directory and made the process's current root
// for the life of the object (through root_reset_for_testing), removed afterwards.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <string>
#include <vector>

#include "sim/root_testing.h"
#include "tools/fixture/fixture.h"

namespace ostrel::sim {

class TestRoot {
 public:
  explicit TestRoot(const std::string& fixture) : TestRoot(std::vector<std::string>{fixture}) {}
  explicit TestRoot(const std::vector<std::string>& fixtures) {
    std::string pattern = (std::filesystem::temp_directory_path() / "ostrel-root-XXXXXX").string();
    EXPECT_NE(mkdtemp(pattern.data()), nullptr);
    scratch_ = pattern;
    dir_ = scratch_ + "/root";
    std::vector<tools::FixtureText> texts;
    for (size_t i = 0; i < fixtures.size(); ++i)
      texts.push_back({"fixture" + std::to_string(i), fixtures[i]});
    std::string error;
    built_ = tools::build_root(dir_, texts, &error);
    EXPECT_TRUE(built_) << error;
    root_reset_for_testing(dir_);
  }
  ~TestRoot() {
    root_reset_for_testing(scratch_ + "/gone");
    std::error_code ec;
    std::filesystem::remove_all(scratch_, ec);
  }
  TestRoot(const TestRoot&) = delete;
  TestRoot& operator=(const TestRoot&) = delete;

  const std::string& dir() const { return dir_; }

 private:
  std::string scratch_;
  std::string dir_;
  bool built_ = false;
};

}  // namespace ostrel::sim
