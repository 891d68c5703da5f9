#include <zelvan/mem/mem.h>

#include <gtest/gtest.h>
#include <support/heap.h>

static void* owners[16];
static void** new_owner() { return static_cast<void**>(owners[0]); }  // in the block of row 0

static unsigned short give_up(MemException*) { return 0; }
static unsigned short go_on(MemException*) { return 1; }
static unsigned short free_row_3(MemException* exception) {
  MemFree(exception->list, owners[3]);
  return 1;
}
// The new block has the row of the freed one and, on most heaps, its address.
static unsigned short replace_row_0(MemException* exception) {
  MemFree(exception->list, owners[0]);
  MemAllocate(exception->list, sizeof(void*), nullptr, &owners[0]);
  *new_owner() = nullptr;
  return 1;
}

// The table of 16 rows is full, so the heap is asked for a larger one first, then for the block.
TEST(MemAllocate, AsksTheHeapAgainIfTheHandlerGoesOn) {
  const auto expect = [](int refused, bool for_good, MemExceptionHandler handler, int status,
                         int row, const char* why) {
    MemPool pool = {999, 0};
    heap::refuse(refused, for_good);
    EXPECT_EQ(MemListNew(&pool, handler), nullptr) << "a list and its table are 2 requests";
    heap::grant_all();
    EXPECT_EQ(heap::blocks_left(), 0) << "no list is left";
    MemList* list = MemListNew(&pool, handler);
    for (int i = 0; i < 16; ++i) MemAllocate(list, sizeof(void*), nullptr, &owners[i]);
    *new_owner() = nullptr;
    EXPECT_EQ(MemAvailable(list, 1), 0) << "the table is full";
    heap::refuse(refused, for_good);
    EXPECT_EQ(MemAllocate(list, 1, nullptr, new_owner()), status) << why;
    heap::grant_all();
    EXPECT_EQ(*new_owner(), row < 0 ? nullptr : list->entries[row].address) << why;
    heap::refuse(1, true);
    MemListDelete(&list);
    heap::grant_all();
    EXPECT_EQ(pool.used, 0) << "blocks are released though the heap refuses, " << why;
  };
  expect(1, false, give_up, MEM_TABLE_FAILED, -1, "the heap refuses a table");
  expect(1, false, go_on, MEM_SUCCESS, 16, "the table grows when asked once more");
  expect(1, true, go_on, MEM_TABLE_FAILED, -1, "the heap refuses a table twice");
  expect(1, true, free_row_3, MEM_MALLOC_FAILED, -1, "a row, but no block");
  expect(1, false, free_row_3, MEM_SUCCESS, 3, "the old table has a free row");
  expect(1, false, replace_row_0, MEM_TABLE_FAILED, -1, "the owner's pointer is released");
  expect(2, false, go_on, MEM_SUCCESS, 16, "a block when asked once more");
}
