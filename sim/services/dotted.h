// The dotted text of an IPv4 address, written by hand: views print an address or two per route and per
// interface, and the platform's formatters share this one writer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ostrel::sim {

// The text of each byte value and a dot after it, four bytes each: a byte is written by one fixed move.
struct DottedOctet {
  char text[4];
  uint8_t size;  // without the dot
};

inline constexpr std::array<DottedOctet, 256> kDottedOctets = [] {
  std::array<DottedOctet, 256> octets{};
  for (unsigned n = 0; n < 256; ++n) {
    DottedOctet& o = octets[n];
    if (n >= 100) o.text[o.size++] = static_cast<char>('0' + n / 100);
    if (n >= 10) o.text[o.size++] = static_cast<char>('0' + n / 10 % 10);
    o.text[o.size++] = static_cast<char>('0' + n % 10);
    o.text[o.size] = '.';
  }
  return octets;
}();

// Writes the dotted text of the four bytes at `bytes` (network order) and a terminator at `out`, which
// holds 16 bytes; returns the text's length.
inline size_t write_dotted(const unsigned char* bytes, char* out) {
  char* at = out;
  for (int i = 0; i < 4; ++i) {
    const DottedOctet& o = kDottedOctets[bytes[i]];
    std::memcpy(at, o.text, sizeof o.text);  // the dot after the last byte is overwritten by the terminator
    at += o.size + 1;
  }
  *--at = '\0';
  return static_cast<size_t>(at - out);
}

}  // namespace ostrel::sim
