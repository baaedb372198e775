// The option scanner: POSIX order, no permutation, no messages, and an optind the program may move.
#include "platform/getopt.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

constexpr const char* kOptions = "1:abcde:fg:h:i:j:k:l:m:n:op:q:rs:tuv:w:xy:z:B:CDEFGHIJKLOPQRST:UVXYZ:N";

class Scan {
 public:
  explicit Scan(std::vector<std::string> words) : words_(std::move(words)) {
    for (std::string& word : words_) argv_.push_back(word.data());
    argv_.push_back(nullptr);
    optind = 0;
  }
  int argc() const { return static_cast<int>(words_.size()); }
  char* const* argv() { return argv_.data(); }
  int next(const char* options = kOptions) { return _getopt(argc(), argv(), options); }
  // Every option up to the end, as "letter" or "letter=argument".
  std::vector<std::string> all(const char* options = kOptions) {
    std::vector<std::string> seen;
    for (int c; (c = next(options)) != -1;) {
      std::string entry(1, static_cast<char>(c));
      if (optarg) entry.append("=").append(optarg);
      seen.push_back(std::move(entry));
    }
    return seen;
  }

 private:
  std::vector<std::string> words_;
  std::vector<char*> argv_;
};

using Seen = std::vector<std::string>;

TEST(Getopt, ArgumentsInTheSameOrNextWordAndGroupedLetters) {
  Scan scan({"ostrel", "-dr", "-v", "red", "-gx", "-p32"});
  EXPECT_EQ(scan.all(), (Seen{"d", "r", "v=red", "g=x", "p=32"}));
  EXPECT_EQ(optind, 6);
  Scan standby({"ostrel", "-standby"});
  EXPECT_EQ(standby.all(), (Seen{"s=tandby"}));
}

TEST(Getopt, StopsAtTheFirstNonOptionWithoutPermuting) {
  Scan scan({"ostrel", "-r", "extra", "-d"});
  char* const* argv = scan.argv();
  std::string third = argv[3];
  EXPECT_EQ(scan.all(), (Seen{"r"}));
  EXPECT_EQ(optind, 2);
  EXPECT_STREQ(argv[2], "extra");
  EXPECT_EQ(argv[3], third);
}

TEST(Getopt, UnknownLetterAndMissingArgumentAreRefusedSilently) {
  testing::internal::CaptureStderr();
  Scan unknown({"ostrel", "-W"});
  EXPECT_EQ(unknown.next(), '?');
  EXPECT_EQ(optopt, 'W');
  Scan missing({"ostrel", "-r", "-g"});
  EXPECT_EQ(missing.all(), (Seen{"r", "?"}));
  EXPECT_EQ(optind, 3);
  Scan colon({"ostrel", "-g"});
  EXPECT_EQ(colon.next(":g:"), ':');
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(Getopt, TheProgramMayAdvanceOrResetOptind) {
  Scan scan({"ostrel", "-B", "0", "1", "-d"});
  EXPECT_EQ(scan.next(), 'B');
  EXPECT_STREQ(optarg, "0");
  EXPECT_EQ(optind, 3);
  ++optind;  // the word after -B's argument belongs to -B too
  EXPECT_EQ(scan.all(), (Seen{"d"}));
  // Resetting it starts a fresh scan, even inside a group.
  Scan group({"ostrel", "-dr"});
  EXPECT_EQ(group.next(), 'd');
  optind = 0;
  EXPECT_EQ(group.all(), (Seen{"d", "r"}));
}

}  // namespace
