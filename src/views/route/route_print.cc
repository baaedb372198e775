// The route entry printer: header line, detail rows, interfaces in record order or in sorted lists taken
// from the two pools, and the node rate blocks. Every text is written where its line is printed.
#include "views/route/route_print.h"

#include <algorithm>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "access/output.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/chunk.h"
#include "platform/mrib_utl.h"
#include "platform/text.h"
#include "views/line_pieces.h"
#include "views/route/route_flags.h"

namespace {

constexpr uint32_t kUnset = 0xFFFFFFFF;
constexpr char kOverflow[] = "buffer overflow in printing MRIB route\n";

// ---- Small texts -----------------------------------------------------------------------------------------

// The slot holding forwarding processor `fapid`, or `unset_word` for the all-ones value.
const char* slot_text(uint32_t fapid, const char* unset_word) {
  if (fapid == kUnset) return unset_word;
  return ostrel_fapid_name(fapid, 79).value_or("unknown").data();
}

std::string_view node_text(uint32_t node_id) {
  return ostrel_node_name(node_id, 32).value_or("Slot unknown");
}

bool known_family(const mrib_addrtype& addr) {
  return mrib_pod_addr_bytes(&addr) != nullptr;
}

// ---- 1. Header line --------------------------------------------------------------------------------------

// The header line is built in a buffer of 512 bytes, after the blank line that precedes it, and abandoned
// whole when a piece does not fit there.
constexpr size_t kHeaderBuffer = 512;

// Builds and prints the header line; false when it did not fit, and then nothing was printed.
bool print_header(const mrib_route_pod& route, bool detail, bool nsf) {
  OstrelLine line(1 + kHeaderBuffer - 1);
  line.add('\n');
  line.advance(ostrel_entry_designation(route.Source, route.GroupRange.GroupPrefix,
                                        route.GroupRange.GroupPrefixLength, nsf, line.end(),
                                        static_cast<int>(line.room())));
  const mrib_attrib_entry_pod& attributes = route.EntryAttributes;
  if (detail) line.addf(" Ver: 0x%x", route.RouteVersion);
  if (route.RPFTableID != 0) {
    line.addf(" RPF TID: 0x%x", route.RPFTableID);
  } else if (attributes.IsRPFNeighborPresent) {
    ostrel_add_addr(line.add(" RPF nbr: "), route.RPFNeighbor);
  }
  if (ostrel_entry_flags_any(&attributes)) {
    line.add(" Flags: ");
    line.advance(ostrel_fmt_entry_flags(line.end(), static_cast<int>(line.room()), &attributes));
  }
  if (detail && route.Annotation != nullptr && route.Annotation[0] != '\0')
    line.addf(", %s", route.Annotation);
  const mrib_group_rng_pod& parent = route.ParentRange;
  if (!known_family(parent.GroupPrefix) || !mrib_pod_addr_is_any(&parent.GroupPrefix))
    line.addf(" Inherit: %s/%d", ostrel_addr_text(&parent.GroupPrefix), parent.GroupPrefixLength);
  if (!line.fits()) {
    std::fputs(kOverflow, stderr);
    return false;
  }
  line.emit('\n');
  return true;
}

// ---- 2. Detail rows --------------------------------------------------------------------------------------

void print_encapsulation_row(const mrib_route_pod& route) {
  ostrel_outf("  RPF-ID: %u, Encap-ID: %u", route.RPFIdentifier, route.EncapsulationIdentifier);
  if (!ostrel_private) {
    ostrel_out("\n");
    return;
  }
  ostrel_outf(", EPtr: 0x%lx, New EPtr: 0x%lx, New EID: %u, Hd: 0x%lx, Cts: %u, %u, %u, %u\n",
              route.EncapsulationPointer, route.NewEncapPointer, route.NewEncapsulationIdentifier,
              route.EncapsulationList, route.TECount, route.LSPVIFCount, route.GRECount,
              route.EncapTunnelCount);
  ostrel_outf("  Acc: %u, Fwd: %u (%u), Encap-next: 0x%lx\n", route.AcceptInterfaceCount,
              route.ForwardInterfaceCount, route.LRForwardInterfaceCount, route.EncapNextRoute);
}

void print_details(const mrib_route_pod& route, bool detail) {
  const mrib_attrib_entry_pod& attributes = route.EntryAttributes;
  if (attributes.IsMDTEncapsulationOn || attributes.IsMDTDecapsulationOn) {
    ostrel_outf("  MVPN TID: 0x%x\n", route.CustomerTableID);
    ostrel_outf("  MVPN Remote TID: 0x%x\n", route.RemoteCustomerTableID);
    ostrel_outf("  MVPN Payload: %s\n", ostrel_payload_text(route.Payload));
  }
  if (attributes.IsMDTInterfaceOn) ostrel_outf("  MDT IFH: 0x%x\n", route.MDTInterfaceHandle);
  if (attributes.IsMDT_BGPInterfaceOn) ostrel_outf("  BGP IFH: 0x%x\n", route.MDT_BGP_InterfaceHandle);
  if (attributes.IsMDTAddressOn)
    ostrel_outf("  MDT Address: %s\n", ostrel_ctid_text(&route.MDTCoreTreeIdentifier));
  if (attributes.IsThresholdCrossed) ostrel_outf("  MT Slot: %s\n", slot_text(route.MT_LC_Fapid, "none"));
  if (detail && route.IsCustomerEncapsulationRoute) ostrel_out("  CUST ENCAP: TRUE\n");
  if (attributes.IsMasterLCOn)
    ostrel_outf("  Master Linecard Slot: %s\n", slot_text(route.MasterLCFapid, "not selected"));
  if (attributes.IsMasterLCFallbackOn) {
    ostrel_outf("  Master Linecard Fallback Slot: %s\n",
                slot_text(route.MasterLCFallbackFapid, "not selected"));
  }

  // The uptime line gathers the expired-database mark, the MoFRR origin and the private node fields; the
  // MoFRR part ends the line itself, so a MoFRR route's node fields (or newline) stand on a line of their
  // own.
  OstrelLine line;
  line.add("  Up: ").add(ostrel_dhms_text(route.Uptime));
  if (detail && route.InExpiredDB) line.add(", Present in AMT Expired DB");
  if (attributes.MOFRRPrimary || attributes.MOFRRBackup) {
    line.add(", Orig Route: (").add(ostrel_addr_text(&route.OrigSource)).add(", ");
    line.add(ostrel_addr_text(&route.GroupRange.GroupPrefix)).add(")\n");
  }
  if (ostrel_private) {
    line.addf(", Route node: 0x%lx, In PD retry list: %c\n", route.RouteNode,
              route.InPDRetryList ? 'Y' : 'N');
  } else {
    line.add('\n');
  }
  line.emit();

  if (attributes.IsMDTInterfaceSpecialOn) {
    ostrel_outf("  MDT IFH:  0x%x%s\n", route.MDT_InterfaceHandle,
                route.MDTTurnaroundEnabled ? " (Turnaround)" : "");
  }
  if (attributes.MOFRRState) {
    ostrel_outf("  MOFRR State: %s Sequence No %d\n", route.MoFRRActive ? "Active" : "Inactive",
                route.MoFRRSeqNo);
  }
  if ((detail || ostrel_private) && (route.RPFIdentifier != 0 || attributes.EncapsulationIdentifierFlag))
    print_encapsulation_row(route);
  if (ostrel_private && attributes.Protocol)
    ostrel_outf("  Proto: %d, RP: %s\n", route.ProtocolValue, ostrel_addr_text(&route.ProtocolRPAddress));
  if (ostrel_private && ostrel_platform_detail && ostrel_entry_flags_any(&route.NSFEntryAttributes)) {
    char nsf_flags[512];
    ostrel_fmt_entry_flags(nsf_flags, sizeof nsf_flags, &route.NSFEntryAttributes);
    ostrel_outf("  NSF Attr: %s\n", nsf_flags);
  }
}

// ---- 3. Interfaces ---------------------------------------------------------------------------------------

// The annotation of an EVPN multihome interface; none for any other.
const char* evpn_annotation(const mrib_intrf_pod& source) {
  return source.InterfaceAttributes.EVPN_MH_Interface ? source.EVPN_MH_Annot : nullptr;
}

void print_record_order(const mrib_route_pod& route) {
  ostrel_intf_entry intf;
  for (uint64_t i = 0; i < route.Interfaces.count; ++i) {
    const mrib_intrf_pod& source = route.Interfaces.data[i];
    ostrel_intf_entry_prepare(source, &intf);
    intf.link_ptr = source.Linked_IF_TyepPointer;
    mrib_route_print_intf("  ", intf, true, evpn_annotation(source));
  }
}

// The rate blocks are a dozen counter lines per node and interface: each is assembled in one OstrelLine.
void print_incoming_rates(const mrib_incoming_rate_pod& rates) {
  OstrelLine line;
  line.add("    Node Rate (").add(node_text(rates.NodeID)).add("):    ");
  line.add(rates.PacketsInRate).add(" pps / ").add(rates.BitsInRate).add(" bps\n");
  line.add("      HW Incoming count: ").add(rates.HardwareIngressFwd).add(" packets\n");
  line.add("      HW Drop count:     ").add(rates.HardwareIngressDrop).add(" packets\n");
  line.emit();
}

// One interface's counters; false when they are not valid and "N/A" was printed instead.
bool print_interface_stat(const mrib_out_intrf_stat_pod& stat) {
  OstrelLine line;
  line.add("        Interface : ").add(ostrel_ifh_name(stat.InterfaceHandle, 0)).add('\n');
  if (stat.IsHardwareEgressOutputCounterValidOnInterface != 1 || stat.InterfaceHandle == 0) {
    line.add("            Outgoing Packet Rate (PPS rate / BPS rate): N/A\n");
    line.add("            HW Forwarding count (pkts): N/A packets\n");
    line.add("            HW Drop count: N/A packets\n");
    line.emit();
    return false;
  }
  line.add("            Outgoing Packet Rate (PPS rate / BPS rate): ").add(stat.PacketsOutRate);
  line.add(" / ").add(stat.BitsSOutRate).add('\n');
  line.add("            HW Forwarding count (pkts): ").add(stat.HardwareEgressPacketsOut).add(" packets\n");
  line.add("            HW Forwarding count (bits): ").add(stat.HardwareEgressBytesOut).add(" bytes\n");
  // The drop line ends with a blank after its newline, which the next line then starts with.
  if (stat.IsHardwareEgressDropCounterValidOnInterface == 1)
    line.add("          HW Drop count: ").add(stat.HardwareEgressPacketsDrop).add(" packets\n ");
  line.emit();
  return true;
}

void print_outgoing_rates(const pod_array<mrib_outgoing_rate_pod>& nodes) {
  for (uint64_t i = 0; i < nodes.count; ++i) {
    const mrib_outgoing_rate_pod& rates = nodes.data[i];
    OstrelLine line;
    line.add("    Node Rate (").add(node_text(rates.NodeID)).add("):      ");
    line.add(rates.PacketsOutRate).add(" pps / ").add(rates.BitsOutRate).add(" bps\n");
    line.add("      HW Forwarding count: ").add(rates.HardwareEgressFwd).add(" packets\n");
    line.add("      HW Drop count:       ").add(rates.HardwareEgressDrop).add(" packets\n");
    line.add("      Interface Rates:\n");
    line.emit();
    bool shown = false;
    for (uint64_t k = 0; k < rates.InterfaceStats.count; ++k)
      shown = print_interface_stat(rates.InterfaceStats.data[k]) || shown;
    if (!shown) ostrel_out("         No interface stat to display\n");
  }
}

// Both lists of one side; a side with no entries prints nothing, not even its heading.
void print_side(const char* heading, OstrelIntfList* sorted, OstrelIntfList* amt, bool show_ul) {
  if (sorted->count() == 0 && amt->count() == 0) return;
  ostrel_out(heading);
  sorted->print_and_release("    ", show_ul);
  amt->print_and_release("    ", show_ul);
}

// A failed add or list creation ends the route here. The lists' owners then give every entry already saved
// back to its pools, so one route that did not fit does not starve the routes after it.
void print_split(const mrib_route_pod& route, bool rates) {
  OstrelIntfList in_sorted(OstrelIntfList::Order::kSorted);
  if (!in_sorted.created_else_report("incoming")) return;
  OstrelIntfList out_sorted(OstrelIntfList::Order::kSorted);
  if (!out_sorted.created_else_report("outgoing")) return;
  OstrelIntfList in_amt(OstrelIntfList::Order::kArrival);
  if (!in_amt.created_else_report("incoming")) return;
  OstrelIntfList out_amt(OstrelIntfList::Order::kArrival);
  if (!out_amt.created_else_report("outgoing")) return;

  ostrel_intf_entry values;
  for (uint64_t i = 0; i < route.Interfaces.count; ++i) {
    const mrib_intrf_pod& source = route.Interfaces.data[i];
    ostrel_intf_entry_prepare(source, &values);
    if (!mrib_route_intf_sort_in(source, &values, in_sorted.get(), in_amt.get(), out_sorted.get(),
                                 out_amt.get()))
      return;
  }

  print_side("  Incoming Interface List\n", &in_sorted, &in_amt, false);
  if (rates) print_incoming_rates(route.IncomingRates);
  print_side("  Outgoing Interface List\n", &out_sorted, &out_amt, true);
  if (rates) print_outgoing_rates(route.OutgoingRates);
}

int compare_saved(const void* a, const void* b) {
  return mrib_route_intf_compare(static_cast<const ostrel_intf_entry*>(a),
                                 static_cast<const ostrel_intf_entry*>(b));
}

void release_entry(list_element* element) {
  (void)chunk_free(ostrel_intf_pool, element->data);
  (void)chunk_free(ostrel_list_pool, element);
}

// ---- 4. The interface line -------------------------------------------------------------------------------

void add_underlying(const ostrel_intf_entry& intf, OstrelLine* line) {
  std::optional<std::string_view> slot;
  if (intf.ul_node != kUnset) slot = ostrel_fapid_name(intf.ul_node, 79);
  std::string_view node = slot.value_or("UL node unknown");
  if (ostrel_private) {
    line->addf("(%s, 0x%x) ", node.data(), intf.ul_handle);
  } else {
    line->take(line->cursor().put('(').put(node).put(") "));
  }
}

// What -D and -P add to the end of the interface's first line.
void add_platform_part(const ostrel_intf_entry& intf, OstrelLine* line) {
  if (intf.head_lsm_id != 0) {
    line->addf(", Head LSM-ID: 0x%05x", intf.head_lsm_id);
  } else if (intf.type == 0 && (intf.src != 0 || intf.nexthop_or_group != 0)) {
    char source[16], group[16];
    line->add(", Enc: (")
        .add(inet_ntoa_r(intf.src, source, sizeof source))
        .add(',')
        .add(inet_ntoa_r(intf.nexthop_or_group, group, sizeof group))
        .add(')');
  }
  if (!ostrel_private) return;
  line->addf(", type %u, Ptrs: 0x%lx, 0x%lx  0x%lx 0x%lx 0x%lx", intf.type, intf.intf_ptr,
             intf.next_encap_ptr, intf.regdb_ptr, intf.next_regdb, intf.prev_regdb);
  if (intf.link_ptr != 0) line->addf("0x%lx(l) ", intf.link_ptr);
  line->addf(", Bundle Ptrs: 0x%lx(vp), 0x%lx(vn)  0x%lx(pp)  0x%lx(pn)", intf.prev_virt, intf.next_virt,
             intf.next_phys, intf.prev_phys);
}

void print_private_lines(const ostrel_intf_entry& intf, const char* evpn_annot) {
  if (intf.backup_fgid) ostrel_out("       Backup FGID: Added\n");
  if (intf.mdf.text[0] != '\0') ostrel_outf("       attr_mdf: %s \n", intf.mdf.text);
  if (intf.mdf.add_count != 0) ostrel_outf("       LI add redist count: %d \n", intf.mdf.add_count);
  if (intf.mdf.del_count != 0) ostrel_outf("       LI del redist count: %d \n", intf.mdf.del_count);
  if (evpn_annot != nullptr) ostrel_outf("       Platform MH MRIB Annotation: %s \n", evpn_annot);
  if (ostrel_platform_detail && intf.nsf_attr != nullptr && ostrel_intf_flags_any(intf.nsf_attr)) {
    char nsf_flags[256];
    ostrel_fmt_intf_flags(nsf_flags, sizeof nsf_flags, intf.nsf_attr);
    ostrel_outf("       NSF Attr: %s\n", nsf_flags);
  }
}

}  // namespace

void mrib_route_print(const mrib_route_pod* route, bool split_lists, bool detail, bool nsf, bool rates) {
  if (!print_header(*route, detail, nsf)) return;
  print_details(*route, detail);
  if (route->Interfaces.count == 0) return;
  if (split_lists) {
    print_split(*route, rates);
  } else {
    print_record_order(*route);
  }
}

void mrib_route_print_intf(std::string_view prefix, const ostrel_intf_entry& intf, bool show_ul,
                           const char* evpn_annot) {
  bool amt = intf.type == kOstrelIntfTypeAmt;
  OstrelLine line;
  line.add(prefix);
  if (amt) {
    char gateway[16];
    line.add("AMT Gateway: ").add(inet_ntoa_r(intf.amt_gateway, gateway, sizeof gateway));
    line.addf("/%u, ", intf.amt_port);
  }
  // Every piece up to the uptime is bounded (a name of 79, a node of 79, flags of 255, a duration of 31):
  // together far less than a line holds, so they go in through cursors.
  line.take(line.cursor().put(std::string_view(intf.name, intf.name_size)).put(' '));
  if ((show_ul || amt) && intf.ul_handle != 0) add_underlying(intf, &line);
  OstrelCursor out = line.cursor();
  if (intf.flags_size != 0) out.put("Flags: ").put(std::string_view(intf.flags, intf.flags_size));
  line.take(out.put(", Up: ").put(ostrel_dhms_text(intf.uptime)));
  if (ostrel_platform_detail || ostrel_private) add_platform_part(intf, &line);
  line.add('\n');
  if (amt) {
    char source[16], nexthop[16];
    line.add(prefix).add("    Src:").add(inet_ntoa_r(intf.src, source, sizeof source));
    line.add(", NH: ").add(inet_ntoa_r(intf.nexthop_or_group, nexthop, sizeof nexthop));
    line.addf(", MTU/TOS/TTL: %u/%u/%u, AMT-ID: %05d\n", intf.amt_mtu, intf.amt_tos, intf.amt_ttl,
              intf.amt_id);
  }
  line.emit();
  if (ostrel_private) print_private_lines(intf, evpn_annot);
}

int mrib_route_intf_compare(const ostrel_intf_entry* a, const ostrel_intf_entry* b) {
  if (a->name_size != b->name_size) return a->name_size < b->name_size ? -1 : 1;
  if (int order = std::strcmp(a->name, b->name); order != 0) return order < 0 ? -1 : 1;
  if (a->amt_gateway != b->amt_gateway) return a->amt_gateway < b->amt_gateway ? -1 : 1;
  if (a->amt_port != b->amt_port) return a->amt_port < b->amt_port ? -1 : 1;
  return 0;
}

bool mrib_route_intf_sort_in(const mrib_intrf_pod& source, ostrel_intf_entry* values, list_t in,
                             list_t in_amt, list_t out, list_t out_amt) {
  const mrib_attrib_intrf_pod& attributes = source.InterfaceAttributes;
  bool accepts = attributes.IsAccept || attributes.IsAcceptBackup;
  if (accepts && !mrib_route_intf_list_add(in, in_amt, *values)) {
    std::fprintf(stderr, "%% Failed to insert %s into incoming interface list\n", values->name);
    return false;
  }
  if (attributes.IsForward || !accepts) {
    values->link_ptr = source.Linked_IF_TyepPointer;
    if (!mrib_route_intf_list_add(out, out_amt, *values)) {
      std::fprintf(stderr, "%% Failed to insert %s into outgoing interface list", values->name);
      return false;
    }
  }
  return true;
}

namespace {

// Copies the bytes [first, last) of an entry: the values that lie between two texts.
void copy_values(ostrel_intf_entry* to, const ostrel_intf_entry& from, size_t first, size_t last) {
  std::memcpy(reinterpret_cast<char*>(to) + first, reinterpret_cast<const char*>(&from) + first,
              last - first);
}

// A text of an entry, its terminator included: the room after it means nothing.
void copy_text(char* to, const char* from, size_t size, size_t room) {
  ostrel::detail::copy_short(to, from, std::min(size + 1, room));
}

// The length of a text that is most often empty, without a call for an empty one.
size_t text_size(const char* text, size_t room) {
  return text[0] == '\0' ? 0 : strnlen(text, room);
}

// Saves a prepared interface into a pool entry, which the pool has zeroed: each text up to its terminator
// and every value between the texts. A copy of the whole entry moves 808 bytes, most of them text room, and
// the compiler makes of it a string move that costs more than the rest of the add.
void save_entry(ostrel_intf_entry* to, const ostrel_intf_entry& from) {
  using E = ostrel_intf_entry;
  static_assert(offsetof(E, name) == 0 && offsetof(E, name_size) == sizeof from.name &&
                    offsetof(E, flags_size) == offsetof(E, flags) + sizeof from.flags &&
                    offsetof(ostrel_intf_mdf, text) == 0 &&
                    offsetof(E, backup_fgid) == offsetof(E, mdf) + sizeof from.mdf &&
                    offsetof(E, evpn_annot) + sizeof from.evpn_annot == sizeof(E),
                "the texts and the values between them, in this order");
  copy_text(to->name, from.name, from.name_size, sizeof from.name);
  copy_values(to, from, offsetof(E, name_size), offsetof(E, flags));
  if (from.flags_size != 0) copy_text(to->flags, from.flags, from.flags_size, sizeof from.flags);
  copy_values(to, from, offsetof(E, flags_size), offsetof(E, mdf));
  copy_text(to->mdf.text, from.mdf.text, text_size(from.mdf.text, sizeof from.mdf.text),
            sizeof from.mdf.text);
  // The counts and the values after them: bytes, as prepare leaves most of them unset without -P or -D.
  copy_values(to, from, offsetof(E, mdf) + sizeof from.mdf.text, offsetof(E, evpn_annot));
  copy_text(to->evpn_annot, from.evpn_annot, text_size(from.evpn_annot, sizeof from.evpn_annot),
            sizeof from.evpn_annot);
}

}  // namespace

bool mrib_route_intf_list_add(list_t sorted, list_t amt, const ostrel_intf_entry& values) {
  auto* entry = static_cast<ostrel_intf_entry*>(chunk_malloc(ostrel_intf_pool));
  if (entry == nullptr) {
    std::fprintf(stderr, "%% No memory for list entry for %s", values.name);
    return false;
  }
  save_entry(entry, values);
  auto* element = static_cast<list_element*>(chunk_malloc(ostrel_list_pool));
  if (element == nullptr) {
    std::fputs("% No memory for list element", stderr);
    (void)chunk_free(ostrel_intf_pool, entry);
    return false;
  }
  std::memset(element, 0, sizeof *element);
  element->data = entry;
  cerr_t rc = entry->type == kOstrelIntfTypeAmt ? list_enqueue_default(amt, element)
                                                : list_insert_default(sorted, element);
  if (rc != kCerrOk) {
    release_entry(element);
    return false;
  }
  return true;
}

OstrelIntfList::OstrelIntfList(Order order)
    : list_(list_create(order == Order::kSorted ? compare_saved : nullptr)) {}

bool OstrelIntfList::created_else_report(const char* side) const {
  if (list_ != nullptr) return true;
  std::fprintf(stderr, "%% Failed to create %s interface list", side);
  return false;
}

OstrelIntfList::~OstrelIntfList() {
  if (list_ == nullptr) return;
  while (list_element* element = list_dequeue(list_)) release_entry(element);
  (void)list_destroy(list_);
}

void OstrelIntfList::print_and_release(std::string_view prefix, bool show_ul) {
  while (list_element* element = list_dequeue(list_)) {
    const auto& intf = *static_cast<const ostrel_intf_entry*>(element->data);
    mrib_route_print_intf(prefix, intf, show_ul, intf.evpn_annot[0] != '\0' ? intf.evpn_annot : nullptr);
    release_entry(element);
  }
}

// The longest interface flag text (all 27 mnemonics) is 86 characters, so the entry's own flag field holds
// what the formatter writes. The entry is not cleared first: an interface line is printed per interface of
// every route, and clearing 808 bytes each time cost more than filling them. What only -P, -D or an AMT
// interface's lines print is filled only for them; the rest is set for every interface.
void ostrel_intf_entry_prepare(const mrib_intrf_pod& source, ostrel_intf_entry* intf) {
  std::string_view name = ostrel_ifh_name(source.Interface, 0);
  const size_t name_size = std::min<size_t>(name.size(), 79);  // as the platform's 80-byte buffers hold it
  ostrel::detail::copy_short(intf->name, name.data(), name_size);  // not the compiler's string move
  intf->name[name_size] = '\0';
  intf->name_size = static_cast<uint8_t>(name_size);
  intf->ul_handle = source.UnderlyingInterface;
  intf->ul_node = source.UnderlyingInterfaceNode;
  intf->flags_size = static_cast<uint16_t>(
      ostrel_fmt_intf_flags(intf->flags, sizeof intf->flags, &source.InterfaceAttributes));
  intf->uptime = source.Uptime;
  intf->type = source.Type;
  intf->amt_gateway = source.AMTGateway;  // the sorted lists order equal names by gateway and port
  intf->amt_port = source.AMTPort;
  intf->link_ptr = 0;
  intf->evpn_annot[0] = '\0';
  intf->mdf.text[0] = '\0';
  const bool amt = source.Type == kOstrelIntfTypeAmt;
  if (!amt && !ostrel_private && !ostrel_platform_detail) return;
  if (ostrel_private) ostrel_fmt_intf_flags(intf->mdf.text, sizeof intf->mdf.text, &source.ifMdfAttr);
  intf->mdf.add_count = source.liAddRedistCount;
  intf->mdf.del_count = source.liDelRedistCount;
  intf->backup_fgid = source.BackupFgidAdded;
  intf->intf_ptr = source.InterfacePointer;
  intf->next_encap_ptr = source.NextEncapsulationPointer;
  intf->head_lsm_id = source.HeadLSMIdentifier;
  intf->nsf_attr = &source.NSFInterfaceAttributes;
  intf->src = amt ? source.AMTSource : source.GREEncapsulationSourceAddress;
  intf->nexthop_or_group = amt ? source.AMTNexthop : source.GREEncapsulationGroupAddress;
  intf->amt_mtu = source.AMT_MTU;
  intf->amt_tos = source.AMT_TOS;
  intf->amt_ttl = source.AMT_TTL;
  intf->amt_id = source.AMTId;
  intf->regdb_ptr = source.RegDBPointer;
  intf->next_regdb = source.NextRegDBole;
  intf->prev_regdb = source.PreviousRegDBOle;
  intf->prev_virt = source.PreviousVirutalInterfacePointer;
  intf->next_virt = source.NextVirutalInterfacePointer;
  intf->next_phys = source.NextPhysicalInterfacePointer;
  intf->prev_phys = source.PreviousPhysicalInterfacePointer;
  if (source.InterfaceAttributes.EVPN_MH_Interface && source.EVPN_MH_Annot != nullptr)
    sstrncpy(intf->evpn_annot, source.EVPN_MH_Annot, sizeof intf->evpn_annot);
}
