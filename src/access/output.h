// Standard output of a run. Views write through one buffer that the program owns and hands to stdout in
// large blocks: at a million routes a stdio call per piece costs more than the bytes it moves. A fixed text
// goes out with ostrel_out(), a formatted one with ostrel_outf(), and a line of many pieces is assembled in
// an OstrelLine and emitted whole. Nothing else in the program writes to stdout, so the order holds.
#pragma once

#include <bit>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>

namespace ostrel::detail {

// A copy of the few bytes that most pieces of a line are, in place: a call to the library's copy per piece
// cost more than the piece, and so does the string move the compiler makes of a copy it knows is short.
// Two overlapping moves of a fixed width cover every size in their range.
inline void copy_short(char* to, const char* from, size_t size) {
  if (size > 256) {
    std::memcpy(to, from, size);
  } else if (size >= 32) {
    for (size_t at = 0; at + 32 < size; at += 32) std::memcpy(to + at, from + at, 32);
    std::memcpy(to + size - 32, from + size - 32, 32);
  } else if (size >= 16) {
    std::memcpy(to, from, 16);
    std::memcpy(to + size - 16, from + size - 16, 16);
  } else if (size >= 8) {
    std::memcpy(to, from, 8);
    std::memcpy(to + size - 8, from + size - 8, 8);
  } else if (size >= 4) {
    std::memcpy(to, from, 4);
    std::memcpy(to + size - 4, from + size - 4, 4);
  } else if (size != 0) {
    to[0] = from[0];
    to[size / 2] = from[size / 2];
    to[size - 1] = from[size - 1];
  }
}

// The number of decimal digits of `value`: from its bit width, which leaves two candidates, and one
// comparison with a power of ten.
inline size_t decimal_size(uint64_t value) {
  static constexpr uint64_t kPowers[20] = {1u,
                                           10u,
                                           100u,
                                           1000u,
                                           10000u,
                                           100000u,
                                           1000000u,
                                           10000000u,
                                           100000000u,
                                           1000000000u,
                                           10000000000u,
                                           100000000000u,
                                           1000000000000u,
                                           10000000000000u,
                                           100000000000000u,
                                           1000000000000000u,
                                           10000000000000000u,
                                           100000000000000000u,
                                           1000000000000000000u,
                                           10000000000000000000u};
  // 1233 / 4096 is just above log10(2): the guess is the digit count or one less. Zero counts as one, which
  // has the same digit count.
  const uint64_t nonzero = value | 1;
  const auto guess = static_cast<size_t>(std::bit_width(nonzero) * 1233 >> 12);
  return guess + (nonzero >= kPowers[guess] ? 1 : 0);
}

// Writes the decimal digits of `value` so that they end just before `end`, two at a time: counters and rates
// are printed by the million, and a division per digit cost more than the rest of their line.
inline void write_decimal(char* end, uint64_t value) {
  static constexpr char kPairs[] =
      "00010203040506070809101112131415161718192021222324252627282930313233343536373839"
      "40414243444546474849505152535455565758596061626364656667686970717273747576777879"
      "8081828384858687888990919293949596979899";
  while (value >= 100) {
    const size_t pair = 2 * static_cast<size_t>(value % 100);
    value /= 100;
    end -= 2;
    std::memcpy(end, kPairs + pair, 2);
  }
  if (value >= 10) {
    std::memcpy(end - 2, kPairs + 2 * value, 2);
  } else {
    end[-1] = static_cast<char>('0' + value);
  }
}

inline constexpr size_t kOutSize = 1 << 16;
extern char out_buffer[kOutSize];
extern size_t out_used;
// Hands what is buffered to stdout, then takes `text` too.
void out_spill(const char* text, size_t size);

}  // namespace ostrel::detail

inline void ostrel_out(const char* text, size_t size) {
  using namespace ostrel::detail;
  if (size <= kOutSize - out_used) [[likely]] {
    copy_short(out_buffer + out_used, text, size);
    out_used += size;
    return;
  }
  out_spill(text, size);
}

inline void ostrel_out(std::string_view text) {
  ostrel_out(text.data(), text.size());
}

// printf() into the output buffer.
void ostrel_outf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// Hands everything buffered to stdout and flushes it. Runs at exit; a prompt runs it before it reads.
void ostrel_out_flush();

// Pieces of a line whose widest total is known to fit, put without a check each. A line keeps its position
// in itself, and as far as the compiler knows any character stored into the line's text may be that
// position, so a line reloads it after every piece; a cursor held in a local stays in a register. Take one
// from OstrelLine::cursor() where the room was made sure of, and hand it back with OstrelLine::take().
class OstrelCursor {
 public:
  explicit OstrelCursor(char* at) : at_(at) {}
  OstrelCursor& put(std::string_view text) {
    ostrel::detail::copy_short(at_, text.data(), text.size());
    at_ += text.size();
    return *this;
  }
  OstrelCursor& put(char c) {
    *at_++ = c;
    return *this;
  }
  char* at() const { return at_; }

 private:
  char* at_;
};

// A line, or a few lines, assembled in place from pieces and emitted in one write. A piece that does not fit
// in the capacity is cut there, and the line remembers it: a view under the rule that a line which
// overflows its buffer is not printed at all gives the buffer's capacity and asks fits() before it emits.
class OstrelLine {
 public:
  // Every line the views build from bounded pieces (names of 80, flag texts of 256, counters) fits with
  // room to spare.
  static constexpr size_t kCapacity = 1024;

  // At most `capacity` characters, at most kCapacity: a line that a buffer of N bytes holds with its
  // terminator has a capacity of N - 1.
  explicit OstrelLine(size_t capacity = kCapacity) : capacity_(capacity < kCapacity ? capacity : kCapacity) {}

  OstrelLine& add(std::string_view text) {
    // The cut is kept off the common path, so that a literal's copy has a constant size and compiles to a
    // few moves.
    size_t size = text.size();
    if (size > capacity_ - used_) [[unlikely]] return add_cut(text);
    ostrel::detail::copy_short(text_ + used_, text.data(), size);
    used_ += size;
    return *this;
  }
  // Always in line: the length of a literal is then known where it is added, and its copy is a few moves.
  [[gnu::always_inline]] OstrelLine& add(const char* text) { return add(std::string_view(text)); }
  OstrelLine& add(char c) {
    if (used_ < capacity_) {
      text_[used_++] = c;
    } else {
      cut_ = true;
    }
    return *this;
  }

  // The decimal digits of `value`, as "%lu" writes them; counters and rates are printed by the million, so
  // the digits are written in place when the widest value fits.
  OstrelLine& add(uint64_t value) {
    constexpr size_t kWidest = 20;
    if (capacity_ - used_ < kWidest) [[unlikely]] return add_digits_cut(value);
    const size_t size = ostrel::detail::decimal_size(value);
    ostrel::detail::write_decimal(text_ + used_ + size, value);
    used_ += size;
    return *this;
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
    advance(std::vsnprintf(end(), room(), format, args));
    va_end(args);
    return *this;
  }

  // For the platform's writers, which take a buffer and its size, store at most size - 1 characters and a
  // terminator, and return the length of the whole text (negative on failure): where the next piece goes,
  // the size to give them, and what they returned.
  char* end() { return text_ + used_; }
  size_t room() const { return capacity_ + 1 - used_; }
  OstrelLine& advance(int written) {
    if (written < 0) {
      cut_ = true;
    } else if (static_cast<size_t>(written) < room()) {
      used_ += static_cast<size_t>(written);
    } else {
      used_ = capacity_;
      cut_ = true;
    }
    return *this;
  }

  // The end of the line as a cursor. REQUIRES: room for what the caller will put; a fresh line holds any
  // total the caller can bound below kCapacity.
  OstrelCursor cursor() { return OstrelCursor(text_ + used_); }
  OstrelLine& take(const OstrelCursor& cursor) {
    used_ = static_cast<size_t>(cursor.at() - text_);
    return *this;
  }

  std::string_view text() const { return {text_, used_}; }
  // False once a piece was cut.
  bool fits() const { return !cut_; }

  // Writes what was assembled and starts an empty line.
  void emit() {
    ostrel_out(text_, used_);
    used_ = 0;
    cut_ = false;
  }

  // The same with `last` after the text, outside the capacity: the newline that ends a line built in a
  // buffer of its own size.
  void emit(char last) {
    text_[used_++] = last;
    emit();
  }

 private:
  [[gnu::cold]] OstrelLine& add_cut(std::string_view text) {
    const size_t size = text.size() < capacity_ - used_ ? text.size() : capacity_ - used_;
    std::memcpy(text_ + used_, text.data(), size);
    used_ += size;
    if (size < text.size()) cut_ = true;
    return *this;
  }
  [[gnu::cold]] OstrelLine& add_digits_cut(uint64_t value) {
    char digits[20];
    const size_t size = ostrel::detail::decimal_size(value);
    ostrel::detail::write_decimal(digits + size, value);
    return add_cut(std::string_view(digits, size));
  }

  char text_[kCapacity + 1];  // and a byte for the terminator that the writers store, or for `last`
  size_t capacity_;
  size_t used_ = 0;
  bool cut_ = false;
};
