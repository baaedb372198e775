// The route entry printer: one decoded route as its header line, detail rows and interfaces (in record
// order, or in sorted incoming and outgoing lists with node rates), and the interface line and sorted lists
// that the MIB view shares. Choosing and reading routes is route_show's business, not this file's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "access/pod_records.h"
#include "platform/list.h"

// The modified-attributes block of an interface: its flag text and its two redistribution counts.
struct ostrel_intf_mdf {
  char text[256];
  uint32_t add_count;
  uint32_t del_count;
};

// One interface as an interface line prints it. In split mode it is saved in an element of ostrel_intf_pool
// (808 bytes); in record order one on the stack serves every interface of a route. Texts are terminated
// where they end; the bytes after a terminator mean nothing. The name's and the flags' lengths sit in what
// would be padding, so that a line copies them without measuring them.
struct ostrel_intf_entry {
  char name[81];
  uint8_t name_size;
  uint32_t ul_handle;  // {UnderlyingInterface}
  uint32_t ul_node;    // {UnderlyingInterfaceNode}
  char flags[256];     // interface flag text; empty when there is none to show
  uint16_t flags_size;
  uint64_t uptime;
  ostrel_intf_mdf mdf;
  uint32_t backup_fgid;
  uint64_t intf_ptr;
  uint64_t next_encap_ptr;
  uint32_t head_lsm_id;
  const mrib_attrib_intrf_pod* nsf_attr;  // inside the decoded route, which outlives the entry
  uint32_t type;                          // 1 AMT, 0 plain
  uint32_t src;                           // {AMTSource} for AMT, else {GREEncapsulationSourceAddress}
  uint32_t amt_gateway;
  uint32_t amt_port;
  uint32_t nexthop_or_group;  // {AMTNexthop} for AMT, else {GREEncapsulationGroupAddress}
  uint16_t amt_mtu;
  uint8_t amt_tos;
  uint8_t amt_ttl;
  uint32_t amt_id;
  uint64_t regdb_ptr;
  uint64_t next_regdb;
  uint64_t prev_regdb;
  uint64_t prev_virt;
  uint64_t next_virt;
  uint64_t next_phys;
  uint64_t prev_phys;
  uint64_t link_ptr;    // {Linked_IF_TyepPointer} on the outgoing side, 0 on the incoming side
  char evpn_annot[48];  // {EVPN_MH_Annot} of an EVPN multihome interface, cut to 47 characters
};
static_assert(sizeof(ostrel_intf_entry) == 808, "a saved interface is one element of ostrel_intf_pool");

inline constexpr uint32_t kOstrelIntfTypeAmt = 1;

// Fills `intf` from one interface of a decoded route, as a list saves it: the name, the flag and
// modified-attribute texts, the values of its line and, for an EVPN multihome interface, its annotation.
// The entry refers to the route's NSF attributes, so the route must outlive it.
void ostrel_intf_entry_prepare(const mrib_intrf_pod& source, ostrel_intf_entry* intf);

// Prints `route` on standard output; failures go to standard error and end the route's printing. With
// `split_lists` the interfaces go to sorted incoming and outgoing lists, and with `rates` the node rate
// blocks follow them; `detail` adds the version, annotation, customer-encapsulation and expired-database
// details; `nsf` asks for the non-stop-forwarding designation. REQUIRES: the route's source and group are of
// family 0 or 1.
void mrib_route_print(const mrib_route_pod* route, bool split_lists, bool detail, bool nsf, bool rates);

// Prints one interface line and the lines that follow it under -D and -P. `prefix` is "  " in record order
// and "    " in the sorted lists; `show_ul` asks for the underlying interface (AMT interfaces always show
// it). `evpn_annot` is none when the interface has no annotation to show.
void mrib_route_print_intf(std::string_view prefix, const ostrel_intf_entry& intf, bool show_ul,
                           const char* evpn_annot);

// The order of the sorted lists: the shorter name first (Gi0/0/0/2 before Gi0/0/0/10), then strcmp(), then
// the AMT gateway and port ascending. -1, 0 or 1.
int mrib_route_intf_compare(const ostrel_intf_entry* a, const ostrel_intf_entry* b);

// Saves a copy of `values` in the pools and puts it on `sorted` in compare order or, for an AMT interface,
// at the tail of `amt`, so that AMT interfaces keep record order. On failure it writes the pool message to
// standard error (the caller writes the insert failure), keeps nothing and returns false.
[[nodiscard]] bool mrib_route_intf_list_add(list_t sorted, list_t amt, const ostrel_intf_entry& values);

// Saves `values`, prepared from `source`, on the incoming side when the interface accepts, and on the
// outgoing side, with its link pointer, when it forwards or does not accept; AMT interfaces go to `in_amt`
// and `out_amt`. On failure it writes which insert failed to standard error and returns false.
[[nodiscard]] bool mrib_route_intf_sort_in(const mrib_intrf_pod& source, ostrel_intf_entry* values, list_t in,
                                           list_t in_amt, list_t out, list_t out_amt);

// One side's list of saved interfaces. It owns the list and the entries still on it: printing gives each
// entry back to its pools as it passes, and whatever is left at the end (after a failed add) goes back
// too, so the next route finds the pools full.
class OstrelIntfList {
 public:
  enum class Order { kSorted, kArrival };

  explicit OstrelIntfList(Order order);
  ~OstrelIntfList();
  OstrelIntfList(const OstrelIntfList&) = delete;
  OstrelIntfList& operator=(const OstrelIntfList&) = delete;

  // False, after writing "% Failed to create <side> interface list" to standard error, when the platform
  // could not create the list.
  [[nodiscard]] bool created_else_report(const char* side) const;
  list_t get() const { return list_; }
  uint32_t count() const { return list_count(list_); }

  // Prints every entry in list order with mrib_route_print_intf() and gives it back to its pools.
  void print_and_release(std::string_view prefix, bool show_ul);

 private:
  list_t list_ = nullptr;
};
