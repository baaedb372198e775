// The EVPN bucket database (-a): every bucket, the bucket of -l, or the buckets of the interface handle of
// -n, with each bucket's update history under -P.
//
// A listing that fails says so only under -d, and the same whatever the failure: to an operator an
// unreadable bucket database and an absent one are alike. The update history names its states after the
// flags the updates carried, which are not the bucket state's values.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <iterator>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/text.h"
#include "views/mvpn/encap.h"

namespace {

constexpr char kHeader[] =
    "\n"
    "                                        EVPN Bucket Database\n"
    "                                        --------------------\n"
    "\n"
    "   IFName                      IFHandle      BucketID      State      Uptime       Delete In Progress\n";

constexpr uint32_t kNoBucket = 0xFFFFFFFF;
constexpr uint32_t kHistoryEnd = 0xFFFFFFFF;  // a client ID that ends the used entries
constexpr uint32_t kEvpnClient = 0;           // the update came from EVPN itself
constexpr uint8_t kDeleteInProgress = 0x02;

// ---- Paths -----------------------------------------------------------------------------------------------

struct BucketPath {
  bool (*applies)(const ShowArgs&);
  bool (*build)(const ShowArgs&);  // into ostrel_query_path
};

// The first row that applies names the directory: -l decides whenever it names a bucket, bucket 0 included.
constexpr BucketPath kPaths[] = {
    {[](const ShowArgs& a) { return static_cast<uint32_t>(a.bucket_id) != kNoBucket; },
     [](const ShowArgs& a) {
       return ostrel_build_path("process/evpn/bucket-db-bktid/%d", static_cast<int>(a.bucket_id));
     }},
    {[](const ShowArgs& a) { return a.if_handle != 0; },
     [](const ShowArgs& a) {
       return ostrel_build_path("process/evpn/bucket-db-ifh/%d", static_cast<int>(a.if_handle));
     }},
    {[](const ShowArgs&) { return true; },
     [](const ShowArgs&) { return ostrel_build_path("process/evpn/%s", "bucket-db/"); }},
};

// ---- Record ----------------------------------------------------------------------------------------------

// A state the server may add later shows its number rather than passing for one of the three known.
const char* state_text(int32_t state, char (&buffer)[24]) {
  switch (state) {
    case -1:
      return "Unknown";
    case 0:
      return "Blocked";
    case 1:
      return "Forward";
  }
  std::snprintf(buffer, sizeof buffer, "Unknown(%d)", static_cast<int>(state));
  return buffer;
}

const char* update_state_text(uint64_t flags) {
  switch (static_cast<uint32_t>(flags)) {
    case 0:
      return "Delete";
    case 2:
      return "Forward";
  }
  return "Blocked";
}

void print_history(const mrib_evpn_bkt_pod& bucket) {
  if (bucket.Info[0].client_id == kHistoryEnd) return;
  ostrel_out("Update History\n--------------\n");
  for (const mrib_evpn_bkt_info_pod& update : bucket.Info) {
    if (update.client_id == kHistoryEnd) break;
    char client[32] = "EVPN Update";
    if (update.client_id != kEvpnClient)
      std::snprintf(client, sizeof client, "Redist Client-ID: %d", static_cast<int>(update.client_id));
    // The calendar text ends the line with its own newline.
    time_t seconds = update.client_redist_time.Seconds;
    const char* when = std::ctime(&seconds);
    ostrel_outf("%-26s State: %-10s Time: %s", client, update_state_text(update.redist_flags),
                when != nullptr ? when : "\n");
  }
  ostrel_out("\n");
}

void print_bucket(const mrib_evpn_bkt_pod& bucket, void*) {
  char state[24];
  const char* uptime = ostrel_dhms_text(bucket.Uptime).data();
  ostrel_outf("%-31s0x%-15x%-10d%-11s%-20s%s\n", ostrel_ifh_name(bucket.Interface, 0).data(), bucket.Interface,
              static_cast<int>(bucket.BucketID), state_text(bucket.State, state), uptime,
              (bucket.Flags & kDeleteInProgress) != 0 ? "Y" : "N");
  if (ostrel_private) print_history(bucket);
}

void print_header(void*) {
  ostrel_out(kHeader);
}

void ostrel_evpn_buckets(vellum_handle_t handle, const ShowArgs& args) {
  const BucketPath* path = std::find_if(std::begin(kPaths), std::end(kPaths),
                                        [&](const BucketPath& row) { return row.applies(args); });
  if (!path->build(args)) return;
  ListOutcome outcome = ostrel_list_cycle(
      ListCycle<mrib_evpn_bkt_pod>{.handle = handle, .on_first_batch = print_header, .print = print_bucket});
  if (outcome.failed && ostrel_debug) ostrel_outf("No EVPN Bucket DB: %s\n", cerr_strerror(outcome.code));
}

}  // namespace

void ostrel_evpn_bucket_view(const ShowArgs& args) {
  ostrel_evpn_buckets(ostrel_root_handle, args);
}
