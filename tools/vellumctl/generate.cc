// The synthetic router: a small fixture for what a router always has (inventory, directories, the
// configuration tree, the summary), then the routes and the listing views' records written straight into the
// store in one transaction, each encoded from a structure that is reused for every item.
#include "tools/vellumctl/generate.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "platform/vellum.h"
#include "sim/codec/pod_codec.h"
#include "tools/fixture/fixture.h"
#include "tools/fixture/route_collections.h"
#include "tools/vellumctl/store_writer.h"

namespace ostrel::tools {
namespace {

constexpr uint32_t kInterfaceCount = 64;
constexpr uint32_t kNode = 0x800;
constexpr uint32_t kBackupNode = 0x810;
constexpr uint32_t kTableId = 0xe0000000;

// The inventory beyond the Ethernet ports, for the listing views' records to name.
constexpr uint32_t kAmtInterface = 0x600;  // AMT0
constexpr uint32_t kBundleCount = 4;       // Bundle-Ether1..4 at 0x400, 0x408, ...
constexpr uint32_t kBviCount = 4;          // BVI1..4 at 0x700, 0x708, ...
constexpr char kClient[] = "pim";          // the client whose route database is written
constexpr uint32_t kAmtPort = 2268;

// Listings are ordered by their keys' text, so keys made of numbers are made of numbers of one width: a
// decimal or hexadecimal base with room for the largest --routes above it.
constexpr uint32_t kLsmIdBase = 20000000;        // "20000000,2" .. : MPLS tunnels' LSM IDs
constexpr uint32_t kEncapIdBase = 10000000;      // encapsulation IDs
constexpr uint32_t kIirHandleBase = 0x20000000;  // the IIR sub-interfaces' handles
constexpr uint32_t kGatewayBase = 0x64400001;    // 100.64.0.1 on: one AMT gateway per route

uint32_t bundle_handle(uint32_t index) {
  return 0x400 + index * 8;
}

uint32_t bvi_handle(uint32_t index) {
  return 0x700 + index * 8;
}

uint32_t interface_handle(uint32_t index) {
  return 0x100 + index * 8;
}

// splitmix64: small, fast and the same everywhere, so a seed always gives the same router.
struct Random {
  uint64_t state;
  uint64_t next() {
    uint64_t z = (state += 0x9e3779b97f4a7c15ull);
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9ull;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebull;
    return z ^ (z >> 31);
  }
};

uint32_t network_order(uint32_t host) {
  return __builtin_bswap32(host);
}

void set_address(mrib_addrtype* address, uint32_t host_order) {
  std::memset(address, 0, sizeof *address);
  address->IPV4Address = network_order(host_order);
}

struct RouteKey {
  uint32_t source;  // host order; 0 for (*,G)
  uint32_t group;
};

RouteKey route_key(uint64_t index, const GenerateSettings& s, Random& random) {
  uint32_t group = 0xe8000000u + static_cast<uint32_t>(index) + 1;
  bool star = s.star_every != 0 && index % s.star_every == 0;
  uint32_t source = star ? 0 : 0x0a000000u | (static_cast<uint32_t>(random.next()) & 0x00ffffffu) | 1u;
  return {source, group};
}

// The buffers of one route, reused from route to route.
struct RouteBuffers {
  mrib_route_pod route{};
  mrib_route_ole_pod ole{};
  std::vector<mrib_intrf_pod> interfaces;
  std::vector<mrib_out_intrf_stat_pod> stats;
  mrib_outgoing_rate_pod outgoing{};
};

void fill_interface(mrib_intrf_pod* intf, uint32_t handle, bool accept, uint64_t uptime) {
  std::memset(intf, 0, sizeof *intf);
  intf->Interface = handle;
  intf->UnderlyingInterface = accept ? 0 : handle;
  intf->UnderlyingInterfaceNode = kNode;
  intf->InterfaceAttributes.IsAccept = accept;
  intf->InterfaceAttributes.IsForward = !accept;
  intf->Uptime = uptime;
}

void fill_amt_interface(mrib_intrf_pod* intf, uint64_t index, uint64_t uptime) {
  fill_interface(intf, 0, false, uptime);
  intf->Type = 1;
  intf->AMTPort = 2268;
  intf->AMTGateway = network_order(0xc0a80000u | static_cast<uint32_t>(index & 0xffff));
  intf->AMTSource = network_order(0xc0a8ff01u);
  intf->AMTNexthop = network_order(0xc0a8ff02u);
  intf->AMT_MTU = 1500;
  intf->AMT_TTL = 64;
  intf->AMTId = static_cast<uint32_t>(index & 0xffff);
}

// Fills the route record of `index`, without rates.
void fill_route(RouteBuffers* b, uint64_t index, RouteKey key, const GenerateSettings& s, uint64_t uptime) {
  mrib_route_pod& r = b->route;
  std::memset(&r, 0, sizeof r);
  set_address(&r.Source, key.source);
  set_address(&r.GroupRange.GroupPrefix, key.group);
  r.GroupRange.GroupPrefixLength = 32;
  set_address(&r.RPFNeighbor, 0x0a0a0a01u);
  r.EntryAttributes.IsRPFNeighborPresent = 1;
  r.EntryAttributes.IsDirectlyConnectedCheckSet = key.source != 0;
  r.EntryAttributes.IsSignalByDefaultOn = key.source == 0;
  r.MasterLCFapid = r.MasterLCFallbackFapid = r.MT_LC_Fapid = 0xffffffffu;
  r.Uptime = uptime;

  bool amt = s.amt_every != 0 && index % s.amt_every == s.amt_every - 1;
  uint32_t count = s.interfaces + (amt ? 1 : 0);
  b->interfaces.resize(count);
  for (uint32_t k = 0; k < s.interfaces; ++k) {
    uint32_t handle = interface_handle(static_cast<uint32_t>((index + k) % kInterfaceCount));
    fill_interface(&b->interfaces[k], handle, k == 0, uptime);
  }
  if (amt) fill_amt_interface(&b->interfaces[s.interfaces], index, uptime);
  r.Interfaces = {count, count ? b->interfaces.data() : nullptr};
  r.AcceptInterfaceCount = s.interfaces ? 1 : 0;
  r.ForwardInterfaceCount = count - r.AcceptInterfaceCount;
}

// Adds the rate records of the rate-annotated collection to the route that fill_route() made.
void add_rates(RouteBuffers* b, const GenerateSettings& s, Random& random) {
  mrib_route_pod& r = b->route;
  r.IncomingRates = {kNode, random.next() % 10000, random.next() % 10000000, random.next() % 1000000, 0};
  b->stats.resize(s.interfaces > 0 ? s.interfaces - 1 : 0);
  for (size_t k = 0; k < b->stats.size(); ++k) {
    mrib_out_intrf_stat_pod& stat = b->stats[k];
    std::memset(&stat, 0, sizeof stat);
    stat.InterfaceHandle = b->interfaces[k + 1].Interface;
    stat.PacketsOutRate = random.next() % 10000;
    stat.BitsSOutRate = stat.PacketsOutRate * 8000;
    stat.HardwareEgressPacketsOut = random.next() % 1000000;
    stat.HardwareEgressBytesOut = stat.HardwareEgressPacketsOut * 1000;
    stat.IsHardwareEgressOutputCounterValidOnInterface = 1;
    stat.IsHardwareEgressDropCounterValidOnInterface = 1;
  }
  b->outgoing = {kNode,
                 random.next() % 10000,
                 random.next() % 10000000,
                 random.next() % 1000000,
                 0,
                 {b->stats.size(), b->stats.empty() ? nullptr : b->stats.data()}};
  r.OutgoingRates = {1, &b->outgoing};
}

// ---- The listing views' collections ---------------------------------------------------------------------

// A route as its index draws it: the same key and uptime wherever it is written.
struct RouteDraw {
  RouteKey key;
  uint64_t uptime;
};

// Each route draws from a stream of its own, so that its contents do not depend on the order in which
// routes are written.
Random route_random(const GenerateSettings& s, uint64_t index) {
  Random mixer{s.seed ^ (index * 0xd1b54a32d192ed03ull)};
  return Random{mixer.next()};
}

RouteDraw draw_route(const GenerateSettings& s, uint64_t index, Random* random) {
  *random = route_random(s, index);
  RouteKey key = route_key(index, s, *random);
  return {key, random->next() % 2000000};
}

// The draws of a listing view's records: apart from the route's own, so that adding a collection leaves
// the route collections as they were.
Random view_random(const GenerateSettings& s, uint64_t index, uint64_t collection) {
  Random mixer{s.seed ^ (index * 0xd1b54a32d192ed03ull) ^ (collection * 0x2545f4914f6cdd1dull)};
  return Random{mixer.next()};
}

enum ViewCollection : uint64_t { kAmtTunnel = 1, kEncap, kIir };

// The AMT tunnel that carries route `index` to its own gateway; the route and gateway records both show it.
struct AmtTunnel {
  uint32_t gateway;  // host order
  uint32_t id;
  uint64_t packets;
  uint64_t bytes;
};

AmtTunnel amt_tunnel(const GenerateSettings& s, uint64_t index) {
  Random random = view_random(s, index, kAmtTunnel);
  uint64_t packets = random.next() % 100000000;
  return {kGatewayBase + static_cast<uint32_t>(index), static_cast<uint32_t>(index % 65535) + 1, packets,
          packets * 1330};
}

// The records of the listing views, each reused from item to item.
struct ViewBuffers {
  mrib_lib_route_pod client{};
  std::vector<mrib_lib_intf_pod> client_interfaces;
  mrib_amt_route_pod amt{};
  mrib_amt_intrf_pod amt_interfaces[2]{};
  mrib_amt_gw_pod gateway{};
  mrib_amt_gw_active_route_pod gateway_route{};
  mrib_bvi_route_pod bvi{};
  mrib_bvi_mroute_pod bvi_mroute{};
  char table_name[64] = "";
  mrib_mpls_db_pod mpls{};
  uint32_t mpls_encaps[3]{};
  mrib_encapid_pod encap{};
  uint8_t encap_key[12]{};
  uint8_t ole_key[12]{};
  mrib_encapid_ole_pod ole{};
  mrib_encapid_node_pod node{};
  mrib_encapid_node_pod backup_node{};
  mrib_encapid_tblid_pod encap_table{};
  mrib_iir_intf_pod iir{};
  mrib_iir_route_pod iir_route{};
  uint32_t iir_virtual = 0;
  mrib_iir_sub_node_pod iir_parent{};
  char iir_name[48] = "";
  char parent_name[32] = "";
  char key[64] = "";
  std::string client_dir;  // the directories of the collections written route by route
  std::string amt_dir;
};

// The route as the MRIB server keeps it for its client: the route's interfaces by handle, AMT tunnels with
// their endpoints.
void fill_client_route(ViewBuffers* v, const RouteBuffers& b) {
  const mrib_route_pod& r = b.route;
  mrib_lib_route_pod& c = v->client;
  std::memset(&c, 0, sizeof c);
  c.TableID = kTableId;
  c.Source = r.Source;
  c.Group = r.GroupRange.GroupPrefix;
  c.GroupLength = r.GroupRange.GroupPrefixLength;
  c.MRIBAttributes = 0x2000;
  c.RPFNeighbor = r.RPFNeighbor;
  c.ProtocolValue = 6;
  v->client_interfaces.resize(r.Interfaces.count);
  for (uint64_t k = 0; k < r.Interfaces.count; ++k) {
    const mrib_intrf_pod& from = r.Interfaces.data[k];
    mrib_lib_intf_pod& to = v->client_interfaces[k];
    std::memset(&to, 0, sizeof to);
    to.InterfaceHandle = from.Interface;
    to.MRIBAttributes = from.InterfaceAttributes.IsAccept ? 0x4 : 0x10;
    if (from.Type != 1) continue;
    to.Type = 1;
    to.AMTInterface = kAmtInterface;
    to.AMTGateway = from.AMTGateway;
    to.AMTPort = static_cast<uint16_t>(from.AMTPort);
    to.AMTSourceAddress = from.AMTSource;
    to.AMTNexthop = from.AMTNexthop;
    to.AMT_MTU = static_cast<uint16_t>(from.AMT_MTU);
    to.AMT_TTL = from.AMT_TTL;
  }
  c.InterfaceList = {r.Interfaces.count, v->client_interfaces.data()};
}

// The route's AMT entry: its accepting port and the tunnel to its gateway over a forwarding port.
void fill_amt_route(ViewBuffers* v, const RouteBuffers& b, const AmtTunnel& tunnel) {
  const mrib_route_pod& r = b.route;
  mrib_amt_route_pod& a = v->amt;
  std::memset(&a, 0, sizeof a);
  a.Source = r.Source;
  a.GroupRange = r.GroupRange;
  mrib_amt_intrf_pod& accept = v->amt_interfaces[0];
  std::memset(&accept, 0, sizeof accept);
  accept.Interface = r.Interfaces.data[0].Interface;
  accept.InterfaceAttributes.IsAccept = 1;
  accept.Uptime = r.Uptime;
  mrib_amt_intrf_pod& amt = v->amt_interfaces[1];
  std::memset(&amt, 0, sizeof amt);
  amt.Interface = kAmtInterface;
  amt.Type = 1;
  amt.UnderlyingInterface = r.Interfaces.data[r.Interfaces.count > 1 ? 1 : 0].Interface;
  amt.UnderlyingInterfaceNode = kNode;
  amt.InterfaceAttributes.IsForward = 1;
  amt.InterfaceAttributes.AMT = 1;
  amt.Uptime = r.Uptime;
  amt.Expiry = 180;
  amt.AMTGateway = network_order(tunnel.gateway);
  amt.AMTPort = kAmtPort;
  amt.AMTNexthop = network_order(0x0a010102u);
  amt.AMTSource = network_order(0x0a000001u);
  amt.AMT_MTU = 1500;
  amt.AMT_TTL = 64;
  amt.AMTId = tunnel.id;
  amt.OutPkts = tunnel.packets;
  amt.OutBytes = tunnel.bytes;
  a.AMT_Interfaces = {2, v->amt_interfaces};
  a.AMTIFCount = 2;
}

void fill_gateway(ViewBuffers* v, const RouteDraw& route, const AmtTunnel& tunnel) {
  mrib_amt_gw_active_route_pod& joined = v->gateway_route;
  std::memset(&joined, 0, sizeof joined);
  set_address(&joined.Source, route.key.source);
  set_address(&joined.Group, route.key.group);
  joined.AMTId = tunnel.id;
  joined.JoinTime = route.uptime;
  joined.OutPkts = tunnel.packets;
  joined.OutBytes = tunnel.bytes;
  v->gateway = {network_order(tunnel.gateway), kAmtPort, {1, &joined}};
}

// The bridge route of BVI `bvi` that feeds the MRIB route of the same source and group.
void fill_bvi_route(ViewBuffers* v, const RouteBuffers& b, uint64_t index, uint32_t bvi) {
  mrib_bvi_route_pod& r = v->bvi;
  std::memset(&r, 0, sizeof r);
  r.Source = b.route.Source;
  r.GroupRange = b.route.GroupRange;
  r.BVIIfhandle = bvi_handle(bvi);
  uint32_t words[2] = {bvi + 1, static_cast<uint32_t>(index & 0xffff)};
  r.BVIPlatformDataLength = sizeof words;
  std::memcpy(r.BVIPlatformData, words, sizeof words);
  v->bvi_mroute = {b.route.Source, b.route.GroupRange};
  r.MRoute = {1, &v->bvi_mroute};
  r.TableName = v->table_name;
  r.Uptime = b.route.Uptime;
  r.RefCount = 1;
}

// An mLDP tunnel (an LSM ID) and the encapsulation IDs of the routes it carries.
void fill_mpls(ViewBuffers* v, const GenerateSettings& s, uint64_t index) {
  mrib_mpls_db_pod& m = v->mpls;
  std::memset(&m, 0, sizeof m);
  m.CTIDType = 5;
  m.MTEInterface = kLsmIdBase + static_cast<uint32_t>(index);
  m.EncapCount = 1 + static_cast<uint32_t>(index % 3);
  for (uint32_t k = 0; k < m.EncapCount; ++k)
    v->mpls_encaps[k] = kEncapIdBase + static_cast<uint32_t>((index + k * 7) % s.routes);
  m.EncapIdentifiers = {m.EncapCount, v->mpls_encaps};
}

void put_word(uint8_t* bytes, uint32_t word) {
  std::memcpy(bytes, &word, sizeof word);
}

// An encapsulation ID: a GRE MDT (even indexes) or an LSM tree (odd), redistributed to PIM.
void fill_encap(ViewBuffers* v, const GenerateSettings& s, uint64_t index) {
  Random random = view_random(s, index, kEncap);
  mrib_encapid_pod& e = v->encap;
  std::memset(&e, 0, sizeof e);
  bool gre = index % 2 == 0;
  uint32_t tree = gre ? network_order(0xe8ff0000u | static_cast<uint32_t>(index & 0xffff))
                      : kLsmIdBase + static_cast<uint32_t>(index);
  std::memset(v->encap_key, 0, sizeof v->encap_key);
  v->encap_key[0] = gre ? 6 : 5;
  put_word(v->encap_key + 4, gre ? network_order(0x0a000001u) : tree);
  if (gre) put_word(v->encap_key + 8, tree);
  e.EncapIDKey = {gre ? 12u : 8u, v->encap_key};
  e.EncapID = kEncapIdBase + static_cast<uint32_t>(index);
  e.RedistInfo[0] = {1, 3, random.next() % 2000000};
  e.RedistInfo[1].client_id = e.RedistInfo[2].client_id = 0xffffffffu;
  e.RouteCount = 1 + static_cast<uint32_t>(random.next() % 4);
  e.EncapsulationNode = 0x7f3a50000000ull + index * 64;
  put_word(v->ole_key, gre ? network_order(0x0a000001u) : tree);
  put_word(v->ole_key + 4, gre ? tree : 0x500);
  put_word(v->ole_key + 8, gre ? 0x500 : static_cast<uint32_t>(index % 2));
  v->ole = {gre ? 6u : 5u, {12, v->ole_key}};
  e.EncapIdOle = {1, &v->ole};
  v->node = {kNode, e.RouteCount};
  e.NodeIDList = {1, &v->node};
  v->backup_node = {kBackupNode, 1};
  e.BackupNodeIDList = {index % 4 == 0 ? 1u : 0u, &v->backup_node};
  v->encap_table = {kTableId, e.RouteCount};
  e.EncapTIdList = {1, &v->encap_table};
}

// A bundle sub-interface that takes part in IIR, with the route that arrives on its bundle, hashed to one
// of the bundle's member ports.
void fill_iir(ViewBuffers* v, const GenerateSettings& s, uint64_t index, const RouteDraw& route) {
  Random random = view_random(s, index, kIir);
  uint32_t bundle = static_cast<uint32_t>(index % kBundleCount);
  std::snprintf(v->iir_name, sizeof v->iir_name, "Bundle-Ether%u.%lu", bundle + 1, index / kBundleCount + 1);
  std::snprintf(v->parent_name, sizeof v->parent_name, "Bundle-Ether%u", bundle + 1);
  mrib_iir_intf_pod& i = v->iir;
  std::memset(&i, 0, sizeof i);
  i.IIRInterface = kIirHandleBase + static_cast<uint32_t>(index) * 8;
  i.IIRInterfaceName = v->iir_name;
  i.IsIIRNotifiedInterface = 1;
  v->iir_parent = {bundle_handle(bundle), v->parent_name, 0, 0, 0};
  i.ParentList = {1, &v->iir_parent};
  mrib_iir_route_pod& r = v->iir_route;
  std::memset(&r, 0, sizeof r);
  r.IIRRouteTableID = kTableId;
  set_address(&r.IIRSourceAddress, route.key.source);
  set_address(&r.IIRGroupAddress, route.key.group);
  r.IIRGroupPrefixLength = 32;
  v->iir_virtual = bundle_handle(bundle);
  r.VirtualInterfaceCount = 1;
  r.VirtualInterfaceList = {1, &v->iir_virtual};
  r.VirtualInterface = v->iir_virtual;
  r.ChildInterface = interface_handle(static_cast<uint32_t>(random.next() % kInterfaceCount));
  r.EntryPointer = 0x7f3a10000000ull + index * 128;
  i.RouteList = {1, &r};
  i.InterfaceCharacter = 1;
  i.InterfaceType = 66;
  i.ParentInterfaceType = 66;
  i.EntryPointer = 0x7f3a20000000ull + index * 128;
}

// The directories of the listing views' collections, below the active oper root.
std::string client_route_dir() {
  return std::string("/oper/ipv4-mrib-cl-") + kClient + "/gl/act/routedb/";
}
constexpr char kOperRoot[] = "/oper/ipv4-mrib/gl/act/";
constexpr char kBviRouteDir[] = "/oper/ipv4-mrib/gl/act/process/bvi-route/";
constexpr char kMplsDir[] = "/oper/ipv4-mrib/gl/act/table/default/mpls-mroute/";
constexpr char kEncapDir[] = "/oper/ipv4-mrib/gl/act/process/encapid-db/";
constexpr char kIirDir[] = "/oper/ipv4-mrib/gl/act/iirdb/";

void add_interface(nlohmann::json* fixture, uint32_t handle, const std::string& name) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%x", handle);
  (*fixture)["interfaces"].push_back({{"handle", text}, {"name", name}});
}

// What a router has whatever its routes: inventory, the collections' directories, the configuration tree,
// the client whose route database is written and the BVIs' tables.
std::string base_fixture(const GenerateSettings& s) {
  nlohmann::json fixture;
  for (uint32_t j = 0; j < kInterfaceCount; ++j)
    add_interface(&fixture, interface_handle(j), "GigabitEthernet0/0/0/" + std::to_string(j));
  add_interface(&fixture, kAmtInterface, "AMT0");
  for (uint32_t j = 0; j < kBundleCount; ++j)
    add_interface(&fixture, bundle_handle(j), "Bundle-Ether" + std::to_string(j + 1));
  for (uint32_t j = 0; j < kBviCount; ++j) {
    add_interface(&fixture, bvi_handle(j), "BVI" + std::to_string(j + 1));
    char handle[16];
    std::snprintf(handle, sizeof handle, "0x%x", bvi_handle(j));
    fixture["items"].push_back(
        {{"path", std::string(kOperRoot) + "process/bvi_intf/" + handle},
         {"type", "mrib_bvi_interface_pod"},
         {"value", {{"BVI_Name", handle}, {"Table_Id", kTableId}, {"TableName", s.vrf}}}});
  }
  fixture["nodes"] = {{{"id", "0x800"}, {"name", "0/0/CPU0"}}, {{"id", "0x810"}, {"name", "0/1/CPU0"}}};
  fixture["fapids"] = {{{"id", "0x800"}, {"name", "0/0/CPU0"}}};
  fixture["items"].push_back({{"path", std::string(kOperRoot) + "process/clients-id/" + kClient + ",1"},
                              {"type", "mrib_client_pod"},
                              {"value",
                               {{"ClientConnectionID", 3},
                                {"ClientID", 7},
                                {"IsActive", true},
                                {"RegisteredTableCount", 1},
                                {"ClientType", 1},
                                {"ClientReadState", 2},
                                {"ClientUptimeInSecs", 608400},
                                {"ClientName", kClient},
                                {"ClientInstanceID", "1"},
                                {"PurgeDelaySecs", 120},
                                {"NSFCapable", true}}}});
  std::string table = route_table_dir(s.vrf);
  fixture["dirs"] = {table + "routedb/",
                     table + "routeratedb/",
                     table + "routedb-ole/",
                     table + kRouteMibDir,
                     table + "amt-routedb/",
                     table + "amt-gw/",
                     client_route_dir(),
                     kBviRouteDir,
                     kMplsDir,
                     kEncapDir,
                     kIirDir,
                     "/cfg/gl/mcast/ord_v/" + s.vrf + "/ipv4/"};
  return fixture.dump();
}

bool encode(const pod_desc& desc, const void* record, std::string* bytes, std::string* error) {
  bytes->clear();
  return ostrel::sim::pod_encode_struct(desc, record, bytes, error);
}

template <typename Record>
bool put(StoreWriter& w, std::string_view dir, std::string_view name, const Record& record,
         std::string* bytes, std::string* error) {
  return encode(*OstrelPod<Record>::desc, &record, bytes, error) && w.item(dir, name, *bytes, error);
}

bool name_route(const mrib_route_pod& route, RouteNames* names, std::string* error) {
  if (route_names(route.Source, route.GroupRange, names)) return true;
  *error = "a generated route has no IPv4 names";
  return false;
}

// The listing views' records of the route that `b` holds, in the collections keyed, as the route table is,
// by source and then group: the client's route database and the AMT routes.
bool write_route_views(StoreWriter& w, const GenerateSettings& s, uint64_t index, const RouteBuffers& b,
                       const RouteNames& names, ViewBuffers* v, std::string* bytes, std::string* error) {
  fill_client_route(v, b);
  if (!put(w, v->client_dir, names.key, v->client, bytes, error)) return false;
  fill_amt_route(v, b, amt_tunnel(s, index));
  // "source,group" without the length: the AMT view's key.
  std::snprintf(v->key, sizeof v->key, "%.17s", names.key);
  return put(w, v->amt_dir, v->key, v->amt, bytes, error);
}

// BVI routes: every BVI_COUNT-th route on each BVI, keyed by the BVI's handle and then as the route table.
bool write_bvi_routes(StoreWriter& w, const GenerateSettings& s, const std::vector<uint32_t>& by_source_order,
                      RouteBuffers* b, ViewBuffers* v, std::string* error) {
  std::string bytes;
  RouteNames names;
  for (uint32_t bvi = 0; bvi < kBviCount; ++bvi) {
    for (uint32_t i : by_source_order) {
      if (i % kBviCount != bvi) continue;
      Random random;
      RouteDraw route = draw_route(s, i, &random);
      fill_route(b, i, route.key, s, route.uptime);
      if (!name_route(b->route, &names, error)) return false;
      fill_bvi_route(v, *b, i, bvi);
      std::snprintf(v->key, sizeof v->key, "0x%x,%s", bvi_handle(bvi), names.key);
      if (!put(w, kBviRouteDir, v->key, v->bvi, &bytes, error)) return false;
    }
  }
  return true;
}

// The collections of one record per route index, whose keys follow the index: AMT gateways, MPLS tunnels,
// encapsulation IDs and IIR interfaces.
bool write_indexed_views(StoreWriter& w, const GenerateSettings& s, ViewBuffers* v, std::string* error) {
  std::string bytes;
  std::string gateway_dir = route_table_dir(s.vrf) + "amt-gw/";
  for (uint64_t i = 0; i < s.routes; ++i) {
    Random random;
    RouteDraw route = draw_route(s, i, &random);
    AmtTunnel tunnel = amt_tunnel(s, i);
    fill_gateway(v, route, tunnel);
    std::snprintf(v->key, sizeof v->key, "%08x,%u", tunnel.gateway, kAmtPort);
    if (!put(w, gateway_dir, v->key, v->gateway, &bytes, error)) return false;
    fill_mpls(v, s, i);
    std::snprintf(v->key, sizeof v->key, "%u,2", v->mpls.MTEInterface);
    if (!put(w, kMplsDir, v->key, v->mpls, &bytes, error)) return false;
    fill_encap(v, s, i);
    std::snprintf(v->key, sizeof v->key, "%u", v->encap.EncapID);
    if (!put(w, kEncapDir, v->key, v->encap, &bytes, error)) return false;
    fill_iir(v, s, i, route);
    std::snprintf(v->key, sizeof v->key, "0x%x", v->iir.IIRInterface);
    if (!put(w, kIirDir, v->key, v->iir, &bytes, error)) return false;
  }
  return true;
}

// Routes are written in the order of each collection's keys: inserts in key order only ever touch the last
// pages of the table, where random ones made SQLite spill and reread pages through the whole file.
bool write_routes(StoreWriter& w, const GenerateSettings& s, mrib_db_summ_pod* summary, std::string* error) {
  std::string table = route_table_dir(s.vrf);
  std::string routedb = table + "routedb/", ratedb = table + "routeratedb/", oledb = table + "routedb-ole/";
  std::string mibdb = table + kRouteMibDir, by_group = table + "routedb-g/", by_source = table + "routedb-s/";
  std::vector<RouteKey> keys(s.routes);
  for (uint64_t i = 0; i < s.routes; ++i) {
    Random random = route_random(s, i);
    keys[i] = route_key(i, s, random);
  }
  // Source-keyed collections: source, then group (the text keys are fixed-width hexadecimal, so numeric
  // order is their order).
  std::vector<uint32_t> by_source_order(s.routes);
  for (uint32_t i = 0; i < s.routes; ++i) by_source_order[i] = i;
  std::sort(by_source_order.begin(), by_source_order.end(), [&keys](uint32_t a, uint32_t b) {
    return keys[a].source != keys[b].source ? keys[a].source < keys[b].source : keys[a].group < keys[b].group;
  });

  RouteBuffers b;
  ViewBuffers v;
  std::snprintf(v.table_name, sizeof v.table_name, "%s", s.vrf.c_str());
  v.client_dir = client_route_dir();
  v.amt_dir = table + "amt-routedb/";
  std::string bytes;
  RouteNames names;
  for (uint32_t i : by_source_order) {
    Random random = route_random(s, i);
    RouteKey k = route_key(i, s, random);
    uint64_t uptime = random.next() % 2000000;
    fill_route(&b, i, k, s, uptime);
    if (!name_route(b.route, &names, error)) return false;
    route_summary_add(b.route, summary);
    if (!encode(ostrel_mrib_route_pod_desc, &b.route, &bytes, error) ||
        !w.item(routedb, names.key, bytes, error))
      return false;
    if (s.filtered && route_belongs(RouteIndex::kBySource, b.route)) {
      std::string source_path = by_source + names.source_dir;
      if (!w.dir(by_source, names.source_dir, error) || !w.item(source_path, names.key, bytes, error))
        return false;
    }
    route_outgoing_record(b.route, &b.ole);
    if (!encode(ostrel_mrib_route_ole_pod_desc, &b.ole, &bytes, error) ||
        !w.item(oledb, names.key, bytes, error))
      return false;
    if (!write_route_views(w, s, i, b, names, &v, &bytes, error)) return false;
    add_rates(&b, s, random);
    if (!encode(ostrel_mrib_route_pod_desc, &b.route, &bytes, error) ||
        !w.item(ratedb, names.key, bytes, error))
      return false;
  }

  // Group-keyed collections: groups follow the route index, so index order is key order.
  for (uint32_t i = 0; i < s.routes; ++i) {
    Random random = route_random(s, i);
    RouteKey k = route_key(i, s, random);
    fill_route(&b, i, k, s, random.next() % 2000000);
    if (!name_route(b.route, &names, error)) return false;
    if (!encode(ostrel_mrib_route_pod_desc, &b.route, &bytes, error) ||
        !w.item(mibdb, names.mib_key, bytes, error))
      return false;
    if (s.filtered) {
      std::string group_path = by_group + names.group_dir;
      if (!w.dir(by_group, names.group_dir, error) || !w.item(group_path, names.key, bytes, error))
        return false;
    }
  }
  if (s.filtered) {
    std::string_view parent(table);
    if (!w.dir(parent, "routedb-g/", error) || !w.dir(parent, "routedb-s/", error)) return false;
  }
  return write_bvi_routes(w, s, by_source_order, &b, &v, error) && write_indexed_views(w, s, &v, error);
}

bool write_summary(StoreWriter& w, const GenerateSettings& s, mrib_db_summ_pod summary, std::string* error) {
  // Every route is a /32; the one group range is what generated roots say, and bench roots are compared
  // byte for byte.
  summary.GroupRanges = 1;
  std::string bytes;
  return encode(ostrel_mrib_db_summ_pod_desc, &summary, &bytes, error) &&
         w.item(route_table_dir(s.vrf), "routedb-summary", bytes, error);
}

bool number_option(const char* text, uint64_t max, uint64_t* out) {
  char* end = nullptr;
  unsigned long long value = std::strtoull(text, &end, 0);
  if (*text == '\0' || *end != '\0' || value > max) return false;
  *out = value;
  return true;
}

}  // namespace

bool generate_root(const std::string& root, const GenerateSettings& s, std::string* error) {
  // The routes go into the base root before it is put in place: an interrupted run leaves the old root.
  return build_root(root, {{"generated base", base_fixture(s)}}, error,
                    [&](const std::string& dir, std::string* finish_error) {
                      mrib_db_summ_pod summary{};
                      StoreWriter w;
                      return w.open(dir + "/vellum.db", finish_error) &&
                             write_routes(w, s, &summary, finish_error) &&
                             write_summary(w, s, summary, finish_error) && w.commit(finish_error);
                    });
}

bool parse_generate_options(int argc, char** argv, GenerateSettings* s, std::string* error) {
  for (int i = 0; i < argc; ++i) {
    std::string_view option = argv[i];
    if (option == "--filtered") {
      s->filtered = true;
      continue;
    }
    if (i + 1 >= argc) {
      *error = std::string(option) + " needs a value";
      return false;
    }
    const char* value = argv[++i];
    uint64_t n = 0;
    bool ok = true;
    if (option == "--routes") {
      ok = number_option(value, 16000000, &s->routes);
    } else if (option == "--interfaces") {
      ok = number_option(value, 1000, &n) && n >= 1;
      s->interfaces = static_cast<uint32_t>(n);
    } else if (option == "--amt-every") {
      ok = number_option(value, UINT32_MAX, &n);
      s->amt_every = static_cast<uint32_t>(n);
    } else if (option == "--star-every") {
      ok = number_option(value, UINT32_MAX, &n);
      s->star_every = static_cast<uint32_t>(n);
    } else if (option == "--seed") {
      ok = number_option(value, UINT64_MAX, &s->seed);
    } else if (option == "--vrf") {
      s->vrf = value;
      ok = !s->vrf.empty() && s->vrf.find('/') == std::string::npos;
    } else {
      *error = "unknown option " + std::string(option);
      return false;
    }
    if (!ok) {
      *error = "bad value '" + std::string(value) + "' for " + std::string(option);
      return false;
    }
  }
  return true;
}

}  // namespace ostrel::tools
