// The -S view. One VRF's summary is one record, fetched through the root handle with the single-item cycle
// and taken without a data-type check. The "all" form walks the configuration tree with handles of its own:
// the VRFs that count are those configured for IPv4 multicast, not those the server holds tables for.
#include "views/route/route_summary.h"

#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/pod_records.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "platform/text.h"

namespace {

constexpr char kConfigRoot[] = "/cfg/gl/mcast/ord_v/";
constexpr size_t kNameSize = 256;

// A store handle bound for the length of one walk. Binding and unbinding both need the store's library, so
// each is preceded by the presence check; a failed check counts as a failed bind.
class BoundHandle {
 public:
  BoundHandle() = default;
  BoundHandle(const BoundHandle&) = delete;
  BoundHandle& operator=(const BoundHandle&) = delete;
  ~BoundHandle() { unbind(); }

  [[nodiscard]] bool bind(const char* path) {
    if (ostrel_vellum_check() != kCerrOk) return false;
    if (vellum_bind(&handle_, path, 0) == kCerrOk) return true;
    handle_ = nullptr;
    return false;
  }

  vellum_handle_t get() const { return handle_; }

 private:
  void unbind() {
    if (handle_ == nullptr) return;
    // Nothing is reported here: the walk's result does not depend on giving the handle back.
    if (ostrel_vellum_check() == kCerrOk) (void)vellum_unbind(handle_);
    handle_ = nullptr;
  }

  vellum_handle_t handle_ = nullptr;
};

// `text` cut at its last "/" into `name`: "red/" and "red" both give "red".
void vrf_name(const char* text, char (&name)[kNameSize]) {
  sstrncpy(name, text, sizeof name);
  if (char* slash = std::strrchr(name, '/')) *slash = '\0';
}

void print_summary(const char* vrf, const mrib_db_summ_pod& summary) {
  ostrel_outf("\nMRIB Route Summary for VRF %s\n", vrf);
  ostrel_outf("  No. of group ranges = %d\n", static_cast<int>(summary.GroupRanges));
  ostrel_outf("  No. of (*,G) routes = %d\n", static_cast<int>(summary.GRoutes));
  ostrel_outf("  No. of (S,G) routes = %d\n", static_cast<int>(summary.SGRoutes));
  ostrel_outf("  No. of Route x Interfaces (RxI) = %d\n", static_cast<int>(summary.ForwardingInterfaceCount));
  ostrel_outf("  Total No. of Interfaces in all routes = %d\n",
              static_cast<int>(summary.RouteInterfaceCount));
}

void add_summary(const mrib_db_summ_pod& summary, RouteSummaryTotals& totals) {
  totals.group_ranges += summary.GroupRanges;
  totals.g_routes += summary.GRoutes;
  totals.sg_routes += summary.SGRoutes;
  totals.forwarding_interfaces += summary.ForwardingInterfaceCount;
  totals.route_interfaces += summary.RouteInterfaceCount;
}

struct SummaryTarget {
  const char* vrf;
  RouteSummaryTotals* totals;
};

void take_summary(const mrib_db_summ_pod& summary, SummaryTarget* target_pointer) {
  const SummaryTarget& target = *target_pointer;
  if (target.totals != nullptr) {
    add_summary(summary, *target.totals);
  } else {
    print_summary(target.vrf, summary);
  }
}

// True when `entry` (a directory name below the configuration root) holds IPv4 configuration: its "ipv4/"
// directory binds and lists something. What it lists does not matter.
bool has_ipv4_config(const char* entry) {
  char path[256];
  int length = std::snprintf(path, sizeof path, "%s%sipv4/", kConfigRoot, entry);
  if (length < 0 || static_cast<size_t>(length) >= sizeof path) return false;
  BoundHandle ipv4;
  if (!ipv4.bind(path)) return false;
  int32_t count = -1;
  vellum_list_t names = nullptr;
  cerr_t rc = vellum_list(ipv4.get(), "", "", &count, &names);
  return rc == kCerrOk && names != nullptr;
}

void print_totals(int32_t vrfs, const RouteSummaryTotals& totals) {
  // The group-range sum is kept with the others but is not part of this block.
  ostrel_outf("\nMRIB routes Summary for All VRFs (num VRFs : %d)\n", vrfs);
  ostrel_outf("  No. of (*,G) routes = %d\n", static_cast<int>(totals.g_routes));
  ostrel_outf("  No. of (S,G) routes = %d\n", static_cast<int>(totals.sg_routes));
  ostrel_outf("  No. of Route x Interfaces (RxI) = %d\n", static_cast<int>(totals.forwarding_interfaces));
  ostrel_outf("  Total No. of Interfaces in all routes = %d\n", static_cast<int>(totals.route_interfaces));
}

// Every configured VRF with IPv4 configuration: summed, or under -D each printed on its own.
void show_all_vrfs(bool each_on_its_own) {
  BoundHandle config;
  if (!config.bind(kConfigRoot)) return;
  int32_t count = -1;
  vellum_list_t entries = nullptr;
  if (vellum_list(config.get(), "", "", &count, &entries) != kCerrOk || entries == nullptr) {
    ostrel_out("No VRFs exist\n");
    return;
  }
  RouteSummaryTotals totals;
  int32_t vrfs = 0;
  for (;;) {
    const char* entry = nullptr;
    if (cerr_t rc = vellum_list_next(entries, &entry); rc != kCerrOk) {
      ostrel_outf("Error retrieving data from MRIB (%s)\n", cerr_strerror(rc));
      return;
    }
    if (entry == nullptr || entry[0] == '\0') break;
    if (!has_ipv4_config(entry)) continue;
    ++vrfs;
    char name[kNameSize];
    vrf_name(entry, name);
    mrib_route_summary_show(ostrel_root_handle, name, each_on_its_own ? nullptr : &totals);
  }
  if (!each_on_its_own) print_totals(vrfs, totals);
}

}  // namespace

// One VRF's summary, without a data-type check. A missing one says so with the VRF's name, whatever the
// code, which no ViewTexts row can: the view writes that line itself.
void mrib_route_summary_show(vellum_handle_t root, const char* vrf, RouteSummaryTotals* totals) {
  if (!ostrel_build_path("table/%s/routedb-summary", vrf)) return;
  SummaryTarget target{vrf, totals};
  cerr_t rc = ostrel_item_cycle(ItemCycle<mrib_db_summ_pod, SummaryTarget>{
      .handle = root, .check_data_type = false, .context = &target, .print = take_summary});
  if (rc == kCerrOk) return;
  if (ostrel_debug) {
    ostrel_outf("\nNo MRIB Route-DB for VRF %s: %s\n", vrf, cerr_strerror(rc));
  } else {
    ostrel_outf("\nNo MRIB Route-DB for VRF %s\n", vrf);
  }
}

void ostrel_route_summary_view(const ShowArgs& args) {
  char name[kNameSize];
  vrf_name(args.vrf != nullptr ? args.vrf : "default", name);
  if (std::strncmp(name, "all", kNameSize) == 0) {
    show_all_vrfs(args.platform_detail);
  } else {
    mrib_route_summary_show(ostrel_root_handle, name, nullptr);
  }
}
