// The keyword reader on whole keyword runs: the input's NUL-separated words follow "ostrel -cmd", through
// the choice of the keyword mode and the chosen command's keyword reading, stopping before anything is bound.
#include <cstddef>
#include <cstdint>

#include "front/keyword_mode.h"
#include "fuzz/argv_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ArgvInput input({"ostrel", "-cmd"}, data, size);
  switch (ostrel_keyword_mode_choice(input.argc(), input.argv())) {
    case KeywordChoice::kKeywordRun:
      (void)ostrel_keyword_read();
      break;
    case KeywordChoice::kLetterRun:
      __builtin_trap();  // "-cmd" is there: the reader must have found it
    case KeywordChoice::kFailed:
      break;
  }
  return 0;
}
