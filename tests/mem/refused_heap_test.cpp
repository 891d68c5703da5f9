#include <zelvan/mem/mem.h>

#include <gtest/gtest.h>
#include <support/heap.h>

static void* owners[40];

static unsigned short give_up(MemException*) { return 0; }
static unsigned short go_on(MemException*) { return 1; }
static unsigned short free_row_3(MemException* exception) {
  MemFree(exception->list, owners[3]);
  return 1;
}

// The table of 16 rows is full, so the heap is asked for a larger one first, then for the block.
TEST(MemAllocate, AsksTheHeapAgainIfTheHandlerGoesOn) {
  const struct {
    int refused;
    bool for_good;
    MemExceptionHandler handler;
    int status, row;
    const char* why;
  } rows[] = {
      {1, false, give_up, MEM_TABLE_FAILED, -1, "no table"},
      {1, false, go_on, MEM_SUCCESS, 16, "the table grows when asked once more"},
      {1, true, go_on, MEM_TABLE_FAILED, -1, "no table when asked once more either"},
      {1, true, free_row_3, MEM_MALLOC_FAILED, -1, "a row, but no block"},
      {1, false, free_row_3, MEM_SUCCESS, 3, "the old table has a free row"},
      {2, false, go_on, MEM_SUCCESS, 16, "a block when asked once more"},
  };
  for (const auto& row : rows) {
    MemPool pool = {99, 0};
    heap::refuse(row.refused, row.for_good);
    EXPECT_EQ(MemListNew(&pool, row.handler), nullptr) << "a list and its table are 2 requests";
    heap::grant_all();
    EXPECT_EQ(heap::blocks_left(), 0) << "no list is left";
    MemList* list = MemListNew(&pool, row.handler);
    for (int i = 0; i < 16; ++i) MemAllocate(list, 1, nullptr, &owners[i]);
    void* owner = nullptr;
    EXPECT_EQ(MemAvailable(list, 1), 0) << "the table is full";
    heap::refuse(row.refused, row.for_good);
    EXPECT_EQ(MemAllocate(list, 1, nullptr, &owner), row.status) << row.why;
    heap::grant_all();
    EXPECT_EQ(owner, row.row < 0 ? nullptr : list->entries[row.row].address) << row.why;
    MemListDelete(&list);
  }
}
