// What the AMT route view and the AMT gateway view share: the choice of mode, the check that a path table's
// formats read only the filters their column passes, the texts both print alike, and the walk of one mode.
//
// That walk departs from the common cycles. A listing asks for another batch only when the more flag is set
// and a record of the batch decoded, and resumes after a key made from the last decoded record, never after
// an item path; a key that comes out empty or does not fit ends it. A record whose address is of a family
// other than IPv4 and IPv6 is printed with its family named (ostrel_addr_text()) and gives no key, so the
// listing ends with its batch rather than guess where to go on. The header prints when the first batch holds
// items, whether or not any of them decodes, as the route view's legend does; a listing that held none ends
// with the mode's closing line, if it has one. The store's not-found code ends a listing silently, as a
// directory the server never made means nothing to show; any other failure prints the mode's own line,
// whose text under -d may differ from the plain one. The single items of every mode, gateways and summaries
// included, skip the data-type check, print the header as soon as the item is read, and fail with the route
// texts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "access/output.h"
#include "access/pod_records.h"
#include "access/query.h"
#include "access/switches.h"
#include "front/show_args.h"
#include "platform/vellum.h"

// Indexes the views' mode tables.
enum class AmtMode : uint8_t { kActive = 0, kExpired = 1, kSummary = 2 };

// -H is asked first, so -H with -Q is the summary.
constexpr AmtMode ostrel_amt_mode(const ShowArgs& args) {
  if (args.amt_flag_h) return AmtMode::kSummary;
  return args.amt_flag_q ? AmtMode::kExpired : AmtMode::kActive;
}

// True when the conversions of `format` are, in order, a prefix of `passed` ('s' a text, 'd' an int). Path
// tables hold their formats as data, out of the compiler's sight; this check takes its place.
constexpr bool ostrel_amt_format_reads(std::string_view format, std::string_view passed) {
  size_t next = 0;
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') continue;
    if (++i == format.size() || next == passed.size() || format[i] != passed[next++]) return false;
  }
  return true;
}

// Every AMT path that carries a prefix length carries this one, whatever -p says.
inline constexpr int kAmtPathLength = 32;

// The dotted text of an IPv4 address in network byte order, in the next slot of the ring that
// ip_maddr_hex_string() fills.
const char* ostrel_amt_dotted(uint32_t address);

// The hexadecimal key form of an address record; none for a family without one, which is never read.
const char* ostrel_amt_hex(const mrib_addrtype& addr);

// Formats a resume key into `key` of `size` bytes. False when it comes out empty or does not fit: the walk
// then ends.
[[nodiscard]] bool ostrel_amt_key(char* key, size_t size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// One mode of a view, for records of type `Record`.
template <typename Record>
struct AmtShow {
  const char* header;
  void (*print)(const Record* record);
  // The key after which the next batch starts; false when the record gives none.
  bool (*resume_key)(const Record& record, char* key, size_t size);
  const char* not_available;  // a failed listing: the line, under -d before ": " and the error
  const char* not_available_plain = nullptr;  // ... without -d, where it differs from the line under -d
  const char* none_listed = nullptr;          // a listing that held nothing; none to say nothing
};

// What every single item says when it cannot be read.
inline constexpr ViewTexts kAmtItemTexts{.not_available = "No MRIB AMT route",
                                         .not_found = "No matching MRIB AMT route\n"};

// Runs one mode over ostrel_query_path: the single item there, or the listing below it.
template <typename Record>
void ostrel_amt_show(vellum_handle_t handle, const AmtShow<Record>& show, bool single_item) {
  using Show = const AmtShow<Record>;
  auto header = [](Show* s) { ostrel_out(s->header); };
  auto print = [](const Record& record, Show* s) { s->print(&record); };
  if (single_item) {
    (void)ostrel_item_cycle(ItemCycle<Record, Show>{.handle = handle,
                                                    .texts = kAmtItemTexts,
                                                    .check_data_type = false,
                                                    .context = &show,
                                                    .on_read = header,
                                                    .print = print});
    return;
  }
  const bool plain = !ostrel_debug && show.not_available_plain != nullptr;
  (void)ostrel_list_cycle(ListCycle<Record, Show>{
      .handle = handle,
      .texts = {.not_available = plain ? show.not_available_plain : show.not_available,
                .none_listed = show.none_listed},
      .rule = BatchRule::kMoreFlagAndDecoded,
      .context = &show,
      .on_first_batch = header,
      .print = print,
      .resume_key = [](const Record& record, char* key, size_t size, Show* s) {
        return s->resume_key(record, key, size);
      }});
}

// A mode's walk as a table row holds it.
template <const auto& show>
void ostrel_amt_run(vellum_handle_t handle, bool single_item) {
  ostrel_amt_show(handle, show, single_item);
}
