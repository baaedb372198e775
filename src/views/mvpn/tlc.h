// The TLC view, -t (-R for the remote database): the line cards that forward for one VRF, its master and
// fallback line cards, and the MDT groups associated with it.
#pragma once

#include <cstdint>

#include "front/show_args.h"

void ostrel_tlc_view(const ShowArgs& args);

// The slot of a forwarding processor as the TLC and route-collapse lines print it: the platform's name,
// written into `buffer`, or "slot unknown" when the platform cannot name it.
const char* ostrel_fapid_slot_text(uint32_t fapid, char (&buffer)[79]);
