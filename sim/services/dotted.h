// The dotted text of an IPv4 address, written by hand: views print an address or two per route and per
// interface, and the platform's formatters share this one writer.
#pragma once

#include <cstddef>

namespace ostrel::sim {

// Writes the dotted text of the four bytes at `bytes` (network order) and a terminator at `out`, which
// holds 16 bytes; returns the text's length.
inline size_t write_dotted(const unsigned char* bytes, char* out) {
  char* at = out;
  for (int i = 0; i < 4; ++i) {
    unsigned n = bytes[i];
    if (n >= 100) *at++ = static_cast<char>('0' + n / 100);
    if (n >= 10) *at++ = static_cast<char>('0' + n / 10 % 10);
    *at++ = static_cast<char>('0' + n % 10);
    if (i < 3) *at++ = '.';
  }
  *at = '\0';
  return static_cast<size_t>(at - out);
}

}  // namespace ostrel::sim
