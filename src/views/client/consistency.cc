// The consistency checker (-c): how each node's forwarding table agrees with the MRIB, for one VRF, for one
// group, source or entry of it, or, once the operator confirms, for every VRF.
//
// Departures from the common cycles: a listing that fails with status 2 ends silently and any other
// failure, the store's not-found code included, says on standard error that the VRF name may be wrong; a
// fetch of one entry answers status 2 with its own line and every other failure with that same advice on
// standard output. -d changes none of these.
#include "views/client/consistency.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <cctype>
#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/naming.h"
#include "platform/text.h"

namespace {

constexpr cerr_t kNoMatch = 2;
constexpr char kVerifyVrf[] = "Verify if the vrf name is correct\n";

// ---- The request -----------------------------------------------------------------------------------------

// "all/" is the VRF element of -v all and of -v all/; "alloy/" is a VRF of its own.
bool is_all_vrfs(const char* vrf) {
  return vrf != nullptr && std::strncmp(vrf, "all/", 4) == 0;
}

// Asks on standard error until the operator answers; only an answer's first character counts, and at most
// seven characters are read at a time, so the rest of a longer line is the next answer. End of input is no.
bool confirmed() {
  // Standard output is the program's own buffer: what it holds must reach the terminal before the question.
  ostrel_out_flush();
  std::fputs("\nScanning all VRF will affect/degrade system performance [confirm] [y/n] :", stderr);
  char answer[8];
  while (std::fgets(answer, sizeof answer, stdin) != nullptr) {
    if (answer[0] == 'y' || answer[0] == 'Y') return true;
    if (answer[0] == 'n' || answer[0] == 'N') return false;
    std::fputs(
        "\nScanning all VRF will affect/degrade system performance [confirm with only 'y' or 'n'] [y/n] :",
        stderr);
  }
  return false;
}

// An address filter as typed: eight hexadecimal digits at most, in network order (e0000001 is 224.0.0.1).
// A text with anything but hexadecimal digits is refused, though a scan would read its leading digits: the
// text goes into the key as typed, so a partly read one would check one entry and fetch another.
struct AddressFilter {
  bool given;
  bool hexadecimal;
  uint32_t value;  // what "%08x" reads of it
};

AddressFilter read_filter(const char* text) {
  AddressFilter filter{text[0] != '\0', true, 0};
  if (!filter.given) return filter;
  for (const char* c = text; *c != '\0'; ++c)
    filter.hexadecimal = filter.hexadecimal && std::isxdigit(static_cast<unsigned char>(*c)) != 0;
  filter.hexadecimal = filter.hexadecimal && std::strlen(text) <= 8;
  if (std::sscanf(text, "%08x", &filter.value) != 1) filter.value = 0;
  return filter;
}

bool is_multicast(uint32_t value) {
  uint32_t first_byte = value >> 24;
  return first_byte >= 224 && first_byte <= 239;
}

// "Invalid group address 10.0.0.1" and its kin, naming the value first byte first.
void refuse(const char* which, uint32_t value) {
  uint32_t network = htonl(value);
  char dotted[16];
  ostrel_outf("Invalid %s address %s\n", which, ux_inet_ntop(AF_INET, &network, dotted, sizeof dotted));
}

// False, after saying why, for a group that is no multicast group or a source that is one. 0 passes both.
bool filters_accepted(const AddressFilter& group, const AddressFilter& source) {
  if (group.given && (!group.hexadecimal || (group.value != 0 && !is_multicast(group.value)))) {
    refuse("group", group.value);
    return false;
  }
  if (source.given && (!source.hexadecimal || (source.value != 0 && is_multicast(source.value)))) {
    refuse("source", source.value);
    return false;
  }
  return true;
}

// ---- The record ------------------------------------------------------------------------------------------

struct Detail {
  bool on;
};

// The node's name, or "ID %d" of its identifier when the platform has none.
void print_node_head(const mrib_cc_rt_sum_pod& node, const char* inconsistent) {
  char name[16];
  if (nodeid_to_str_external(node.NodeID, name, sizeof name) != kCerrOk)
    std::snprintf(name, sizeof name, "ID %d", static_cast<int>(node.NodeID));
  ostrel_outf(
      "\n ==================================="
      "\n Node                : %s"
      "\n Prefix Scanned      : %u"
      "\n Prefix Consistent   : %u"
      "\n Prefix Inconsistent : %s"
      "\n ===================================",
      name, node.PfxScanned, node.PfxConsistent, inconsistent);
}

// The inconsistent entries, last first. A node that scanned nothing has only their details to show.
void print_entries(const mrib_cc_rt_sum_pod& node) {
  if (node.PfxScanned != 0)
    ostrel_out("\n         Inconsistent Entries\n -----------------------------------");
  if (node.SGList.count == 0) return;
  ostrel_outf("\n %-9s %10s %11s\n -----------------------------------", "Table", "Source", "Group");
  for (uint64_t i = node.SGList.count; i-- > 0;) {
    const mrib_cc_sg_pod& entry = node.SGList.data[i];
    if (node.PfxScanned != 0) {
      ostrel_outf("\n %-8x %12s %12s", entry.Table_Id, ostrel_addr_text(&entry.RouteSourceAddress),
                  ostrel_addr_text(&entry.RouteGroupAddress));
    }
    if (entry.Data != nullptr && entry.Data[0] != '\0')
      ostrel_outf("\n Inconsistent Detail : %s\n", entry.Data);
  }
}

void print_node(const mrib_cc_rt_sum_pod& node, bool detail) {
  // A node that scanned nothing but lists entries has an inconsistency it cannot count.
  bool uncounted = node.PfxScanned == 0 && node.SGList.count != 0;
  int32_t inconsistent = uncounted ? 1 : static_cast<int32_t>(node.PfxScanned - node.PfxConsistent);
  char count[16] = "NA";
  if (!uncounted) std::snprintf(count, sizeof count, "%d", inconsistent);
  print_node_head(node, count);
  if (inconsistent != 0 && detail) print_entries(node);
  ostrel_out("\n");
}

void print_record(const mrib_cc_rt_pod& record, const Detail* detail) {
  if (record.RTSummary.count == 0) return;
  ostrel_out("\nMRIB Consistency Checker\n========================\n");
  for (uint64_t i = 0; i < record.RTSummary.count; ++i) print_node(record.RTSummary.data[i], detail->on);
}

// ---- The view --------------------------------------------------------------------------------------------

void show_entry(Detail detail) {
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_cc_rt_pod, const Detail>{
      .handle = ostrel_view_handle,
      .texts = {.not_found_code = kNoMatch,
                .not_found = "No matching route in MFIB route-DB in one or more LC\n"},
      .context = &detail,
      .print = print_record});
  if (rc != kCerrOk && rc != kNoMatch) ostrel_out(kVerifyVrf);
}

void show_all(Detail detail) {
  ListOutcome outcome = ostrel_list_cycle(ListCycle<mrib_cc_rt_pod, const Detail>{
      .handle = ostrel_view_handle, .context = &detail, .print = print_record});
  if (outcome.failed && outcome.code != kNoMatch) std::fputs(kVerifyVrf, stderr);
}

}  // namespace

void ostrel_consistency_view(const ShowArgs& args) {
  const AddressFilter group = read_filter(args.group), source = read_filter(args.source);
  if (is_all_vrfs(args.vrf)) {
    if (group.given && source.given) {
      std::fputs("\n Source, Group consistency check is VRF specific mention vrf name\n", stderr);
      return;
    }
    if (!confirmed()) return;
  }
  if (!filters_accepted(group, source)) return;
  if (!ostrel_build_path("cc-rt/%s,%s", group.given ? args.group : kOstrelKeyAbsent,
                         source.given ? args.source : kOstrelKeyAbsent))
    return;
  // One entry named by both its group and its source is always shown in detail.
  Detail detail{args.platform_detail || (group.given && source.given)};
  if (group.given || source.given) {
    show_entry(detail);
  } else {
    show_all(detail);
  }
}
