// How every view reads the store. A view builds its path with ostrel_build_path(), names its record type
// and its printer, and runs one of the cycles: the list cycle over the items below a directory, in batches
// that resume after a key; the single-item cycle; or, for the keyword views, the platform's table and item
// printers. The cycles decode each record into a buffer of its type, hand it to the printer, release what
// decoding attached, and print every per-item and per-batch message. What a view says when its records are
// not there is a ViewTexts row of its own.
#pragma once

#include <cstddef>
#include <cstdint>

#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "platform/pod.h"
#include "platform/show.h"
#include "platform/vellum.h"

// The directory or item path below the bound handle that the current view reads.
extern char ostrel_query_path[256];
// Where the next batch starts: empty for the first, then the key the cycle or the view derived.
extern char ostrel_resume_key[256];

inline constexpr cerr_t kOstrelNotFound = 0x40818600;  // the store has no such item or directory
inline constexpr uint32_t kOstrelBatchSize = 256;

// Writes a view's path into ostrel_query_path. False, after "Error building query string" on standard
// error, when it does not fit; the view then ends. A path is refused rather than cut: a cut key could name
// another item, whose lines the operator would take for the ones asked for.
[[nodiscard]] bool ostrel_build_path(const char* format, ...) __attribute__((format(printf, 1, 2)));
// The same into a view's own buffer of `size` bytes.
[[nodiscard]] bool ostrel_build_path_in(char* buffer, size_t size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// What a view prints on standard output when its records are not there. A text left none prints nothing.
struct ViewTexts {
  // A listing or fetch that failed with any code but `not_found_code`: the view's "No MRIB ..." line, with
  // a newline, or under -d followed by ": " and the error text.
  const char* not_available = nullptr;
  // The code by which the store says there is nothing there; some collections answer 2 instead.
  cerr_t not_found_code = kOstrelNotFound;
  // Printed as it stands for a listing or fetch that failed with `not_found_code`.
  const char* not_found = nullptr;
  // Printed as it stands when the listing succeeded but held no item at all.
  const char* none_listed = nullptr;
};

// Prints what `texts` say of a listing or fetch that failed with `code`.
void ostrel_report_missing(cerr_t code, const ViewTexts& texts);

// Prints a view's "No MRIB ..." line for `code` on standard output: the text and a newline, or under -d the
// text, ": " and the error text. For views whose failures do not fit a ViewTexts row.
void ostrel_print_not_available(const char* text, cerr_t code);

// One step's message: a format with the error text's "%s" (the data-type one with "%x"), written on
// standard error. A named message begins with the view's name, the format's first "%s".
struct CycleMessage {
  constexpr CycleMessage(const char* format, bool named = false) : format(format), named(named) {}
  const char* format;
  bool named;
};

// What the list cycle writes when a step fails. Views with texts of their own give a row of their own.
struct CycleMessages {
  const char* name = nullptr;                           // the view's name, for the named messages
  CycleMessage read = "Reading result data-list %s\n";  // the walk ends
  CycleMessage free_after_read = "Freeing result data-list %s\n";
  CycleMessage data_type = "Unexpected datatype: %x\n";
  CycleMessage decode = "Error decoding pod %s\n";
  CycleMessage release = "Error in pod_free_indirections %s\n";
  CycleMessage more = "Error in getting more flag %s\n";  // the walk ends after the batch
  CycleMessage free = "Freeing result data-list %s\n";
};
inline constexpr CycleMessages kOstrelCycleMessages{};

// When a further batch is asked for.
enum class BatchRule : uint8_t {
  kMoreFlag,            // the store's more flag is set
  kMoreFlagAndDecoded,  // ... and at least one record of the batch decoded
  kFullBatch,           // the batch held exactly kOstrelBatchSize items (no more flag is asked for)
  kOneBatch,            // never: the first batch is all (no more flag is asked for)
};

// What an item that cannot be shown (of another data type, or one that does not decode or release) does
// to the walk.
enum class ItemFailure : uint8_t {
  kSkip,     // it is reported and the walk goes on with the next item
  kEndWalk,  // it is reported, the batch is released and the walk ends
};

// A view's part in the list cycle over ostrel_query_path, for records of type `Record`. Callbacks may be
// none but `print`; each gets the view's `context`.
template <typename Record, typename Context = void>
struct ListCycle {
  vellum_handle_t handle = nullptr;
  ViewTexts texts = {};
  const CycleMessages* messages = &kOstrelCycleMessages;
  BatchRule rule = BatchRule::kMoreFlag;
  bool check_data_type = true;
  ItemFailure item_failure = ItemFailure::kSkip;
  Context* context = nullptr;
  // Called once, before the first item of the first batch that holds any.
  void (*on_first_batch)(Context*) = nullptr;
  void (*print)(const Record&, Context*) = nullptr;
  // Writes the key after which the next batch starts from a record printed; false when no usable key
  // comes out. The cycle asks once per batch, of its last record printed (released, so without what
  // decoding attached), so an item that fails to decode never decides where the walk goes on; a batch that
  // leaves no key ends the walk.
  // None: the path of the last item read.
  bool (*resume_key)(const Record&, char* key, size_t size, Context*) = nullptr;
  // When given, a view's key that would not take the walk past the last item read (the store resumes after
  // the key, so the walk would read that batch again, for ever) ends it with this line on standard error.
  const char* stalled = nullptr;
};

struct ListOutcome {
  bool listed_any = false;  // some batch held at least one item
  bool failed = false;      // the listing itself failed (not-found included)
  cerr_t code = kCerrOk;    // ... with this code
};

// A view's part in the single-item cycle over ostrel_query_path.
template <typename Record, typename Context = void>
struct ItemCycle {
  vellum_handle_t handle = nullptr;
  ViewTexts texts = {};
  bool check_data_type = true;
  const char* decode_error = "Error decoding pod %s\n";  // one "%s", the error text
  Context* context = nullptr;
  // Called once the item was read, before it is decoded; may be none.
  void (*on_read)(Context*) = nullptr;
  void (*print)(const Record&, Context*) = nullptr;
};

// A keyword view's part in the platform's table and item printers. `header` may be none.
template <typename Record, typename Context = void>
struct ShowCallbacks {
  void (*header)(Context*) = nullptr;
  void (*print)(const Record&, Context*) = nullptr;
  Context* context = nullptr;
};

namespace ostrel::detail {

// The decoded records of every cycle over `Record`: two buffers for the whole run, so that decoding reuses
// them for every item. A list cycle decodes into each by turns and keeps the last record printed intact
// while the next decodes, so that a batch's resume key is made once, from its last record printed, rather
// than after every record in case the items after it fail. REQUIRES: no printer runs a cycle over its own
// record type.
template <typename Record>
inline Record decoded[2]{};

// The cycles' untyped form: the record buffer with its descriptor, and the typed cycle behind thunks.
struct ListSteps {
  vellum_handle_t handle;
  const ViewTexts* texts;
  const CycleMessages* messages;
  BatchRule rule;
  bool check_data_type;
  ItemFailure item_failure;
  const pod_desc* desc;
  void* records[2];
  size_t record_size;
  const void* view;
  void (*on_first_batch)(const void* view);
  void (*print)(const void* view, const void* record);
  bool (*resume_key)(const void* view, const void* record, char* key, size_t size);
  const char* stalled;
};
ListOutcome run_list_cycle(const ListSteps& steps);

struct ItemSteps {
  vellum_handle_t handle;
  const ViewTexts* texts;
  bool check_data_type;
  const char* decode_error;
  const pod_desc* desc;
  void* record;
  size_t record_size;
  const void* view;
  void (*on_read)(const void* view);
  void (*print)(const void* view, const void* record);
};
cerr_t run_item_cycle(const ItemSteps& steps);

template <typename Cycle, typename Record>
void print_thunk(const void* view, const void* record) {
  const Cycle& c = *static_cast<const Cycle*>(view);
  c.print(*static_cast<const Record*>(record), c.context);
}

}  // namespace ostrel::detail

// Runs the list cycle over ostrel_query_path, printing what cycle.texts say when the listing fails or holds
// nothing.
template <typename Record, typename Context>
ListOutcome ostrel_list_cycle(const ListCycle<Record, Context>& cycle) {
  using Cycle = ListCycle<Record, Context>;
  using namespace ostrel::detail;
  ListSteps steps{.handle = cycle.handle,
                  .texts = &cycle.texts,
                  .messages = cycle.messages,
                  .rule = cycle.rule,
                  .check_data_type = cycle.check_data_type,
                  .item_failure = cycle.item_failure,
                  .desc = OstrelPod<Record>::desc,
                  .records = {&decoded<Record>[0], &decoded<Record>[1]},
                  .record_size = sizeof(Record),
                  .view = &cycle,
                  .on_first_batch = nullptr,
                  .print = print_thunk<Cycle, Record>,
                  .resume_key = nullptr,
                  .stalled = cycle.stalled};
  if (cycle.on_first_batch != nullptr) {
    steps.on_first_batch = [](const void* view) {
      const Cycle& c = *static_cast<const Cycle*>(view);
      c.on_first_batch(c.context);
    };
  }
  if (cycle.resume_key != nullptr) {
    steps.resume_key = [](const void* view, const void* record, char* key, size_t size) {
      const Cycle& c = *static_cast<const Cycle*>(view);
      return c.resume_key(*static_cast<const Record*>(record), key, size, c.context);
    };
  }
  return run_list_cycle(steps);
}

// Runs the single-item cycle over ostrel_query_path. Returns the fetch status: 0 when the item was read
// (whatever decoding made of it); otherwise cycle.texts were printed and the view may add its own.
template <typename Record, typename Context>
cerr_t ostrel_item_cycle(const ItemCycle<Record, Context>& cycle) {
  using Cycle = ItemCycle<Record, Context>;
  using namespace ostrel::detail;
  ItemSteps steps{.handle = cycle.handle,
                  .texts = &cycle.texts,
                  .check_data_type = cycle.check_data_type,
                  .decode_error = cycle.decode_error,
                  .desc = OstrelPod<Record>::desc,
                  .record = &decoded<Record>[0],
                  .record_size = sizeof(Record),
                  .view = &cycle,
                  .on_read = nullptr,
                  .print = print_thunk<Cycle, Record>};
  if (cycle.on_read != nullptr) {
    steps.on_read = [](const void* view) {
      const Cycle& c = *static_cast<const Cycle*>(view);
      c.on_read(c.context);
    };
  }
  return run_item_cycle(steps);
}

namespace ostrel::detail {

template <typename Record, typename Context>
void show_header_thunk(void* callbacks) {
  const auto& c = *static_cast<const ShowCallbacks<Record, Context>*>(callbacks);
  if (c.header != nullptr) c.header(c.context);
}

template <typename Record, typename Context>
void show_record_thunk(void* record, void* callbacks) {
  const auto& c = *static_cast<const ShowCallbacks<Record, Context>*>(callbacks);
  if (c.print != nullptr) c.print(*static_cast<const Record*>(record), c.context);
}

}  // namespace ostrel::detail

// The platform's table printer over `directory`, in batches of kOstrelBatchSize. Returns its status; with
// `listed`, how many items the listing held.
template <typename Record, typename Context>
[[nodiscard]] cerr_t ostrel_show_table(vellum_handle_t handle, const char* directory,
                                       const ShowCallbacks<Record, Context>& callbacks,
                                       uint32_t* listed = nullptr) {
  using namespace ostrel::detail;
  return mcast_show_table(handle, directory, kOstrelBatchSize, show_header_thunk<Record, Context>,
                          show_record_thunk<Record, Context>, &decoded<Record>, OstrelPod<Record>::desc, 0,
                          const_cast<ShowCallbacks<Record, Context>*>(&callbacks), listed);
}

// The platform's item printer over `path`. Returns its status.
template <typename Record, typename Context>
[[nodiscard]] cerr_t ostrel_show_item(vellum_handle_t handle, const char* path,
                                      const ShowCallbacks<Record, Context>& callbacks) {
  using namespace ostrel::detail;
  return mcast_show_item(handle, path, show_header_thunk<Record, Context>, show_record_thunk<Record, Context>,
                         &decoded<Record>, OstrelPod<Record>::desc, 0,
                         const_cast<ShowCallbacks<Record, Context>*>(&callbacks));
}
