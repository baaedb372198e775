// Interface services of the simulated platform, answered from the root's inventory of interfaces.
#include "platform/interface.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/text.h"
#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "sim/services/fault_counter.h"
#include "sim/services/interface_lookup.h"

struct imc_control_server_s {
  bool connected = false;
};

namespace ostrel::sim {
namespace {

struct Abbreviation {
  std::string_view full;
  std::string_view brief;
};

constexpr Abbreviation kAbbreviations[] = {
    {"GigabitEthernet", "Gi"}, {"TenGigE", "Te"},      {"TwentyFiveGigE", "TF"},
    {"FortyGigE", "Fo"},       {"FiftyGigE", "Fi"},    {"HundredGigE", "Hu"},
    {"FourHundredGigE", "FH"}, {"FastEthernet", "Fa"}, {"Bundle-Ether", "BE"},
    {"Bundle-POS", "BP"},      {"POS", "PO"},          {"Loopback", "Lo"},
    {"MgmtEth", "Mg"},         {"Null", "Nu"},         {"BVI", "BV"},
    {"tunnel-ip", "ti"},       {"tunnel-te", "tt"},    {"tunnel-mte", "tm"},
};

// `name` begins with the interface type `type` and the type is followed by its number.
bool has_type(std::string_view name, std::string_view type) {
  return name.size() > type.size() && name.substr(0, type.size()) == type &&
         std::isdigit(static_cast<unsigned char>(name[type.size()]));
}

// Writes the display form of `name` into `out` of `size` bytes, which may be where `name` lies: the form is
// never longer than the name, and it is written front to back. False when it does not fit.
bool write_display_form(std::string_view name, uint32_t display_flags, char* out, size_t size) {
  std::string_view brief, rest = name;
  if (display_flags & 1) {
    for (const Abbreviation& entry : kAbbreviations) {
      if (has_type(name, entry.full)) {
        brief = entry.brief;
        rest = name.substr(entry.full.size());
        break;
      }
    }
  }
  if (brief.size() + rest.size() + 1 > size) return false;
  // A name shown as it is, in place, is already there.
  if (brief.empty() && rest.data() == out) return true;
  if (!rest.empty()) std::memmove(out + brief.size(), rest.data(), rest.size());
  if (!brief.empty()) std::memcpy(out, brief.data(), brief.size());
  out[brief.size() + rest.size()] = '\0';
  return true;
}

std::string short_form(std::string_view name) {
  for (const Abbreviation& entry : kAbbreviations) {
    if (has_type(name, entry.full)) return std::string(entry.brief).append(name.substr(entry.full.size()));
  }
  return std::string(name);
}

std::optional<std::string> long_form(std::string_view name) {
  for (const Abbreviation& entry : kAbbreviations) {
    if (has_type(name, entry.brief)) return std::string(entry.full).append(name.substr(entry.brief.size()));
  }
  return std::nullopt;
}

std::string handle_key(uint32_t handle) {
  char key[16];
  std::snprintf(key, sizeof key, "0x%x", handle);
  return key;
}

imc_control_server_s& control_server() {
  static imc_control_server_s server;
  return server;
}

cerr_t name_one(uint32_t handle, imc_interface_name_result* result) {
  if (result->name && result->size > 0) result->name[0] = '\0';
  if (faults_declared()) {
    // A fault's index counts the lookups of this handle's name, so that one lookup can fail and the next
    // succeed.
    static std::unordered_map<uint32_t, FaultCounter> lookups;
    std::string key = handle_key(handle);
    int64_t index = has_fault("interface_name", key) ? lookups[handle].next() : -1;
    if (auto fault = find_fault("interface_name", key, index)) return fault->code ? fault->code : kInjectedFailure;
  }
  const std::string* name = find_interface_name(handle);
  if (!name) return kUnknownIdentifier;
  if (!result->name || result->size == 0) return kBadArgument;
  // sstrncpy() would measure the name again; its length is known.
  size_t length = std::min<size_t>(name->size(), result->size - 1);
  std::memcpy(result->name, name->data(), length);
  result->name[length] = '\0';
  return kCerrOk;
}

}  // namespace

std::optional<uint32_t> find_interface_handle(std::string_view name) {
  if (auto handle = interface_handle_of(name)) return handle;
  if (auto full = long_form(name)) return interface_handle_of(*full);
  return std::nullopt;
}

}  // namespace ostrel::sim

cerr_t imc_control_server_bind(const imc_control_server_params* params, uint32_t, imc_ctx_t* ctx) {
  using namespace ostrel::sim;
  if (!params || params->version != 1 || !ctx) return kBadArgument;
  if (auto fault = find_fault("control_server")) return fault->code ? fault->code : kInjectedFailure;
  if (!control_server_available()) return kNotConnected;
  control_server().connected = true;
  *ctx = &control_server();
  return kCerrOk;
}

cerr_t imc_control_server_unbind(imc_ctx_t* ctx, uint32_t flags) {
  using namespace ostrel::sim;
  if (!ctx || flags != 0) return kBadArgument;
  if (!*ctx || !(*ctx)->connected) return kNotConnected;
  (*ctx)->connected = false;
  *ctx = nullptr;
  return kCerrOk;
}

cerr_t imc_interface_name(imc_ctx_t ctx, uint32_t count, const uint32_t* handles, uint32_t flags,
                          imc_interface_name_result* results) {
  using namespace ostrel::sim;
  if (!ctx || ctx != &control_server() || !ctx->connected) return kNotConnected;
  if (flags != 0 || (count > 0 && (!handles || !results))) return kBadArgument;
  for (uint32_t i = 0; i < count; ++i) results[i].status = name_one(handles[i], &results[i]);
  return kCerrOk;
}

char* imc_display_namestring(const char* name, char* out, uint32_t size, uint32_t display_flags) {
  using namespace ostrel::sim;
  if (!name || !out) return nullptr;
  if (faults_declared()) {
    if (auto handle = interface_handle_of(name)) {
      if (find_fault("display_name", handle_key(*handle))) return nullptr;
    }
  }
  return write_display_form(name, display_flags, out, size) ? out : nullptr;
}

uint32_t interface_find(const char* name) {
  if (!name) return 0;
  return ostrel::sim::find_interface_handle(name).value_or(0);
}

const char* interface_name(uint32_t handle, uint32_t display_flags) {
  using namespace ostrel::sim;
  static std::array<std::string, 4> ring;
  static size_t next = 0;
  std::string& text = ring[next];
  next = (next + 1) % ring.size();
  if (std::optional<std::string> name = interface_name_of(handle)) {
    text = (display_flags & 1) ? short_form(*name) : *name;
  } else {
    text = "Un:" + handle_key(handle);
  }
  return text.c_str();
}
