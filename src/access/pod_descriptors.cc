// Descriptor constants built from the schema strings at compile time (see pod_tables.h).
#include "access/pod_descriptors.h"

#include "access/pod_schemas.h"
#include "access/pod_tables.h"

namespace {

constexpr uint32_t kMribLibVersion[2] = {7, 1};
constexpr uint32_t kMfwdLibVersion[2] = {3, 0};
constexpr const char kMribLibrary[] = "libmrib_pod_desc.dll";
constexpr const char kMfwdLibrary[] = "lib_ipv4_mfwd_pod_desc.dll";

template <const char* kSchema>
constexpr pod_desc make_desc(const char* name, const uint32_t (&lib_version)[2], const char* library) {
  using T = ostrel::pod::Tables<kSchema>;
  return pod_desc{1, name, {lib_version[0], lib_version[1]}, library, T::kLayout.data(), kSchema,
                  T::kCompact.data()};
}

}  // namespace

#define OSTREL_POD(name, text)                                                                            \
  extern const pod_desc ostrel_##name##_desc =                                                            \
      make_desc<ostrel::schema::name>(#name, kMribLibVersion, kMribLibrary);                              \
  const pod_desc* ostrel_##name##_desc_get() { return &ostrel_##name##_desc; }
#include "access/pod_schemas_mrib.def"
#undef OSTREL_POD
#define OSTREL_POD(name, text)                                                                            \
  extern const pod_desc ostrel_##name##_desc =                                                            \
      make_desc<ostrel::schema::name>(#name, kMfwdLibVersion, kMfwdLibrary);                              \
  const pod_desc* ostrel_##name##_desc_get() { return &ostrel_##name##_desc; }
#include "access/pod_schemas_mfwd.def"
#undef OSTREL_POD

namespace {

#define OSTREL_POD(name, text) &ostrel_##name##_desc,
constexpr const pod_desc* kMribPods[] = {
#include "access/pod_schemas_mrib.def"
};
constexpr const pod_desc* kMfwdPods[] = {
#include "access/pod_schemas_mfwd.def"
};
#undef OSTREL_POD

cerr_t register_group(std::span<const pod_desc* const> group, const void* a1, const void* a2, const void* a3,
                      const void* a4, const void* a5, const void* a6) {
  if (cerr_t rc = pod_register_start(a1, a2, a3, a4, a5, a6); rc != kCerrOk) return rc;
  for (const pod_desc* desc : group) {
    if (cerr_t rc = pod_register(desc); rc != kCerrOk) {
      (void)pod_register_abort();
      return rc;
    }
  }
  return pod_register_end();
}

}  // namespace

std::span<const pod_desc* const> ostrel_mrib_pods() { return kMribPods; }
std::span<const pod_desc* const> ostrel_mfwd_pods() { return kMfwdPods; }

const pod_desc* ostrel_find_pod_desc(std::string_view name) {
  for (auto group : {ostrel_mrib_pods(), ostrel_mfwd_pods()})
    for (const pod_desc* desc : group)
      if (name == desc->name) return desc;
  return nullptr;
}

cerr_t ostrel_register_mrib_pods(const void* a1, const void* a2, const void* a3, const void* a4, const void* a5,
                                 const void* a6) {
  return register_group(kMribPods, a1, a2, a3, a4, a5, a6);
}

cerr_t ostrel_register_mfwd_pods(const void* a1, const void* a2, const void* a3, const void* a4, const void* a5,
                                 const void* a6) {
  return register_group(kMfwdPods, a1, a2, a3, a4, a5, a6);
}
