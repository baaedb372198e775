// The entry point of a run: the mode choice, the single-letter path from options to one view, and the exit.
#include <stdio_ext.h>

#include <cstdio>
#include <cstring>

#include "front/connection.h"
#include "front/dispatch.h"
#include "front/keyword_mode.h"
#include "front/show_args.h"

int main(int argc, char** argv) {
  // Views print many fixed-format lines; one large buffer keeps them off the write path.
  static char stdout_buffer[1 << 16];
  std::setvbuf(stdout, stdout_buffer, _IOFBF, sizeof stdout_buffer);
  // One thread: the stream needs no lock around each of a view's many small writes.
  __fsetlocking(stdout, FSETLOCKING_BYCALLER);

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
