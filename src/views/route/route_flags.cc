// The two mnemonic tables in output order, and the one walk that formats a set and the one that decides
// whether it is worth showing. The output order is the operator's contract, not the record's field order.
#include "views/route/route_flags.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <iterator>
#include <utility>

#include "access/assert.h"
#include "access/switches.h"
#include "platform/mrib_utl.h"

namespace {

constexpr char kFlagsSource[] = "ipv4/multicast/mrib/src/ostrel_route_flags";

// When a row applies: always, only under -D, or (for the predicates) never.
enum class When { kAlways, kWithDetail, kNever };

template <typename Attr>
struct FlagRow {
  uint32_t Attr::*field;
  const char* mnemonic;
  When shown;   // in the formatted text
  When counts;  // for the "anything worth showing" predicate
};

using EntryRow = FlagRow<mrib_attrib_entry_pod>;
using IntfRow = FlagRow<mrib_attrib_intrf_pod>;
using E = mrib_attrib_entry_pod;
using I = mrib_attrib_intrf_pod;
constexpr When kAlways = When::kAlways;
constexpr When kDetail = When::kWithDetail;

// IsForwardMPLS has no mnemonic ("MPLS" is IsViaLSM) and no row. "ICD" is printed but never makes a set
// worth showing on its own.
constexpr EntryRow kEntryRows[] = {
    {&E::IsDomainLocalSource, "L", kAlways, kAlways},
    {&E::IsSourceExternal, "E", kAlways, kAlways},
    {&E::IsSignalByDefaultOn, "S", kAlways, kAlways},
    {&E::IsDirectlyConnectedCheckSet, "C", kAlways, kAlways},
    {&E::IsInheritAcceptSet, "IA", kAlways, kAlways},
    {&E::IsInheritFromSet, "IF", kAlways, kAlways},
    {&E::IsDrop, "D", kAlways, kAlways},
    {&E::IsRPFNeighborPresent, "RPF", kAlways, kAlways},
    {&E::IsMulticastNSFOn, "MNSF", kAlways, kAlways},
    {&E::IsMDTEncapsulationOn, "ME", kAlways, kAlways},
    {&E::IsMDTDecapsulationOn, "MD", kAlways, kAlways},
    {&E::IsMDTInterfaceOn, "MH", kAlways, kAlways},
    {&E::IsMDT_BGPInterfaceOn, "MBH", kAlways, kAlways},
    {&E::IsMasterLCOn, "ML", kAlways, kAlways},
    {&E::IsMasterLCFallbackOn, "MLF", kAlways, kAlways},
    {&E::IsPlatformModified, "PM", kAlways, kAlways},
    {&E::IsMDTAddressOn, "MA", kAlways, kAlways},
    {&E::IsThresholdCrossed, "MT", kAlways, kAlways},
    {&E::IsConditionalDecap, "CD", kAlways, kAlways},
    {&E::IsViaLSM, "MPLS", kAlways, kAlways},
    {&E::IsExtranet, "EX", kAlways, kAlways},
    {&E::EncapsulationIdentifierFlag, "EID", kDetail, kDetail},
    {&E::RPFIdentifierFlag, "RPFID", kDetail, kDetail},
    {&E::IsMDTInterfaceSpecialOn, "MDT_IFH", kAlways, kAlways},
    {&E::Protocol, "P", kAlways, kAlways},
    {&E::CandidateMOFRR, "MoFE", kAlways, kAlways},
    {&E::MOFRRState, "MoFS", kAlways, kAlways},
    {&E::MOFRRPrimary, "MoFP", kDetail, kDetail},
    {&E::MOFRRBackup, "MoFB", kDetail, kDetail},
    {&E::AMT, "AT", kAlways, kAlways},
    {&E::VXLAN, "X", kAlways, kAlways},
    {&E::InitialConvergenceDone, "ICD", kAlways, When::kNever},
};

// "MT" and "MA" are printed whenever set but make an interface worth showing only under -D.
constexpr IntfRow kIntfRows[] = {
    {&I::IsForward, "F", kAlways, kAlways},
    {&I::IsAccept, "A", kAlways, kAlways},
    {&I::IsAcceptBackup, "A2", kAlways, kAlways},
    {&I::IsInternalCopy, "IC", kAlways, kAlways},
    {&I::IsNegateSignal, "NS", kAlways, kAlways},
    {&I::IsDontPreserve, "DP", kAlways, kAlways},
    {&I::IsSignalPresent, "SP", kAlways, kAlways},
    {&I::IsInternalInterest, "II", kAlways, kAlways},
    {&I::IsInternalDisinterest, "ID", kAlways, kAlways},
    {&I::IsLocalInterest, "LI", kAlways, kAlways},
    {&I::IsLocalDisinterest, "LD", kAlways, kAlways},
    {&I::IsDecapsulationInterface, "DI", kAlways, kAlways},
    {&I::IsEncapsulationInterface, "EI", kAlways, kAlways},
    {&I::IsUnderlyingPhysicalChange, "PC", kAlways, kAlways},
    {&I::IsEgressInterface, "EG", kDetail, kDetail},
    {&I::IsMDTInterface, "MI", kAlways, kAlways},
    {&I::IsMLDP_MDTInterface, "LMI", kAlways, kAlways},
    {&I::IsRSVP_TE_MDTInterface, "TMI", kAlways, kAlways},
    {&I::IsIR_MDTInterface, "IRMI", kAlways, kAlways},
    {&I::IsMDTDataTriggered, "MT", kAlways, kDetail},
    {&I::IsMDTDataUsed, "MA", kAlways, kDetail},
    {&I::IsP2MPInterface, "LVIF", kAlways, kAlways},
    {&I::IsExtranet, "EX", kAlways, kAlways},
    {&I::IsTurnAround, "TR", kAlways, kAlways},
    {&I::AMT, "AT", kAlways, kAlways},
    {&I::IsTR_MDTInterface, "TRMI", kAlways, kAlways},
    {&I::EVPN_MH_Interface, "MH", kAlways, kAlways},
};

static_assert(std::size(kEntryRows) == 32, "every entry attribute but IsForwardMPLS has a mnemonic");
static_assert(std::size(kIntfRows) == 27, "every interface attribute has a mnemonic");

// The switch is read per row, not once per call, so that a row's condition is exactly "set and -D".
bool applies(When when) {
  switch (when) {
    case When::kAlways:
      return true;
    case When::kWithDetail:
      return ostrel_platform_detail != 0;
    case When::kNever:
      return false;
  }
  return false;
}

// The longest text a table can format: every mnemonic, a blank between each two.
template <typename Attr, size_t N>
constexpr size_t longest_text(const FlagRow<Attr> (&rows)[N]) {
  size_t length = 0;
  for (const FlagRow<Attr>& row : rows) length += std::char_traits<char>::length(row.mnemonic) + 1;
  return length - 1;
}

// One row's step of the walk, for a buffer that holds the longest text. The rows are constants and the
// walk below unrolls into one test and one copy of known length per row: a route formats a flag text per
// interface, and formatting each mnemonic through a printf cost more than the rest of the interface line.
template <typename Attr, size_t N, const FlagRow<Attr> (&rows)[N], size_t I>
inline void append_row(const Attr& attr, char* buf, char*& pos) {
  constexpr FlagRow<Attr> row = rows[I];
  if (attr.*row.field == 0 || !applies(row.shown)) return;
  if (pos != buf) *pos++ = ' ';
  constexpr size_t length = std::char_traits<char>::length(row.mnemonic);
  std::memcpy(pos, row.mnemonic, length);
  pos += length;
}

// The same step for a buffer that may cut the text: as mrib_snprintf() stores "%s%s", at most the room
// less one, and returns what it stored, so pos never passes the end.
template <typename Attr>
void format_row(const Attr& attr, const FlagRow<Attr>& row, char* buf, char*& pos, int& room) {
  if (attr.*row.field == 0 || !applies(row.shown)) return;
  int written = mrib_snprintf(pos, room, "%s%s", pos == buf ? "" : " ", row.mnemonic);
  pos += written;
  room -= written;
}

template <typename Attr, size_t N, const FlagRow<Attr> (&rows)[N], size_t... I>
int format_flags(char* buf, int size, const Attr& attr, std::index_sequence<I...>) {
  buf[0] = '\0';
  char* pos = buf;
  constexpr size_t kLongest = longest_text(rows);
  if (static_cast<size_t>(size) > kLongest) {
    (append_row<Attr, N, rows, I>(attr, buf, pos), ...);
    *pos = '\0';
  } else {
    int room = size;
    for (const FlagRow<Attr>& row : rows) format_row(attr, row, buf, pos, room);
  }
  return static_cast<int>(pos - buf);
}

template <typename Attr, size_t N>
uint32_t any_flags(const Attr& attr, const FlagRow<Attr> (&rows)[N]) {
  for (const FlagRow<Attr>& row : rows) {
    if (attr.*row.field != 0 && applies(row.counts)) return 1;
  }
  return 0;
}

}  // namespace

int ostrel_fmt_entry_flags(char* buf, int size, const mrib_attrib_entry_pod* attr) {
  OSTREL_ASSERT(buf != nullptr, "buf != NULL", kFlagsSource);
  OSTREL_ASSERT(attr != nullptr, "attr != NULL", kFlagsSource);
  if (size < 1) return 0;
  return format_flags<mrib_attrib_entry_pod, std::size(kEntryRows), kEntryRows>(
      buf, size, *attr, std::make_index_sequence<std::size(kEntryRows)>());
}

int ostrel_fmt_intf_flags(char* buf, int size, const mrib_attrib_intrf_pod* attr) {
  OSTREL_ASSERT(buf != nullptr, "buf != NULL", kFlagsSource);
  OSTREL_ASSERT(attr != nullptr, "attr != NULL", kFlagsSource);
  return format_flags<mrib_attrib_intrf_pod, std::size(kIntfRows), kIntfRows>(
      buf, size, *attr, std::make_index_sequence<std::size(kIntfRows)>());
}

uint32_t ostrel_entry_flags_any(const mrib_attrib_entry_pod* attr) {
  return any_flags(*attr, kEntryRows);
}

uint32_t ostrel_intf_flags_any(const mrib_attrib_intrf_pod* attr) {
  return any_flags(*attr, kIntfRows);
}
