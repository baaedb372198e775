#include "views/mvpn/batched_listing.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

#include "access/output.h"
#include "access/query.h"
#include "access/switches.h"
#include "access/text_helpers.h"
#include "platform/pod.h"
#include "platform/text.h"

namespace {

// One batch of the listing. It is freed on every way out: the store's rule is that a batch, even an empty
// one, is released, and the listing's own messages say nothing of a batch that it leaves early.
class Batch {
 public:
  Batch() = default;
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;
  ~Batch() {
    if (list_ != nullptr) (void)vellum_datalist_free(list_);
  }

  vellum_datalist_t* out() { return &list_; }
  vellum_datalist_t get() const { return list_; }

  // Frees the batch now and returns the status.
  [[nodiscard]] cerr_t free() {
    cerr_t rc = vellum_datalist_free(list_);
    list_ = nullptr;
    return rc;
  }

 private:
  vellum_datalist_t list_ = nullptr;
};

struct FreeBlock {
  void operator()(void* block) const { std::free(block); }
};

void report_unavailable(cerr_t code) {
  if (ostrel_debug) {
    std::fprintf(stderr, "MRIB not available: %s\n", cerr_strerror(code));
  } else {
    std::fputs("MRIB not available\n", stderr);
  }
}

// Shows each item of a batch of `count`. Returns false when an item could not be read, which ends the view.
// The key of the last item read goes into ostrel_resume_key, whatever became of that item.
bool walk_batch(const BatchedListing& listing, vellum_datalist_t list, uint32_t count) {
  const char* key = nullptr;
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t data_type = 0, length = 0, flags = 0;
    const void* data = nullptr;
    if (cerr_t rc = vellum_datalist_next(list, &key, &data_type, &data, &length, &flags); rc != kCerrOk) {
      std::fprintf(stderr, "%s: call to vellum_datalist_next failed, %s\n", listing.name, cerr_strerror(rc));
      return false;
    }
    if (data_type == kVellumDataTypePod) {
      listing.print(data, length);
    } else {
      std::fprintf(stderr, "%s: Unexpected datatype: %x\n", listing.name, data_type);
    }
  }
  if (key != nullptr) std::snprintf(ostrel_resume_key, sizeof ostrel_resume_key, "%s", key);
  return true;
}

}  // namespace

void ostrel_batched_listing(vellum_handle_t handle, const BatchedListing& listing) {
  if (!ostrel_build_path("%s", listing.directory)) return;
  ostrel_resume_key[0] = '\0';
  for (bool first = true;; first = false) {
    Batch batch;
    uint32_t count = kOstrelBatchSize;
    cerr_t rc = vellum_datalist(handle, ostrel_query_path, ostrel_resume_key, &count, batch.out(), 0);
    if (rc == kOstrelNotFound) {
      count = 0;
    } else if (rc != kCerrOk) {
      report_unavailable(rc);
      return;
    }
    if (count == 0) {
      if (first) ostrel_out(listing.empty);
      return;
    }
    ostrel_out(listing.title);
    if (!walk_batch(listing, batch.get(), count)) return;
    if (cerr_t freed = batch.free(); freed != kCerrOk && listing.report_free_failure)
      std::fprintf(stderr, "%s: Failed to free datalist, %s", listing.name, cerr_strerror(freed));
    if (count != kOstrelBatchSize) return;
  }
}

cerr_t ostrel_fetch_element(vellum_handle_t handle, OstrelElementPrinter print) {
  uint32_t data_type = kVellumDataTypePod, length = 0;
  void* data = nullptr;
  cerr_t rc = vellum_item_get(handle, ostrel_query_path, &data_type, &data, &length, 0);
  std::unique_ptr<void, FreeBlock> block(data);
  if (rc == kCerrOk) print(data, length);
  return rc;
}

namespace ostrel::detail {

void print_element(const char* name, const void* data, uint32_t length, const pod_desc* desc, void* record,
                   void (*print)(const void* record)) {
  if (cerr_t rc = pod_decode(data, length, record, desc); rc != kCerrOk) {
    std::fprintf(stderr, "%s: Pod decode failure, %s", name, cerr_strerror(rc));
    return;
  }
  print(record);
  if (cerr_t rc = pod_free_indirections(record, desc); rc != kCerrOk)
    std::fprintf(stderr, "%s: Pod free failure, %s", name, cerr_strerror(rc));
}

}  // namespace ostrel::detail
