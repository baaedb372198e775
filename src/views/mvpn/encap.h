// Encapsulation IDs (-q), gateway IDs (-w), the encapsulation-ID test (-Z), EVPN buckets (-a) and the
// MPLS/LSM database (-B).
#pragma once

#include "front/show_args.h"

void ostrel_encap_id_view(const ShowArgs& args);
void ostrel_gw_id_view(const ShowArgs& args);
void ostrel_encap_id_test_view(const ShowArgs& args);
void ostrel_evpn_bucket_view(const ShowArgs& args);
void ostrel_lsm_db_view(const ShowArgs& args);
