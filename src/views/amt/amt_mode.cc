#include "views/amt/amt_mode.h"

#include <cstdarg>
#include <cstdio>

#include "access/text_helpers.h"

const char* ostrel_amt_dotted(uint32_t address) {
  return ip_maddr_dotted_string(&address);
}

const char* ostrel_amt_hex(const mrib_addrtype& addr) {
  const uint8_t* bytes = mrib_pod_addr_bytes(&addr);
  return bytes != nullptr ? ip_maddr_hex_string(bytes) : nullptr;
}

bool ostrel_amt_key(char* key, size_t size, const char* format, ...) {
  va_list args;
  va_start(args, format);
  int length = std::vsnprintf(key, size, format, args);
  va_end(args);
  return length > 0 && static_cast<size_t>(length) < size;
}
