#include "front/connection.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "access/session.h"
#include "platform/chunk.h"
#include "platform/interface.h"
#include "platform/mrib_utl.h"
#include "platform/text.h"
#include "platform/vellum.h"

namespace {

constexpr char kClientSource[] = "ipv4/multicast/mrib/src/ostrel_client";
constexpr char kPathError[] = "Error building vellum connection-point path\n";

char ostrel_bind_point[128];

struct PoolSpec {
  const char* name;
  uint32_t element_size;
  chunk_t* pool;
};

// The route printer's saved interfaces and their list elements; 5000 of each serve the widest route.
constexpr uint32_t kPoolElements = 5000;
constexpr uint32_t kPoolFlags = 0x101;
const PoolSpec kPools[] = {
    {"OSTREL intf entry", 808, &ostrel_intf_pool},
    {"OSTREL list elem entry", 32, &ostrel_list_pool},
};

[[nodiscard]] cerr_t checked_bind(vellum_handle_t* handle, const char* path) {
  if (cerr_t rc = ostrel_vellum_check(); rc != kCerrOk) return rc;
  return vellum_bind(handle, path, 0);
}

// The VRF element of the table directory, always ending in "/": "default/" without -v.
char* vrf_element(const char* vrf) {
  if (vrf == nullptr) {
    char* element = strdup("default/");
    if (element == nullptr) {
      ux_syslog(3, "STRDUP-ERR : %s (%s:%d). Aborting process", "main", kClientSource, __LINE__);
      std::abort();
    }
    return element;
  }
  size_t length = std::strlen(vrf);
  if (length > 0 && vrf[length - 1] == '/') return const_cast<char*>(vrf);
  return mrib_utl_build_path(vrf, "/");
}

bool bind_root_only() {
  std::snprintf(ostrel_bind_point, sizeof ostrel_bind_point, "%s", ostrel_oper_root());
  if (ostrel_debug) std::fprintf(stderr, "%s: Set bind_point %s\n", "main", ostrel_bind_point);
  if (cerr_t rc = checked_bind(&ostrel_view_handle, ostrel_bind_point); rc != kCerrOk) {
    std::fprintf(stderr, "Error connecting to vellum %s\n", cerr_strerror(rc));
    return false;
  }
  return true;
}

bool bind_table(ShowArgs& args) {
  char* element = vrf_element(args.vrf);
  if (element == nullptr) {
    std::fputs(kPathError, stderr);
    return false;
  }
  if (element != args.vrf) {
    std::free(args.vrf);
    args.vrf = element;
  }
  char table_parent[64];
  std::snprintf(table_parent, sizeof table_parent, "%stable/", ostrel_oper_root());
  char* table = mrib_utl_build_path(table_parent, args.vrf);
  if (table == nullptr) {
    std::fputs(kPathError, stderr);
    return false;
  }
  bool bound = false;
  if (cerr_t rc = checked_bind(&ostrel_root_handle, ostrel_oper_root()); rc != kCerrOk) {
    std::fprintf(stderr, "Error connecting to vellum oper path %s\n", cerr_strerror(rc));
  } else if (rc = checked_bind(&ostrel_view_handle, table); rc != kCerrOk) {
    std::fprintf(stderr, "Error connecting to vellum %s\n", cerr_strerror(rc));
  } else {
    bound = true;
  }
  std::free(table);
  return bound;
}

bool create_pools() {
  for (const PoolSpec& wanted : kPools)
    *wanted.pool = chunk_create(wanted.name, wanted.element_size, kPoolElements, kPoolFlags, 0, 0);
  bool all = true;
  for (const PoolSpec& wanted : kPools) all = all && *wanted.pool != nullptr;
  if (all) return true;
  std::fputs("ostrel chunk allocation failed", stderr);
  for (const PoolSpec& wanted : kPools) {
    if (*wanted.pool != nullptr) (void)chunk_destroy(*wanted.pool);
    *wanted.pool = nullptr;
  }
  return false;
}

}  // namespace

bool ostrel_setup(ShowArgs& args) {
  bool bound = ostrel_cmd_is_root_only(args.cmd) ? bind_root_only() : bind_table(args);
  if (!bound) return false;
  imc_control_server_params params{1, {}};
  (void)imc_control_server_bind(&params, 2, &mrib_imc_ctx);
  return create_pools();
}

void ostrel_teardown() {
  if (mrib_imc_ctx != nullptr) (void)imc_control_server_unbind(&mrib_imc_ctx, 0);
}
