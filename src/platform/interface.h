// The platform's interface services: the interface-name control server, naming interface handles, the
// display form of a name, and finding a handle by name.
//
// Display forms. Display flag 1 asks for the short form, in which a name that starts with one of these
// types followed by a digit has the type abbreviated; every other name, and every name under flag 0, is
// shown as it is:
//   GigabitEthernet Gi    TenGigE Te          TwentyFiveGigE TF   FortyGigE Fo    FiftyGigE Fi
//   HundredGigE Hu        FourHundredGigE FH  FastEthernet Fa     Bundle-Ether BE Bundle-POS BP
//   POS PO                Loopback Lo         MgmtEth Mg          Null Nu         BVI BV
//   tunnel-ip ti          tunnel-te tt        tunnel-mte tm
// so GigabitEthernet0/0/0/1 shows as Gi0/0/0/1 and Loopback0 as Lo0.
#pragma once

#include <cstdint>

#include "platform/status.h"

// The block given to imc_control_server_bind(). Only version 1 exists; the rest is reserved (zero).
struct imc_control_server_params {
  uint32_t version;
  uint32_t reserved[3];
};

// A connection to the control server; none when not connected.
typedef struct imc_control_server_s* imc_ctx_t;

// Connects to the control server. On success `*ctx` is set; on failure it is left as it was (a caller that
// starts from none can test it). `mode` is the kind of session wanted; 2 asks for a naming session, the
// only kind this platform offers, and any value is accepted as that.
cerr_t imc_control_server_bind(const imc_control_server_params* params, uint32_t mode, imc_ctx_t* ctx);

// Closes the connection and sets `*ctx` to none. `flags` must be 0.
cerr_t imc_control_server_unbind(imc_ctx_t* ctx, uint32_t flags);

// One answer of imc_interface_name(): the caller's buffer for the name and its room, and the status of
// this handle (0 when named).
struct imc_interface_name_result {
  char* name;
  uint32_t size;
  cerr_t status;
};

// Names `count` interface handles through the control server: for each handle its full name goes into its
// result's buffer (cut to the room) and the result's status is set; an unknown handle fails on its own and
// leaves the empty text. The call itself fails (and sets no result) when `ctx` is not connected. `flags`
// must be 0.
cerr_t imc_interface_name(imc_ctx_t ctx, uint32_t count, const uint32_t* handles, uint32_t flags,
                          imc_interface_name_result* results);

// Writes the display form of the interface name `name` (see the top of this file) into `out` of `size`
// bytes, which may be the same buffer as `name`, and returns `out`. None when the result does not fit, or
// when the platform cannot give a display name for that interface.
char* imc_display_namestring(const char* name, char* out, uint32_t size, uint32_t display_flags);

// The handle of the interface named `name` (its full name or its short form), 0 when there is none.
uint32_t interface_find(const char* name);

// The name of interface `handle` in the form `display_flags` asks for, or "Un:0x<handle>" for a handle the
// platform does not know. Never none; the four texts given last stay valid.
const char* interface_name(uint32_t handle, uint32_t display_flags);
