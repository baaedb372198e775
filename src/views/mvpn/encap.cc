#include "views/mvpn/encap.h"

void ostrel_encap_id_view(const ShowArgs&) {}

void ostrel_gw_id_view(const ShowArgs&) {}

void ostrel_encap_id_test_view(const ShowArgs&) {}

void ostrel_evpn_bucket_view(const ShowArgs&) {}

void ostrel_lsm_db_view(const ShowArgs&) {}
