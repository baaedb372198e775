// Error texts, bounded copies and number and address texts of the simulated platform.
#include "platform/text.h"

#include <arpa/inet.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "sim/cerr_codes.h"
#include "sim/services/dotted.h"

namespace ostrel::sim {
namespace {

// Texts made on demand (unknown codes, operating-system texts) rotate through a few buffers so that a
// caller may hold several at once, as in one printf().
char* next_error_buffer() {
  static std::array<std::array<char, 96>, 4> ring;
  static size_t next = 0;
  char* buffer = ring[next].data();
  next = (next + 1) % ring.size();
  return buffer;
}

constexpr cerr_t kFirstPlatformCode = 0x10000;

}  // namespace
}  // namespace ostrel::sim

const char* cerr_strerror(cerr_t code) {
  using namespace ostrel::sim;
  for (const CerrText& entry : kCerrTexts) {
    if (entry.code == code) return entry.text;
  }
  char* buffer = next_error_buffer();
  if (code < kFirstPlatformCode) {
    // The GNU strerror_r may return a static text instead of filling the buffer; copy it either way.
    char scratch[96];
    const char* text = strerror_r(static_cast<int>(code), scratch, sizeof scratch);
    sstrncpy(buffer, text, 96);
  } else {
    std::snprintf(buffer, 96, "Unknown error code 0x%08x", code);
  }
  return buffer;
}

char* sstrncpy(char* dst, const char* src, size_t size) {
  if (size == 0) return dst;
  size_t length = strnlen(src, size - 1);
  std::memcpy(dst, src, length);
  dst[length] = '\0';
  return dst;
}

int strncpy_s(char* dst, size_t dst_size, const char* src, size_t count) {
  if (!dst || dst_size == 0) return EINVAL;
  if (!src) {
    dst[0] = '\0';
    return EINVAL;
  }
  size_t length = strnlen(src, count);
  if (length >= dst_size) {
    dst[0] = '\0';
    return ERANGE;
  }
  std::memcpy(dst, src, length);
  dst[length] = '\0';
  return 0;
}

int memset_s(void* dst, size_t dst_size, int value, size_t count) {
  if (!dst) return EINVAL;
  size_t length = std::min(count, dst_size);
  // A volatile store cannot be dropped as dead, which is the point of this call over memset().
  volatile unsigned char* bytes = static_cast<volatile unsigned char*>(dst);
  for (size_t i = 0; i < length; ++i) bytes[i] = static_cast<unsigned char>(value);
  return count > dst_size ? ERANGE : 0;
}

char* inet_ntoa_r(uint32_t address, char* buffer, size_t size) {
  return const_cast<char*>(ux_inet_ntop(AF_INET, &address, buffer, size));
}

char* itoa(long value, char* buffer, size_t size, int base) {
  if (base < 2 || base > 36 || !buffer) return nullptr;
  bool negative = base == 10 && value < 0;
  unsigned long magnitude =
      negative ? 0UL - static_cast<unsigned long>(value) : static_cast<unsigned long>(value);
  char digits[72];
  size_t count = 0;
  do {
    digits[count++] = "0123456789abcdefghijklmnopqrstuvwxyz"[magnitude % static_cast<unsigned>(base)];
    magnitude /= static_cast<unsigned>(base);
  } while (magnitude != 0);
  if (negative) digits[count++] = '-';
  if (count + 1 > size) return nullptr;
  for (size_t i = 0; i < count; ++i) buffer[i] = digits[count - 1 - i];
  buffer[count] = '\0';
  return buffer;
}

const char* ux_inet_ntop(int family, const void* address, char* buffer, size_t size) {
  if (family != AF_INET && family != AF_INET6) return nullptr;
  if (!address || !buffer) return nullptr;
  if (family == AF_INET) {
    // The usual buffer holds any dotted address: write it there directly.
    if (size >= INET_ADDRSTRLEN) {
      ostrel::sim::write_dotted(static_cast<const unsigned char*>(address), buffer);
      return buffer;
    }
    char text[INET_ADDRSTRLEN];
    size_t length = ostrel::sim::write_dotted(static_cast<const unsigned char*>(address), text);
    if (length + 1 > size) return nullptr;
    std::memcpy(buffer, text, length + 1);
    return buffer;
  }
  return inet_ntop(family, address, buffer, static_cast<socklen_t>(std::min<size_t>(size, INET6_ADDRSTRLEN)));
}
