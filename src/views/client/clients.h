// The MRIB server's client connections (-cmd 1): the list of clients, short or long, or with -f the route
// filters each client registered, with their chains of temporary differences.
#pragma once

#include <cstdint>

// The keywords of -cmd 1, as the keyword reader fills them.
struct ClientsKeywords {
  const char* name;  // -n: "name" or "name:instance"
  uint32_t name_given;
  uint32_t filter;          // -f
  uint32_t detail;          // -detail
  uint32_t private_fields;  // -private
  uint32_t standby;         // -standby
};

// Shows the clients, or with -f their filters, below the root handle; a listing that fails prints nothing.
void ostrel_kw_clients_view(const ClientsKeywords& keywords);
