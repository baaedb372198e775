// The parsed request of a single-letter run: the command code that selects one view, the view's parameters,
// and the process-wide switches that views and helpers read anywhere.
#pragma once

#include <cstdint>

#include "access/switches.h"

// One code per view; the gaps have no view.
enum ostrel_cmd : uint32_t {
  ostrel_cmd_route = 0,
  ostrel_cmd_route_summary_all = 1,
  ostrel_cmd_mib = 2,
  ostrel_cmd_iir_intf = 3,
  ostrel_cmd_lsm_db = 5,
  ostrel_cmd_tlc = 7,
  ostrel_cmd_route_collapse = 8,
  ostrel_cmd_mdt_ifh = 9,
  ostrel_cmd_routedb_ole = 10,
  ostrel_cmd_bvi_route = 11,
  ostrel_cmd_bvi_ifname = 12,
  ostrel_cmd_bvi_table_mapping = 13,
  ostrel_cmd_encap_id = 14,
  ostrel_cmd_gw_id = 15,
  ostrel_cmd_encap_id_test = 16,
  ostrel_cmd_amt_route = 17,
  ostrel_cmd_amt_gateway = 18,
  ostrel_cmd_te_backup = 19,
  ostrel_cmd_bvi_route_summary = 20,
  ostrel_cmd_reg_db = 21,
  ostrel_cmd_route_nsf = 25,
  ostrel_cmd_evpn_bucket = 26,
  ostrel_cmd_consistency = 27,
  ostrel_cmd_te_db = 28,
};

// The codes whose view handle is bound to the oper root itself rather than a VRF's table directory.
inline constexpr uint32_t kOstrelRootOnlyCodes = 0x2083a28;

constexpr bool ostrel_cmd_is_root_only(uint32_t cmd) {
  return cmd < 32 && (kOstrelRootOnlyCodes >> cmd & 1u) != 0;
}

struct ShowArgs {
  uint32_t cmd = ostrel_cmd_route;
  char source[17] = {};
  char group[17] = {};
  uint32_t group_plen = 32;
  bool gw_key_mode = false;
  char gw_address[17] = {};
  uint32_t gw_port = 0;
  char* vrf = nullptr;  // heap copy of the -v text, kept until exit
  char ifname[80] = {};
  char mdt_address[34] = {};
  char collapse_key1[34] = {};
  bool show_filter = false;
  unsigned long bucket_id = 0xffffffff;
  unsigned long if_handle = 0;
  bool te_handle_set = false;
  unsigned long te_handle = 0;
  unsigned long encap_id = 0;
  unsigned long gw_id = 0;
  unsigned long encap_test_id = 0;
  unsigned long handle_filter = 0;
  bool amt_flag_q = false;
  bool amt_flag_h = false;
  bool tlc_flag_r = false;
  bool route_flag_o = false;
  bool platform_detail = false;
  bool lsm_count_summary = false;
};

// How the option loop ended.
enum class ParseOutcome {
  kOk,
  kRefused,      // an option was refused or left an argument over: usage text, status 1
  kBadMplsArgs,  // -B with a non-zero first number: its own message, status 1
};

// Parses the single-letter options of argv into `args` and the switches, writing the debug dump and the
// parse-check texts (but not the usage text) to standard error.
[[nodiscard]] ParseOutcome ostrel_parse_options(int argc, char** argv, ShowArgs* args);

// Writes the usage text to standard error; the caller exits with status 1.
void ostrel_usage();

// Forgets what a parse left behind: `args` (and its VRF text), the switches, and the scanner's place. A run
// parses once; whoever parses many vectors in one process calls this before each.
void ostrel_parse_reset(ShowArgs* args);
