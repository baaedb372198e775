#include "access/session.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "access/output.h"
#include "access/switches.h"
#include "platform/fs.h"
#include "platform/text.h"

uint8_t ostrel_debug = 0;
uint8_t ostrel_private = 0;
uint8_t ostrel_platform_detail = 0;
uint8_t ostrel_standby = 0;

vellum_handle_t ostrel_root_handle = nullptr;
vellum_handle_t ostrel_view_handle = nullptr;
extern "C" {
imc_ctx_t mrib_imc_ctx = nullptr;
}
chunk_t ostrel_intf_pool = nullptr;
chunk_t ostrel_list_pool = nullptr;

namespace {

constexpr char kLibraryPath[] = "/pkg/lib/libvellum.so";
constexpr cerr_t kLibraryMissing = 0x8081c200;

uint8_t ostrel_vellum_present = 0;

}  // namespace

const char* ostrel_oper_root() {
  return ostrel_standby ? kOstrelStandbyRoot : kOstrelActiveRoot;
}

cerr_t ostrel_vellum_check() {
  if (ostrel_vellum_present) return kCerrOk;
  if (fs_access(kLibraryPath, R_OK) != 0) return kLibraryMissing;
  ostrel_vellum_present = 1;
  return kCerrOk;
}

void ostrel_bind_keyword_path(vellum_handle_t* handle, const char* path) {
  cerr_t rc = ostrel_vellum_check();
  if (rc == kCerrOk) rc = vellum_bind(handle, path, 0);
  if (rc == kCerrOk) return;
  ostrel_outf("'%s' failed for '%s' (%s)", "vellum_bind", path, cerr_strerror(rc));
  std::exit(1);
}

void ostrel_bind_root(bool standby) {
  ostrel_bind_keyword_path(&ostrel_root_handle, standby ? kOstrelStandbyRoot : kOstrelActiveRoot);
}

void ostrel_bind_table(bool standby, const char* vrf) {
  char path[256];
  std::snprintf(path, sizeof path, "%s%s%s/", standby ? kOstrelStandbyRoot : kOstrelActiveRoot, "table/",
                vrf);
  ostrel_bind_keyword_path(&ostrel_view_handle, path);
}
