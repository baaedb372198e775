// The platform's text and time services: error texts, bounded copies, number and address texts, duration
// texts and the system log. Texts that a call returns without taking a buffer live in the platform's own
// storage: the caller never frees them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/status.h"

// The text of a platform error code. Codes below 0x10000 are the operating system's error numbers and take
// its texts (2 reads "No such file or directory"). A code the platform does not know gives a text that
// shows the code in hexadecimal. Never none; the four texts given last stay valid.
const char* cerr_strerror(cerr_t code);

// Copies at most `size` - 1 characters of `src` into `dst` and always terminates it (when `size` > 0).
// A text that does not fit is cut. Returns `dst`.
char* sstrncpy(char* dst, const char* src, size_t size);

// Copies at most `count` characters of `src` into `dst`, which holds `dst_size` bytes, and terminates it.
// Returns 0 on success. When the copy does not fit (`dst_size` is 0, or the copied text needs more than
// `dst_size` - 1 characters) or an argument is none, it returns a non-zero error number and `dst` (when it
// has room) holds the empty text: a cut copy is never passed off as a whole one.
int strncpy_s(char* dst, size_t dst_size, const char* src, size_t count);

// Sets `count` bytes of `dst`, which holds `dst_size` bytes, to `value`; the store is never optimised away.
// When `count` exceeds `dst_size` it sets all `dst_size` bytes and returns a non-zero error number; else 0.
int memset_s(void* dst, size_t dst_size, int value, size_t count);

// Writes the dotted text of the IPv4 address `address` (network byte order) into `buffer` of `size` bytes
// and returns `buffer`; none when the text does not fit (16 bytes always suffice).
char* inet_ntoa_r(uint32_t address, char* buffer, size_t size);

// Writes `value` in `base` (2 to 36; lower-case digits) into `buffer` of `size` bytes and returns `buffer`.
// Base 10 shows a negative value with a "-"; other bases show the value's two's-complement bits. None when
// the base is out of range or the text does not fit (66 bytes always suffice).
char* itoa(long value, char* buffer, size_t size, int base);

// Writes the text of the address at `address` of `family` (AF_INET: 4 bytes, dotted; AF_INET6: 16 bytes)
// into the caller's `buffer` of `size` bytes and returns `buffer`. None for another family or when the text
// does not fit.
const char* ux_inet_ntop(int family, const void* address, char* buffer, size_t size);

// The text of a duration of `seconds`:
//   under a day   "HH:MM:SS"      "00:01:23"
//   under a week  "<d>d<hh>h"     "1d02h"
//   from a week   "<w>w<d>d"      "2w3d"
// None for a value that cannot be a duration: one whose top bit is set (negative when read as signed).
// The eight texts given last by either function stay valid.
const char* sprint_dhms(uint32_t seconds);
const char* sprint_dhms64(uint64_t seconds);

// Writes a formatted entry of `severity` (0 emergency to 7 debug, as syslog(3)) to the system log. When the
// environment sets OSTREL_SYSLOG_STDERR=1 the entry is also written to standard error as "<severity>text",
// with a newline added when the text has none.
void ux_syslog(int severity, const char* format, ...) __attribute__((format(printf, 2, 3)));
