// Duration texts of the simulated platform: clock form under a day, days and hours under a week, weeks and
// days beyond.
#include <array>
#include <cstdio>

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

const char* format_duration(uint64_t seconds) {
  char* text = next_duration_buffer();
  auto value = [](uint64_t n) { return static_cast<unsigned long long>(n); };
  if (seconds < kDay) {
    std::snprintf(text, sizeof(DurationText), "%02llu:%02llu:%02llu", value(seconds / kHour),
                  value(seconds % kHour / kMinute), value(seconds % kMinute));
  } else if (seconds < kWeek) {
    std::snprintf(text, sizeof(DurationText), "%llud%02lluh", value(seconds / kDay),
                  value(seconds % kDay / kHour));
  } else {
    std::snprintf(text, sizeof(DurationText), "%lluw%llud", value(seconds / kWeek),
                  value(seconds % kWeek / kDay));
  }
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
