// The NSR-end purge history: one line per purge (when, which client, its index, whether anything was
// purged), the purge counts below it under -detail. -client, -first and -last narrow the list.
#include "views/client/nsr_end.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/mrib_utl.h"

namespace {

[[nodiscard]] bool build_nsr_end_path(const NsrEndKeywords& k) {
  if (!k.client_given && !k.first_given && !k.last_given) return ostrel_build_path("process/nsr_end/");
  return ostrel_build_path("process/nsr_end-filter/%s,%s,%s/", OstrelKeyField(k.client_given, k.client).text,
                           OstrelKeyField(k.first_given, k.first).text,
                           OstrelKeyField(k.last_given, k.last).text);
}

void print_header(const NsrEndKeywords*) {
  ostrel_outf("%-18.18s %-12.12s %-6.6s %s\n", "Time", "Client", "Idx", "Change");
}

// The calendar text from its fifth character: the weekday and its blank are skipped here, and the column's
// width of 15 cuts the year, leaving month, day and time.
const char* purge_time_text(char (&calendar)[64], uint32_t seconds) {
  // Seconds are unsigned, so a purge after 2038 shows its date rather than one before 1970; widened to 64
  // bits they are never the helper's all-ones "never".
  const char* text = ostrel_fmt_time(calendar, uint64_t{seconds});
  return std::strlen(text) >= 4 ? text + 4 : "";
}

void print_purge(const mrib_nsr_end_info& purge, const NsrEndKeywords* keywords) {
  char calendar[64] = {};
  ostrel_outf("%-18.15s %-12s %-6u %s\n", purge_time_text(calendar, purge.event_tm.Seconds),
              mrib_clt_type_to_str(static_cast<uint32_t>(purge.ClientType)), purge.idx,
              purge.num_tbl_with_purged_attr != 0 ? "Y" : "N");
  if (keywords->detail)
    ostrel_outf(
        "   Num tbls with purged attr: %u\n"
        "   Num routes with purged route attr: %u\n"
        "   Num routes with purged intf attr: %u\n"
        "   Num intfs with purged intf attr: %u\n",
        purge.num_tbl_with_purged_attr, purge.num_e_with_purged_e_attr, purge.num_e_with_purged_if_attr,
        purge.num_if_with_purged_if_attr);
}

}  // namespace

void ostrel_kw_nsr_end_view(const NsrEndKeywords& keywords) {
  if (!build_nsr_end_path(keywords)) return;
  // A missing directory fails the listing; an empty history lists nothing and prints nothing, not even the
  // header. Keyword runs take no -d, so the line is always the bare text.
  if (ostrel_show_table(ostrel_root_handle, ostrel_query_path,
                        ShowCallbacks<mrib_nsr_end_info, const NsrEndKeywords>{
                            .header = print_header, .print = print_purge, .context = &keywords}) != kCerrOk)
    ostrel_out("No MRIB NSR end information available\n");
}
