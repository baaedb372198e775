// The pod descriptors of the 139 record types (88 MRIB, 51 MFWD), their accessors and the registration of
// each group with the platform's record type registry. Views pass a descriptor's address to pod_decode().
#pragma once

#include <span>
#include <string_view>

#include "platform/pod.h"

#define OSTREL_POD(name, text)            \
  extern const pod_desc ostrel_##name##_desc; \
  const pod_desc* ostrel_##name##_desc_get();
#include "access/pod_schemas_mrib.def"
#include "access/pod_schemas_mfwd.def"
#undef OSTREL_POD

// The descriptors of each group, in registration order.
std::span<const pod_desc* const> ostrel_mrib_pods();
std::span<const pod_desc* const> ostrel_mfwd_pods();

// The descriptor of a record type by its name, from either group, or none.
const pod_desc* ostrel_find_pod_desc(std::string_view name);

// Registers one group: pod_register_start() with the six arguments, pod_register() for each descriptor in
// list order, then pod_register_end(). The first failure aborts the batch once and its code is returned.
[[nodiscard]] cerr_t ostrel_register_mrib_pods(const void* a1, const void* a2, const void* a3, const void* a4,
                                               const void* a5, const void* a6);
[[nodiscard]] cerr_t ostrel_register_mfwd_pods(const void* a1, const void* a2, const void* a3, const void* a4,
                                               const void* a5, const void* a6);
