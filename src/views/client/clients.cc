#include "views/client/clients.h"

void ostrel_kw_clients_view(const ClientsKeywords& keywords) {
  (void)keywords;
}
