// The platform's record decoder: pod descriptors and the calls that decode a pod record into its plain
// structure and release what decoding attached to it.
#pragma once

#include <cstdint>

#include "platform/status.h"

// One 24-byte entry of a layout record. The head entry holds the number of sub-type entries that follow,
// the size of the decoded structure and its field-offset table; each sub-type entry holds the sub-type's
// number, its decoded size and its field-offset table (none for a plain byte array).
struct pod_layout {
  uint64_t number;
  uint64_t size;
  const uint64_t* offsets;
};
static_assert(sizeof(pod_layout) == 24);

// A record type: its name, its library, its layout and its schema in full and compact form.
struct pod_desc {
  uint64_t version;
  const char* name;
  uint32_t lib_version[2];
  const char* library;
  const pod_layout* layout;
  const char* schema;
  const char* schema_compact;
};

// Decodes the encoded record `data` of `length` bytes into `structure`, which must hold the descriptor's
// decoded size. Every byte of the structure is written, padding included. What texts, arrays and pointers
// refer to is allocated here and released by pod_free_indirections(). On failure nothing stays allocated
// and the structure is left zeroed.
cerr_t pod_decode(const void* data, uint32_t length, void* structure, const pod_desc* desc);

// Releases everything that pod_decode() attached to `structure` and clears those pointers.
cerr_t pod_free_indirections(void* structure, const pod_desc* desc);

// Registration of a group of descriptors with the record type registry: start, one register per
// descriptor, then end; abort abandons a batch that failed.
cerr_t pod_register_start(const void* a1, const void* a2, const void* a3, const void* a4, const void* a5,
                          const void* a6);
cerr_t pod_register(const pod_desc* desc);
cerr_t pod_register_end();
cerr_t pod_register_abort();
