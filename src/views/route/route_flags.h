// The mnemonic texts of the entry and interface attribute sets ("C RPF MA") and the tests of whether a set
// holds anything worth showing. The -D switch widens both; these functions read it themselves.
#pragma once

#include <cstdint>

#include "access/pod_records.h"

// Writes the mnemonics of the set attributes of `attr` into `buf` of `size` bytes (terminator included),
// separated by one blank, and returns the number of characters written. A `size` below 1 writes nothing
// and returns 0. A text that does not fit is cut, never overflowed. REQUIRES: buf and attr not null.
int ostrel_fmt_entry_flags(char* buf, int size, const mrib_attrib_entry_pod* attr);

// As ostrel_fmt_entry_flags() for an interface set, except that the terminator is always stored first.
// REQUIRES: size of at least 1, buf and attr not null.
int ostrel_fmt_intf_flags(char* buf, int size, const mrib_attrib_intrf_pod* attr);

// 1 when the entry set holds an attribute worth showing, else 0. IsForwardMPLS and InitialConvergenceDone
// never count; EncapsulationIdentifierFlag, RPFIdentifierFlag, MOFRRPrimary and MOFRRBackup count only
// under -D.
uint32_t ostrel_entry_flags_any(const mrib_attrib_entry_pod* attr);

// 1 when the interface set holds an attribute worth showing, else 0. IsEgressInterface, IsMDTDataTriggered
// and IsMDTDataUsed count only under -D.
uint32_t ostrel_intf_flags_any(const mrib_attrib_intrf_pod* attr);
