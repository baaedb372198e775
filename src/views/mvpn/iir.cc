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

// An interface's lines are assembled in one line, written out before a piece that might not fit: IIR
// interfaces are printed by the thousand and more. Room for the fixed texts and numbers of a line, and for
// a name of up to 80 characters beside them:
constexpr size_t kLineRoom = 320;
constexpr size_t kNameRoom = 80;

// Whether `text` and the fixed pieces around it go in the line at once; a longer text is formatted on its
// own.
bool fits_with_name(OstrelLine& line, const char* text) {
  if (std::strlen(text) > kNameRoom) {
    line.emit();
    return false;
  }
  ostrel_make_room(line, kLineRoom);
  return true;
}

void print_heading(OstrelLine& line, const mrib_iir_intf_pod& intf) {
  // The child count is the server's own counter; parents and routes are counted from the lists it sent.
  const char* name = ostrel_text_or_empty(intf.IIRInterfaceName);
  if (!fits_with_name(line, name)) {
    ostrel_outf(
        "\n%s [0x%x], Flags: %s%s%s, Childcount: %d, Parentcount: %d, Routecount: %d, Threshold: %d %s\n",
        name, intf.IIRInterface, intf.IsVirtualInterface ? "V" : "", intf.IsIIRNotifiedInterface ? "I" : "",
        intf.IsDeleteInProgress ? "D" : "", static_cast<int>(intf.ChildCount),
        static_cast<int>(intf.ParentList.count), static_cast<int>(intf.RouteList.count),
        static_cast<int>(intf.RehashThreshold), intf.RehashThreshold == 0 ? "(Not Enabled)" : "");
    return;
  }
  line.add('\n').add(name).add(" [0x");
  ostrel_add_hex(line, intf.IIRInterface).add("], Flags: ").add(intf.IsVirtualInterface ? "V" : "");
  line.add(intf.IsIIRNotifiedInterface ? "I" : "").add(intf.IsDeleteInProgress ? "D" : "");
  line.add(", Childcount: ").add_signed(static_cast<int>(intf.ChildCount));
  line.add(", Parentcount: ").add_signed(static_cast<int>(intf.ParentList.count));
  line.add(", Routecount: ").add_signed(static_cast<int>(intf.RouteList.count));
  line.add(", Threshold: ").add_signed(static_cast<int>(intf.RehashThreshold)).add(' ');
  line.add(intf.RehashThreshold == 0 ? "(Not Enabled)" : "").add('\n');
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

void print_types(OstrelLine& line, const mrib_iir_intf_pod& intf) {
  ostrel_add_hex(ostrel_make_room(line, kLineRoom).add("if_char: 0x"), intf.InterfaceCharacter);
  ostrel_add_hex(line.add(", if_type: 0x"), intf.InterfaceType).add(" parent_if_type 0x");
  ostrel_add_hex(line, intf.ParentInterfaceType);
  if (!has_if_name(intf) && !ostrel_private) {
    line.add('\n');
    return;
  }
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

void print_children(OstrelLine& line, const mrib_iir_intf_pod& intf) {
  line.add("ChildList:\n");
  for (const mrib_iir_sub_node_pod& child : ostrel_items(intf.ChildList)) {
    const char* name = ostrel_text_or_empty(child.SubInterfaceName);
    line.emit();
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

void print_parents(OstrelLine& line, const mrib_iir_intf_pod& intf) {
  line.add("ParentList:\n");
  for (const mrib_iir_sub_node_pod& parent : ostrel_items(intf.ParentList)) {
    const char* name = ostrel_text_or_empty(parent.SubInterfaceName);
    if (fits_with_name(line, name)) {
      ostrel_add_hex(line.add("  ").add(name).add(" [0x"), parent.SubInterface).add("]\n");
    } else {
      ostrel_outf("  %s [0x%x]\n", name, parent.SubInterface);
    }
  }
}

// The private entry piece: 30 bytes, as a label line builds it.
struct Piece {
  char text[30] = {};
};

Piece entry_piece(uint64_t entry) {
  Piece piece;
  std::snprintf(piece.text, sizeof piece.text, ", 0x%lx", entry);
  return piece;
}

// A route's pieces are never cut at their 30 bytes: ", Hashed If: 0x" and eight digits, ", 0x" and sixteen.
void print_routes(OstrelLine& line, const mrib_iir_intf_pod& intf) {
  line.add("RouteList:\n");
  for (const mrib_iir_route_pod& route : ostrel_items(intf.RouteList)) {
    // The addresses come from a ring and the interface name from a buffer of its own, at most 80
    // characters; each is copied into the line before the next is asked for.
    ostrel_add_hex(ostrel_make_room(line, kLineRoom).add("  0x"), route.IIRRouteTableID).add(":(");
    line.add(ostrel_source_text(&route.IIRSourceAddress)).add(", ");
    line.add(ostrel_addr_text(&route.IIRGroupAddress)).add('/');
    line.add_signed(static_cast<int>(route.IIRGroupPrefixLength)).add("), ");
    ostrel_add_hex(line.add(ostrel_ifh_name(route.VirtualInterface, 1)).add(" (0x"), route.VirtualInterface);
    line.add(')');
    if (route.ChildInterface != 0) ostrel_add_hex(line.add(", Hashed If: 0x"), route.ChildInterface);
    if (ostrel_private) ostrel_add_hex(line.add(", 0x"), route.EntryPointer);
    line.add('\n');
  }
}

void print_labels(const char* heading, const pod_array<mrib_iir_label_pod>& labels) {
  ostrel_out(heading);
  for (const mrib_iir_label_pod& label : ostrel_items(labels)) {
    ostrel_outf("  %d, %s (0x%x)%s%s\n", static_cast<int>(label.Label),
                ostrel_ifh_name(label.VirtualInterface, 1).data(), label.VirtualInterface,
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
  OstrelLine line;
  print_heading(line, intf);
  print_types(line, intf);
  print_children(line, intf);
  print_parents(line, intf);
  print_routes(line, intf);
  line.emit();
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
