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

// Keyword runs bind what they need themselves. Each of these checks the library, binds, and on failure
// writes "'vellum_bind' failed for '<path>' (<error>)" on standard output and ends the process with status 1.
// `*handle` to the absolute directory `path`:
void ostrel_bind_keyword_path(vellum_handle_t* handle, const char* path);
// ostrel_root_handle to the active or standby oper root:
void ostrel_bind_root(bool standby);
// ostrel_view_handle to the table directory of `vrf` below the active or standby oper root:
void ostrel_bind_table(bool standby, const char* vrf);
