#include <zelvan/mem/mem.h>

#include <cstdio>

#include <gtest/gtest.h>

// A program has the library's own variable, not one of its name.
TEST(MemTrace, IsTurnedOnFromOutside) {
  MemPool* pool = MemPoolNew(9);
  MemList* list = MemListNew(pool, nullptr);
  for (const int trace : {0, 1}) {
    testing::internal::CaptureStdout();
    mem_trace = trace;
    MemListInitializeSearch(list);
    mem_trace = 0;
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout().empty(), trace == 0);
  }
  MemListDelete(&list);
  MemPoolDelete(&pool);
}
