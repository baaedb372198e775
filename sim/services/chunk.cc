// Fixed-size pools of the simulated platform: one block per pool, a stack of free slots, and a mark per slot
// so that a stray or double free is refused rather than corrupting the pool.
#include "platform/chunk.h"

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include "sim/cerr_codes.h"
#include "sim/root.h"

struct chunk_pool_s {
  std::string name;
  size_t stride = 0;
  // ceil(2^32 / stride): an element's offset times this, shifted down by 32, is its slot. A free would
  // otherwise divide twice, and a sorted route listing frees two elements per interface.
  uint64_t slot_factor = 0;
  uint32_t count = 0;
  uint32_t flags = 0;
  std::unique_ptr<std::max_align_t[]> storage;
  std::vector<uint32_t> free_slots;  // a stack: the slot freed last is handed out next, still warm in cache
  std::vector<uint8_t> handed_out;   // a byte each: tested and set on every allocation
  int64_t allocations = 0;           // chunk_malloc() calls so far, the index of "pool_alloc" faults
  bool alloc_faults = false;

  std::byte* slot(uint32_t index) { return reinterpret_cast<std::byte*>(storage.get()) + index * stride; }
};

namespace ostrel::sim {
namespace {

constexpr uint32_t kKnownFlags = kChunkFlagZero | kChunkFlagFixed;
// With ceil(2^32 / stride) = (2^32 + d) / stride, d < stride, an offset k * stride times it is
// k * 2^32 + k * d, and k * d < k * stride < 2^32 in a pool of at most 4 GiB: shifting gives k exactly,
// without overflow. Any other offset is refused by the check that k * stride gives it back.
constexpr int kSlotShift = 32;
constexpr uint64_t kLargestPool = uint64_t{1} << kSlotShift;

std::unique_ptr<chunk_pool_s> make_pool(const char* name, uint32_t element_size, uint32_t count,
                                        uint32_t flags) {
  constexpr size_t kAlign = alignof(std::max_align_t);
  auto pool = std::make_unique<chunk_pool_s>();
  pool->name = name;
  pool->stride = (element_size + kAlign - 1) / kAlign * kAlign;
  pool->slot_factor = ((uint64_t{1} << kSlotShift) + pool->stride - 1) / pool->stride;
  pool->count = count;
  pool->flags = flags;
  size_t bytes = pool->stride * count;
  if (bytes > kLargestPool) return nullptr;
  pool->storage.reset(
      new (std::nothrow) std::max_align_t[(bytes + sizeof(std::max_align_t) - 1) / sizeof(std::max_align_t)]);
  if (!pool->storage) return nullptr;
  pool->free_slots.reserve(count);
  for (uint32_t i = count; i > 0; --i) pool->free_slots.push_back(i - 1);
  pool->handed_out.assign(count, 0);
  pool->alloc_faults = has_fault("pool_alloc", pool->name);
  return pool;
}

}  // namespace
}  // namespace ostrel::sim

chunk_t chunk_create(const char* name, uint32_t element_size, uint32_t count, uint32_t flags,
                     uint32_t reserved_a, uint32_t reserved_b) {
  using namespace ostrel::sim;
  if (!name || element_size == 0 || count == 0 || (flags & ~kKnownFlags) != 0) return nullptr;
  if (reserved_a != 0 || reserved_b != 0) return nullptr;
  if (find_fault("pool", name)) return nullptr;
  try {
    return make_pool(name, element_size, count, flags).release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void* chunk_malloc(chunk_t pool) {
  if (!pool) return nullptr;
  int64_t index = pool->allocations++;
  if (pool->alloc_faults && ostrel::sim::find_fault("pool_alloc", pool->name, index)) return nullptr;
  if (pool->free_slots.empty()) return nullptr;
  uint32_t slot = pool->free_slots.back();
  pool->free_slots.pop_back();
  pool->handed_out[slot] = 1;
  std::byte* element = pool->slot(slot);
  if (pool->flags & kChunkFlagZero) std::memset(element, 0, pool->stride);
  return element;
}

cerr_t chunk_free(chunk_t pool, void* element) {
  if (!pool || !element) return ostrel::sim::kBadArgument;
  auto* first = pool->slot(0);
  auto* byte = static_cast<std::byte*>(element);
  if (byte < first || byte >= first + pool->stride * pool->count) return ostrel::sim::kBadArgument;
  const size_t offset = static_cast<size_t>(byte - first);
  const auto slot = static_cast<uint32_t>(offset * pool->slot_factor >> ostrel::sim::kSlotShift);
  if (slot * pool->stride != offset) return ostrel::sim::kBadArgument;
  if (!pool->handed_out[slot]) return ostrel::sim::kBadArgument;
  pool->handed_out[slot] = 0;
  pool->free_slots.push_back(slot);
  return kCerrOk;
}

cerr_t chunk_destroy(chunk_t pool) {
  if (!pool) return ostrel::sim::kBadArgument;
  delete pool;
  return kCerrOk;
}
