// The routes the MRIB server keeps for one client (-cmd 2), read from the client's own tree: the filter
// check, the bind of that tree, the collection the filters name, and the entry printer with its lines of
// optional pieces. The platform's table printer lists, decodes and releases.
//
// Keyword runs read no -d: the not-available line is always the bare text.
#include "views/client/client_routes.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/text_helpers.h"
#include "platform/show.h"
#include "views/line_pieces.h"

namespace {

constexpr uint32_t kMaxPrefixLength = 32;

// The client's own tree; bound by this view, left to the process end like the other handles.
vellum_handle_t client_handle = nullptr;

// ---- The client's tree and the collection ----------------------------------------------------------------

// Binds client_handle to the oper root of the client `name`, or ends the process as every keyword bind does.
void bind_client_root(const char* name, bool standby) {
  char root[256];
  // Formed as a table's root is: a name too long for the buffer is cut with the root's tail, and the
  // directory bound holds no route database, so the listing says there is none, as for an unknown client.
  std::snprintf(root, sizeof root,
                standby ? "/oper/ipv4-mrib-cl-%s/gl/sby/" : "/oper/ipv4-mrib-cl-%s/gl/act/", name);
  ostrel_bind_keyword_path(&client_handle, root);
}

// The view's own path buffer; a path too long for it is refused, since a cut filter would list routes the
// operator did not ask for.
char route_path[512];

// The collection below the client's root: all routes, or the filtered one with each filter in its place.
[[nodiscard]] bool build_route_path(const ClientRoutesKeywords& k) {
  if (!k.table_given && !k.group_given && !k.source_given && !k.prefix_length_given)
    return ostrel_build_path_in(route_path, sizeof route_path, "routedb/");
  return ostrel_build_path_in(
      route_path, sizeof route_path, "routedb-flt/%s,%s,%s,%s/", OstrelKeyField(k.table_given, k.table).text,
      k.group_given ? k.group : kOstrelKeyAbsent, k.source_given ? k.source : kOstrelKeyAbsent,
      OstrelKeyField(k.prefix_length_given, k.prefix_length).text);
}

// ---- Pieces of a line ------------------------------------------------------------------------------------

// Each piece of an entry's optional lines is formatted into a buffer of its own, which cuts a longer text:
// the first piece of a line and the attribute piece hold 60 bytes, every other piece 30.
constexpr size_t kWidePiece = 60;
constexpr size_t kPiece = 30;

struct Piece {
  char text[kWidePiece];
};

Piece vformat_piece(size_t size, const char* separator, const char* format, va_list args) {
  Piece piece;
  int used = std::snprintf(piece.text, size, "%s", separator);
  if (used >= 0 && static_cast<size_t>(used) < size)
    std::vsnprintf(piece.text + used, size - used, format, args);
  return piece;
}

Piece format_piece(size_t size, const char* format, ...) __attribute__((format(printf, 2, 3)));
Piece format_piece(size_t size, const char* format, ...) {
  va_list args;
  va_start(args, format);
  Piece piece = vformat_piece(size, "", format, args);
  va_end(args);
  return piece;
}

// One optional line: "\n  " and its pieces, printed only when a piece was added. A piece that follows an
// added one begins with ", ", inside its buffer.
class PieceLine {
 public:
  void add(size_t size, const char* format, ...) __attribute__((format(printf, 3, 4))) {
    va_list args;
    va_start(args, format);
    Piece piece = vformat_piece(size, any_ ? ", " : "", format, args);
    va_end(args);
    line_.add(piece.text);
    any_ = true;
  }

  // A piece of `prefix` and `text` as add(size, "<prefix>%s", text) makes it, without printf: the RPF
  // neighbor's piece is on nearly every route.
  void add_text(size_t size, std::string_view prefix, const char* text) {
    Piece piece;
    OstrelLine cut(size - 1);
    if (any_) cut.add(", ");
    cut.add(prefix).add(text);
    std::memcpy(piece.text, cut.text().data(), cut.text().size());
    piece.text[cut.text().size()] = '\0';
    line_.add(piece.text);
    any_ = true;
  }

  void emit() {
    if (!any_) return;
    ostrel_out("\n  ");
    line_.emit();
  }

 private:
  OstrelLine line_;
  bool any_ = false;
};

// ---- The entry printer -----------------------------------------------------------------------------------

// The table of the entry printed last; none before the first entry.
struct RememberedTable {
  bool known = false;
  uint32_t id = 0;
};

void print_header(RememberedTable*) {
  ostrel_out("MRIB client route database\n");
  // The display reads the server's memory item without showing anything of it. This command binds no view
  // handle, so the platform answers as for an unbound one; the answer changes nothing here.
  (void)mcast_show_item(ostrel_view_handle, "memory", nullptr, nullptr, nullptr, nullptr, 0, nullptr);
}

void print_route_line(const mrib_lib_route_pod& route) {
  OstrelLine line;
  line.add("\n(")
      .add(ostrel_source_text(&route.Source))
      .add(',')
      .add(ostrel_addr_text(&route.Group))
      .add('/');
  ostrel_add_hex(line.add_signed(static_cast<int>(route.GroupLength)).add(") mrib_attr 0x"),
                 route.MRIBAttributes);
  line.emit();
  if (route.RouteAttributes != 0 || route.RouteAttributesModified != 0)
    ostrel_out(format_piece(kWidePiece, ", attr/mdf (0x%lx,0x%lx)", route.RouteAttributes,
                            route.RouteAttributesModified)
                   .text);
}

void print_rpf_line(const mrib_lib_route_pod& route) {
  PieceLine line;
  if (!ostrel_addr_is_any(&route.RPFNeighbor))
    line.add_text(kWidePiece, "RPF neighbor: ", ostrel_addr_text(&route.RPFNeighbor));
  if (route.RPFTableID != 0) line.add(kPiece, "RPF TID: 0x%x", route.RPFTableID);
  if (route.MDTCoreTreeIdentifier.TYPE != 0)
    line.add(kPiece, "MDT CTID: %s", ostrel_ctid_text(&route.MDTCoreTreeIdentifier));
  if (route.MDTInterface != 0)
    line.add(kPiece, "MDT Handle: 0x%x, TR: %d", route.MDTInterface,
             static_cast<int>(route.MDTTurnaroundEnabled));
  line.emit();
}

void print_mvpn_line(const mrib_lib_route_pod& route) {
  PieceLine line;
  if (route.MVPNAssociatedTableIDs[0] != 0 || route.MVPNAssociatedTableIDs[1] != 0 ||
      route.MDTInterfaceHandle != 0 || route.MDTPayload != 0) {
    line.add(kWidePiece, "MVPN info: (0x%x,0x%x,0x%x,0x%x,0x%u)", route.MVPNAssociatedTableIDs[0],
             route.MVPNAssociatedTableIDs[1], route.MDTInterfaceHandle, route.MDTPayload,
             route.DecapsulationRPFIdentifier);
  }
  if (route.MDT_BGP_InterfaceHandle != 0) line.add(kPiece, "BGP IFH: 0x%x", route.MDT_BGP_InterfaceHandle);
  if (route.FallbackMasterLineCard != 0) {
    if (std::optional<std::string_view> slot = ostrel_fapid_name(route.FallbackMasterLineCard, 79)) {
      line.add(kPiece, "FB MLC: %s", slot->data());
    } else {
      line.add(kPiece, "FB MLC: %s (0x%x)", "slot unknown", route.FallbackMasterLineCard);
    }
  }
  if (route.ProtocolValue != 6)
    line.add(kPiece, "Proto: %d, RP: %s", static_cast<int>(route.ProtocolValue),
             ostrel_addr_text(&route.ProtocolRPAddress));
  line.emit();
}

void print_update_line(const mrib_lib_route_pod& route) {
  PieceLine line;
  if (route.RPFIdentifier != 0) line.add(kWidePiece, "RPF-ID: %u", route.RPFIdentifier);
  if (route.UpdateInProgress) line.add(kPiece, "Upd: T");
  if (route.ModifiedRouteListNext != 0) line.add(kPiece, "Next: 0x%lx", route.ModifiedRouteListNext);
  if (route.ModifiedInterfaceListHead != 0)
    line.add(kPiece, "Mod Int head: 0x%lx", route.ModifiedInterfaceListHead);
  if (route.ModifiedInterfaceListTail != 0)
    line.add(kPiece, "Mod Int tail: 0x%lx", route.ModifiedInterfaceListTail);
  line.emit();
}

// An interface is printed on every route of the database: its line is assembled in place, and only its
// optional pieces, rare and cut at their buffers' sizes, are formatted.
void print_interface(const mrib_lib_intf_pod& intf) {
  OstrelLine line;
  // An interface of any type but 0 is known by its AMT handle; only type 1 carries the AMT tunnel.
  ostrel_add_hex(line.add("\n    0x"), intf.Type != 0 ? intf.AMTInterface : intf.InterfaceHandle);
  ostrel_add_hex(line.add(", mrib_attr 0x"), intf.MRIBAttributes);
  if (intf.InterfaceAttributesSet != 0 || intf.InterfaceAttributesModified != 0)
    line.add(format_piece(kWidePiece, ", attr/mdf (0x%lx,0x%lx)", intf.InterfaceAttributesSet,
                          intf.InterfaceAttributesModified)
                 .text);
  if (intf.ModifiedInterfaceListNext != 0)
    line.add(format_piece(kPiece, ", mod_next: 0x%lx", intf.ModifiedInterfaceListNext).text);
  if (intf.HeadLSMIdentifier != 0)
    line.add(format_piece(kPiece, ", HLI: 0x%05X", intf.HeadLSMIdentifier).text);
  if (intf.UnderlyingInterface != 0)
    line.add(format_piece(kPiece, ", UL: 0x%x", intf.UnderlyingInterface).text);
  if (intf.Type == 1) {
    ostrel_add_dotted(line.add(", "), intf.AMTGateway).add('/').add(uint64_t{intf.AMTPort});
    ostrel_add_dotted(line.add(", S "), intf.AMTSourceAddress);
    ostrel_add_dotted(line.add(", NH "), intf.AMTNexthop).add(", MTU ").add(uint64_t{intf.AMT_MTU});
    line.add(", TOS ").add(uint64_t{intf.AMT_TOS}).add(", TTL ").add(uint64_t{intf.AMT_TTL});
  }
  line.emit();
}

void print_route(const mrib_lib_route_pod& route, RememberedTable* table) {
  if (!table->known || table->id != route.TableID) {
    ostrel_outf("\nTable ID: 0x%x\n", route.TableID);
    *table = {true, route.TableID};
  }
  print_route_line(route);
  print_rpf_line(route);
  print_mvpn_line(route);
  print_update_line(route);
  if (route.InterfaceList.count != 0) {
    ostrel_out("\n  Interfaces:");
    for (uint64_t i = 0; i < route.InterfaceList.count; ++i) print_interface(route.InterfaceList.data[i]);
  }
  ostrel_out("\n");
}

}  // namespace

void ostrel_kw_client_routes_view(const ClientRoutesKeywords& keywords) {
  // The reader refuses a run without -n; without a name there is no client tree to read.
  if (keywords.name == nullptr) return;
  const OstrelClientName client = ostrel_client_name(keywords.name);

  ClientRoutesKeywords k = keywords;
  if (!k.prefix_length_given) k.prefix_length = kMaxPrefixLength;
  if (k.prefix_length > kMaxPrefixLength) {
    ostrel_outf("Invalid pfx len %d (max %d)\n", static_cast<int>(k.prefix_length),
                static_cast<int>(kMaxPrefixLength));
    std::exit(1);
  }
  bind_client_root(client.name.get(), k.standby != 0);
  if (!build_route_path(k)) return;

  RememberedTable table;
  cerr_t rc = ostrel_show_table(
      client_handle, route_path,
      ShowCallbacks<mrib_lib_route_pod, RememberedTable>{print_header, print_route, &table});
  if (rc != kCerrOk) ostrel_out("No MRIB client route information available\n");
}
