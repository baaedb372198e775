// The platform's fixed-size allocation pools: a named pool of equal elements, allocated once, that hands
// elements out and takes them back without touching the general heap.
#pragma once

#include <cstdint>

#include "platform/status.h"

typedef struct chunk_pool_s* chunk_t;

// Pool flags. Every pool of this platform is fixed in size: it refuses an allocation when all its elements
// are out, whatever the flags say.
inline constexpr uint32_t kChunkFlagZero = 0x001;   // elements are handed out zero-filled
inline constexpr uint32_t kChunkFlagFixed = 0x100;  // the pool never grows (always so here)

// Creates the pool `name` of `count` elements of `element_size` bytes each (every element aligned for any
// type). The two reserved words must be 0. None when the arguments are invalid (a size or count of 0, an
// unknown flag, a reserved word set) or the memory cannot be had (nor more than 4 GiB of it). The pool owns
// its memory until chunk_destroy().
chunk_t chunk_create(const char* name, uint32_t element_size, uint32_t count, uint32_t flags,
                     uint32_t reserved_a, uint32_t reserved_b);

// One element of the pool, or none when every element is out.
void* chunk_malloc(chunk_t pool);

// Gives `element` back to its pool. Fails for an element that is not from this pool or is not out.
cerr_t chunk_free(chunk_t pool, void* element);

// Releases the pool and every element, handed out or not.
cerr_t chunk_destroy(chunk_t pool);
