// The keyword reader: what absent, missing and bad mean. (Keywords anywhere, C numbers and dotted addresses
// read as the keyword cases show.)
#include "platform/cli_args.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

class Keywords {
 public:
  explicit Keywords(std::vector<std::string> words) : words_(std::move(words)) {
    for (std::string& word : words_) argv_.push_back(word.data());
    EXPECT_EQ(mcast_cli_args_init(static_cast<int>(argv_.size()), argv_.data(), &ctx_), kCerrOk);
  }
  mcast_cli_args_t ctx() const { return ctx_; }

 private:
  std::vector<std::string> words_;
  std::vector<char*> argv_;
  mcast_cli_args_t ctx_{};
};

TEST(CliArgs, AbsentOptionalKeywordIsSilentAndAMissingValueFails) {
  Keywords args({"-cmd", "-r", "-v", "red"});  // the program name is no keyword
  testing::internal::CaptureStderr();
  uint32_t present = 7, value = 42, flag = 7;
  EXPECT_EQ(mcast_cli_args_eval_32(args.ctx(), "-cmd", 1, &present, &value), kCerrOk);
  EXPECT_EQ(mcast_cli_args_eval_none(args.ctx(), "-standby", 1, &flag), kCerrOk);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(present, 0u);
  EXPECT_EQ(value, 42u);
  EXPECT_EQ(flag, 0u);

  // A keyword without its value fails with a message (a missing required one is in the keyword_mode cases).
  Keywords missing({"/bin/ostrel", "-cmd", "2", "-p"});
  present = 7;
  testing::internal::CaptureStderr();
  EXPECT_NE(mcast_cli_args_eval_32(missing.ctx(), "-p", 1, &present, &value), kCerrOk);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "ostrel: missing value for keyword -p\n");
  EXPECT_EQ(present, 0u);
}

TEST(CliArgs, ValuesThatDoNotReadAreRefused) {
  const std::vector<std::pair<std::string, std::string>> bad = {{"-p", "12x"},
                                                                {"-p", "-1"},
                                                                {"-p", ""},
                                                                {"-p", "0x100000000"},
                                                                {"-p", "10.0.0.1"},
                                                                {"-address", "10.0.0"},
                                                                {"-address", "167772161"}};
  for (const auto& [keyword, text] : bad) {
    Keywords args({"ostrel", keyword, text});
    uint32_t present = 0, value = 0;
    testing::internal::CaptureStderr();
    EXPECT_NE(mcast_cli_args_eval_32(args.ctx(), keyword.c_str(), 1, &present, &value), kCerrOk) << text;
    std::string message = testing::internal::GetCapturedStderr();
    EXPECT_NE(message.find("'" + text + "' of keyword " + keyword), std::string::npos) << message;
    EXPECT_EQ(present, 0u);
  }
  Keywords largest({"ostrel", "-p", "0xffffffff"});
  uint32_t present = 0, value = 0;
  EXPECT_EQ(mcast_cli_args_eval_32(largest.ctx(), "-p", 1, &present, &value), kCerrOk);
  EXPECT_EQ(value, 0xffffffffu);
}

}  // namespace
