#include "views/client/client_routes.h"

void ostrel_kw_client_routes_view(const ClientRoutesKeywords& keywords) {
  (void)keywords;
}
