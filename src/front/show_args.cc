// The single-letter option loop: one table row per option letter, walked for every option the scanner
// returns.
#include "front/show_args.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "platform/getopt.h"
#include "platform/text.h"

namespace {

constexpr char kOptionString[] = "1:abcde:fg:h:i:j:k:l:m:n:op:q:rs:tuv:w:xy:z:B:CDEFGHIJKLOPQRST:UVXYZ:N";

// The usage text lags behind the options it describes; operators' scripts know it as it stands.
constexpr char kUsageText[] =
    "\n"
    "\tostrel -m\t<mvpn mdt address>\n"
    "\tostrel -r\trouting entries\n"
    "\tostrel -c\tclient connections\n"
    "\tostrel -n\tclient name\n"
    "\tostrel -D\tdetail routing entries with platform data\n"
    "\tostrel -s\t<source address>\n"
    "\tostrel -g\t<group address prefix>\n"
    "\tostrel -p\t<group prefix length>\n"
    "\tostrel -P\tprivate information\n"
    "\tostrel -e\t<entry attribute list>\n"
    "\tostrel -x\t<MDT ifh list>\n"
    "\tostrel -C\troute collapse database\n"
    "\tostrel -E\tall entry attributes must be present\n"
    "\tostrel -t\ttlc database\n"
    "\tostrel -i\t<interface attribute list>\n"
    "\tostrel -I\tall interface attributes must be present\n"
    "\tostrel -d\tswitch debug on\n"
    "\tostrel -f\tshow_filter\n"
    "\tostrel -N\tnon-stop forwarding\n"
    "\tostrel -X\tMROUTE Mib\n"
    "\tostrel -k\t<bvi ifname>\n";

enum class Step { kGoOn, kRefuse, kBadMplsArgs };

struct OptionContext {
  ShowArgs& args;
  int argc;
  char** argv;
  const char* arg;  // the option's argument, or none
};

unsigned long number(const char* text) {
  return std::strtoul(text, nullptr, 0);
}

template <size_t kSize>
void copy_text(char (&field)[kSize], const char* text) {
  sstrncpy(field, text, kSize);
}

Step ignore(OptionContext&) {
  return Step::kGoOn;
}
Step refuse(OptionContext&) {
  return Step::kRefuse;
}

template <bool ShowArgs::*kFlag>
Step set_flag(OptionContext& c) {
  c.args.*kFlag = true;
  return Step::kGoOn;
}

template <unsigned long ShowArgs::*kField>
Step set_number(OptionContext& c) {
  c.args.*kField = number(c.arg);
  return Step::kGoOn;
}

template <auto kField>
Step set_text(OptionContext& c) {
  copy_text(c.args.*kField, c.arg);
  return Step::kGoOn;
}

Step set_debug(OptionContext&) {
  ostrel_debug = 1;
  return Step::kGoOn;
}
Step set_private(OptionContext&) {
  ostrel_private = 1;
  return Step::kGoOn;
}
Step set_detail(OptionContext& c) {
  c.args.platform_detail = true;
  ostrel_platform_detail = 1;
  return Step::kGoOn;
}

Step set_group(OptionContext& c) {
  copy_text(c.args.group, c.arg);
  if (c.args.gw_key_mode) copy_text(c.args.gw_address, c.arg);
  return Step::kGoOn;
}

Step set_prefix_length(OptionContext& c) {
  unsigned long value = number(c.arg);
  if (c.args.gw_key_mode) {
    c.args.gw_port = static_cast<uint32_t>(value);
    return Step::kGoOn;
  }
  if (value > 32) {
    std::fprintf(stderr, "Invalid group prefix length: %s\n", c.arg);
    return Step::kRefuse;
  }
  c.args.group_plen = static_cast<uint32_t>(value);
  return Step::kGoOn;
}

Step set_source(OptionContext& c) {
  // "-standby" reaches us as -s with "tandby".
  if (std::strcmp(c.arg, "tandby") == 0) {
    ostrel_standby = 1;
  } else {
    copy_text(c.args.source, c.arg);
  }
  return Step::kGoOn;
}

Step set_vrf(OptionContext& c) {
  std::free(c.args.vrf);
  c.args.vrf = strdup(c.arg);
  if (c.args.vrf == nullptr) {
    ux_syslog(3, "STRDUP-ERR : %s (%s:%d). Aborting process", "main", "ipv4/multicast/mrib/src/ostrel_client",
              __LINE__);
    std::abort();
  }
  return Step::kGoOn;
}

Step set_te_handle(OptionContext& c) {
  c.args.te_handle = number(c.arg);
  c.args.te_handle_set = true;
  return Step::kGoOn;
}

// -B takes two words: its own argument, which must be 0, and the next word of the vector, the summary
// switch. A -B that ends the vector has no second word and is refused rather than read past the end.
Step set_mpls(OptionContext& c) {
  if (number(c.arg) != 0) {
    std::fprintf(stderr, "[OSTREL] unknown parameter on show mrib mpls database\n");
    return Step::kBadMplsArgs;
  }
  if (optind >= c.argc) return Step::kRefuse;
  c.args.lsm_count_summary = number(c.argv[optind]) != 0;
  ++optind;
  return Step::kGoOn;
}

constexpr int32_t kKeepCmd = -1;

struct OptionRow {
  char letter;
  int32_t cmd;  // the view it selects, or kKeepCmd
  Step (*apply)(OptionContext&);
};

constexpr OptionRow kOptions[] = {
    {'1', ostrel_cmd_bvi_table_mapping, ignore},
    {'a', ostrel_cmd_evpn_bucket, ignore},
    {'b', ostrel_cmd_iir_intf, ignore},
    {'c', ostrel_cmd_consistency, ignore},
    {'d', kKeepCmd, set_debug},
    {'e', kKeepCmd, ignore},
    {'f', ostrel_cmd_route, set_flag<&ShowArgs::show_filter>},
    {'g', kKeepCmd, set_group},
    {'h', kKeepCmd, set_number<&ShowArgs::handle_filter>},
    {'i', kKeepCmd, ignore},
    {'j', kKeepCmd, ignore},
    {'k', ostrel_cmd_bvi_ifname, set_text<&ShowArgs::ifname>},
    {'l', kKeepCmd, set_number<&ShowArgs::bucket_id>},
    {'m', kKeepCmd, set_text<&ShowArgs::mdt_address>},
    {'n', kKeepCmd, set_number<&ShowArgs::if_handle>},
    {'o', ostrel_cmd_bvi_route, ignore},
    {'p', kKeepCmd, set_prefix_length},
    {'q', ostrel_cmd_encap_id, set_number<&ShowArgs::encap_id>},
    {'r', ostrel_cmd_route, ignore},
    {'s', kKeepCmd, set_source},
    {'t', ostrel_cmd_tlc, ignore},
    {'u', ostrel_cmd_amt_route, ignore},
    {'v', kKeepCmd, set_vrf},
    {'w', ostrel_cmd_gw_id, set_number<&ShowArgs::gw_id>},
    {'x', ostrel_cmd_mdt_ifh, ignore},
    {'y', kKeepCmd, set_text<&ShowArgs::collapse_key1>},
    {'z', kKeepCmd, set_text<&ShowArgs::ifname>},
    {'B', ostrel_cmd_lsm_db, set_mpls},
    {'C', ostrel_cmd_route_collapse, ignore},
    {'D', kKeepCmd, set_detail},
    {'E', kKeepCmd, ignore},
    {'F', ostrel_cmd_te_db, ignore},
    {'G', ostrel_cmd_te_backup, ignore},
    {'H', kKeepCmd, set_flag<&ShowArgs::amt_flag_h>},
    {'I', kKeepCmd, ignore},
    {'J', kKeepCmd, refuse},
    {'K', ostrel_cmd_reg_db, ignore},
    {'L', kKeepCmd, ignore},
    {'N', ostrel_cmd_route_nsf, ignore},
    {'O', kKeepCmd, set_flag<&ShowArgs::route_flag_o>},
    {'P', kKeepCmd, set_private},
    {'Q', kKeepCmd, set_flag<&ShowArgs::amt_flag_q>},
    {'R', kKeepCmd, set_flag<&ShowArgs::tlc_flag_r>},
    {'S', ostrel_cmd_route_summary_all, ignore},
    {'T', kKeepCmd, set_te_handle},
    {'U', ostrel_cmd_routedb_ole, ignore},
    {'V', ostrel_cmd_amt_gateway, set_flag<&ShowArgs::gw_key_mode>},
    {'X', ostrel_cmd_mib, ignore},
    {'Y', ostrel_cmd_bvi_route_summary, ignore},
    {'Z', ostrel_cmd_encap_id_test, set_number<&ShowArgs::encap_test_id>},
};

// Every letter of the option string has a row, and no row lacks its letter.
constexpr bool table_matches_option_string() {
  std::string_view letters(kOptionString);
  size_t count = 0;
  for (char c : letters) count += c != ':';
  if (count != std::size(kOptions)) return false;
  for (const OptionRow& row : kOptions)
    if (letters.find(row.letter) == std::string_view::npos) return false;
  return true;
}
static_assert(table_matches_option_string());

const OptionRow* find_option(int letter) {
  for (const OptionRow& row : kOptions)
    if (row.letter == letter) return &row;
  return nullptr;
}

void debug_dump(int argc, char** argv) {
  std::fprintf(stderr, "ostrel: ");
  for (int i = 0; i < argc; ++i) std::fprintf(stderr, "%s ", argv[i]);
  std::fprintf(stderr, "\n");
  std::fprintf(stderr, "optind: %d argc: %d\n", optind, argc);
}

}  // namespace

ParseOutcome ostrel_parse_options(int argc, char** argv, ShowArgs* args) {
  *args = ShowArgs{};
  bool refused = false;
  int letter;
  while (!refused && (letter = _getopt(argc, argv, kOptionString)) != -1) {
    const OptionRow* row = find_option(letter);
    if (row == nullptr) {
      refused = true;
      break;
    }
    OptionContext context{*args, argc, argv, optarg};
    switch (row->apply(context)) {
      case Step::kGoOn:
        if (row->cmd != kKeepCmd) args->cmd = static_cast<uint32_t>(row->cmd);
        break;
      case Step::kRefuse:
        refused = true;
        break;
      case Step::kBadMplsArgs:
        return ParseOutcome::kBadMplsArgs;
    }
  }
  if (ostrel_debug) debug_dump(argc, argv);
  if (!refused && optind >= argc) return ParseOutcome::kOk;
  if (optind < argc) {
    std::fprintf(stderr, "Error parsing %s\n", argv[optind]);
    std::fprintf(stderr, "optind %d  argc %d\n", optind, argc);
  }
  return ParseOutcome::kRefused;
}

void ostrel_usage() {
  std::fprintf(stderr, "\tUsage:\n%s", kUsageText);
}

void ostrel_parse_reset(ShowArgs* args) {
  std::free(args->vrf);
  *args = ShowArgs{};
  ostrel_debug = ostrel_private = ostrel_platform_detail = ostrel_standby = 0;
  optind = 0;
}
