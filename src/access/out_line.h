// One line of output assembled in place and written with a single stdio call. A route prints a dozen short
// pieces per interface, and at a million routes every stdio call costs more than the bytes it moves.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

class OstrelLine {
 public:
  // Every line the views build from bounded pieces (names of 80, flag texts of 86, counters) fits with
  // room to spare; a piece that would not is cut at the capacity rather than written past it.
  static constexpr size_t kCapacity = 1024;

  OstrelLine& add(std::string_view text) {
    size_t n = text.size() < kCapacity - used_ ? text.size() : kCapacity - used_;
    std::memcpy(text_ + used_, text.data(), n);
    used_ += n;
    return *this;
  }
  OstrelLine& add(const char* text) { return add(std::string_view(text)); }
  OstrelLine& add(char c) {
    if (used_ < kCapacity) text_[used_++] = c;
    return *this;
  }

  // printf formatting for the rarer pieces (counters, pointers under the private switch).
  OstrelLine& addf(const char* format, ...) __attribute__((format(printf, 2, 3))) {
    va_list args;
    va_start(args, format);
    // One byte more than the room, for vsnprintf's terminator, which the next piece overwrites.
    int n = std::vsnprintf(text_ + used_, kCapacity + 1 - used_, format, args);
    va_end(args);
    if (n > 0)
      used_ += static_cast<size_t>(n) < kCapacity - used_ ? static_cast<size_t>(n) : kCapacity - used_;
    return *this;
  }

  std::string_view text() const { return {text_, used_}; }

  // Writes what was assembled to `out` and starts an empty line.
  void emit(FILE* out = stdout) {
    std::fwrite(text_, 1, used_, out);
    used_ = 0;
  }

 private:
  char text_[kCapacity + 1];
  size_t used_ = 0;
};
