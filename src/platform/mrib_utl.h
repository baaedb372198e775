// The platform's MRIB utilities: path joining, the designation of a route entry, a bounded formatter, the
// names of client types and read states, and the interface-text parser.
#pragma once

#include <cstdint>

// A new heap text `head` followed by `tail`, which the caller releases with free(); none on failure.
char* mrib_utl_build_path(const char* head, const char* tail);

// Writes the one-line designation of a route entry into `buffer` of `size` bytes and returns its length.
// `key` holds three words: the group address, the source address (both network byte order) and the group
// prefix length. The designation is the (S,G) form: "(10.0.0.1,232.1.1.1)"; a source of 0 is "*"; a
// prefix length other than 32 follows the group: "(*,232.0.0.0/8)". `afi` is the key's address family and
// must be 0 (IPv4); `flags` must be 0. `nsf` asks for the designation as the non-stop-forwarding view
// shows it, which is the same text.
// Returns -1 when the text does not fit (the buffer then holds the empty text), -2 on any other failure.
int mrib_utl_print_entry(uint32_t afi, const uint32_t* key, uint32_t flags, char* buffer, int size,
                         uint32_t nsf);

// Writes the one-line designation of a BVI route into `buffer` of `size` bytes and returns its length:
// the (S,G) form of mrib_utl_print_entry() with `group_len`, then " " and `ifname`, then ", table " and
// `table_name`, each of these two parts only when its text is not none or empty:
// "(10.0.0.1,232.1.1.1) BVI1, table default". `source` and `group` are in network byte order.
// Returns -1 when the text does not fit (the buffer then holds the empty text).
int mrib_utl_print_bvi_entry(const char* table_name, uint32_t source, uint32_t group, const char* ifname,
                             uint8_t group_len, char* buffer, int size);

// printf into `buffer` of `size` bytes: stores at most `size` - 1 characters and the terminator, and
// returns the number of characters stored (not, as snprintf does, the number it wanted). A `size` below 1
// stores nothing and returns 0; so does an output error.
int mrib_snprintf(char* buffer, int size, const char* format, ...) __attribute__((format(printf, 3, 4)));

// The name of an MRIB client type:
//   0 unknown   1 pim     2 igmp    3 bgp     4 mfwd    5 mldp
//   6 te        7 amt     8 l2fib   9 evpn   10 lmrib  11 static
// and "type-<n>" for any other value (the four such texts given last stay valid). Never none.
const char* mrib_clt_type_to_str(uint32_t type);

// The name of a client's read state:
//   0 idle    1 pending   2 reading   3 blocked   4 resync   5 closed
// and "state-<n>" for any other value (the four such texts given last stay valid). Never none.
const char* mrib_client_rd_state_to_str(uint32_t state);

// The interface handle that `text` names: an interface name in full or short form (as interface_find()
// takes it) or a handle number in C notation ("0x100"). 0 when it names no known interface.
uint32_t ostrel_ifstr_ifh(const char* text);
