// The platform's keyword reader: keywords with or without a value, given in any order on the command line
// (for example "-cmd 1 -detail -n pim:1").
//
// Syntax, for every evaluation:
// - A keyword is an element of the vector equal to it ("-n"), anywhere after the program name. When it is
//   given more than once, the first occurrence counts.
// - A keyword with a value takes the element right after it as the value, whatever that element looks like
//   ("-n -f" gives the name "-f").
// - A 32-bit value is a number in C notation (decimal, 0x-hexadecimal, 0-octal) from 0 to 0xffffffff, the
//   whole element and nothing else; except for "-address", whose value is an IPv4 address in dotted form
//   ("10.0.0.1") and comes back in network byte order.
// - Absent and optional: success, not present, the value left as it was, nothing printed. Absent and
//   required, a keyword without its value, or a value that does not read: a failure status and a line on
//   standard error that names the keyword.
#pragma once

#include <cstdint>

#include "platform/status.h"

// The reader over one argument vector. It refers to the vector, which must stay alive while it is used,
// and holds nothing else: there is nothing to release.
struct mcast_cli_args_t {
  int argc;
  char* const* argv;
};

// Sets `*ctx` to read `argv` (argv[0] is the program name, whose last path element starts the messages).
[[nodiscard]] cerr_t mcast_cli_args_init(int argc, char* const* argv, mcast_cli_args_t* ctx);

// A keyword with a 32-bit value: `*present` is 1 and `*value` set when given, `*present` 0 otherwise.
[[nodiscard]] cerr_t mcast_cli_args_eval_32(mcast_cli_args_t ctx, const char* keyword, uint32_t optional,
                                            uint32_t* present, uint32_t* value);

// A keyword with a text value: `*text` is the element of the vector (not a copy). `present` may be none.
[[nodiscard]] cerr_t mcast_cli_args_eval_str(mcast_cli_args_t ctx, const char* keyword, uint32_t optional,
                                             uint32_t* present, const char** text);

// A keyword without value: `*flag` is 1 when given, else 0.
[[nodiscard]] cerr_t mcast_cli_args_eval_none(mcast_cli_args_t ctx, const char* keyword, uint32_t optional,
                                              uint32_t* flag);
