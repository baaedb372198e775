// What a run binds before its view and every view reads: the two store handles, the interface-name server's
// context and the two pools of the route printer. Set up by the front end, left to the process end.
#pragma once

#include <cstdint>

#include "platform/chunk.h"
#include "platform/interface.h"
#include "platform/vellum.h"

extern vellum_handle_t ostrel_root_handle;  // the oper root of the active or standby server
extern vellum_handle_t ostrel_view_handle;  // a VRF's table directory, or the oper root for root-only codes

// The interface-name server's context; exported under this name for the platform's use.
extern "C" imc_ctx_t mrib_imc_ctx;

extern chunk_t ostrel_intf_pool;  // "OSTREL intf entry": the route printer's saved interfaces
extern chunk_t ostrel_list_pool;  // "OSTREL list elem entry": their list elements

inline constexpr char kOstrelActiveRoot[] = "/oper/ipv4-mrib/gl/act/";
inline constexpr char kOstrelStandbyRoot[] = "/oper/ipv4-mrib/gl/sby/";

// The oper root that this run reads: standby when -standby was given.
const char* ostrel_oper_root();

// The library presence check made before every bind and unbind: 0, or the library-missing code.
[[nodiscard]] cerr_t ostrel_vellum_check();
