// The platform's names for its nodes and forwarding processors (fapids), such as "0/0/CPU0".
#pragma once

#include <cstdint>

#include "platform/status.h"

// Writes the name of node `node_id` into `buffer` of `size` bytes (terminator included; a longer name is
// cut). Fails for a node the platform does not know, leaving the empty text when `size` allows.
[[nodiscard]] cerr_t nodeid_to_str_external(uint32_t node_id, char* buffer, uint32_t size);

// The same for the forwarding processor `fapid`: the name of the slot that holds it.
[[nodiscard]] cerr_t fapid_to_str_external(uint32_t fapid, char* buffer, uint32_t size);
