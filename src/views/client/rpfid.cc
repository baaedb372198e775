// The RPF-ID view: every allocation, those of one address, or a summary of either. The list and the summary
// have no header.
#include "views/client/rpfid.h"

#include <arpa/inet.h>

#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "platform/text.h"

namespace {

const char* t_or_f(uint32_t value) {
  return value ? "T" : "F";
}

void print_rpfid(const mrib_rpfid_spe_info& info, void*) {
  char addr[16];
  const char* addr_text = inet_ntoa_r(info.addr, addr, sizeof addr);
  const char* annotation = info.Annotation != nullptr && info.Annotation[0] != '\0' ? info.Annotation : "??";
  ostrel_outf(
      "Addr: %s, RPF-ID: %d (0x%x), Table ID: 0x%x, MDT Handle: 0x%x\n"
      "   Alloc: %s, IPv6 Intr: %s, Stale: %s, Chkpt Obj-ID: 0x%x\n"
      "   Routes - Non-core: %d, Core: %d, Label: %d\n"
      "   In PD Retry: %s\n"
      "   Platform Annot: %s\n",
      addr_text != nullptr ? addr_text : "", static_cast<int>(info.rpf_id), info.rpf_id, info.tbl_id,
      info.mdt_ifh, t_or_f(info.id_alloc), t_or_f(info.ipv6_interest), t_or_f(info.stale), info.chkpt_obj_id,
      static_cast<int>(info.dep_route_list_cnt), static_cast<int>(info.dep_core_route_list_cnt),
      static_cast<int>(info.dep_label_list_cnt), t_or_f(info.in_pd_retry_list), annotation);
}

void print_summary(const mrib_rpfid_spe_summ_info& summary, void*) {
  ostrel_outf(
      "RPF-ID Count                   : %d\n"
      "ID Alloc Count                 : %d\n"
      "V6 Interest Count              : %d\n"
      "Stale Count                    : %d\n"
      "NULL Dep Route list Count      : %d\n"
      "NULL Dep Core Route list Count : %d\n"
      "NULL Dep Label list Count      : %d\n"
      "In PD Retry list               : %d\n",
      static_cast<int>(summary.rpfid_count), static_cast<int>(summary.id_alloc_count),
      static_cast<int>(summary.v6_interest_count), static_cast<int>(summary.stale_count),
      static_cast<int>(summary.null_dep_route_list_count),
      static_cast<int>(summary.null_dep_core_route_list_count),
      static_cast<int>(summary.null_dep_label_list_count), static_cast<int>(summary.in_pd_retry_list_count));
}

// The store keys an address by its hexadecimal text, most significant byte first. The reader hands the
// address over in network byte order, so it is turned to host order before it is written: 10.0.0.1 reads
// "0a000001" on hosts of either byte order.
[[nodiscard]] bool build_rpfid_path(const RpfidKeywords& keywords) {
  if (keywords.address_given)
    return ostrel_build_path("process/rpfid_spe_addr-addr/%08x/", ntohl(keywords.address));
  if (keywords.summary) return ostrel_build_path("process/rpfid_spe_addr_summary");
  return ostrel_build_path("process/rpfid_spe_addr/");
}

}  // namespace

void ostrel_kw_rpfid_view(const RpfidKeywords& keywords) {
  if (!build_rpfid_path(keywords)) return;
  // -summary asks for one record whatever the path: with -address, the summary of that address.
  cerr_t status =
      keywords.summary
          ? ostrel_show_item(ostrel_root_handle, ostrel_query_path,
                             ShowCallbacks<mrib_rpfid_spe_summ_info, void>{.print = print_summary})
          : ostrel_show_table(ostrel_root_handle, ostrel_query_path,
                              ShowCallbacks<mrib_rpfid_spe_info, void>{.print = print_rpfid});
  // A missing directory or item fails the request; an empty directory lists nothing and prints nothing.
  // Keyword runs take no -d, so the line is always the bare text.
  if (status != kCerrOk) ostrel_out("No MRIB RPF-ID information available\n");
}
