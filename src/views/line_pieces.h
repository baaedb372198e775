// Number and address pieces of a line, written straight into an OstrelLine: the listing views print them by
// the million, and a printf call per piece costs more than the piece. Each writes what the printf
// conversion named beside it writes.
#pragma once

#include <cstdint>
#include <cstring>
#include <string_view>

#include "access/output.h"
#include "access/pod_records.h"
#include "access/text_helpers.h"

// Emits what `line` holds when fewer than `size` characters are left in it, so that a piece of up to `size`
// characters goes in whole. A record's lines are then written out a few times per record, not per piece.
inline OstrelLine& ostrel_make_room(OstrelLine& line, size_t size) {
  if (line.room() <= size) line.emit();
  return line;
}

// "%x" (or "%X" when `upper`), zero-padded to `width` digits as "%0<width>x" pads. Digits go in one by one:
// a copy of a few characters of unknown length costs more than the characters.
inline OstrelLine& ostrel_add_hex(OstrelLine& line, uint64_t value, int width = 0, bool upper = false) {
  const char* digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
  int count = 1;
  for (uint64_t rest = value >> 4; rest != 0; rest >>= 4) ++count;
  for (int pad = width - count; pad > 0; --pad) line.add('0');
  for (int shift = (count - 1) * 4; shift >= 0; shift -= 4) line.add(digits[(value >> shift) & 0xf]);
  return line;
}

// "%u" of a byte, digit by digit (see above).
inline OstrelLine& ostrel_add_byte(OstrelLine& line, uint8_t value) {
  if (value >= 100) line.add(static_cast<char>('0' + value / 100));
  if (value >= 10) line.add(static_cast<char>('0' + value / 10 % 10));
  return line.add(static_cast<char>('0' + value % 10));
}

// "%0<width>d" of a value that is not negative.
inline OstrelLine& ostrel_add_padded(OstrelLine& line, uint64_t value, int width) {
  const int digits = static_cast<int>(ostrel::detail::decimal_size(value));
  for (int pad = width - digits; pad > 0; --pad) line.add('0');
  return line.add(value);
}

// "%u" of a byte through a cursor.
inline OstrelCursor& ostrel_put_byte(OstrelCursor& out, uint8_t value) {
  if (value >= 100) out.put(static_cast<char>('0' + value / 100));
  if (value >= 10) out.put(static_cast<char>('0' + value / 10 % 10));
  return out.put(static_cast<char>('0' + value % 10));
}

// The dotted quad of an IPv4 address held in network byte order, as inet_ntoa() writes it.
inline OstrelLine& ostrel_add_dotted(OstrelLine& line, uint32_t network_order) {
  uint8_t bytes[4];
  std::memcpy(bytes, &network_order, sizeof bytes);
  if (line.room() <= 15) {  // the longest quad, which a cut line may not hold
    ostrel_add_byte(line, bytes[0]).add('.');
    ostrel_add_byte(line, bytes[1]).add('.');
    ostrel_add_byte(line, bytes[2]).add('.');
    return ostrel_add_byte(line, bytes[3]);
  }
  OstrelCursor out = line.cursor();
  ostrel_put_byte(out, bytes[0]).put('.');
  ostrel_put_byte(out, bytes[1]).put('.');
  ostrel_put_byte(out, bytes[2]).put('.');
  return line.take(ostrel_put_byte(out, bytes[3]));
}

// An address as ostrel_addr_text() writes it: family 0 and 1 by their first four bytes, dotted.
inline OstrelLine& ostrel_add_addr(OstrelLine& line, const mrib_addrtype& addr) {
  const uint8_t* bytes = mrib_pod_addr_bytes(&addr);
  if (bytes == nullptr) return line.add(ostrel_addr_text(&addr));
  uint32_t word;
  std::memcpy(&word, bytes, sizeof word);
  return ostrel_add_dotted(line, word);
}
