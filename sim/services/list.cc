// Lists of the simulated platform: the head is the only allocation; elements are the caller's.
#include "platform/list.h"

#include <cstdint>
#include <new>

#include "sim/cerr_codes.h"
#include "sim/root.h"
#include "sim/services/fault_counter.h"

struct list_s {
  list_compare_fn compare = nullptr;
  list_element* head = nullptr;
  list_element* tail = nullptr;
  uint32_t count = 0;
};

namespace ostrel::sim {
namespace {

// "list_create" and "list_add" faults count over the whole process rather than per list, so that a fixture
// can pick out one route's list among many.
FaultCounter list_creates;
FaultCounter list_adds;

// Heads of destroyed lists, handed out again by list_create(): a route printed with sorted lists creates and
// destroys four lists, and a million routes would otherwise make eight million trips to the heap.
class SpareHeads {
 public:
  list_s* take() { return count_ != 0 ? heads_[--count_] : nullptr; }
  bool keep(list_s* head) {
    if (count_ == kKept) return false;
    heads_[count_++] = head;
    return true;
  }
  ~SpareHeads() {
    while (count_ != 0) delete heads_[--count_];
  }

 private:
  static constexpr int kKept = 16;
  list_s* heads_[kKept];
  int count_ = 0;
};
SpareHeads spare_heads;

cerr_t add_fault() {
  int64_t index = list_adds.next();
  auto fault = find_fault("list_add", {}, index);
  return fault ? (fault->code ? fault->code : kInjectedFailure) : kCerrOk;
}

void link_after(list_t list, list_element* before, list_element* element) {
  element->list = list;
  element->prev = before;
  element->next = before ? before->next : list->head;
  if (element->next) {
    element->next->prev = element;
  } else {
    list->tail = element;
  }
  if (before) {
    before->next = element;
  } else {
    list->head = element;
  }
  ++list->count;
}

}  // namespace
}  // namespace ostrel::sim

list_t list_create(list_compare_fn compare) {
  using namespace ostrel::sim;
  int64_t index = list_creates.next();
  if (find_fault("list_create", {}, index)) return nullptr;
  list_s* list = spare_heads.take();
  if (!list) list = new (std::nothrow) list_s;
  if (list) *list = list_s{compare};
  return list;
}

cerr_t list_insert_default(list_t list, list_element* element) {
  using namespace ostrel::sim;
  if (!list || !element || element->list || !list->compare) return kBadArgument;
  if (cerr_t status = add_fault()) return status;
  // Walk back from the tail: input that arrives in order, the common case, costs one comparison.
  list_element* before = list->tail;
  while (before && list->compare(element->data, before->data) < 0) before = before->prev;
  link_after(list, before, element);
  return kCerrOk;
}

cerr_t list_enqueue_default(list_t list, list_element* element) {
  using namespace ostrel::sim;
  if (!list || !element || element->list) return kBadArgument;
  if (cerr_t status = add_fault()) return status;
  link_after(list, list->tail, element);
  return kCerrOk;
}

list_element* list_first(list_t list) {
  return list ? list->head : nullptr;
}

list_element* list_next(const list_element* element) {
  return element ? element->next : nullptr;
}

list_element* list_dequeue(list_t list) {
  if (!list || !list->head) return nullptr;
  list_element* element = list->head;
  list->head = element->next;
  if (list->head) {
    list->head->prev = nullptr;
  } else {
    list->tail = nullptr;
  }
  --list->count;
  element->next = element->prev = nullptr;
  element->list = nullptr;
  return element;
}

uint32_t list_count(list_t list) {
  return list ? list->count : 0;
}

cerr_t list_destroy(list_t list) {
  if (!list) return ostrel::sim::kBadArgument;
  if (!ostrel::sim::spare_heads.keep(list)) delete list;
  return kCerrOk;
}
