// The keyword reader of the simulated platform. Every evaluation scans the vector afresh: vectors are a
// few words long, and a reader that keeps nothing cannot go stale.
#include "platform/cli_args.h"

#include <arpa/inet.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "sim/cerr_codes.h"

namespace ostrel::sim {
namespace {

// Keywords whose 32-bit value is an address in dotted form rather than a number.
constexpr const char* kAddressKeywords[] = {"-address"};

bool is_address_keyword(const char* keyword) {
  for (const char* name : kAddressKeywords) {
    if (std::strcmp(name, keyword) == 0) return true;
  }
  return false;
}

const char* program_name(const mcast_cli_args_t& ctx) {
  if (ctx.argc < 1 || !ctx.argv || !ctx.argv[0]) return "ostrel";
  const char* slash = std::strrchr(ctx.argv[0], '/');
  return slash ? slash + 1 : ctx.argv[0];
}

// The index of the first element equal to `keyword`, or -1.
int find_keyword(const mcast_cli_args_t& ctx, const char* keyword) {
  for (int i = 1; i < ctx.argc && ctx.argv[i]; ++i) {
    if (std::strcmp(ctx.argv[i], keyword) == 0) return i;
  }
  return -1;
}

cerr_t refuse(const mcast_cli_args_t& ctx, const char* what, const char* keyword) {
  std::fprintf(stderr, "%s: %s %s\n", program_name(ctx), what, keyword);
  return kBadArgument;
}

// Looks `keyword` up. Absent: success with `*index` -1, or a failure when it is required. Present and
// `wants_value`: `*index` is the value's element, which must exist.
cerr_t locate(const mcast_cli_args_t& ctx, const char* keyword, uint32_t optional, bool wants_value,
              int* index) {
  *index = -1;
  if (!keyword) return kBadArgument;
  int at = find_keyword(ctx, keyword);
  if (at < 0) return optional ? kCerrOk : refuse(ctx, "missing required keyword", keyword);
  if (!wants_value) {
    *index = at;
    return kCerrOk;
  }
  if (at + 1 >= ctx.argc || !ctx.argv[at + 1]) return refuse(ctx, "missing value for keyword", keyword);
  *index = at + 1;
  return kCerrOk;
}

bool parse_number(const char* text, uint32_t* value) {
  if (!std::isdigit(static_cast<unsigned char>(text[0]))) return false;
  errno = 0;
  char* end = nullptr;
  unsigned long long number = std::strtoull(text, &end, 0);
  if (errno != 0 || *end != '\0' || number > 0xffffffffULL) return false;
  *value = static_cast<uint32_t>(number);
  return true;
}

bool parse_address(const char* text, uint32_t* value) {
  in_addr address;
  if (inet_pton(AF_INET, text, &address) != 1) return false;
  *value = address.s_addr;
  return true;
}

void set_present(uint32_t* present, bool given) {
  if (present) *present = given ? 1 : 0;
}

}  // namespace
}  // namespace ostrel::sim

cerr_t mcast_cli_args_init(int argc, char* const* argv, mcast_cli_args_t* ctx) {
  if (!ctx || argc < 0 || (argc > 0 && !argv)) return ostrel::sim::kBadArgument;
  *ctx = mcast_cli_args_t{argc, argv};
  return kCerrOk;
}

cerr_t mcast_cli_args_eval_32(mcast_cli_args_t ctx, const char* keyword, uint32_t optional, uint32_t* present,
                              uint32_t* value) {
  using namespace ostrel::sim;
  int index = -1;
  cerr_t status = locate(ctx, keyword, optional, true, &index);
  set_present(present, false);
  if (status != kCerrOk || index < 0) return status;
  const char* text = ctx.argv[index];
  uint32_t parsed = 0;
  if (is_address_keyword(keyword)) {
    if (!parse_address(text, &parsed)) {
      std::fprintf(stderr, "%s: value '%s' of keyword %s is not an IPv4 address\n", program_name(ctx), text,
                   keyword);
      return kBadArgument;
    }
  } else if (!parse_number(text, &parsed)) {
    std::fprintf(stderr, "%s: value '%s' of keyword %s is not a number from 0 to 0xffffffff\n",
                 program_name(ctx), text, keyword);
    return kBadArgument;
  }
  set_present(present, true);
  if (value) *value = parsed;
  return kCerrOk;
}

cerr_t mcast_cli_args_eval_str(mcast_cli_args_t ctx, const char* keyword, uint32_t optional,
                               uint32_t* present, const char** text) {
  using namespace ostrel::sim;
  int index = -1;
  cerr_t status = locate(ctx, keyword, optional, true, &index);
  set_present(present, false);
  if (status != kCerrOk || index < 0) return status;
  set_present(present, true);
  if (text) *text = ctx.argv[index];
  return kCerrOk;
}

cerr_t mcast_cli_args_eval_none(mcast_cli_args_t ctx, const char* keyword, uint32_t optional,
                                uint32_t* flag) {
  using namespace ostrel::sim;
  int index = -1;
  cerr_t status = locate(ctx, keyword, optional, false, &index);
  if (flag) *flag = index >= 0 ? 1 : 0;
  return status;
}
