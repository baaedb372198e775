// MRIB utilities of the simulated platform: paths, entry designations, the bounded formatter, client names
// and the interface-text parser.
#include "platform/mrib_utl.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "sim/root.h"
#include "sim/services/dotted.h"
#include "sim/services/fault_counter.h"
#include "sim/services/interface_lookup.h"

namespace ostrel::sim {
namespace {

constexpr int kNoRoom = -1;
constexpr int kFailed = -2;

// "(255.255.255.255,255.255.255.255/4294967295)" and a terminator.
constexpr size_t kDesignationRoom = 46;

// Writes the designation and a terminator at `at`, which has kDesignationRoom bytes, and returns its length.
// Written by hand rather than formatted: every route printed asks for one.
size_t designate_at(uint32_t source, uint32_t group, uint32_t prefix_length, char* at) {
  char* const first = at;
  *at++ = '(';
  if (source != 0) {
    at += write_dotted(reinterpret_cast<const unsigned char*>(&source), at);
  } else {
    *at++ = '*';
  }
  *at++ = ',';
  at += write_dotted(reinterpret_cast<const unsigned char*>(&group), at);
  if (prefix_length != 32) at += std::snprintf(at, 12, "/%u", prefix_length);
  *at++ = ')';
  *at = '\0';
  return static_cast<size_t>(at - first);
}

struct Designation {
  std::array<char, kDesignationRoom> text;
  size_t length;
  std::string_view view() const { return {text.data(), length}; }
};

Designation designate(uint32_t source, uint32_t group, uint32_t prefix_length) {
  Designation d;
  d.length = designate_at(source, group, prefix_length, d.text.data());
  return d;
}

// Stores `text` whole or not at all: a cut designation would name another entry.
int store_whole(std::string_view text, char* buffer, int size) {
  if (!buffer || size <= 0) return kNoRoom;
  if (text.size() + 1 > static_cast<size_t>(size)) {
    buffer[0] = '\0';
    return kNoRoom;
  }
  std::memcpy(buffer, text.data(), text.size());
  buffer[text.size()] = '\0';
  return static_cast<int>(text.size());
}

struct Name {
  uint32_t value;
  const char* text;
};

constexpr Name kClientTypes[] = {
    {0, "unknown"}, {1, "pim"}, {2, "igmp"},  {3, "bgp"},  {4, "mfwd"},   {5, "mldp"},
    {6, "te"},      {7, "amt"}, {8, "l2fib"}, {9, "evpn"}, {10, "lmrib"}, {11, "static"},
};

constexpr Name kReadStates[] = {
    {0, "idle"}, {1, "pending"}, {2, "reading"}, {3, "blocked"}, {4, "resync"}, {5, "closed"},
};

template <size_t N>
const char* name_of(const Name (&names)[N], uint32_t value, const char* kind) {
  for (const Name& name : names) {
    if (name.value == value) return name.text;
  }
  static std::array<std::array<char, 32>, 4> ring;
  static size_t next = 0;
  char* text = ring[next].data();
  next = (next + 1) % ring.size();
  std::snprintf(text, 32, "%s-%u", kind, value);
  return text;
}

}  // namespace
}  // namespace ostrel::sim

char* mrib_utl_build_path(const char* head, const char* tail) {
  if (!head || !tail) return nullptr;
  if (ostrel::sim::find_fault("build_path")) return nullptr;
  size_t head_length = std::strlen(head);
  size_t tail_length = std::strlen(tail);
  auto* path = static_cast<char*>(std::malloc(head_length + tail_length + 1));
  if (!path) return nullptr;
  std::memcpy(path, head, head_length);
  std::memcpy(path + head_length, tail, tail_length + 1);
  return path;
}

int mrib_utl_print_entry(uint32_t afi, const uint32_t* key, uint32_t flags, char* buffer, int size,
                         uint32_t) {
  using namespace ostrel::sim;
  static FaultCounter calls;
  int64_t index = calls.next();
  if (auto fault = find_fault("print_entry", {}, index)) {
    if (buffer && size > 0) buffer[0] = '\0';
    return fault->overflow ? kNoRoom : kFailed;
  }
  if (afi != 0 || flags != 0 || !key) return kFailed;
  // A buffer with room for the longest takes it in place; a smaller one takes it whole or not at all.
  if (buffer && size >= static_cast<int>(kDesignationRoom))
    return static_cast<int>(designate_at(key[1], key[0], key[2], buffer));
  return store_whole(designate(key[1], key[0], key[2]).view(), buffer, size);
}

int mrib_utl_print_bvi_entry(const char* table_name, uint32_t source, uint32_t group, const char* ifname,
                             uint8_t group_len, char* buffer, int size) {
  using namespace ostrel::sim;
  // Joined in the caller's buffer: a BVI route listing asks once per route.
  const Designation designation = designate(source, group, group_len);
  const bool named = ifname && *ifname, in_table = table_name && *table_name;
  const std::string_view pieces[] = {designation.view(), named ? " " : "", named ? ifname : "",
                                     in_table ? ", table " : "", in_table ? table_name : ""};
  size_t total = 0;
  for (std::string_view piece : pieces) total += piece.size();
  if (!buffer || size <= 0) return kNoRoom;
  if (total + 1 > static_cast<size_t>(size)) {
    buffer[0] = '\0';
    return kNoRoom;
  }
  for (std::string_view piece : pieces) buffer = std::copy(piece.begin(), piece.end(), buffer);
  *buffer = '\0';
  return static_cast<int>(total);
}

int mrib_snprintf(char* buffer, int size, const char* format, ...) {
  if (!buffer || size < 1) return 0;
  va_list args;
  va_start(args, format);
  // The flag formatters append one separator and one mnemonic at a time: join the two texts directly. The
  // format is matched a character at a time, as a call to strcmp cost more than the join.
  if (format[0] == '%' && format[1] == 's' && format[2] == '%' && format[3] == 's' && format[4] == '\0') {
    const char* texts[2] = {va_arg(args, const char*), va_arg(args, const char*)};
    va_end(args);
    int stored = 0;
    for (const char* text : texts) {
      for (; *text != '\0' && stored < size - 1; ++text) buffer[stored++] = *text;
    }
    buffer[stored] = '\0';
    return stored;
  }
  int wanted = std::vsnprintf(buffer, static_cast<size_t>(size), format, args);
  va_end(args);
  if (wanted < 0) {
    buffer[0] = '\0';
    return 0;
  }
  return wanted < size ? wanted : size - 1;
}

const char* mrib_clt_type_to_str(uint32_t type) {
  return ostrel::sim::name_of(ostrel::sim::kClientTypes, type, "type");
}

const char* mrib_client_rd_state_to_str(uint32_t state) {
  return ostrel::sim::name_of(ostrel::sim::kReadStates, state, "state");
}

uint32_t ostrel_ifstr_ifh(const char* text) {
  using namespace ostrel::sim;
  if (!text || !*text) return 0;
  if (std::isdigit(static_cast<unsigned char>(text[0]))) {
    errno = 0;
    char* end = nullptr;
    unsigned long long number = std::strtoull(text, &end, 0);
    if (errno != 0 || *end != '\0' || number == 0 || number > 0xffffffffULL) return 0;
    uint32_t handle = static_cast<uint32_t>(number);
    return interface_name_of(handle) ? handle : 0;
  }
  return find_interface_handle(text).value_or(0);
}
