// The platform's table and item printers: they run the store's list or single-item cycle themselves,
// decode each record and hand it to the caller's print callbacks.
#pragma once

#include <cstdint>

#include "platform/pod.h"
#include "platform/status.h"
#include "platform/vellum.h"

// Prints a title or column header; called at most once, right before the first record is printed.
// `context` is the one given to the printer.
typedef void (*mcast_show_header_fn)(void* context);
// Prints one decoded record; `context` is the one given to the printer.
typedef void (*mcast_show_record_fn)(void* structure, void* context);

// Lists `directory` (relative to `handle`) in batches of `batch` items, decodes each item with `descriptor`
// into `structure` (which holds the descriptor's decoded size), calls `header` (may be none) before the
// first record and `record` (may be none) for each, and releases what decoding allocated. An item that
// cannot be read ends the walk; one of the wrong data type, or that does not decode or release, is reported
// on standard error and skipped. With no structure or descriptor the items are only read. Returns 0 when the
// directory was listed (an empty one included), else the failing code. `flags` must be 0. `listed`, when
// given, receives the number of items the listing held, so that an empty directory can be told from one
// whose items were shown (it is 0 after a failure).
[[nodiscard]] cerr_t mcast_show_table(vellum_handle_t handle, const char* directory, uint32_t batch,
                                      mcast_show_header_fn header, mcast_show_record_fn record,
                                      void* structure, const pod_desc* descriptor, uint32_t flags,
                                      void* context, uint32_t* listed);

// Fetches the item `path` (relative to `handle`), decodes it into `structure`, calls `header` (may be none)
// and `record` (may be none), and releases the record. With no structure or descriptor the item is only
// read. Returns 0 when the item was shown (or, reading only, read), else the failing code; a wrong data type
// or a record that does not decode is reported on standard error and fails. `flags` must be 0.
[[nodiscard]] cerr_t mcast_show_item(vellum_handle_t handle, const char* path, mcast_show_header_fn header,
                                     mcast_show_record_fn record, void* structure, const pod_desc* descriptor,
                                     uint32_t flags, void* context);
