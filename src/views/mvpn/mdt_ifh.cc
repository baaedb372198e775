// The MDT interface-handle view: the listing of "process/mdt-ifh/" or the one interface of -h, and the
// element printer. Both read through the view handle, bound to the oper root for this view.
#include "views/mvpn/mdt_ifh.h"

#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/interface.h"
#include "views/mvpn/batched_listing.h"

namespace {

constexpr char kElementName[] = "ostrel_mdt_ifh_element";

// Under -D, not -P. The heading is printed over an empty list too, so that an operator who asked sees
// that there are none.
void print_route_references(const mrib_mdt_ifh_pod& ifh) {
  ostrel_out("    MDT route forward-reference DB: \n");
  for (const mrib_mdt_routedb_pod& route : ostrel_items(ifh.MDTRouteDB)) {
    ostrel_outf(
        "    (%s,%s/%d) [tid:0x%x] recollapse: %s\n", ostrel_source_text(&route.MDTRouteSourceAddress),
        ostrel_addr_text(&route.MDTRouteGroupAddress), static_cast<int>(route.MDTRouteGroupPrefixLength),
        route.MDTRouteTableID, route.MDTRemoteReprograming ? "TRUE" : "FALSE");
  }
}

void print_mdt_ifh(const mrib_mdt_ifh_pod& ifh) {
  // An uptime with its top bit set has no duration text; it reads as the other views write an unknown one.
  const char* uptime = ostrel_dhms_text(ifh.MDTUpTime).data();
  ostrel_outf("0x%x(%s)  TID:0x%x  MH:%d  I:%d  EX:%d  Up:%s \n", ifh.MDTInterface,
              interface_name(ifh.MDTInterface, 1), ifh.MDTInterfaceTableID,
              static_cast<int>(ifh.MHReferenceCount), static_cast<int>(ifh.IntranetReferenceCount),
              static_cast<int>(ifh.ExtranetReferenceCount), uptime);
  if (ostrel_platform_detail) print_route_references(ifh);
}

void print_element(const void* data, uint32_t length) {
  ostrel_print_element<mrib_mdt_ifh_pod, print_mdt_ifh>(kElementName, data, length);
}

// Unlike the IIR listing, this one does not report a batch that it cannot free.
constexpr BatchedListing kListing{
    .directory = "process/mdt-ifh/",
    .title =
        "IP Multicast MRIB MDT ifhandle Interface DB\n"
        "MH - Handle update count, I - Intranet route count, EX - Extranet route count, Up - Uptime\n",
    .empty = "MRIB MDT ifh DB is empty.\n",
    .name = "ostrel_mdt_ifh",
    .report_free_failure = false,
    .print = print_element,
};

// The store keys an MDT interface by its short display name, not by its handle. A missing one is said on
// standard output; any other failure is not said at all.
void show_handle(uint32_t handle) {
  if (!ostrel_build_path("process/mdt-ifh/%s", interface_name(handle, 1))) return;
  if (ostrel_fetch_element(ostrel_view_handle, print_element) == kOstrelNotFound)
    ostrel_out("MDT ifh entry not found\n");
}

}  // namespace

void ostrel_mdt_ifh_view(const ShowArgs& args) {
  if (args.handle_filter != 0) {
    show_handle(static_cast<uint32_t>(args.handle_filter));
  } else {
    ostrel_batched_listing(ostrel_view_handle, kListing);
  }
}
