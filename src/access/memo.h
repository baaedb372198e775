// Short texts remembered for the run by a 64-bit key: the names of interfaces and nodes and the texts of
// durations, which a listing asks the platform for once per interface of every route although a router
// has a few hundred of each and they do not change while a display runs. The table is fixed and
// direct-mapped: a key takes the one slot its hash names, a key that loses its slot is asked for again, and
// memory stays the same however many keys a run sees. Only what the platform answered is remembered: a
// caller that got a failure prints it and keeps nothing, so the next call asks again.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

template <size_t Slots, size_t Width>
class OstrelTextMemo {
  static_assert(std::has_single_bit(Slots), "the hash picks a slot by its top bits");

 public:
  // The text kept under `key`, terminated, or none (a view whose data() is null).
  std::string_view find(uint64_t key) const {
    const Slot& slot = slots_[index(key)];
    if (!slot.used || slot.key != key) return {};
    return {slot.text, slot.size};
  }

  // Keeps `text` under `key` and returns the kept copy, terminated and valid until a key of the same slot is
  // kept; none, and nothing kept, for a text longer than Width - 1.
  std::string_view keep(uint64_t key, std::string_view text) {
    if (text.size() >= Width) return {};
    Slot& slot = slots_[index(key)];
    std::memcpy(slot.text, text.data(), text.size());
    slot.text[text.size()] = '\0';
    slot.key = key;
    slot.size = static_cast<uint8_t>(text.size());
    slot.used = true;
    return {slot.text, slot.size};
  }

 private:
  // The length is kept beside the text: the lines that print it copy it by the million.
  static_assert(Width <= 256, "a kept text's length is one byte");
  struct Slot {
    uint64_t key = 0;
    bool used = false;
    uint8_t size = 0;
    char text[Width];
  };

  static size_t index(uint64_t key) {
    constexpr int kBits = std::countr_zero(Slots);
    if constexpr (kBits == 0) return 0;
    return static_cast<size_t>((key * 0x9e3779b97f4a7c15ull) >> (64 - kBits));
  }

  Slot slots_[Slots];
};
