// Finding an interface of the root's inventory by the name an operator types, shared by the services that
// take interface names.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ostrel::sim {

// The handle of the interface named `name` in full ("GigabitEthernet0/0/0/1") or short form ("Gi0/0/0/1").
std::optional<uint32_t> find_interface_handle(std::string_view name);

}  // namespace ostrel::sim
