// The synthetic router: a small fixture for what a router always has (inventory, directories, the
// configuration tree, the summary), then the routes written straight into the store in one transaction,
// each encoded from a structure that is reused for every route.
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

// What a router has whatever its routes: inventory, the collections' directories, the configuration tree.
std::string base_fixture(const GenerateSettings& s) {
  nlohmann::json fixture;
  for (uint32_t j = 0; j < kInterfaceCount; ++j) {
    char handle[16];
    std::snprintf(handle, sizeof handle, "0x%x", interface_handle(j));
    fixture["interfaces"].push_back(
        {{"handle", handle}, {"name", "GigabitEthernet0/0/0/" + std::to_string(j)}});
  }
  fixture["nodes"] = {{{"id", "0x800"}, {"name", "0/0/CPU0"}}};
  fixture["fapids"] = {{{"id", "0x800"}, {"name", "0/0/CPU0"}}};
  std::string table = route_table_dir(s.vrf);
  fixture["dirs"] = {table + "routedb/", table + "routeratedb/", table + "routedb-ole/", table + kRouteMibDir,
                     "/cfg/gl/mcast/ord_v/" + s.vrf + "/ipv4/"};
  return fixture.dump();
}

bool encode(const pod_desc& desc, const void* record, std::string* bytes, std::string* error) {
  bytes->clear();
  return ostrel::sim::pod_encode_struct(desc, record, bytes, error);
}

bool name_route(const mrib_route_pod& route, RouteNames* names, std::string* error) {
  if (route_names(route.Source, route.GroupRange, names)) return true;
  *error = "a generated route has no IPv4 names";
  return false;
}

// Each route draws from a stream of its own, so that its contents do not depend on the order in which
// routes are written.
Random route_random(const GenerateSettings& s, uint64_t index) {
  Random mixer{s.seed ^ (index * 0xd1b54a32d192ed03ull)};
  return Random{mixer.next()};
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
  return true;
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
