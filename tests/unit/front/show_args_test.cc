// What the option loop stores: the fields, the switches and the command code of a single-letter run.
#include "front/show_args.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

class ShowArgsTest : public ::testing::Test {
 protected:
  void TearDown() override { ostrel_parse_reset(&args_); }

  ParseOutcome parse(std::initializer_list<const char*> words) {
    ostrel_parse_reset(&args_);
    storage_.assign({"ostrel"});
    storage_.insert(storage_.end(), words.begin(), words.end());
    argv_.clear();
    for (std::string& word : storage_) argv_.push_back(word.data());
    argv_.push_back(nullptr);
    testing::internal::CaptureStderr();
    ParseOutcome outcome = ostrel_parse_options(static_cast<int>(storage_.size()), argv_.data(), &args_);
    testing::internal::GetCapturedStderr();  // the refusals' texts are in the front_options cases
    return outcome;
  }

  ShowArgs args_;
  std::vector<std::string> storage_;
  std::vector<char*> argv_;
};

TEST_F(ShowArgsTest, IgnoredOptionsLeaveTheDefaults) {
  ASSERT_EQ(parse({"-e", "x", "-i", "y", "-E", "-I", "-j", "5", "-L"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_route);
  EXPECT_STREQ(args_.source, "");
  EXPECT_STREQ(args_.group, "");
  EXPECT_STREQ(args_.ifname, "");
  EXPECT_EQ(args_.group_plen, 32u);
  EXPECT_EQ(args_.bucket_id, 0xfffffffful);
  EXPECT_EQ(args_.vrf, nullptr);
  for (unsigned long value : {args_.if_handle, args_.te_handle, args_.encap_id, args_.gw_id,
                              args_.encap_test_id, args_.handle_filter})
    EXPECT_EQ(value, 0ul);
  EXPECT_FALSE(args_.te_handle_set || args_.gw_key_mode || args_.show_filter || ostrel_debug ||
               ostrel_private);
}

TEST_F(ShowArgsTest, TheLastSelectorWinsAndStandbyIsTheSourceOptionWithTandby) {
  ASSERT_EQ(parse({"-r", "-S"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_route_summary_all);
  ASSERT_EQ(parse({"-S", "-f"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_route);
  EXPECT_TRUE(args_.show_filter);
  ASSERT_EQ(parse({"-k", "BVI1", "-z", "BVI2"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_bvi_ifname);
  EXPECT_STREQ(args_.ifname, "BVI2");
  // "-standby" is -s with "tandby"; any other source text is a source.
  ASSERT_EQ(parse({"-standby"}), ParseOutcome::kOk);
  EXPECT_TRUE(ostrel_standby);
  EXPECT_STREQ(args_.source, "");
  ASSERT_EQ(parse({"-s", "tandbyX"}), ParseOutcome::kOk);
  EXPECT_FALSE(ostrel_standby);
  EXPECT_STREQ(args_.source, "tandbyX");
}

TEST_F(ShowArgsTest, GatewayKeyModeOnlyAffectsLaterOptions) {
  ASSERT_EQ(parse({"-V", "-p", "2268", "-g", "10.0.0.1"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_amt_gateway);
  EXPECT_EQ(args_.gw_port, 2268u);
  EXPECT_STREQ(args_.group, "10.0.0.1");
  EXPECT_STREQ(args_.gw_address, "10.0.0.1");
  EXPECT_EQ(args_.group_plen, 32u);
  ASSERT_EQ(parse({"-g", "232.0.0.0", "-p", "8", "-V", "-p", "70000"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.group_plen, 8u);
  EXPECT_EQ(args_.gw_port, 70000u);
  EXPECT_STREQ(args_.gw_address, "");
}

TEST_F(ShowArgsTest, NumbersReadAsStrtoulBaseZero) {
  ASSERT_EQ(parse({"-l", "0x10", "-n", "017", "-T", "5", "-h", "junk", "-q", "12"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.bucket_id, 16ul);
  EXPECT_EQ(args_.if_handle, 15ul);
  EXPECT_TRUE(args_.te_handle_set);
  EXPECT_EQ(args_.te_handle, 5ul);
  EXPECT_EQ(args_.handle_filter, 0ul);
  EXPECT_EQ(args_.encap_id, 12ul);
  EXPECT_EQ(args_.cmd, ostrel_cmd_encap_id);
}

TEST_F(ShowArgsTest, MplsTakesASecondWordAndPrefixLengthsGoUpTo32) {
  ASSERT_EQ(parse({"-B", "0", "1", "-p", "32"}), ParseOutcome::kOk);
  EXPECT_EQ(args_.cmd, ostrel_cmd_lsm_db);
  EXPECT_TRUE(args_.lsm_count_summary);
  EXPECT_EQ(args_.group_plen, 32u);
  ASSERT_EQ(parse({"-B", "abc", "0x0", "-P"}), ParseOutcome::kOk);
  EXPECT_FALSE(args_.lsm_count_summary);
  EXPECT_TRUE(ostrel_private);
  EXPECT_EQ(parse({"-p", "4294967296"}), ParseOutcome::kRefused);  // -B 1 0, -B 0, -p 33: front_options
}

TEST_F(ShowArgsTest, SwitchesTheVrfAndLongTextsCutToTheirFields) {
  std::string name(100, 'n');
  ASSERT_EQ(parse({"-D", "-d", "-v", "red", "-O", "-Q", "-H", "-R", "-k", name.c_str(), "-s",
                   "10.100.100.100.100", "-m", std::string(40, 'm').c_str()}),
            ParseOutcome::kOk);
  EXPECT_TRUE(args_.platform_detail && ostrel_platform_detail && ostrel_debug);
  EXPECT_TRUE(args_.route_flag_o && args_.amt_flag_q && args_.amt_flag_h && args_.tlc_flag_r);
  ASSERT_NE(args_.vrf, nullptr);
  EXPECT_STREQ(args_.vrf, "red");
  EXPECT_EQ(std::string(args_.ifname), name.substr(0, 79));
  EXPECT_STREQ(args_.source, "10.100.100.100.1");
  EXPECT_EQ(std::strlen(args_.mdt_address), 33u);
}

}  // namespace
