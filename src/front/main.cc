// The entry point of a run: the mode choice, the single-letter path from options to one view, and the exit.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "access/output.h"
#include "front/connection.h"
#include "front/dispatch.h"
#include "front/keyword_mode.h"
#include "front/show_args.h"

int main(int argc, char** argv) {
  // The program buffers its output itself and hands it over in large blocks, which a stdio buffer would
  // only copy once more. Whatever way the run ends, exit hands over what is left.
  std::setvbuf(stdout, nullptr, _IONBF, 0);
  std::atexit(ostrel_out_flush);

  if (argc < 2 || std::strcmp(argv[1], "-cmd") == 0) {
    switch (ostrel_keyword_mode_choice(argc, argv)) {
      case KeywordChoice::kKeywordRun:
        return ostrel_keyword_run();
      case KeywordChoice::kLetterRun:
        break;
      case KeywordChoice::kFailed:
        return 1;
    }
  }

  // Static: its heap texts live until exit, reachable the whole run.
  static ShowArgs args;
  switch (ostrel_parse_options(argc, argv, &args)) {
    case ParseOutcome::kOk:
      break;
    case ParseOutcome::kRefused:
      ostrel_usage();
      return 1;
    case ParseOutcome::kBadMplsArgs:
      return 1;
  }
  if (!ostrel_setup(args)) return 1;
  ostrel_dispatch(args);
  ostrel_teardown();
  return 0;
}
