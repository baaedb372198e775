// Small texts that views print: saved strings, addresses, core-tree identifiers, interface names, uptimes,
// calendar times, and the name:instance form of a client. Results live in process-wide rings or buffers:
// callers never free them, and each ring says how many results stay valid at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>

#include "access/memo.h"
#include "access/pod_records.h"
#include "access/session.h"

// Copies `text` (at most 256 characters) into the next of five slots and returns the slot, valid until five
// further calls. Exported by the executable for the platform's use.
extern "C" const char* strsave(const char* text);

// The dotted IPv4 text of the address's first four bytes, whatever its family (0 or 1; any other family is a
// programming error), in the next of five 16-byte slots.
const char* mrib_pod_addr_print(const mrib_addrtype* addr);
// True when the first 32-bit word of the address bytes is 0. Family 0 or 1 only.
uint32_t mrib_pod_addr_is_any(const mrib_addrtype* addr);
// The address bytes for family 0 or 1, none otherwise.
const uint8_t* mrib_pod_addr_bytes(const mrib_addrtype* addr);

// The four address bytes at `addr` (network order) as eight lower-case hexadecimal digits, most significant
// first (10.0.0.1 gives "0a000001"), in the next of five 16-byte slots.
const char* ip_maddr_hex_string(const void* addr);

// The dotted IPv4 text of the four bytes at `addr`, in the next slot of the ring that ip_maddr_hex_string()
// fills: the outgoing-list view shares that ring between its keys and its addresses.
const char* ip_maddr_dotted_string(const void* addr);

// Views print addresses of any family without stopping a listing: an address of a family this program does
// not know reads "<unknown AF n>" rather than bytes that would mean nothing. For families 0 and 1 this is
// mrib_pod_addr_print().
const char* ostrel_addr_text(const mrib_addrtype* addr);

// True for an address of family 0 or 1 that is the any-address; an address of any other family is never
// read, and is not.
bool ostrel_addr_is_any(const mrib_addrtype* addr);

// A source as the views print it: "*" for the any-address, else its ostrel_addr_text().
const char* ostrel_source_text(const mrib_addrtype* addr);

// The IPv4 word of an address in network byte order; 0 for an address of a family this program does not know.
uint32_t ostrel_ipv4_word(const mrib_addrtype& addr);

// A text field that the server may leave out prints as an empty text, so that its line keeps its place.
inline const char* ostrel_text_or_empty(const char* text) {
  return text != nullptr ? text : "";
}

// The designation of a route entry, "(S,G)" or "(S,G/len)", into `buffer` of `size` bytes, with the return
// of mrib_utl_print_entry(): the length, negative when it did not fit or failed. The platform names IPv4 keys
// only; an address of a family this program does not know is named by its family instead (as
// ostrel_addr_text() does), so that one odd record does not end a listing.
int ostrel_entry_designation(const mrib_addrtype& source, const mrib_addrtype& group, uint32_t prefix_length,
                             uint32_t nsf, char* buffer, int size);

// The payloads that bits 0x20 (IPv4) and 0x40 (IPv6) of `bits` name: "IPv4 IPv6", "IPv4", "IPv6" or "".
const char* ostrel_payload_text(uint32_t bits);

// A route's key in the store's own form, "%s,%s,%d": two addresses as ip_maddr_hex_string() writes them and a
// prefix length. False, with nothing usable in `key`, when an address is of a family without such a text or
// the key does not fit.
bool ostrel_route_key(const mrib_addrtype& first, const mrib_addrtype& second, int length, char* key,
                      size_t size);

// The core-tree identifier as a view prints it: the dotted ID for types 5 and 6, "*" for type 0, else "".
// Returned through strsave().
const char* ostrel_ctid_text(const mrib_ctid_pod* ctid);

namespace ostrel::detail {

// The run's memo of names and durations (access/memo.h). The lookups below answer from it in line, for they
// are asked once per interface of every route, and ask the platform out of line.
extern OstrelTextMemo<1024, 80> interface_names;
extern OstrelTextMemo<256, 80> node_names;
extern OstrelTextMemo<256, 32> durations;

enum class NodeKind : uint64_t { kNode, kFapid };
inline uint64_t interface_key(uint32_t handle, uint32_t display_flags) {
  return uint64_t{display_flags} << 32 | handle;
}
inline uint64_t node_key(NodeKind kind, uint32_t id, uint32_t size) {
  return static_cast<uint64_t>(kind) << 40 | uint64_t{size} << 32 | id;
}
// The platform's answers, asked once the memo has missed; a success is kept there.
std::string_view ifh_name_asked(uint32_t handle, uint32_t display_flags);
std::optional<std::string_view> node_name_asked(NodeKind kind, uint32_t id, uint32_t size);
std::optional<std::string_view> duration_text_asked(uint64_t seconds);

}  // namespace ostrel::detail

// The display name of an interface handle: "Null" for 0, "0x%x" when no interface-name server is bound,
// "Un:0x%x" when the server cannot name it. Names are remembered for the run; a failure is not. Like every
// text of the lookups below, it is terminated where it ends, so data() may go to %s; print or copy it
// before the next call.
inline std::string_view ostrel_ifh_name(uint32_t handle, uint32_t display_flags) {
  using namespace ostrel::detail;
  if (handle != 0 && mrib_imc_ctx != nullptr) {
    std::string_view name = interface_names.find(interface_key(handle, display_flags));
    if (name.data() != nullptr) return name;
  }
  return ifh_name_asked(handle, display_flags);
}

// The name that nodeid_to_str_external() or fapid_to_str_external() writes into `size` bytes (at most 80),
// remembered for the run; none, and nothing remembered, when the platform cannot name it.
inline std::optional<std::string_view> ostrel_node_name(uint32_t node_id, uint32_t size) {
  using namespace ostrel::detail;
  std::string_view name = node_names.find(node_key(NodeKind::kNode, node_id, size));
  if (name.data() != nullptr) return name;
  return node_name_asked(NodeKind::kNode, node_id, size);
}
inline std::optional<std::string_view> ostrel_fapid_name(uint32_t fapid, uint32_t size) {
  using namespace ostrel::detail;
  std::string_view name = node_names.find(node_key(NodeKind::kFapid, fapid, size));
  if (name.data() != nullptr) return name;
  return node_name_asked(NodeKind::kFapid, fapid, size);
}

// sprint_dhms64() remembered for the run: the duration text of `seconds`, or none when there is none.
inline std::optional<std::string_view> ostrel_duration_text(uint64_t seconds) {
  std::string_view text = ostrel::detail::durations.find(seconds);
  if (text.data() != nullptr) return text;
  return ostrel::detail::duration_text_asked(seconds);
}

// The same, or "??:??:??" when there is none: how the views write an uptime or an age.
inline std::string_view ostrel_dhms_text(uint64_t seconds) {
  return ostrel_duration_text(seconds).value_or("??:??:??");
}

// "never" for 0, else the duration text of the whole seconds, or "??:??:??" when there is none.
const char* ostrel_fmt_uptime(uint32_t microseconds);

// "never" for the all-ones value, else the calendar text of `seconds` without its newline, in `buffer`.
const char* ostrel_fmt_time(char (&buffer)[64], uint64_t seconds);

// Splits "name:instance" into heap copies owned by the caller; `*instance` is none without an instance.
void ostrel_parse_client_name_inst(const char* text, char** name, char** instance);

struct OstrelFreeText {
  void operator()(char* text) const { std::free(text); }
};
using OstrelHeapText = std::unique_ptr<char, OstrelFreeText>;

// A client named on the command line, split as ostrel_parse_client_name_inst() splits it; none for none.
struct OstrelClientName {
  OstrelHeapText name;
  OstrelHeapText instance;  // none without an instance
};
OstrelClientName ostrel_client_name(const char* text);

// A filter field of a path key: the value in hexadecimal ("%x"), or eight underscores when it was not
// given. Keys leave out what an operator did not ask for this way.
struct OstrelKeyField {
  OstrelKeyField(bool given, uint32_t value);
  char text[9];
};
inline constexpr char kOstrelKeyAbsent[] = "________";
