// What the registration and TE views share: the fetch of their one record by -T.
#pragma once

#include <cstdio>

#include "access/query.h"

// Fetches the record at ostrel_query_path below `handle` and prints it. Unlike the other single items of
// these databases it is checked for its data type, and its failures go to standard error: a record that is
// not there is "Not found.", any other failure means the feature is not configured. A record that does not
// decode is reported in the registration's words by both views, as operators know the message.
template <typename Record>
void ostrel_te_show_one(vellum_handle_t handle, void (*print)(const Record&, void*)) {
  cerr_t rc = ostrel_item_cycle(
      ItemCycle<Record>{.handle = handle, .decode_error = "error decoding regdb pod:\n%s\n", .print = print});
  if (rc == kOstrelNotFound) {
    std::fputs("Not found.\n", stderr);
  } else if (rc != kCerrOk) {
    std::fputs("Not configured\n", stderr);
  }
}
