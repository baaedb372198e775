// The platform's lists: doubly linked lists of elements that the caller provides (typically from a pool),
// kept in the order of a compare function or in arrival order. The list itself never allocates per element.
#pragma once

#include <cstdint>

#include "platform/status.h"

typedef struct list_s* list_t;

// One element, 32 bytes. The caller sets `data` and leaves the rest zero; the list owns the links while the
// element is on it.
struct list_element {
  list_element* next;
  list_element* prev;
  void* data;
  list_t list;  // the list the element is on, none when on none
};
static_assert(sizeof(list_element) == 32, "a list element fits a 32-byte pool element");

// Orders two elements by their `data`: negative, 0 or positive as strcmp().
typedef int (*list_compare_fn)(const void* a, const void* b);

// An empty list ordered by `compare` (which may be none when only list_enqueue_default() is used); none on
// failure. It lives until list_destroy().
list_t list_create(list_compare_fn compare);

// Links `element` into `list` after every element that does not compare greater, so elements that compare
// equal keep the order in which they were inserted. Fails for an element already on a list, or a list
// without compare function.
[[nodiscard]] cerr_t list_insert_default(list_t list, list_element* element);

// Links `element` at the tail of `list`. Fails for an element already on a list.
[[nodiscard]] cerr_t list_enqueue_default(list_t list, list_element* element);

// Walking in order: the first element (none when empty) and the one after `element` (none at the tail).
list_element* list_first(list_t list);
list_element* list_next(const list_element* element);

// Unlinks and returns the first element, none when empty. The element may then go back to its pool.
list_element* list_dequeue(list_t list);

// The number of elements on `list`.
uint32_t list_count(list_t list);

// Releases the list. Its elements are the caller's and are not touched: take them off first, or let them
// go back to their pool with it.
cerr_t list_destroy(list_t list);
