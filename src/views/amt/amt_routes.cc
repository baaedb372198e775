// The AMT route view, -u: the routes that AMT tunnels carry, active, expired (-Q) or summarised (-H), all of
// a VRF or those of the -s source and the -g group as typed. How a mode is walked is in amt_mode.h.
#include <cstdint>
#include <cstdio>
#include <span>
#include <string_view>

#include <arpa/inet.h>

#include "access/output.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "views/amt/amt.h"
#include "views/amt/amt_mode.h"
#include "views/line_pieces.h"

namespace {

constexpr char kIndent[] = "  ";
constexpr uint32_t kAmtTunnel = 1;        // {Type} of an AMT tunnel interface
constexpr uint32_t kNoNode = 0xFFFFFFFF;  // {UnderlyingInterfaceNode} when none is known
constexpr char kOverflow[] = "buffer overflow in printing MRIB route\n";

// ---- Records ---------------------------------------------------------------------------------------------

// "\n%s\n" of the entry as the platform designates it; a designation that does not fit is reported and its
// line printed all the same.
void print_entry(const mrib_addrtype& source, const mrib_addrtype& group, uint32_t length) {
  char entry[256] = "";
  if (ostrel_entry_designation(source, group, length, 0, entry, sizeof entry) < 0)
    std::fputs(kOverflow, stderr);
  OstrelLine line;
  line.add('\n').add(entry).add('\n');
  line.emit();
}

// " (node)" or " (UL node unknown)", with ", 0x%x" of the underlying interface before the ")" under -P.
void add_underlying(OstrelLine& line, const mrib_amt_intrf_pod& intf) {
  std::optional<std::string_view> node;
  if (intf.UnderlyingInterfaceNode != kNoNode) node = ostrel_node_name(intf.UnderlyingInterfaceNode, 79);
  if (node) {
    line.add(" (").add(*node);
  } else {
    line.add(" (UL node unknown");
  }
  if (ostrel_private) line.addf(", 0x%x", intf.UnderlyingInterface);
  line.add(')');
}

// An AMT route's interfaces are printed by the million: their lines are assembled in place.
void print_interface(const mrib_amt_intrf_pod& intf) {
  std::string_view name_text = ostrel_ifh_name(intf.Interface, 0);
  OstrelLine line;
  if (intf.Type == kAmtTunnel) {
    ostrel_add_dotted(line.add(kIndent).add("AMT Gateway: "), intf.AMTGateway);
    line.add('/').add(uint64_t{intf.AMTPort}).add(", ").add(name_text);
  } else {
    line.add(kIndent).add(name_text);
  }
  if (intf.UnderlyingInterface != 0) add_underlying(line, intf);
  line.add(", Up: ").add(ostrel_dhms_text(intf.Uptime)).add('\n');
  if (intf.Type != kAmtTunnel) {
    line.emit();
    return;
  }
  ostrel_add_dotted(line.add(kIndent).add("    Nexthop: "), intf.AMTNexthop).add(", AMT-ID: ");
  if (int id = static_cast<int>(intf.AMTId); id >= 0) {
    ostrel_add_padded(line, static_cast<uint64_t>(id), 5);
  } else {
    line.addf("%05d", id);
  }
  line.add('\n')
      .add(kIndent)
      .add("    Total Packets/Bytes Sent: ")
      .add(intf.OutPkts)
      .add('/')
      .add(intf.OutBytes);
  line.add('\n');
  line.emit();
}

void mrib_amt_route_print(const mrib_amt_route_pod* route) {
  print_entry(route->Source, route->GroupRange.GroupPrefix, route->GroupRange.GroupPrefixLength);
  // The array's own count: {AMTIFCount} is the server's and may disagree with what was sent.
  for (const mrib_amt_intrf_pod& intf : std::span(route->AMT_Interfaces.data, route->AMT_Interfaces.count))
    print_interface(intf);
}

// A summary's entry is always named as a single group, whatever the range of its record.
void mrib_amt_route_summary_print(const mrib_amt_route_summary_pod* summary) {
  print_entry(summary->Source, summary->GroupRange.GroupPrefix, 32);
  ostrel_outf("  Number of AMT Gateways currently joined: %u\n", summary->AMTGatewayCount);
  ostrel_outf("  Total Packets/Bytes Sent [Active]: %lu / %lu\n", summary->ActivePacketsSent,
              summary->ActiveBytesSent);
  ostrel_outf("  Total Packets/Bytes Sent [Expired]: %lu / %lu\n", summary->ExPacketsSent,
              summary->ExBytesSent);
}

void mrib_amt_route_ex_print(const mrib_amt_route_ex_pod* route) {
  ostrel_outf("\n(%s,%s) \n", ostrel_addr_text(&route->Source), ostrel_addr_text(&route->Group));
  for (const mrib_amt_gw_id_ex_pod& tunnel : std::span(route->GW_IDs.data, route->GW_IDs.count)) {
    ostrel_outf("  AMT Tunnel ID: %05d GW: %s/%u \n", static_cast<int>(tunnel.AMTId),
                ostrel_amt_dotted(route->GWAddress), route->GWPort);
    ostrel_outf("    Joined  %s ago\n", ostrel_dhms_text(tunnel.JoinTime).data());
    ostrel_outf("    Expired %s ago\n", ostrel_dhms_text(tunnel.ExpireTime).data());
    ostrel_outf("    Total Packets/Bytes Sent: %lu/%lu\n", tunnel.OutPkts, tunnel.OutBytes);
  }
}

// ---- Resume keys -----------------------------------------------------------------------------------------

// "source,group" in hexadecimal, without the prefix length that the route view's keys carry.
template <typename Record>
bool source_group_key(const Record& route, char* key, size_t size) {
  const char* source = ostrel_amt_hex(route.Source);
  const char* group = ostrel_amt_hex(route.GroupRange.GroupPrefix);
  return source != nullptr && group != nullptr && ostrel_amt_key(key, size, "%s,%s", source, group);
}

// "source,group,gateway,port": the gateway's address in host byte order.
bool expired_route_key(const mrib_amt_route_ex_pod& route, char* key, size_t size) {
  const char* source = ostrel_amt_hex(route.Source);
  const char* group = ostrel_amt_hex(route.Group);
  return source != nullptr && group != nullptr &&
         ostrel_amt_key(key, size, "%s,%s,%08x,%d", source, group, ntohl(route.GWAddress),
                        static_cast<int>(route.GWPort));
}

// ---- Modes -----------------------------------------------------------------------------------------------

constexpr AmtShow<mrib_amt_route_pod> kActive{.header = "\nAMT Route Database\n",
                                              .print = mrib_amt_route_print,
                                              .resume_key = source_group_key<mrib_amt_route_pod>,
                                              .not_available = "No MRIB AMT route",
                                              .none_listed = "No matching MRIB AMT routes\n"};
constexpr AmtShow<mrib_amt_route_ex_pod> kExpired{.header = "\nAMT Expired Route Database\n",
                                                  .print = mrib_amt_route_ex_print,
                                                  .resume_key = expired_route_key,
                                                  .not_available = "No MRIB AMT expired route",
                                                  .none_listed = "No matching MRIB AMT expired routes\n"};
// An empty summary says nothing.
constexpr AmtShow<mrib_amt_route_summary_pod> kSummary{
    .header = "\nAMT Route Database Summary\n",
    .print = mrib_amt_route_summary_print,
    .resume_key = source_group_key<mrib_amt_route_summary_pod>,
    .not_available = "No MRIB AMT route summary"};

// A mode's paths by filter. The formats read, in this order: the group and kAmtPathLength (-g alone); the
// source (-s alone); the source, the group and kAmtPathLength (both). A format may leave the last unread.
struct RouteMode {
  const char* all;
  const char* group;
  const char* source;
  const char* both;
  bool both_is_item;
  void (*run)(vellum_handle_t handle, bool single_item);
};

// Indexed by AmtMode.
constexpr RouteMode kModes[] = {
    {"amt-routedb/", "amt-routedb-g/%s,%d/", "amt-routedb-s/%s/", "amt-routedb/%s,%s,%d", true,
     ostrel_amt_run<kActive>},
    {"amt-routedb-expired/", "amt-routedb-expired-g/%s/", "amt-routedb-expired-s/%s/",
     "amt-routedb-expired-sg/%s,%s/", false, ostrel_amt_run<kExpired>},
    {"amt-routedb-summary/", "amt-routedb-summary-g/%s/", "amt-routedb-summary-s/%s/",
     "amt-routedb-summary/%s,%s", true, ostrel_amt_run<kSummary>},
};

constexpr bool formats_read_their_filters() {
  for (const RouteMode& mode : kModes) {
    if (!ostrel_amt_format_reads(mode.all, "") || !ostrel_amt_format_reads(mode.group, "sd") ||
        !ostrel_amt_format_reads(mode.source, "s") || !ostrel_amt_format_reads(mode.both, "ssd"))
      return false;
  }
  return true;
}
static_assert(formats_read_their_filters());

bool has(const char* text) {
  return text[0] != '\0';
}

bool build_path(const RouteMode& mode, const ShowArgs& args) {
  bool source = has(args.source), group = has(args.group);
  if (source && group) return ostrel_build_path(mode.both, args.source, args.group, kAmtPathLength);
  if (source) return ostrel_build_path(mode.source, args.source);
  if (group) return ostrel_build_path(mode.group, args.group, kAmtPathLength);
  return ostrel_build_path("%s", mode.all);
}

}  // namespace

void ostrel_amt_routes(vellum_handle_t handle, const ShowArgs& args) {
  const RouteMode& mode = kModes[static_cast<size_t>(ostrel_amt_mode(args))];
  if (!build_path(mode, args)) return;
  mode.run(handle, mode.both_is_item && has(args.source) && has(args.group));
}

void ostrel_amt_route_view(const ShowArgs& args) {
  ostrel_amt_routes(ostrel_view_handle, args);
}
