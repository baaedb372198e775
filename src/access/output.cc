#include "access/output.h"

#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>

namespace ostrel::detail {

char out_buffer[kOutSize];
size_t out_used = 0;

namespace {

// Output that cannot be written ends the run there: the rest of a walk would be work for nobody. A reader
// that went away (`ostrel -r | head`) wanted no more, and the run ends as the signal of a closed pipe ends
// it, also when the caller left that signal ignored; any other failure means the operator did not get the
// display, and is said once. The exit skips the teardown's flush, which would only fail again; a read-only
// binding needs nothing else from it.
[[noreturn]] void write_failed() {
  if (errno == EPIPE) {
    std::signal(SIGPIPE, SIG_DFL);
    std::raise(SIGPIPE);
    _exit(128 + SIGPIPE);  // if the signal is blocked
  }
  std::fprintf(stderr, "ostrel: cannot write the display: %s\n", std::strerror(errno));
  _exit(1);
}

void hand_over() {
  if (out_used != 0 && std::fwrite(out_buffer, 1, out_used, stdout) != out_used) write_failed();
  out_used = 0;
}

}  // namespace

void out_spill(const char* text, size_t size) {
  hand_over();
  if (size <= kOutSize) {
    std::memcpy(out_buffer, text, size);
    out_used = size;
  } else if (std::fwrite(text, 1, size, stdout) != size) {
    write_failed();
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
    } else if (std::vfprintf(stdout, format, again) < 0) {
      write_failed();
    }
  }
  va_end(again);
}

void ostrel_out_flush() {
  ostrel::detail::hand_over();
  if (std::fflush(stdout) != 0) ostrel::detail::write_failed();
}
