#include "access/assert.h"

#include <cstdio>
#include <cstdlib>

void ostrel_assert_fail(const char* expression, const char* source, int line) {
  // What the view printed so far stays: the operator sees where the walk stopped.
  std::fflush(stdout);
  std::fprintf(stderr, "ostrel: %s:%d: Assertion '%s' failed.\n", source, line, expression);
  std::abort();
}
