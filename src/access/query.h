// The two ways every view reads the store: the list cycle over the items below a directory, in batches that
// resume after a key, and the single-item cycle. Both decode each record into the view's structure, hand it
// to the view's printer and release what decoding attached; they print every per-item and per-batch message.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/pod.h"
#include "platform/vellum.h"

// The directory or item path below the bound handle that the current view reads; built by the view.
extern char ostrel_query_path[256];
// Where the next batch starts: empty for the first, then the key the cycle or the view derived.
extern char ostrel_resume_key[256];

inline constexpr cerr_t kOstrelNotFound = 0x40818600;  // the store has no such item or directory
inline constexpr uint32_t kOstrelBatchSize = 256;

// When a further batch is asked for.
enum class BatchRule : uint8_t {
  kMoreFlag,            // the store's more flag is set
  kMoreFlagAndDecoded,  // ... and at least one record of the batch decoded
  kFullBatch,           // the batch held exactly kOstrelBatchSize items (no more flag is asked for)
};

// A view's part in the list cycle. The path is in ostrel_query_path.
struct ListCycle {
  vellum_handle_t handle = nullptr;
  const pod_desc* desc = nullptr;
  void* record = nullptr;  // the decoded structure, of the descriptor's size; zeroed once by the cycle
  size_t record_size = 0;
  const char* not_available = nullptr;   // the view's "No MRIB ..." line for a failed listing
  cerr_t silent_code = kOstrelNotFound;  // a listing failure that ends the view without a word
  BatchRule rule = BatchRule::kMoreFlag;
  void* context = nullptr;
  // Called once, before the first item of the first batch that holds any; may be none.
  void (*on_first_batch)(void* context) = nullptr;
  void (*print)(void* record, void* context) = nullptr;
  // Writes the key after which the next batch starts from a record just printed; false when no usable key
  // comes out. The cycle asks after every printed record and resumes after the last one's key, so an item
  // that fails to decode never decides where the walk goes on; a batch that leaves no key ends the walk.
  // None: the path of the last item read.
  bool (*resume_key)(const void* record, char* key, size_t size, void* context) = nullptr;
};

struct ListOutcome {
  bool listed_any = false;  // some batch held at least one item
  bool failed = false;      // the listing itself failed (not-found included)
};

// Runs the list cycle over ostrel_query_path.
ListOutcome ostrel_list_cycle(const ListCycle& cycle);

// A view's part in the single-item cycle. The path is in ostrel_query_path.
struct ItemCycle {
  vellum_handle_t handle = nullptr;
  const pod_desc* desc = nullptr;
  void* record = nullptr;
  size_t record_size = 0;
  bool check_data_type = true;
  const char* decode_error = "Error decoding pod %s\n";  // one "%s", the error text
  void* context = nullptr;
  // Called once the item was read, before it is decoded; may be none.
  void (*on_read)(void* context) = nullptr;
  void (*print)(void* record, void* context) = nullptr;
};

// Runs the single-item cycle over ostrel_query_path. Returns the fetch status: 0 when the item was read
// (whatever decoding made of it); otherwise the view prints its own not-found or not-available text.
[[nodiscard]] cerr_t ostrel_item_cycle(const ItemCycle& cycle);

// Writes the view's not-available line for `code`: the plain text and a newline, or with -d the text, ": "
// and the error text.
void ostrel_print_not_available(const char* text, cerr_t code);
