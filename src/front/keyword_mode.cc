#include "front/keyword_mode.h"

#include <cstdint>

#include "platform/cli_args.h"

namespace {

struct KeywordRun {
  mcast_cli_args_t reader{};
  uint32_t command = 0;
};

KeywordRun keyword_run;

}  // namespace

KeywordChoice ostrel_keyword_mode_choice(int argc, char** argv) {
  if (mcast_cli_args_init(argc, argv, &keyword_run.reader) != kCerrOk) return KeywordChoice::kFailed;
  uint32_t present = 0;
  if (mcast_cli_args_eval_32(keyword_run.reader, "-cmd", 1, &present, &keyword_run.command) != kCerrOk)
    return KeywordChoice::kFailed;
  return present ? KeywordChoice::kKeywordRun : KeywordChoice::kLetterRun;
}

// The keyword commands' views are not part of this program yet: a keyword run ends once it is recognised.
int ostrel_keyword_run() {
  return 0;
}
