// Fixed-size pools and the lists built from their elements, with their injected faults.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "platform/chunk.h"
#include "platform/list.h"
#include "test_root.h"

namespace {

struct PoolCloser {
  void operator()(chunk_pool_s* pool) const { EXPECT_EQ(chunk_destroy(pool), kCerrOk); }
};
using Pool = std::unique_ptr<chunk_pool_s, PoolCloser>;

struct ListCloser {
  void operator()(list_s* list) const { EXPECT_EQ(list_destroy(list), kCerrOk); }
};
using List = std::unique_ptr<list_s, ListCloser>;

TEST(Chunk, RefusesWhenFullAndReusesWhatComesBack) {
  Pool pool(chunk_create("test pool", 808, 3, 0x101, 0, 0));
  ASSERT_NE(pool, nullptr);
  std::vector<void*> out;
  for (int i = 0; i < 3; ++i) out.push_back(chunk_malloc(pool.get()));
  for (void* element : out) ASSERT_NE(element, nullptr);
  EXPECT_EQ(chunk_malloc(pool.get()), nullptr);
  std::memset(out[1], 0xab, 808);
  EXPECT_EQ(chunk_free(pool.get(), out[1]), kCerrOk);
  auto* again = static_cast<unsigned char*>(chunk_malloc(pool.get()));
  ASSERT_EQ(again, out[1]);
  EXPECT_EQ(again[0], 0);  // flag 0x001 hands elements out zero-filled
  EXPECT_EQ(again[807], 0);
  EXPECT_EQ(chunk_free(pool.get(), out[0]), kCerrOk);
  EXPECT_NE(chunk_free(pool.get(), out[0]), kCerrOk);  // twice
  EXPECT_NE(chunk_free(pool.get(), again + 1), kCerrOk);
}

// A free finds its element's slot by multiplying rather than dividing: every element of a full-size pool
// goes back, once, and nothing inside or past an element does.
TEST(Chunk, EveryElementOfALargePoolGoesBackOnce) {
  constexpr uint32_t kCount = 5000;
  Pool pool(chunk_create("large pool", 808, kCount, 0x101, 0, 0));
  ASSERT_NE(pool, nullptr);
  std::vector<unsigned char*> out;
  for (uint32_t i = 0; i < kCount; ++i) out.push_back(static_cast<unsigned char*>(chunk_malloc(pool.get())));
  ASSERT_EQ(chunk_malloc(pool.get()), nullptr);
  int refused = 0;
  for (unsigned char* element : out) refused += chunk_free(pool.get(), element + 16) != kCerrOk;
  EXPECT_EQ(refused, static_cast<int>(kCount));
  EXPECT_NE(chunk_free(pool.get(), *std::max_element(out.begin(), out.end()) + 816), kCerrOk);
  int freed = 0;
  for (unsigned char* element : out) freed += chunk_free(pool.get(), element) == kCerrOk;
  EXPECT_EQ(freed, static_cast<int>(kCount));
  EXPECT_NE(chunk_free(pool.get(), out.back()), kCerrOk);
}

TEST(Chunk, InjectedFaultsHitTheNamedPoolOnly) {
  ostrel::sim::TestRoot root(R"({"faults": [
      {"op": "pool", "name": "OSTREL intf entry"},
      {"op": "pool_alloc", "name": "OSTREL list elem entry", "index": 1}]})");
  EXPECT_EQ(chunk_create("OSTREL intf entry", 808, 5000, 0x101, 0, 0), nullptr);
  Pool pool(chunk_create("OSTREL list elem entry", 32, 5000, 0x101, 0, 0));
  ASSERT_NE(pool, nullptr);
  EXPECT_NE(chunk_malloc(pool.get()), nullptr);
  EXPECT_EQ(chunk_malloc(pool.get()), nullptr);
  EXPECT_NE(chunk_malloc(pool.get()), nullptr);
}

struct Item {
  std::string name;
  int order;
};

int by_length_then_name(const void* a, const void* b) {
  const auto& x = *static_cast<const Item*>(a);
  const auto& y = *static_cast<const Item*>(b);
  if (x.name.size() != y.name.size()) return x.name.size() < y.name.size() ? -1 : 1;
  return x.name.compare(y.name);
}

std::vector<int> orders(list_t list) {
  std::vector<int> seen;
  for (list_element* e = list_first(list); e; e = list_next(e))
    seen.push_back(static_cast<Item*>(e->data)->order);
  return seen;
}

TEST(List, InsertKeepsCompareOrderEnqueueAppendsDequeueTakesTheFront) {
  std::vector<Item> items = {
      {"Gi0/0/0/10", 0}, {"Gi0/0/0/2", 1}, {"Gi0/0/0/10", 2}, {"Gi0/0/0/1", 3}, {"Gi0/0/0/2", 4}};
  std::vector<list_element> elements(items.size());
  List list(list_create(by_length_then_name));
  ASSERT_NE(list, nullptr);
  for (size_t i = 0; i < items.size(); ++i) {
    elements[i].data = &items[i];
    ASSERT_EQ(list_insert_default(list.get(), &elements[i]), kCerrOk);
  }
  EXPECT_EQ(orders(list.get()), (std::vector<int>{3, 1, 4, 0, 2}));
  EXPECT_EQ(list_count(list.get()), 5u);
  EXPECT_NE(list_insert_default(list.get(), &elements[0]), kCerrOk);  // already on the list

  // Enqueue appends whatever the order; dequeue takes from the front.
  std::vector<Item> letters = {{"b", 0}, {"a", 1}, {"c", 2}};
  std::vector<list_element> queued(letters.size());
  List queue(list_create(by_length_then_name));
  for (size_t i = 0; i < letters.size(); ++i) {
    queued[i].data = &letters[i];
    ASSERT_EQ(list_enqueue_default(queue.get(), &queued[i]), kCerrOk);
  }
  EXPECT_EQ(orders(queue.get()), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(list_dequeue(queue.get()), &queued[0]);
  EXPECT_EQ(orders(queue.get()), (std::vector<int>{1, 2}));
  EXPECT_EQ(list_insert_default(queue.get(), &queued[0]), kCerrOk);  // taken off, it may go on again
  EXPECT_EQ(orders(queue.get()), (std::vector<int>{1, 0, 2}));
}

TEST(List, InjectedFaults) {
  ostrel::sim::TestRoot root(R"({"faults": [{"op": "list_add", "index": 2, "code": "0x40b0ff01"}]})");
  Item item{"x", 0};
  std::vector<list_element> elements(4);
  for (auto& e : elements) e.data = &item;
  List first(list_create(by_length_then_name));
  List second(list_create(nullptr));
  EXPECT_EQ(list_insert_default(first.get(), &elements[0]), kCerrOk);
  EXPECT_EQ(list_enqueue_default(second.get(), &elements[1]), kCerrOk);
  EXPECT_EQ(list_enqueue_default(second.get(), &elements[2]), 0x40b0ff01u);
  EXPECT_EQ(elements[2].list, nullptr);
  EXPECT_EQ(list_insert_default(first.get(), &elements[3]), kCerrOk);

  ostrel::sim::TestRoot refusing(R"({"faults": [{"op": "list_create"}]})");
  EXPECT_EQ(list_create(nullptr), nullptr);
}

}  // namespace
