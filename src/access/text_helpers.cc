#include "access/text_helpers.h"

#include <arpa/inet.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>

#include "access/assert.h"
#include "access/memo.h"
#include "access/session.h"
#include "platform/interface.h"
#include "platform/mrib_utl.h"
#include "platform/naming.h"
#include "platform/text.h"

namespace {

constexpr char kPodLibSource[] = "ipv4/multicast/mrib/src/mrib_pod_lib";
constexpr char kMcastAddrSource[] = "ipv4/multicast/lib/ipv4/ipv4_mcast_addr";
constexpr char kAllocSource[] = "ipv4/multicast/lib/multicast_alloc";
constexpr char kClientSource[] = "ipv4/multicast/mrib/src/ostrel_client";

constexpr int kRingSlots = 5;

char saved_ring[kRingSlots][257];
std::atomic<uint32_t> saved_counter{0};

char address_ring[kRingSlots][16];
int32_t address_index = 0;

char hex_ring[kRingSlots][16];
int32_t hex_index = 0;

char interface_name_buffer[80];
char uptime_buffer[32];

using ostrel::detail::durations;
using ostrel::detail::interface_names;
using ostrel::detail::NodeKind;
using ostrel::detail::node_names;

// The next slot of a 16-byte ring, emptied.
char* next_slot(char (&ring)[kRingSlots][16], int32_t& index) {
  if (index >= kRingSlots) index = 0;
  char* slot = ring[index++];
  std::memset(slot, 0, 16);
  return slot;
}

bool known_family(const mrib_addrtype* addr) {
  return addr->AFName == 0 || addr->AFName == 1;
}

char* copy_or_abort(const char* text, const char* function, int line) {
  char* copy = strdup(text);
  if (copy == nullptr) {
    ux_syslog(3, "STRDUP-ERR : %s (%s:%d). Aborting process", function, kClientSource, line);
    std::abort();
  }
  return copy;
}

}  // namespace

namespace ostrel::detail {

// A router has a few hundred interfaces and nodes; the tables hold several times that before keys meet.
OstrelTextMemo<1024, 80> interface_names;
OstrelTextMemo<256, 80> node_names;
OstrelTextMemo<256, 32> durations;

}  // namespace ostrel::detail

extern "C" const char* strsave(const char* text) {
  char* slot = saved_ring[saved_counter.fetch_add(1) % kRingSlots];
  std::snprintf(slot, sizeof saved_ring[0], "%s", text);
  return slot;
}

const uint8_t* mrib_pod_addr_bytes(const mrib_addrtype* addr) {
  return known_family(addr) ? addr->IPV6Address : nullptr;
}

const char* mrib_pod_addr_print(const mrib_addrtype* addr) {
  const uint8_t* bytes = mrib_pod_addr_bytes(addr);
  OSTREL_ASSERT(bytes != nullptr, "addr_bytes != NULL", kPodLibSource);
  char* slot = next_slot(address_ring, address_index);
  return ux_inet_ntop(AF_INET, bytes, slot, 16);
}

uint32_t mrib_pod_addr_is_any(const mrib_addrtype* addr) {
  const uint8_t* bytes = mrib_pod_addr_bytes(addr);
  OSTREL_ASSERT(bytes != nullptr, "addr_bytes != NULL", kPodLibSource);
  uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  return word == 0;
}

const char* ip_maddr_hex_string(const void* addr) {
  OSTREL_ASSERT(addr != nullptr, "addr", kMcastAddrSource);
  uint32_t word;
  std::memcpy(&word, addr, sizeof word);
  char* slot = next_slot(hex_ring, hex_index);
  std::snprintf(slot, 9, "%08x", ntohl(word));
  return slot;
}

const char* ip_maddr_dotted_string(const void* addr) {
  OSTREL_ASSERT(addr != nullptr, "addr", kMcastAddrSource);
  return ux_inet_ntop(AF_INET, addr, next_slot(hex_ring, hex_index), 16);
}

bool ostrel_route_key(const mrib_addrtype& first, const mrib_addrtype& second, int length, char* key,
                      size_t size) {
  const uint8_t* a = mrib_pod_addr_bytes(&first);
  const uint8_t* b = mrib_pod_addr_bytes(&second);
  if (a == nullptr || b == nullptr || size < 32) return false;
  // Each address as ip_maddr_hex_string() writes it; 18 characters, at most 11 of "%d" and a terminator fit
  // the 32 bytes asked for.
  std::snprintf(key, size, "%02x%02x%02x%02x,%02x%02x%02x%02x,%d", a[0], a[1], a[2], a[3], b[0], b[1], b[2],
                b[3], length);
  return true;
}

const char* ostrel_addr_text(const mrib_addrtype* addr) {
  if (known_family(addr)) return mrib_pod_addr_print(addr);
  char text[32];
  std::snprintf(text, sizeof text, "<unknown AF %u>", addr->AFName);
  return strsave(text);
}

const char* ostrel_ctid_text(const mrib_ctid_pod* ctid) {
  char buffer[64] = "";
  if (ctid->TYPE == 5 || ctid->TYPE == 6) {
    ux_inet_ntop(AF_INET, &ctid->ID, buffer, sizeof buffer);
  } else if (ctid->TYPE == 0) {
    std::strcpy(buffer, "*");
  }
  return strsave(buffer);
}

std::string_view ostrel::detail::ifh_name_asked(uint32_t handle, uint32_t display_flags) {
  if (handle == 0) return "Null";
  if (mrib_imc_ctx == nullptr) {
    int n = std::snprintf(interface_name_buffer, sizeof interface_name_buffer, "0x%x", handle);
    return {interface_name_buffer, static_cast<size_t>(n)};
  }
  uint64_t key = interface_key(handle, display_flags);
  interface_name_buffer[0] = '\0';
  imc_interface_name_result result{interface_name_buffer, sizeof interface_name_buffer, 0};
  cerr_t rc = imc_interface_name(mrib_imc_ctx, 1, &handle, 0, &result);
  if (rc != kCerrOk || result.status != kCerrOk ||
      imc_display_namestring(interface_name_buffer, interface_name_buffer, sizeof interface_name_buffer,
                             display_flags) == nullptr) {
    int n = std::snprintf(interface_name_buffer, sizeof interface_name_buffer, "Un:0x%x", handle);
    return {interface_name_buffer, static_cast<size_t>(n)};
  }
  return interface_names.keep(key, interface_name_buffer);
}

std::optional<std::string_view> ostrel::detail::node_name_asked(NodeKind kind, uint32_t id, uint32_t size) {
  OSTREL_ASSERT(size >= 1 && size <= 80, "size", kClientSource);
  char name[80];
  cerr_t rc = kind == NodeKind::kNode ? nodeid_to_str_external(id, name, size)
                                      : fapid_to_str_external(id, name, size);
  if (rc != kCerrOk) return std::nullopt;
  return node_names.keep(node_key(kind, id, size), name);
}

std::optional<std::string_view> ostrel::detail::duration_text_asked(uint64_t seconds) {
  const char* text = sprint_dhms64(seconds);
  if (text == nullptr) return std::nullopt;
  std::string_view kept = durations.keep(seconds, text);
  return kept.data() != nullptr ? kept : std::string_view(text);
}

const char* ostrel_fmt_uptime(uint32_t microseconds) {
  const char* text = "never";
  if (microseconds != 0) {
    text = sprint_dhms(microseconds / 1000000);
    if (text == nullptr) text = "??:??:??";
  }
  std::snprintf(uptime_buffer, sizeof uptime_buffer, "%s", text);
  return uptime_buffer;
}

const char* ostrel_fmt_time(char (&buffer)[64], uint64_t seconds) {
  if (seconds == UINT64_MAX) return "never";
  time_t t = static_cast<time_t>(seconds);
  char calendar[64];
  const char* text = ctime_r(&t, calendar);
  int n = std::snprintf(buffer, sizeof buffer, "%s", text != nullptr ? text : "");
  if (n >= 1 && n <= 63) buffer[n - 1] = '\0';
  return buffer;
}

void ostrel_parse_client_name_inst(const char* text, char** name, char** instance) {
  OSTREL_ASSERT(text != nullptr, "str != NULL", kAllocSource);
  char* copy = copy_or_abort(text, "ostrel_parse_client_name_inst", __LINE__);
  *instance = nullptr;
  if (char* colon = std::strchr(copy, ':'); colon != nullptr) {
    *colon = '\0';
    if (colon[1] != '\0') *instance = copy_or_abort(colon + 1, "ostrel_parse_client_name_inst", __LINE__);
  }
  *name = copy;
}

OstrelClientName ostrel_client_name(const char* text) {
  OstrelClientName client;
  if (text == nullptr) return client;
  char* name = nullptr;
  char* instance = nullptr;
  ostrel_parse_client_name_inst(text, &name, &instance);
  client.name.reset(name);
  client.instance.reset(instance);
  return client;
}

OstrelKeyField::OstrelKeyField(bool given, uint32_t value) {
  if (given) {
    std::snprintf(text, sizeof text, "%x", value);
  } else {
    std::snprintf(text, sizeof text, "%s", kOstrelKeyAbsent);
  }
}

bool ostrel_addr_is_any(const mrib_addrtype* addr) {
  return mrib_pod_addr_bytes(addr) != nullptr && mrib_pod_addr_is_any(addr);
}

const char* ostrel_source_text(const mrib_addrtype* addr) {
  return ostrel_addr_is_any(addr) ? "*" : ostrel_addr_text(addr);
}

const char* ostrel_payload_text(uint32_t bits) {
  constexpr uint32_t kIpv4 = 0x20, kIpv6 = 0x40;
  if ((bits & kIpv4) != 0) return (bits & kIpv6) != 0 ? "IPv4 IPv6" : "IPv4";
  return (bits & kIpv6) != 0 ? "IPv6" : "";
}

uint32_t ostrel_ipv4_word(const mrib_addrtype& addr) {
  const uint8_t* bytes = mrib_pod_addr_bytes(&addr);
  uint32_t word = 0;
  if (bytes != nullptr) std::memcpy(&word, bytes, sizeof word);
  return word;
}

int ostrel_entry_designation(const mrib_addrtype& source, const mrib_addrtype& group, uint32_t prefix_length,
                             uint32_t nsf, char* buffer, int size) {
  const uint8_t* source_bytes = mrib_pod_addr_bytes(&source);
  const uint8_t* group_bytes = mrib_pod_addr_bytes(&group);
  if (source_bytes != nullptr && group_bytes != nullptr) {
    uint32_t key[3] = {0, 0, prefix_length};
    std::memcpy(&key[0], group_bytes, sizeof key[0]);
    std::memcpy(&key[1], source_bytes, sizeof key[1]);
    return mrib_utl_print_entry(0, key, 0, buffer, size, nsf);
  }
  char length_text[16] = "";
  if (prefix_length != 32) std::snprintf(length_text, sizeof length_text, "/%u", prefix_length);
  return std::snprintf(buffer, static_cast<size_t>(size), "(%s,%s%s)", ostrel_source_text(&source),
                       ostrel_addr_text(&group), length_text);
}
