// The databases that map encapsulation and tunnel identifiers: encapsulation IDs (-q, the summary with -H),
// gateway IDs (-w), the encapsulation-ID test trigger (-Z), EVPN buckets (-a) and the MPLS multicast route
// (LSM) database (-B). All but the last read through the root handle; -B reads through the view handle,
// bound to the oper root for it.
#pragma once

#include "front/show_args.h"

void ostrel_encap_id_view(const ShowArgs& args);
void ostrel_gw_id_view(const ShowArgs& args);
void ostrel_encap_id_test_view(const ShowArgs& args);
void ostrel_evpn_bucket_view(const ShowArgs& args);
void ostrel_lsm_db_view(const ShowArgs& args);
