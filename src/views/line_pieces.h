// Number and address pieces of a line, written straight into an OstrelLine: the listing views print them by
// the million, and a printf call per piece costs more than the piece. Each writes what the printf
// conversion named beside it writes.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "access/output.h"

// "%x" (or "%X" when `upper`), zero-padded to `width` digits as "%0<width>x" pads.
inline OstrelLine& ostrel_add_hex(OstrelLine& line, uint64_t value, int width = 0, bool upper = false) {
  const char* digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
  char text[16];
  char* first = text + sizeof text;
  do {
    *--first = digits[value & 0xf];
    value >>= 4;
  } while (value != 0);
  for (int pad = width - static_cast<int>(text + sizeof text - first); pad > 0; --pad) line.add('0');
  return line.add(std::string_view(first, static_cast<size_t>(text + sizeof text - first)));
}

// "%0<width>d" of a value that is not negative.
inline OstrelLine& ostrel_add_padded(OstrelLine& line, uint64_t value, int width) {
  int digits = 1;
  for (uint64_t rest = value / 10; rest != 0; rest /= 10) ++digits;
  for (int pad = width - digits; pad > 0; --pad) line.add('0');
  return line.add(value);
}

// The dotted quad of an IPv4 address held in network byte order, as inet_ntoa() writes it.
inline OstrelLine& ostrel_add_dotted(OstrelLine& line, uint32_t network_order) {
  uint8_t bytes[4];
  std::memcpy(bytes, &network_order, sizeof bytes);
  line.add(uint64_t{bytes[0]}).add('.').add(uint64_t{bytes[1]}).add('.').add(uint64_t{bytes[2]}).add('.');
  return line.add(uint64_t{bytes[3]});
}
