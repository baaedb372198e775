// The single-letter option loop on whole argument vectors: the input's NUL-separated words follow "ostrel",
// and each vector that main() hands to the loop is parsed (one whose first argument is "-cmd" goes to the
// keyword reader instead, see keyword_read_fuzz). Nothing is set up. Besides surviving, a parse must leave
// every fixed text field terminated within its size and a group prefix length a view can use.
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "front/show_args.h"
#include "fuzz/argv_input.h"

namespace {

template <size_t kSize>
void check_terminated(const char (&field)[kSize]) {
  if (strnlen(field, kSize) == kSize) __builtin_trap();
}

void check_args(const ShowArgs& args) {
  check_terminated(args.source);
  check_terminated(args.group);
  check_terminated(args.gw_address);
  check_terminated(args.ifname);
  check_terminated(args.mdt_address);
  check_terminated(args.collapse_key1);
  if (args.group_plen > 32) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  // Static as in main(): the VRF text of the last input stays reachable, the others are freed by the reset.
  static ShowArgs args;
  ostrel_parse_reset(&args);
  ArgvInput input({"ostrel"}, data, size);
  int argc = input.argc();
  char** argv = input.argv();
  // main() asks the keyword reader first when there is no argument at all, and it finds no "-cmd" then.
  if (argc >= 2 && std::strcmp(argv[1], "-cmd") == 0) return 0;
  if (ostrel_parse_options(argc, argv, &args) == ParseOutcome::kOk) check_args(args);
  return 0;
}
