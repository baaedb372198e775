// The route-collapse IPC view: the ring, the producer's flags and updates, and under -P the consumer's
// shared-memory validation errors. A channel that is not there shows nothing at all.
#include "views/client/rc_ipc.h"

#include <cstdint>

#include "access/output.h"
#include "access/query.h"
#include "access/session.h"

namespace {

// "None set", or the set flags in brackets; a set of unknown bits alone gives empty brackets, which still
// tells the operator that something is set.
void print_producer_flags(uint32_t flags) {
  if (flags == 0) {
    ostrel_out("Producer flags : None set\n");
    return;
  }
  ostrel_outf("Producer flags : [%s%s%s]\n", (flags & 0x1) != 0 ? "Reset" : "",
              (flags & 0x2) != 0 ? " Download" : "", (flags & 0x4) != 0 ? " NSF" : "");
}

// Unlike every other line of the view, the block's last line has no newline: what an operator sees is the
// contract.
void print_validation_errors(const mrib_rc_ipc_pod& ipc) {
  uint32_t total = ipc.SharedMemoryOpenFailures + ipc.SharedMemoryFstatFailures +
                   ipc.SharedMemorySizeFailures + ipc.SharedMemoryMapFailures +
                   ipc.SharedMemoryHeaderFailures;
  ostrel_out("\n\nConsumer shared memory validation errors");
  ostrel_outf("  total: %d\n  open: %d\n  fstat: %d\n  size: %d\n  mmap: %d\n  header: %d",
              static_cast<int>(total), static_cast<int>(ipc.SharedMemoryOpenFailures),
              static_cast<int>(ipc.SharedMemoryFstatFailures), static_cast<int>(ipc.SharedMemorySizeFailures),
              static_cast<int>(ipc.SharedMemoryMapFailures),
              static_cast<int>(ipc.SharedMemoryHeaderFailures));
}

void print_rc_ipc(const mrib_rc_ipc_pod& ipc, const RcIpcKeywords* keywords) {
  // An absent name leaves the title line blank rather than dropping it, so the lines below keep their place.
  ostrel_outf("%s \n\n", ipc.IPCName != nullptr ? ipc.IPCName : "");
  ostrel_outf("Items in ring : %d\n", static_cast<int>(ipc.ItemsInRing));
  ostrel_outf("Consumer waiting : %s\n", ipc.ConsumerWaiting ? "TRUE" : "FALSE");
  print_producer_flags(ipc.ProducerFlags);
  ostrel_outf("\n\nProducer wrote %d updates to channel\n", static_cast<int>(ipc.NodeUpdates));
  if (keywords->validation_errors) print_validation_errors(ipc);
}

}  // namespace

void ostrel_kw_rc_ipc_view(const RcIpcKeywords& keywords) {
  // The keyword reader refuses a run without -W; without a name there is no channel to ask for.
  if (keywords.ipc_name == nullptr) return;
  // A name too long for the path is refused with the path error rather than read as a cut name, which would
  // be another channel's.
  if (!ostrel_build_path("route-collapse-ipc-%s", keywords.ipc_name)) return;
  // This display has no not-available line: a channel that is not there, like any failed fetch, prints
  // nothing.
  (void)ostrel_show_item(
      ostrel_view_handle, ostrel_query_path,
      ShowCallbacks<mrib_rc_ipc_pod, const RcIpcKeywords>{.print = print_rc_ipc, .context = &keywords});
}
