// What the IIR and MDT interface-handle views share: their own listing loop, the fetch of one of their
// items, and the decoding of one item's record. Their element printers take the item's encoded data, not a
// decoded record, because the single item of -z and -h goes to the same printer as every listed one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "access/pod_descriptors.h"
#include "access/pod_records.h"
#include "platform/status.h"
#include "platform/vellum.h"

// Decodes and prints one item's encoded record of `length` bytes.
using OstrelElementPrinter = void (*)(const void* data, uint32_t length);

// What sets one view's listing apart from the other's.
struct BatchedListing {
  const char* directory;  // below the handle
  const char* title;      // before every batch that holds items, newline included
  const char* empty;      // when the first batch holds none, newline included
  const char* name;       // the listing's own name, first in each of its messages
  // Whether a batch that cannot be freed says so ("<name>: Failed to free datalist, <error>", no newline).
  bool report_free_failure;
  OstrelElementPrinter print;
};

// Lists `listing.directory` below `handle` in batches of up to 256 items and hands each pod record to
// `listing.print`. There is no more flag: another batch is asked for only after exactly 256 items, and it
// starts after the last item read, whether or not that item could be shown. A directory that is not there
// is an empty one; any other listing failure writes "MRIB not available" (under -d with the error text)
// on standard error and ends the view.
void ostrel_batched_listing(vellum_handle_t handle, const BatchedListing& listing);

// Fetches the item at ostrel_query_path and hands its data to `print`, whatever its data type. Returns the
// fetch status; a failed fetch prints nothing, and the caller says what it means.
[[nodiscard]] cerr_t ostrel_fetch_element(vellum_handle_t handle, OstrelElementPrinter print);

// The elements of a decoded array.
template <typename T>
std::span<const T> ostrel_items(const pod_array<T>& array) {
  return {array.data, static_cast<size_t>(array.count)};
}

namespace ostrel::detail {
void print_element(const char* name, const void* data, uint32_t length, const pod_desc* desc, void* record,
                   void (*print)(const void* record));
}  // namespace ostrel::detail

// Decodes `data` into a Record, prints it with `print`, and releases what decoding attached. A record that
// does not decode writes "<name>: Pod decode failure, <error>" on standard error and is not printed; one
// that cannot be released writes "<name>: Pod free failure, <error>". Neither message ends its line: the
// next one continues it, as the system writes them.
template <typename Record, void (*print)(const Record&)>
void ostrel_print_element(const char* name, const void* data, uint32_t length) {
  // One buffer for the run: pod_decode() writes every byte of it, so clearing it again for each item of a
  // listing would only cost a string store per item.
  static Record record{};
  ostrel::detail::print_element(name, data, length, OstrelPod<Record>::desc, &record,
                                [](const void* decoded) { print(*static_cast<const Record*>(decoded)); });
}
