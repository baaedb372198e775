// The pod descriptors of the 139 record types (88 MRIB, 51 MFWD), their accessors and the registration of
// each group with the platform's record type registry. Views pass a descriptor's address to pod_decode().
#pragma once

#include <span>
#include <string_view>

#include "platform/pod.h"

#define OSTREL_POD(name, text)                \
  extern const pod_desc ostrel_##name##_desc; \
  const pod_desc* ostrel_##name##_desc_get();
#include "access/pod_schemas_mfwd.def"
#include "access/pod_schemas_mrib.def"
#undef OSTREL_POD

// The descriptor of a record type, by the type's decoded structure: OstrelPod<mrib_route_pod>::desc. Every
// schema row names its structure, and pod_records_check.cc holds each structure to its schema, so code that
// names the structure gets the descriptor of its layout; a structure without a schema row does not compile.
template <typename Record>
struct OstrelPod;

#define OSTREL_POD(name, text)                                     \
  struct name;                                                     \
  template <>                                                      \
  struct OstrelPod<name> {                                         \
    static constexpr const pod_desc* desc = &ostrel_##name##_desc; \
  };
#include "access/pod_schemas_mfwd.def"
#include "access/pod_schemas_mrib.def"
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
