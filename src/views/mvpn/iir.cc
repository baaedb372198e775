// The IIR interface view: the listing of "iirdb/" or the one interface of -z, and the element printer.
// Both read through the view handle, which is bound to the oper root for this view, so -v changes nothing.
#include "views/mvpn/iir.h"

#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "views/line_pieces.h"
#include "views/mvpn/batched_listing.h"

namespace {

constexpr char kElementName[] = "ostrel_iir_intf_element";

// The lines every interface has are assembled in place: IIR interfaces are printed by the thousand and more.
void print_heading(const mrib_iir_intf_pod& intf) {
  // The child count is the server's own counter; parents and routes are counted from the lists it sent. The
  // name is a text of up to 80 characters, which the line holds whole.
  OstrelLine line;
  line.add('\n').add(ostrel_text_or_empty(intf.IIRInterfaceName)).add(" [0x");
  ostrel_add_hex(line, intf.IIRInterface).add("], Flags: ").add(intf.IsVirtualInterface ? "V" : "");
  line.add(intf.IsIIRNotifiedInterface ? "I" : "").add(intf.IsDeleteInProgress ? "D" : "");
  line.add(", Childcount: ").add_signed(static_cast<int>(intf.ChildCount));
  line.add(", Parentcount: ").add_signed(static_cast<int>(intf.ParentList.count));
  line.add(", Routecount: ").add_signed(static_cast<int>(intf.RouteList.count));
  line.add(", Threshold: ").add_signed(static_cast<int>(intf.RehashThreshold)).add(' ');
  line.add(intf.RehashThreshold == 0 ? "(Not Enabled)" : "").add('\n');
  if (line.fits()) {
    line.emit();
    return;
  }
  ostrel_outf(
      "\n%s [0x%x], Flags: %s%s%s, Childcount: %d, Parentcount: %d, Routecount: %d, Threshold: %d %s\n",
      ostrel_text_or_empty(intf.IIRInterfaceName), intf.IIRInterface, intf.IsVirtualInterface ? "V" : "",
      intf.IsIIRNotifiedInterface ? "I" : "", intf.IsDeleteInProgress ? "D" : "",
      static_cast<int>(intf.ChildCount), static_cast<int>(intf.ParentList.count),
      static_cast<int>(intf.RouteList.count), static_cast<int>(intf.RehashThreshold),
      intf.RehashThreshold == 0 ? "(Not Enabled)" : "");
}

// Whether the record's IfName and InterfaceULIndex mean anything: always for types 89 and 90, for 66 only
// on a virtual interface.
bool has_if_name(const mrib_iir_intf_pod& intf) {
  switch (intf.InterfaceType) {
    case 89:
    case 90:
      return true;
    case 66:
      return intf.IsVirtualInterface != 0;
    default:
      return false;
  }
}

void print_types(const mrib_iir_intf_pod& intf) {
  OstrelLine line;
  ostrel_add_hex(line.add("if_char: 0x"), intf.InterfaceCharacter).add(", if_type: 0x");
  ostrel_add_hex(line, intf.InterfaceType).add(" parent_if_type 0x");
  ostrel_add_hex(line, intf.ParentInterfaceType);
  line.emit();
  if (has_if_name(intf))
    ostrel_outf(", if_name: %s, if_ul_index %d", ostrel_text_or_empty(intf.IfName),
                static_cast<int>(intf.InterfaceULIndex));
  if (ostrel_private) {
    ostrel_outf(", 0x%lx\n", intf.EntryPointer);
  } else {
    ostrel_out("\n");
  }
}

void print_children(const mrib_iir_intf_pod& intf) {
  ostrel_out("ChildList:\n");
  for (const mrib_iir_sub_node_pod& child : ostrel_items(intf.ChildList)) {
    const char* name = ostrel_text_or_empty(child.SubInterfaceName);
    if (ostrel_private) {
      ostrel_outf("  %s [0x%x], node 0x%lx, name_next 0x%lx\n", name, child.SubInterface,
                  child.SubInterfacePointer, child.SubInterfaceNameNextPointer);
    } else if (child.ReferenceCount != 0) {
      ostrel_outf("  %s [0x%x] Ref cnt: %d\n", name, child.SubInterface,
                  static_cast<int>(child.ReferenceCount));
    } else {
      ostrel_outf("  %s [0x%x]\n", name, child.SubInterface);
    }
  }
}

void print_parents(const mrib_iir_intf_pod& intf) {
  ostrel_out("ParentList:\n");
  for (const mrib_iir_sub_node_pod& parent : ostrel_items(intf.ParentList)) {
    const char* name = ostrel_text_or_empty(parent.SubInterfaceName);
    OstrelLine line;
    ostrel_add_hex(line.add("  ").add(name).add(" [0x"), parent.SubInterface).add("]\n");
    if (line.fits()) {
      line.emit();
    } else {
      ostrel_outf("  %s [0x%x]\n", name, parent.SubInterface);
    }
  }
}

// A piece of a route or label line: 30 bytes, as the line is built.
struct Piece {
  char text[30] = {};
};

Piece entry_piece(uint64_t entry) {
  Piece piece;
  std::snprintf(piece.text, sizeof piece.text, ", 0x%lx", entry);
  return piece;
}

void print_routes(const mrib_iir_intf_pod& intf) {
  ostrel_out("RouteList:\n");
  for (const mrib_iir_route_pod& route : ostrel_items(intf.RouteList)) {
    Piece entry = ostrel_private ? entry_piece(route.EntryPointer) : Piece{};
    Piece hash;
    if (route.ChildInterface != 0) {
      OstrelLine piece(sizeof hash.text - 1);
      ostrel_add_hex(piece.add(", Hashed If: 0x"), route.ChildInterface);
      std::memcpy(hash.text, piece.text().data(), piece.text().size());
    }
    // The interface name comes from a buffer of its own and the addresses from a ring, and all are copied
    // into the line at once; the name is at most 80 characters, so the line holds it.
    OstrelLine line;
    ostrel_add_hex(line.add("  0x"), route.IIRRouteTableID)
        .add(":(")
        .add(ostrel_source_text(&route.IIRSourceAddress));
    line.add(", ").add(ostrel_addr_text(&route.IIRGroupAddress)).add('/');
    line.add_signed(static_cast<int>(route.IIRGroupPrefixLength)).add("), ");
    ostrel_add_hex(line.add(ostrel_ifh_name(route.VirtualInterface, 1)).add(" (0x"), route.VirtualInterface);
    line.add(')').add(hash.text).add(entry.text).add('\n');
    line.emit();
  }
}

void print_labels(const char* heading, const pod_array<mrib_iir_label_pod>& labels) {
  ostrel_out(heading);
  for (const mrib_iir_label_pod& label : ostrel_items(labels)) {
    ostrel_outf("  %d, %s (0x%x)%s%s\n", static_cast<int>(label.Label),
                ostrel_ifh_name(label.VirtualInterface, 1), label.VirtualInterface,
                label.RecursiveOutgoinfInfo ? ", rec" : "", entry_piece(label.EntryPointer).text);
  }
}

// The outgoing-list heads and counts run primary, backup, recursive primary, recursive backup, although
// the record holds them primary, recursive primary, backup, recursive backup.
void print_oles(const mrib_iir_intf_pod& intf) {
  ostrel_out("Ole list: \n");
  ostrel_outf("  Ptrs : 0x%lx(p), 0x%lx(b), 0x%lx(rp), 0x%lx(rb), 0x%lx(ip), 0x%lx(amt)\n",
              intf.NHLabelOleHead, intf.NHBackupLabelOleHead, intf.NHLabelRecursiveOleHead,
              intf.NHBackupLabelRecursiveOleHead, intf.IPRouteOleHead, intf.IPRouteAMTOleHead);
  ostrel_outf("  Label Counts: %d(p), %d(b), %d(rp), %d(rb)\n", static_cast<int>(intf.NHLabelOlecount),
              static_cast<int>(intf.NHBackupLabelOlecount), static_cast<int>(intf.NHLabelRecursiveOlecount),
              static_cast<int>(intf.NHBackupLabelRecursiveOlecount));
  ostrel_outf("  IP Count: %d(ip), %d(amt)\n", static_cast<int>(intf.IPRouteOlecount),
              static_cast<int>(intf.IPRouteAMTOlecount));
  ostrel_outf("  Child Name Head 0x%lx\n", intf.ChildSubInterfaceNameHeadPointer);
}

void print_iir_intf(const mrib_iir_intf_pod& intf) {
  print_heading(intf);
  print_types(intf);
  print_children(intf);
  print_parents(intf);
  print_routes(intf);
  if (!ostrel_private) return;
  print_labels("Primary Label List:\n", intf.PrimaryLabelList);
  print_labels("Backup Label List:\n", intf.BackupLabelList);
  print_oles(intf);
}

void print_element(const void* data, uint32_t length) {
  ostrel_print_element<mrib_iir_intf_pod, print_iir_intf>(kElementName, data, length);
}

constexpr BatchedListing kListing{
    .directory = "iirdb/",
    .title =
        "IP Multicast MRIB IIR Interface DB\n"
        "Entry Flags: D - Delete in Progress, I - IIR Notified, V - Virtual Interface\n",
    .empty = "MRIB IIR DB is empty.\n",
    .name = "ostrel_iir_intf",
    .report_free_failure = true,
    .print = print_element,
};

// Both failures of the one interface go to standard error, the missing one included.
void show_interface(const char* name) {
  if (!ostrel_build_path("iirdb/%s", name)) return;
  cerr_t rc = ostrel_fetch_element(ostrel_view_handle, print_element);
  if (rc == kOstrelNotFound) {
    std::fputs("No entries for the interface\n", stderr);
  } else if (rc != kCerrOk) {
    std::fputs("No interface information at location\n", stderr);
  }
}

}  // namespace

void ostrel_iir_intf_view(const ShowArgs& args) {
  if (args.ifname[0] != '\0') {
    show_interface(args.ifname);
  } else {
    ostrel_batched_listing(ostrel_view_handle, kListing);
  }
}
