// The BVI-to-table mapping view (-1): the mapping of the BVI that -z names, or every mapping.
//
// Both forms say only that there is no mapping, whatever the failure and with or without -d: a listing
// that fails, not-found included, prints "Data-List - No Mapping Found", and a fetch that fails "No BVI
// table mapping". The listing's own step messages carry the view's name; it goes on while the store has
// more and a record of the batch decoded, resuming after the handle of the last decoded mapping.
#include <cstdio>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "views/mvpn/bvi.h"

namespace {

constexpr CycleMessages kListMessages{
    .name = "ostrel_bvi_interface_table_mapping",
    .read = {"%s: call to vellum_datalist_next failed, %s\n", true},
    .free_after_read = "Freeing result BVI table mapping data-list %s\n",
    .data_type = {"%s: Unexpected datatype: %x\n", true},
    .free = {"%s: Failed to free datalist, %s", true},
};

void mrib_bvi_interface_print(const mrib_bvi_interface_pod& mapping, void*) {
  char name[80];
  std::snprintf(name, sizeof name, "%s", ostrel_ifh_name(mapping.BVI_Name, 0).data());
  ostrel_outf("Interface : %s\n", name);
  ostrel_outf("Table : %s (0x%x)\n\n", ostrel_text_or_empty(mapping.TableName), mapping.Table_Id);
}

bool mapping_resume_key(const mrib_bvi_interface_pod& mapping, char* key, size_t size, void*) {
  int length = std::snprintf(key, size, "0x%x", mapping.BVI_Name);
  return length > 0 && static_cast<size_t>(length) < size;
}

void list_mappings(vellum_handle_t handle) {
  if (!ostrel_build_path("process/bvi_intf/")) return;
  ListOutcome outcome =
      ostrel_list_cycle(ListCycle<mrib_bvi_interface_pod>{.handle = handle,
                                                          .messages = &kListMessages,
                                                          .rule = BatchRule::kMoreFlagAndDecoded,
                                                          .print = mrib_bvi_interface_print,
                                                          .resume_key = mapping_resume_key});
  if (outcome.failed) ostrel_out("Data-List - No Mapping Found\n");
}

void show_mapping(vellum_handle_t handle, uint32_t ifhandle) {
  if (!ostrel_build_path("process/bvi_intf/0x%x", ifhandle)) return;
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_bvi_interface_pod>{
      .handle = handle, .check_data_type = false, .print = mrib_bvi_interface_print});
  if (rc != kCerrOk) ostrel_out("No BVI table mapping\n");
}

// An empty name lists every mapping; a name the platform does not know shows none.
void ostrel_bvi_interface_table_mapping(vellum_handle_t handle, const char* ifname) {
  if (ifname[0] == '\0') {
    list_mappings(handle);
  } else if (uint32_t ifhandle = ostrel_bvi_find_interface(ifname); ifhandle != 0) {
    show_mapping(handle, ifhandle);
  }
}

}  // namespace

void ostrel_bvi_table_mapping_view(const ShowArgs& args) {
  ostrel_bvi_interface_table_mapping(ostrel_view_handle, args.ifname);
}
