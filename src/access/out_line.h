// Lines of output assembled in place and written at once. A route prints a dozen short pieces per
// interface, and at a million routes a stdio call per piece costs more than the bytes it moves.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

// Writes `size` bytes to `out`. A fully buffered stream with room takes them straight into its buffer, as
// putc_unlocked takes one character: an fwrite call costs a hundred instructions before it copies a byte.
// glibc leaves no room in a line-buffered or unbuffered stream (its end stands at or before the write
// position), so those, and a full stream, go through fwrite and are flushed as their mode asks.
inline void ostrel_write(const char* text, size_t size, FILE* out) {
#ifdef __GLIBC__
  if (out->_IO_write_end - out->_IO_write_ptr >= static_cast<ptrdiff_t>(size)) {
    std::memcpy(out->_IO_write_ptr, text, size);
    out->_IO_write_ptr += size;
    return;
  }
#endif
  std::fwrite(text, 1, size, out);
}

// fputs() by way of ostrel_write(), for the fixed texts that views print per record.
inline void ostrel_puts(std::string_view text, FILE* out = stdout) {
  ostrel_write(text.data(), text.size(), out);
}

class OstrelLine {
 public:
  // Every line the views build from bounded pieces (names of 80, flag texts of 86, counters) fits with
  // room to spare; a piece that would not is cut at the capacity rather than written past it.
  static constexpr size_t kCapacity = 1024;

  OstrelLine& add(std::string_view text) {
    // The cut is kept off the common path, so that a literal's copy has a constant size and compiles to a
    // few moves.
    size_t size = text.size();
    if (size <= kCapacity - used_) [[likely]] {
      std::memcpy(text_ + used_, text.data(), size);
      used_ += size;
    } else {
      std::memcpy(text_ + used_, text.data(), kCapacity - used_);
      used_ = kCapacity;
    }
    return *this;
  }
  OstrelLine& add(const char* text) { return add(std::string_view(text)); }
  OstrelLine& add(char c) {
    if (used_ < kCapacity) text_[used_++] = c;
    return *this;
  }

  // The decimal digits of `value`, as "%lu" writes them; counters and rates are printed by the million.
  OstrelLine& add(uint64_t value) {
    char digits[20];
    char* first = digits + sizeof digits;
    do {
      *--first = static_cast<char>('0' + value % 10);
      value /= 10;
    } while (value != 0);
    return add(std::string_view(first, static_cast<size_t>(digits + sizeof digits - first)));
  }

  // As "%d" or "%ld" writes a signed value.
  OstrelLine& add_signed(int64_t value) {
    if (value < 0) add('-');
    return add(value < 0 ? uint64_t{0} - static_cast<uint64_t>(value) : static_cast<uint64_t>(value));
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
    ostrel_write(text_, used_, out);
    used_ = 0;
  }

 private:
  char text_[kCapacity + 1];
  size_t used_ = 0;
};

// A line built in a fixed buffer of N bytes under the rule that a piece which does not fit abandons the
// whole line: a cut designation or flag text would name something else. The blank line before it and its
// newline sit around the buffer, so the finished line goes out in one write.
template <int N>
class OstrelBoundedLine {
 public:
  static constexpr int kSize = N;

  // False once any piece has not fit.
  bool ok() const { return ok_; }
  char* buffer() { return framed_ + 1; }
  // Where the next piece goes, and the room it has there.
  char* end() { return buffer() + used_; }
  int room() const { return kSize - used_; }

  // Takes the length of what a writer put at buffer(); a negative length abandons the line.
  void set_length(int length) {
    if (length < 0) ok_ = false;
    used_ = length < 0 ? 0 : length;
  }

  // Takes the count that a writer given end() and room() returned: a negative count, or one not smaller
  // than the room, abandons the line.
  bool advance(int written) {
    if (!ok_ || written < 0 || written >= room()) return ok_ = false;
    used_ += written;
    return true;
  }

  bool append(const char* format, ...) __attribute__((format(printf, 2, 3))) {
    if (!ok_) return false;
    va_list args;
    va_start(args, format);
    int written = std::vsnprintf(end(), static_cast<size_t>(room()), format, args);
    va_end(args);
    return advance(written);
  }

  // A plain piece, under the same rule as a formatted one.
  bool append_text(const char* text) {
    if (!ok_) return false;
    size_t length = std::strlen(text);
    if (length >= static_cast<size_t>(room())) return ok_ = false;
    std::memcpy(end(), text, length + 1);
    used_ += static_cast<int>(length);
    return true;
  }

  // Writes a blank line, then the line. REQUIRES: ok().
  void print(FILE* out = stdout) {
    framed_[0] = '\n';
    framed_[used_ + 1] = '\n';
    ostrel_write(framed_, static_cast<size_t>(used_) + 2, out);
  }

 private:
  char framed_[kSize + 2];
  int used_ = 0;
  bool ok_ = true;
};
