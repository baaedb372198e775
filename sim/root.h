// The simulated router: its file-system root (OSTREL_ROOT, or the bundled demo root when unset), the store
// database under it, and what the fixture declared besides items: the inventory of interfaces, nodes and
// forwarding processors, whether the interface-name server can be bound, and the injected faults.
// Everything here is read once per process, on first use.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/status.h"

struct sqlite3;

namespace ostrel::sim {

// The root directory: $OSTREL_ROOT when set, else the demo root that the build made.
const std::string& root_dir();

// The store database of the root, opened read-only on first use; none when it cannot be opened.
sqlite3* root_db();

// A router path ("/pkg/lib/libvellum.so") resolved below the root.
std::string root_path(std::string_view router_path);

// Inventory lookups; none when the identifier is unknown.
std::optional<std::string> interface_name_of(uint32_t handle);
// The same without a copy, for the naming services that run once per interface shown: none when unknown;
// the text lives as long as the root.
const std::string* find_interface_name(uint32_t handle);
std::optional<uint32_t> interface_handle_of(std::string_view name);
// Node and forwarding-processor names, also without a copy: an interface line may show one. None when
// unknown; the text lives as long as the root.
const std::string* node_name_of(uint32_t id);
const std::string* fapid_name_of(uint32_t id);

// Whether the fixture lets the interface-name server be bound.
bool control_server_available();

// An injected fault: the operation `op` (a fixture fault name such as "datalist" or "pool_alloc") applied to
// `key` (a store path, a pool name, a record type name, an interface handle as "0x%x", or empty where the
// operation has none) at the 0-based `index` of its kind (-1 where the operation counts nothing).
// A fault declared without an index matches every index.
struct Fault {
  cerr_t code = 0;
  bool overflow = false;  // print_entry: report "did not fit" rather than a failure
  std::string data;       // item_get: bytes returned along with the failure
  bool has_data = false;
};
namespace detail {
// Set once the root's fixture is known to declare no fault at all, as a router snapshot does: the services
// ask about faults several times per item, and then every answer is no without a lookup. Cleared when the
// process moves to another root.
extern bool no_faults;
std::optional<Fault> find_declared_fault(std::string_view op, std::string_view key, int64_t index);
bool faults_declared_slow();
}  // namespace detail

inline std::optional<Fault> find_fault(std::string_view op, std::string_view key = {}, int64_t index = -1) {
  if (detail::no_faults) [[likely]]
    return std::nullopt;
  return detail::find_declared_fault(op, key, index);
}

// Whether any fault of `op` is declared for `key`, at whatever index: lets a service skip counting work that
// only a fault would need.
bool has_fault(std::string_view op, std::string_view key = {});
// Whether the fixture declared any fault at all: callers whose fault key costs something to build ask first.
inline bool faults_declared() {
  return !detail::no_faults && detail::faults_declared_slow();
}

}  // namespace ostrel::sim
