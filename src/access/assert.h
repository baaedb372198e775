// The program's assertions: a broken precondition is a programming error, reported with the expression and
// the source it belongs to, and the process aborts.
#pragma once

[[noreturn]] void ostrel_assert_fail(const char* expression, const char* source, int line);

#define OSTREL_ASSERT(condition, expression, source) \
  ((condition) ? static_cast<void>(0) : ostrel_assert_fail(expression, source, __LINE__))
