#include "access/session.h"

#include <unistd.h>

#include "access/switches.h"
#include "platform/fs.h"

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
