#include "access/query.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "access/output.h"
#include "access/switches.h"
#include "platform/text.h"

char ostrel_query_path[256];
char ostrel_resume_key[256];

namespace {

bool build_path(char* buffer, size_t size, const char* format, va_list args) {
  int length = std::vsnprintf(buffer, size, format, args);
  if (length >= 0 && static_cast<size_t>(length) < size) return true;
  std::fputs("Error building query string\n", stderr);
  return false;
}

}  // namespace

bool ostrel_build_path(const char* format, ...) {
  va_list args;
  va_start(args, format);
  bool built = build_path(ostrel_query_path, sizeof ostrel_query_path, format, args);
  va_end(args);
  return built;
}

bool ostrel_build_path_in(char* buffer, size_t size, const char* format, ...) {
  va_list args;
  va_start(args, format);
  bool built = build_path(buffer, size, format, args);
  va_end(args);
  return built;
}

void ostrel_print_not_available(const char* text, cerr_t code) {
  if (ostrel_debug) {
    ostrel_outf("%s: %s\n", text, cerr_strerror(code));
  } else {
    ostrel_outf("%s\n", text);
  }
}

void ostrel_report_missing(cerr_t code, const ViewTexts& texts) {
  if (code == texts.not_found_code) {
    if (texts.not_found != nullptr) ostrel_out(texts.not_found);
  } else if (texts.not_available != nullptr) {
    ostrel_print_not_available(texts.not_available, code);
  }
}

namespace ostrel::detail {
namespace {

template <typename Arg>
void report(const CycleMessages& messages, const CycleMessage& message, Arg arg) {
  if (message.named) {
    std::fprintf(stderr, message.format, messages.name, arg);
  } else {
    std::fprintf(stderr, message.format, arg);
  }
}

void free_list(vellum_datalist_t list, const CycleMessages& messages, const CycleMessage& message) {
  if (cerr_t rc = vellum_datalist_free(list); rc != kCerrOk) report(messages, message, cerr_strerror(rc));
}

// False when releasing failed (and was reported).
bool release(void* record, const pod_desc* desc, const CycleMessages& messages) {
  cerr_t rc = pod_free_indirections(record, desc);
  if (rc != kCerrOk) report(messages, messages.release, cerr_strerror(rc));
  return rc == kCerrOk;
}

// The last element of an item's path: what the store compares a resume key with.
const char* last_element(const char* path) {
  const char* slash = std::strrchr(path, '/');
  return slash != nullptr ? slash + 1 : path;
}

void copy_key(const char* text) {
  std::snprintf(ostrel_resume_key, sizeof ostrel_resume_key, "%s", text);
}

struct BatchResult {
  bool read_failed = false;  // the walk ends: the list is already released
  bool item_failed = false;  // an item could not be shown
  bool decoded_any = false;
  bool have_key = false;  // the view's key of the last record printed is in `key`
  char key[sizeof ostrel_resume_key];
  char last_name[sizeof ostrel_resume_key];  // of the last item read
};

// Reads, checks, decodes, prints and releases each item of one batch.
void walk_batch(const ListSteps& steps, vellum_datalist_t list, uint32_t count, BatchResult* out) {
  const CycleMessages& messages = *steps.messages;
  BatchResult& result = *out;
  result.read_failed = result.item_failed = result.decoded_any = result.have_key = false;
  result.last_name[0] = '\0';
  const char* last_path = nullptr;
  int printed = -1;  // the buffer of the last record printed
  int into = 0;      // the buffer the next record decodes into
  for (uint32_t i = 0; i < count; ++i) {
    const char* path = nullptr;
    uint32_t data_type = 0, length = 0, flags = 0;
    const void* data = nullptr;
    if (cerr_t rc = vellum_datalist_next(list, &path, &data_type, &data, &length, &flags); rc != kCerrOk) {
      report(messages, messages.read, cerr_strerror(rc));
      free_list(list, messages, messages.free_after_read);
      result.read_failed = true;
      return;
    }
    last_path = path;
    if (steps.check_data_type && data_type != kVellumDataTypePod) {
      report(messages, messages.data_type, data_type);
      result.item_failed = true;
    } else if (cerr_t rc = pod_decode(data, length, steps.records[into], steps.desc); rc != kCerrOk) {
      report(messages, messages.decode, cerr_strerror(rc));
      result.item_failed = true;
    } else {
      result.decoded_any = true;
      steps.print(steps.view, steps.records[into]);
      result.item_failed = !release(steps.records[into], steps.desc, messages);
      printed = into;
      if (steps.resume_key != nullptr) into ^= 1;
    }
    if (result.item_failed && steps.item_failure == ItemFailure::kEndWalk) break;
  }
  if (steps.resume_key != nullptr && printed >= 0)
    result.have_key = steps.resume_key(steps.view, steps.records[printed], result.key, sizeof result.key);
  // The default key is the last item's path, which the list owns: take it before the list goes.
  if (last_path == nullptr) return;
  if (steps.resume_key == nullptr) copy_key(last_path);
  if (steps.stalled != nullptr)
    std::snprintf(result.last_name, sizeof result.last_name, "%s", last_element(last_path));
}

bool next_batch_wanted(BatchRule rule, uint32_t more, uint32_t count, const BatchResult& batch) {
  switch (rule) {
    case BatchRule::kMoreFlag:
      return more != 0;
    case BatchRule::kMoreFlagAndDecoded:
      return more != 0 && batch.decoded_any;
    case BatchRule::kFullBatch:
      return count == kOstrelBatchSize;
    case BatchRule::kOneBatch:
      return false;
  }
  return false;
}

}  // namespace

ListOutcome run_list_cycle(const ListSteps& steps) {
  ListOutcome outcome;
  for (void* record : steps.records) std::memset(record, 0, steps.record_size);
  ostrel_resume_key[0] = '\0';
  BatchResult batch;
  for (;;) {
    uint32_t more = 0;
    uint32_t count = kOstrelBatchSize;
    vellum_datalist_t list = nullptr;
    cerr_t rc = vellum_datalist(steps.handle, ostrel_query_path, ostrel_resume_key, &count, &list, 0);
    if (rc != kCerrOk) {
      ostrel_report_missing(rc, *steps.texts);
      outcome.failed = true;
      outcome.code = rc;
      return outcome;
    }
    if (count == 0) {
      free_list(list, *steps.messages, steps.messages->free);
      break;
    }
    if (!outcome.listed_any && steps.on_first_batch != nullptr) steps.on_first_batch(steps.view);
    outcome.listed_any = true;
    walk_batch(steps, list, count, &batch);
    if (batch.read_failed) return outcome;
    bool ends_walk = batch.item_failed && steps.item_failure == ItemFailure::kEndWalk;
    if (!ends_walk && (steps.rule == BatchRule::kMoreFlag || steps.rule == BatchRule::kMoreFlagAndDecoded)) {
      if (rc = vellum_datalist_get_more_flag(list, &more); rc != kCerrOk) {
        report(*steps.messages, steps.messages->more, cerr_strerror(rc));
        more = 0;
      }
    }
    free_list(list, *steps.messages, steps.messages->free);
    if (ends_walk || !next_batch_wanted(steps.rule, more, count, batch)) break;
    if (steps.resume_key != nullptr) {
      if (!batch.have_key) break;
      if (steps.stalled != nullptr && std::strcmp(last_element(batch.key), batch.last_name) < 0) {
        std::fputs(steps.stalled, stderr);
        break;
      }
      copy_key(batch.key);
    }
  }
  if (!outcome.listed_any && steps.texts->none_listed != nullptr) ostrel_out(steps.texts->none_listed);
  return outcome;
}

cerr_t run_item_cycle(const ItemSteps& steps) {
  std::memset(steps.record, 0, steps.record_size);
  uint32_t data_type = kVellumDataTypePod, length = 0;
  void* data = nullptr;
  cerr_t rc = vellum_item_get(steps.handle, ostrel_query_path, &data_type, &data, &length, 0);
  if (rc != kCerrOk) {
    std::free(data);
    ostrel_report_missing(rc, *steps.texts);
    return rc;
  }
  if (steps.on_read != nullptr) steps.on_read(steps.view);
  if (steps.check_data_type && data_type != kVellumDataTypePod) {
    std::free(data);
    std::fprintf(stderr, "Unexpected datatype: %x\n", data_type);
    return kCerrOk;
  }
  cerr_t decoded = pod_decode(data, length, steps.record, steps.desc);
  std::free(data);
  if (decoded != kCerrOk) {
    std::fprintf(stderr, steps.decode_error, cerr_strerror(decoded));
    return kCerrOk;
  }
  steps.print(steps.view, steps.record);
  (void)release(steps.record, steps.desc, kOstrelCycleMessages);
  return kCerrOk;
}

}  // namespace ostrel::detail
