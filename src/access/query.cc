#include "access/query.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "access/switches.h"
#include "platform/text.h"

char ostrel_query_path[256];
char ostrel_resume_key[256];

namespace {

void free_list(vellum_datalist_t list) {
  if (cerr_t rc = vellum_datalist_free(list); rc != kCerrOk)
    std::fprintf(stderr, "Freeing result data-list %s\n", cerr_strerror(rc));
}

void release(void* record, const pod_desc* desc) {
  if (cerr_t rc = pod_free_indirections(record, desc); rc != kCerrOk)
    std::fprintf(stderr, "Error in pod_free_indirections %s\n", cerr_strerror(rc));
}

void copy_key(const char* text) {
  std::snprintf(ostrel_resume_key, sizeof ostrel_resume_key, "%s", text);
}

struct BatchResult {
  bool read_failed = false;  // the walk ends: the list is already released
  bool decoded_any = false;
  bool have_key = false;  // the view's key of the last record printed is in `key`
  char key[sizeof ostrel_resume_key];
};

// Reads, checks, decodes, prints and releases each item of one batch.
void walk_batch(const ListCycle& cycle, vellum_datalist_t list, uint32_t count, BatchResult* out) {
  BatchResult& result = *out;
  result = {};
  const char* last_path = nullptr;
  for (uint32_t i = 0; i < count; ++i) {
    const char* path = nullptr;
    uint32_t data_type = 0, length = 0, flags = 0;
    const void* data = nullptr;
    if (cerr_t rc = vellum_datalist_next(list, &path, &data_type, &data, &length, &flags); rc != kCerrOk) {
      std::fprintf(stderr, "Reading result data-list %s\n", cerr_strerror(rc));
      free_list(list);
      result.read_failed = true;
      return;
    }
    last_path = path;
    if (data_type != kVellumDataTypePod) {
      std::fprintf(stderr, "Unexpected datatype: %x\n", data_type);
      continue;
    }
    if (cerr_t rc = pod_decode(data, length, cycle.record, cycle.desc); rc != kCerrOk) {
      std::fprintf(stderr, "Error decoding pod %s\n", cerr_strerror(rc));
      continue;
    }
    result.decoded_any = true;
    cycle.print(cycle.record, cycle.context);
    release(cycle.record, cycle.desc);
    if (cycle.resume_key != nullptr)
      result.have_key = cycle.resume_key(cycle.record, result.key, sizeof result.key, cycle.context);
  }
  // The default key is the last item's path, which the list owns: take it before the list goes.
  if (cycle.resume_key == nullptr && last_path != nullptr) copy_key(last_path);
}

}  // namespace

void ostrel_print_not_available(const char* text, cerr_t code) {
  if (ostrel_debug) {
    std::printf("%s: %s\n", text, cerr_strerror(code));
  } else {
    std::puts(text);
  }
}

ListOutcome ostrel_list_cycle(const ListCycle& cycle) {
  ListOutcome outcome;
  std::memset(cycle.record, 0, cycle.record_size);
  ostrel_resume_key[0] = '\0';
  bool first = true;
  BatchResult batch;
  for (;;) {
    uint32_t more = 0;
    uint32_t count = kOstrelBatchSize;
    vellum_datalist_t list = nullptr;
    cerr_t rc = vellum_datalist(cycle.handle, ostrel_query_path, ostrel_resume_key, &count, &list, 0);
    if (rc != kCerrOk) {
      if (rc != cycle.silent_code && cycle.not_available != nullptr)
        ostrel_print_not_available(cycle.not_available, rc);
      outcome.failed = true;
      return outcome;
    }
    if (count == 0) {
      free_list(list);
      return outcome;
    }
    outcome.listed_any = true;
    if (first && cycle.on_first_batch != nullptr) cycle.on_first_batch(cycle.context);
    first = false;
    walk_batch(cycle, list, count, &batch);
    if (batch.read_failed) return outcome;
    if (cycle.rule != BatchRule::kFullBatch) {
      if (rc = vellum_datalist_get_more_flag(list, &more); rc != kCerrOk) {
        std::fprintf(stderr, "Error in getting more flag %s\n", cerr_strerror(rc));
        more = 0;
      }
    }
    free_list(list);
    bool go_on = false;
    switch (cycle.rule) {
      case BatchRule::kMoreFlag:
        go_on = more != 0;
        break;
      case BatchRule::kMoreFlagAndDecoded:
        go_on = more != 0 && batch.decoded_any;
        break;
      case BatchRule::kFullBatch:
        go_on = count == kOstrelBatchSize;
        break;
    }
    if (!go_on) return outcome;
    if (cycle.resume_key != nullptr) {
      if (!batch.have_key) return outcome;
      copy_key(batch.key);
    }
  }
}

cerr_t ostrel_item_cycle(const ItemCycle& cycle) {
  std::memset(cycle.record, 0, cycle.record_size);
  uint32_t data_type = kVellumDataTypePod, length = 0;
  void* data = nullptr;
  cerr_t rc = vellum_item_get(cycle.handle, ostrel_query_path, &data_type, &data, &length, 0);
  if (rc != kCerrOk) {
    std::free(data);
    return rc;
  }
  if (cycle.on_read != nullptr) cycle.on_read(cycle.context);
  if (cycle.check_data_type && data_type != kVellumDataTypePod) {
    std::free(data);
    std::fprintf(stderr, "Unexpected datatype: %x\n", data_type);
    return kCerrOk;
  }
  cerr_t decoded = pod_decode(data, length, cycle.record, cycle.desc);
  std::free(data);
  if (decoded != kCerrOk) {
    std::fprintf(stderr, cycle.decode_error, cerr_strerror(decoded));
    return kCerrOk;
  }
  cycle.print(cycle.record, cycle.context);
  release(cycle.record, cycle.desc);
  return kCerrOk;
}
