// The AMT gateway view, -V: the gateways that AMT tunnels reach, with their active routes, their expired
// routes (-Q) or their counters (-H); all of a VRF, or those of the address (-g) and the UDP port (-p) given
// after -V. How a mode is walked is in amt_mode.h.
#include <cstdint>
#include <cstring>
#include <span>

#include <arpa/inet.h>

#include "access/output.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "views/amt/amt.h"
#include "views/amt/amt_mode.h"
#include "views/line_pieces.h"

namespace {

// ---- Records ---------------------------------------------------------------------------------------------

// Gateways are printed by the million: their lines are assembled in place.
void add_gateway_line(OstrelLine& line, uint32_t address, uint32_t port) {
  ostrel_add_dotted(line.add("\n("), address).add(',').add_signed(static_cast<int>(port)).add(") \n");
}

void print_gateway_line(uint32_t address, uint32_t port) {
  OstrelLine line;
  add_gateway_line(line, address, port);
  line.emit();
}

// The gateway and its routes, active or expired: the lines of both are alike.
template <typename Route>
void print_gateway(uint32_t address, uint32_t port, const pod_array<Route>& routes) {
  OstrelLine line;
  add_gateway_line(line, address, port);
  for (const Route& route : std::span(routes.data, routes.count)) {
    line.add("  Source/Group:(")
        .add(ostrel_addr_text(&route.Source))
        .add(',')
        .add(ostrel_addr_text(&route.Group));
    line.add(") \n    Joined ").add(ostrel_dhms_text(route.JoinTime)).add(" ago\n");
    line.add("    Total Packets/Bytes Sent: ").add(route.OutPkts).add('/').add(route.OutBytes).add('\n');
    line.emit();
  }
  line.emit();
}

void mrib_amt_gw_active_print(const mrib_amt_gw_pod* gateway) {
  print_gateway(gateway->GW_Addr, gateway->GW_Port, gateway->ActiveRoutes);
}

// A gateway without expired routes has nothing to show here, not even its address.
void mrib_amt_gw_expired_print(const mrib_amt_gw_ex_pod* gateway) {
  if (gateway->ExpiredRoutes.count == 0) return;
  print_gateway(gateway->GW_Addr, gateway->GW_Port, gateway->ExpiredRoutes);
}

void mrib_amt_gw_summary_print(const mrib_amt_gw_summary_pod* gateway) {
  print_gateway_line(gateway->GW_Addr, gateway->GW_Port);
  ostrel_outf("    Number of Multicast streams (S,G)joined: %u\n", gateway->ActiveRouteCount);
  ostrel_outf("    Total Packets/Bytes Sent [Active route]: %lu/%lu\n", gateway->OutPkts, gateway->OutBytes);
  ostrel_outf("    Total Packets/Bytes Sent [Expired route]: %lu/%lu\n", gateway->OutExPkts,
              gateway->OutExBytes);
}

// "address,port": the address in host byte order. Every mode's records carry both.
template <typename Record>
bool gateway_key(const Record& gateway, char* key, size_t size) {
  const int length =
      std::snprintf(key, size, "%08x,%d", ntohl(gateway.GW_Addr), static_cast<int>(gateway.GW_Port));
  return length >= 0 && static_cast<size_t>(length) < size;
}

// ---- Modes -----------------------------------------------------------------------------------------------

// Active and expired gateways share their failure line; the summary's differs in case under -d.
constexpr AmtShow<mrib_amt_gw_pod> kActive{.header = "\nAMT Gateway Database\n",
                                           .print = mrib_amt_gw_active_print,
                                           .resume_key = gateway_key<mrib_amt_gw_pod>,
                                           .not_available = "No MRIB AMT Gateway",
                                           .none_listed = "No matching MRIB AMT routes\n"};
constexpr AmtShow<mrib_amt_gw_ex_pod> kExpired{.header = "\nAMT Expired Gateway Database\n",
                                               .print = mrib_amt_gw_expired_print,
                                               .resume_key = gateway_key<mrib_amt_gw_ex_pod>,
                                               .not_available = "No MRIB AMT Gateway",
                                               .none_listed = "No matching MRIB AMT routes\n"};
constexpr AmtShow<mrib_amt_gw_summary_pod> kSummary{.header = "\nAMT Gateway Database Summary\n",
                                                    .print = mrib_amt_gw_summary_print,
                                                    .resume_key = gateway_key<mrib_amt_gw_summary_pod>,
                                                    .not_available = "No MRIB AMT Gateway Summary",
                                                    .not_available_plain = "No MRIB AMT Gateway summary",
                                                    .none_listed = "No matching MRIB AMT routes\n"};

// A mode's paths by filter. The formats read, in this order: the port (alone); the address (alone); the
// address and the port (both, one item).
struct GatewayMode {
  const char* all;
  const char* port;
  const char* address;
  const char* both;
  void (*run)(vellum_handle_t handle, bool single_item);
};

// Indexed by AmtMode.
constexpr GatewayMode kModes[] = {
    {"amt-gw/", "amt-gw-port/%d/", "amt-gw-g/%s/", "amt-gw/%s,%d", ostrel_amt_run<kActive>},
    {"amt-gw-expired/", "amt-gw-expired-port/%d/", "amt-gw-expired-g/%s/", "amt-gw-expired/%s,%d",
     ostrel_amt_run<kExpired>},
    {"amt-gw-summary/", "amt-gw-summary-port/%d/", "amt-gw-summary-g/%s/", "amt-gw-summary/%s,%d",
     ostrel_amt_run<kSummary>},
};

constexpr bool formats_read_their_filters() {
  for (const GatewayMode& mode : kModes) {
    if (!ostrel_amt_format_reads(mode.all, "") || !ostrel_amt_format_reads(mode.port, "d") ||
        !ostrel_amt_format_reads(mode.address, "s") || !ostrel_amt_format_reads(mode.both, "sd"))
      return false;
  }
  return true;
}
static_assert(formats_read_their_filters());

}  // namespace

void ostrel_amt_gateways(vellum_handle_t handle, const ShowArgs& args) {
  const GatewayMode& mode = kModes[static_cast<size_t>(ostrel_amt_mode(args))];
  // Only the port's low 16 bits count: 65536 asks for no port, 70000 for 4464.
  int port = static_cast<int>(args.gw_port & 0xFFFF);
  bool address = args.gw_address[0] != '\0';
  bool built = false;
  if (address && port != 0) {
    built = ostrel_build_path(mode.both, args.gw_address, port);
  } else if (address) {
    built = ostrel_build_path(mode.address, args.gw_address);
  } else if (port != 0) {
    built = ostrel_build_path(mode.port, port);
  } else {
    built = ostrel_build_path("%s", mode.all);
  }
  if (built) mode.run(handle, address && port != 0);
}

void ostrel_amt_gateway_view(const ShowArgs& args) {
  ostrel_amt_gateways(ostrel_view_handle, args);
}
