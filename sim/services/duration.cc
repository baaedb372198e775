// Duration texts of the simulated platform: clock form under a day, days and hours under a week, weeks and
// days beyond.
#include <array>
#include <cstdint>

#include "platform/text.h"

namespace ostrel::sim {
namespace {

constexpr uint64_t kMinute = 60;
constexpr uint64_t kHour = 60 * kMinute;
constexpr uint64_t kDay = 24 * kHour;
constexpr uint64_t kWeek = 7 * kDay;

// Sized for the longest text, that of the largest 64-bit duration ("15250284452471w6d").
using DurationText = std::array<char, 32>;

char* next_duration_buffer() {
  static std::array<DurationText, 8> ring;
  static size_t next = 0;
  char* buffer = ring[next].data();
  next = (next + 1) % ring.size();
  return buffer;
}

// Appends `n` in decimal, at least `width` digits. Views print a duration per route and per interface:
// digits written by hand cost a fraction of a formatted print.
char* put_number(char* at, uint64_t n, int width) {
  char digits[20];
  int count = 0;
  do {
    digits[count++] = static_cast<char>('0' + n % 10);
    n /= 10;
  } while (n != 0);
  while (count < width) digits[count++] = '0';
  while (count > 0) *at++ = digits[--count];
  return at;
}

const char* format_duration(uint64_t seconds) {
  char* text = next_duration_buffer();
  char* at = text;
  if (seconds < kDay) {
    at = put_number(at, seconds / kHour, 2);
    *at++ = ':';
    at = put_number(at, seconds % kHour / kMinute, 2);
    *at++ = ':';
    at = put_number(at, seconds % kMinute, 2);
  } else if (seconds < kWeek) {
    at = put_number(at, seconds / kDay, 1);
    *at++ = 'd';
    at = put_number(at, seconds % kDay / kHour, 2);
    *at++ = 'h';
  } else {
    at = put_number(at, seconds / kWeek, 1);
    *at++ = 'w';
    at = put_number(at, seconds % kWeek / kDay, 1);
    *at++ = 'd';
  }
  *at = '\0';
  return text;
}

}  // namespace
}  // namespace ostrel::sim

const char* sprint_dhms(uint32_t seconds) {
  if (static_cast<int32_t>(seconds) < 0) return nullptr;
  return ostrel::sim::format_duration(seconds);
}

const char* sprint_dhms64(uint64_t seconds) {
  if (static_cast<int64_t>(seconds) < 0) return nullptr;
  return ostrel::sim::format_duration(seconds);
}
