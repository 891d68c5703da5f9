#include <zelvan/mem/mem.h>

#include <gtest/gtest.h>
#include <support/heap.h>

namespace {

void* owners[40];

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 1; }
unsigned short free_row_3(MemException* exception) {
  MemFree(exception->list, owners[3]);
  return 1;
}
unsigned short fill_table(MemException* exception) {
  exception->list->pool->limit = 99;
  return MemAllocate(exception->list, 1, nullptr, &owners[15]) == MEM_SUCCESS;
}

TEST(MemListNew, ReturnsNullWhereTheHeapRefuses) {
  MemPool* pool = nullptr;
  MemList* list = nullptr;
  const auto drop = [&] {
    MemListDelete(&list);
    MemPoolDelete(&pool);
  };
  const auto create = [&] {
    drop();
    pool = MemPoolNew(1);
    list = MemListNew(pool, give_up);
  };
  const auto check = [&] {
    EXPECT_TRUE(pool == nullptr || list == nullptr);
    drop();
    EXPECT_EQ(heap::blocks_left(), 0) << "nothing leaks";
  };
  EXPECT_EQ(heap::refuse_each(create, check), 6) << "pool, list and table";
  drop();
}

// The table of 16 rows is full, so the heap is asked for a larger one first, then for the block.
// With 15 blocks the pool is full instead, and the handler takes the last row.
TEST(MemAllocate, AsksTheHeapAgainIfTheHandlerGoesOn) {
  const struct {
    int n_blocks, refused;
    bool for_good;
    MemExceptionHandler handler;
    int status, row;
    const char* why;
  } rows[] = {
      {16, 1, false, give_up, MEM_TABLE_FAILED, 0, "no table"},
      {16, 1, false, go_on, MEM_SUCCESS, 16, "the table grows when asked once more"},
      {16, 1, true, go_on, MEM_TABLE_FAILED, 0, "no table, twice"},
      {16, 1, true, free_row_3, MEM_MALLOC_FAILED, 0, "a row, but no block"},
      {16, 1, false, free_row_3, MEM_SUCCESS, 3, "the old table has a free row"},
      {16, 2, false, go_on, MEM_SUCCESS, 16, "a block when asked once more"},
      {16, 2, true, go_on, MEM_MALLOC_FAILED, 0, "no block, twice"},
      {15, 0, false, fill_table, MEM_SUCCESS, 16, "the handler took the last row"},
      {15, 3, true, fill_table, MEM_TABLE_FAILED, 0, "and the heap has no larger table"},
  };
  for (const auto& row : rows) {
    MemPool* pool = MemPoolNew(row.n_blocks == 16 ? 0 : row.n_blocks);
    MemList* list = MemListNew(pool, row.handler);
    for (int i = 0; i < row.n_blocks; ++i) MemAllocate(list, 1, nullptr, &owners[i]);
    void* owner = nullptr;
    heap::refuse(row.refused, row.for_good);
    EXPECT_EQ(MemAllocate(list, 1, nullptr, &owner), row.status) << row.why;
    heap::grant_all();
    const bool is_given = row.status == MEM_SUCCESS;
    EXPECT_EQ(owner, is_given ? list->entries[row.row].address : nullptr) << row.why;
    MemListClear(list);
    EXPECT_EQ(owner, nullptr) << row.why;
    EXPECT_EQ(pool->used, 0) << row.why;
    MemListDelete(&list);
    MemPoolDelete(&pool);
  }
}

TEST(MemListClear, ReleasesFamiliesWithoutAnyHeap) {
  MemPool* pool = MemPoolNew(0);
  MemList* list = MemListNew(pool, give_up);
  void* parent = nullptr;
  MemAllocate(list, sizeof(void*), nullptr, &parent);
  MemAllocate(list, 1, nullptr, static_cast<void**>(parent));
  heap::refuse(1, true);
  MemListClear(list);
  EXPECT_TRUE(heap::grant_all()) << "a list of the children was refused";
  EXPECT_EQ(parent, nullptr);
  EXPECT_EQ(pool->used, 0);
  MemListDelete(&list);
  MemPoolDelete(&pool);
}

}  // namespace
