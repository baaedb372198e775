#include "access/output.h"

#include <cstdio>

namespace ostrel::detail {

char out_buffer[kOutSize];
size_t out_used = 0;

namespace {

void hand_over() {
  std::fwrite(out_buffer, 1, out_used, stdout);
  out_used = 0;
}

}  // namespace

void out_spill(const char* text, size_t size) {
  hand_over();
  if (size <= kOutSize) {
    std::memcpy(out_buffer, text, size);
    out_used = size;
  } else {
    std::fwrite(text, 1, size, stdout);
  }
}

}  // namespace ostrel::detail

void ostrel_outf(const char* format, ...) {
  using namespace ostrel::detail;
  va_list args;
  va_start(args, format);
  va_list again;
  va_copy(again, args);
  size_t room = kOutSize - out_used;
  int written = std::vsnprintf(out_buffer + out_used, room, format, args);
  va_end(args);
  if (written >= 0 && static_cast<size_t>(written) < room) {
    out_used += static_cast<size_t>(written);
  } else if (written >= 0) {
    // It did not fit: what was written there is dropped, and the text is made again after the buffer went.
    hand_over();
    if (static_cast<size_t>(written) < kOutSize) {
      out_used = static_cast<size_t>(std::vsnprintf(out_buffer, kOutSize, format, again));
    } else {
      std::vfprintf(stdout, format, again);
    }
  }
  va_end(again);
}

void ostrel_out_flush() {
  ostrel::detail::hand_over();
  std::fflush(stdout);
}
