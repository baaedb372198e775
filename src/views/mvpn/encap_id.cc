// The encapsulation-ID database (-q): every ID for -q 0, the summary counters for -q 0 with -H, one ID
// otherwise; and the encapsulation-ID test (-Z), whose fetch is the whole action.
//
// The single fetches take their item whatever its data type and say on standard output why it is not
// there, the same with or without -d.
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "views/line_pieces.h"
#include "views/mvpn/batched_listing.h"
#include "views/mvpn/encap.h"

namespace {

constexpr ViewTexts kListTexts{.not_available = "No MRIB EncapID-DB"};
constexpr ViewTexts kItemTexts{.not_found = "Entry not found\n"};

constexpr uint32_t kUnusedClient = 0xFFFFFFFF;

char yes_no(uint32_t flag) {
  return flag != 0 ? 'Y' : 'N';
}

// ---- Outgoing entries ------------------------------------------------------------------------------------

// The server writes an outgoing entry's key as 32-bit words in its own (host) byte order. A key shorter
// than the words its type names reads the missing words as 0 rather than past its end.
uint32_t key_word(const pod_array<uint8_t>& key, uint64_t index) {
  uint32_t word = 0;
  if ((index + 1) * sizeof word <= key.count) std::memcpy(&word, key.data + index * sizeof word, sizeof word);
  return word;
}

const char* turnaround_text(uint32_t word) {
  return word != 0 ? "TRUE" : "FALSE";
}

// Each record is assembled in one line, written out when an array's next element might not fit or before a
// text of unbounded length: an encapsulation ID is printed by the million, and a printf call per piece cost
// more than the rest of the view.

// Room for any one element of an array with the fixed text around it (a node name is at most 78 characters),
// and for the fixed lines between two arrays, numbers at their widest.
constexpr size_t kElementRoom = 256;

void print_gre(OstrelLine& line, const pod_array<uint8_t>& key) {
  line.add("      GRE: (");
  ostrel_add_dotted(line, key_word(key, 0)).add(", ");
  ostrel_add_dotted(line, key_word(key, 1)).add(")\n      MDT: 0x");
  ostrel_add_hex(line, key_word(key, 2));
}

void print_lsm(OstrelLine& line, const pod_array<uint8_t>& key) {
  line.add("      LSM-ID: 0x");
  ostrel_add_hex(line, key_word(key, 0), 5).add("      MDT: 0x");
  ostrel_add_hex(line, key_word(key, 1)).add("   Turnaround: ").add(turnaround_text(key_word(key, 2)));
}

void print_te(OstrelLine& line, const pod_array<uint8_t>& key) {
  line.add("      TE handle: 0x");
  ostrel_add_hex(line, key_word(key, 0)).add("   Turnaround: ").add(turnaround_text(key_word(key, 1)));
}

struct OleTypeRow {
  uint32_t type;  // the core tree ID type
  void (*print)(OstrelLine& line, const pod_array<uint8_t>& key);
};

constexpr OleTypeRow kOleTypes[] = {{6, print_gre}, {5, print_lsm}, {2, print_te}};

// An entry of a type without a row shows its number and length only, and still ends its line.
void print_oles(OstrelLine& line, const pod_array<mrib_encapid_ole_pod>& oles) {
  line.add("Oles:\n");
  int number = 0;
  for (const mrib_encapid_ole_pod& ole : ostrel_items(oles)) {
    ostrel_make_room(line, kElementRoom).add("  [").add_signed(++number).add("] type: 0x");
    ostrel_add_hex(line, ole.TYPE).add(", len: ").add_signed(static_cast<int>(ole.OleKey.count)).add('\n');
    for (const OleTypeRow& row : kOleTypes)
      if (row.type == ole.TYPE) row.print(line, ole.OleKey);
    line.add('\n');
  }
}

// ---- Nodes, tables and history ---------------------------------------------------------------------------

// Seven nodes to a line; the continuation lines up under the first node.
void print_nodes(OstrelLine& line, const pod_array<mrib_encapid_node_pod>& nodes) {
  uint64_t index = 0;
  for (const mrib_encapid_node_pod& node : ostrel_items(nodes)) {
    ostrel_make_room(line, kElementRoom);
    if (index != 0 && index % 7 == 0) line.add("\n        ");
    ++index;
    if (std::optional<std::string_view> name = ostrel_node_name(node.NodeID, 79)) {
      line.add(' ').add(*name);
    } else {
      ostrel_add_hex(line.add(" Un0x"), node.NodeID);
    }
    line.add('[').add(uint64_t{node.Refcount}).add(']');
  }
}

void print_history(OstrelLine& line, const mrib_encapid_pod& encap) {
  line.add("\nRedist History:\n");
  for (const mrib_encapid_redist_pod& redist : encap.RedistInfo) {
    if (redist.client_id == kUnusedClient) continue;
    ostrel_make_room(line, kElementRoom);
    line.add("client id ").add_signed(static_cast<int>(redist.client_id)).add(" redist time: ");
    ostrel_add_hex(line.add(ostrel_dhms_text(redist.client_redist_time)).add(" redist flags 0x"),
                   redist.redist_flags)
        .add('\n');
  }
}

// ---- Record ----------------------------------------------------------------------------------------------

void print_identity(OstrelLine& line, const mrib_encapid_pod& encap) {
  line.add("\nEncap ID Key    : ");
  for (uint8_t byte : ostrel_items(encap.EncapIDKey)) {
    if (line.room() <= 2) line.emit();
    ostrel_add_hex(line, byte, 2, true);
  }
  ostrel_make_room(line, kElementRoom)
      .add("\nEncap ID Length : ")
      .add_signed(static_cast<int>(encap.EncapIDKey.count));
  line.add("\nEncap ID Value  : ").add_signed(static_cast<int>(encap.EncapID)).add('\n');
  if (encap.Annotation != nullptr && encap.Annotation[0] != '\0') {
    line.emit();
    ostrel_out(encap.Annotation);
    ostrel_out("\n");
  }
}

// The private and expiry lines, printed rarely, are formatted after what the line holds.
void print_states(OstrelLine& line, const mrib_encapid_pod& encap) {
  if (ostrel_private) line.emit();
  if (ostrel_private)
    ostrel_outf("Encap node : 0x%lx, Dep route List : 0x%lx Dep label List: 0x%lx\n", encap.EncapsulationNode,
                encap.DependencyRouteList, encap.DependencyLabelList);
  line.add("Flags (Vrflite(v4/v6),Stale,v6): ")
      .add(yes_no(encap.VrfLite))
      .add('/')
      .add(yes_no(encap.V6VrfLite));
  line.add(", ").add(yes_no(encap.Stale)).add(", ").add(yes_no(encap.IPV6Usage)).add('\n');
  if (ostrel_private || encap.ExpirationValid != 0) line.emit();
  if (ostrel_private)
    ostrel_outf("In PD Retry: %c\nIs Label Encap: %c\nIs WTX failed: %c\n", yes_no(encap.InPDRetryList),
                yes_no(encap.IsLabelEncap), yes_no(encap.IsWTXCommunicationFailed));
  if (encap.ExpirationValid != 0) {
    std::string_view left = ostrel_duration_text(encap.ExpirationTime).value_or("");
    char expires[20];
    std::snprintf(expires, sizeof expires, "%s", left.data());
    ostrel_outf("Expires: %s\n", expires);
  }
}

void mrib_encapid_print(const mrib_encapid_pod& encap, void*) {
  OstrelLine line;
  print_identity(line, encap);
  print_states(line, encap);
  print_oles(line, encap.EncapIdOle);
  line.add("Primary:");
  print_nodes(line, encap.NodeIDList);
  line.add("\nBackup:");
  print_nodes(line, encap.BackupNodeIDList);
  line.add("\nTableId:");
  for (const mrib_encapid_tblid_pod& table : ostrel_items(encap.EncapTIdList)) {
    ostrel_add_hex(ostrel_make_room(line, kElementRoom).add(" 0x"), table.ETableID);
    line.add('[').add(uint64_t{table.Refcount}).add("]\n");
  }
  print_history(line, encap);
  line.add('\n');
  line.emit();
}

void print_summary(const mrib_encapid_summary& summary, void*) {
  ostrel_outf(
      " #No. Of Encap IDs       : %d\n"
      " #Vrflite EIDs           : %d\n"
      " #V6 Vrflite EIDs        : %d\n"
      " #EIDs used by V6        : %d\n"
      " #Stale EIDs             : %d\n"
      " #EIDs in PD retry list  : %d\n"
      " #Chkpt pulse sent       : %d\n"
      " #Chkpt pulse received   : %d\n",
      static_cast<int>(summary.eid_count), static_cast<int>(summary.vrflite_count),
      static_cast<int>(summary.v6vrflite_count), static_cast<int>(summary.v6usage_count),
      static_cast<int>(summary.stale_count), static_cast<int>(summary.pd_retry_count),
      static_cast<int>(summary.sby_chkpt_pulse_sent), static_cast<int>(summary.sby_chkpt_pulse_received));
}

// ---- Fetches ---------------------------------------------------------------------------------------------

// The one record at ostrel_query_path; a failure other than not-found means there is no database.
template <typename Record>
void show_one(vellum_handle_t handle, void (*print)(const Record&, void*)) {
  cerr_t rc = ostrel_item_cycle(
      ItemCycle<Record>{.handle = handle, .texts = kItemTexts, .check_data_type = false, .print = print});
  if (rc != kCerrOk && rc != kOstrelNotFound) ostrel_out("No Encap ID database\n");
}

void ostrel_encapid_db(vellum_handle_t handle, const ShowArgs& args) {
  if (args.encap_id != 0) {
    if (!ostrel_build_path("process/%s/%d", "encapid-db", static_cast<int>(args.encap_id))) return;
    show_one<mrib_encapid_pod>(handle, mrib_encapid_print);
  } else if (args.amt_flag_h) {
    if (!ostrel_build_path("process/encapid-db_summary")) return;
    show_one<mrib_encapid_summary>(handle, print_summary);
  } else {
    if (!ostrel_build_path("process/%s", "encapid-db")) return;
    (void)ostrel_list_cycle(
        ListCycle<mrib_encapid_pod>{.handle = handle, .texts = kListTexts, .print = mrib_encapid_print});
  }
}

// Asking for the item is what sets the server's test going; what comes back means nothing to the operator.
void ostrel_encapid_test(vellum_handle_t handle, const ShowArgs& args) {
  if (!ostrel_build_path("process/encapid-test/%d", static_cast<int>(args.encap_test_id))) return;
  uint32_t data_type = kVellumDataTypePod, length = 0;
  void* data = nullptr;
  (void)vellum_item_get(handle, ostrel_query_path, &data_type, &data, &length, 0);
  std::free(data);
}

}  // namespace

void ostrel_encap_id_view(const ShowArgs& args) {
  ostrel_encapid_db(ostrel_root_handle, args);
}

void ostrel_encap_id_test_view(const ShowArgs& args) {
  ostrel_encapid_test(ostrel_root_handle, args);
}
