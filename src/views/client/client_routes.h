// The route database that the MRIB server keeps for one client (-cmd 2), read from the client's own tree.
#pragma once

#include <cstdint>

// The keywords of -cmd 2, as the keyword reader fills them.
struct ClientRoutesKeywords {
  const char* name;             // -n: "name" or "name:instance"; required
  uint32_t table, table_given;  // -j
  const char* group;            // -g
  uint32_t group_given;
  uint32_t prefix_length, prefix_length_given;  // -p
  const char* source;                           // -s
  uint32_t source_given;
  uint32_t standby;  // -standby
};

// Binds the client's tree and lists its routes, filtered by the keywords given. A prefix length above 32
// and a failed bind end the process with status 1.
void ostrel_kw_client_routes_view(const ClientRoutesKeywords& keywords);
