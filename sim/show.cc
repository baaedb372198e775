// The simulated table and item printers: the same list and single-item cycles that the program runs
// itself, with the same per-item messages, driving the caller's callbacks.
#include "platform/show.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/text.h"
#include "sim/cerr_codes.h"

namespace {

// Decodes one record, prints it through the callbacks and releases it; the decoder's code when it failed.
cerr_t show_record(const void* data, uint32_t length, mcast_show_header_fn header,
                   mcast_show_record_fn record, void* structure, const pod_desc* descriptor, void* context,
                   bool* header_done) {
  if (cerr_t status = pod_decode(data, length, structure, descriptor)) {
    std::fprintf(stderr, "Error decoding pod %s\n", cerr_strerror(status));
    return status;
  }
  if (header && !*header_done) header(context);
  *header_done = true;
  if (record) record(structure, context);
  if (cerr_t status = pod_free_indirections(structure, descriptor)) {
    std::fprintf(stderr, "Error in pod_free_indirections %s\n", cerr_strerror(status));
  }
  return kCerrOk;
}

void free_list(vellum_datalist_t list) {
  if (cerr_t status = vellum_datalist_free(list)) {
    std::fprintf(stderr, "Freeing result data-list %s\n", cerr_strerror(status));
  }
}

}  // namespace

cerr_t mcast_show_table(vellum_handle_t handle, const char* directory, uint32_t batch,
                        mcast_show_header_fn header, mcast_show_record_fn record, void* structure,
                        const pod_desc* descriptor, uint32_t flags, void* context, uint32_t* listed) {
  if (listed) *listed = 0;
  if (!directory || flags != 0) return ostrel::sim::kBadArgument;
  bool decode = structure && descriptor;
  bool header_done = false;
  char resume_key[256] = "";
  uint32_t items = 0;
  for (;;) {
    uint32_t count = batch;
    uint32_t more = 0;
    vellum_datalist_t list = nullptr;
    if (cerr_t status = vellum_datalist(handle, directory, resume_key, &count, &list, 0)) return status;
    items += count;
    const char* item_path = nullptr;
    for (uint32_t i = 0; i < count; ++i) {
      uint32_t type = 0;
      const void* data = nullptr;
      uint32_t length = 0;
      uint32_t item_flags = 0;
      if (cerr_t status = vellum_datalist_next(list, &item_path, &type, &data, &length, &item_flags)) {
        std::fprintf(stderr, "Reading result data-list %s\n", cerr_strerror(status));
        free_list(list);
        return status;
      }
      if (!decode) continue;
      if (type != kVellumDataTypePod) {
        std::fprintf(stderr, "Unexpected datatype: %x\n", type);
        continue;
      }
      (void)show_record(data, length, header, record, structure, descriptor, context, &header_done);
    }
    if (item_path) sstrncpy(resume_key, item_path, sizeof resume_key);
    if (cerr_t status = vellum_datalist_get_more_flag(list, &more)) {
      std::fprintf(stderr, "Error in getting more flag %s\n", cerr_strerror(status));
      more = 0;
    }
    free_list(list);
    if (!more || count == 0) break;
  }
  if (listed) *listed = items;
  return kCerrOk;
}

cerr_t mcast_show_item(vellum_handle_t handle, const char* path, mcast_show_header_fn header,
                       mcast_show_record_fn record, void* structure, const pod_desc* descriptor,
                       uint32_t flags, void* context) {
  if (!path || flags != 0) return ostrel::sim::kBadArgument;
  uint32_t type = kVellumDataTypePod;
  void* data = nullptr;
  uint32_t length = 0;
  cerr_t status = vellum_item_get(handle, path, &type, &data, &length, 0);
  std::unique_ptr<void, decltype(&std::free)> owned(data, std::free);
  if (status) return status;
  if (!structure || !descriptor) return kCerrOk;
  if (type != kVellumDataTypePod) {
    std::fprintf(stderr, "Unexpected datatype: %x\n", type);
    return ostrel::sim::kPodWrongType;
  }
  bool header_done = false;
  return show_record(data, length, header, record, structure, descriptor, context, &header_done);
}
