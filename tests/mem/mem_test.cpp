#include "mem_model.h"

#include <climits>
#include <cstdio>
#include <regex>

#include <gtest/gtest.h>
#include <support/random.h>

// A size that no heap can give is refused under the address sanitizer, too.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

TEST(MemPoolNew, TakesZeroOrLessForNoLimit) {
  for (const int limit : {INT_MIN, 0, 1, INT_MAX}) {
    MemPool* pool = MemPoolNew(limit);
    EXPECT_EQ(pool->limit, limit <= 0 ? INT_MAX : limit);
    EXPECT_EQ(pool->used, 0);
    MemPoolDelete(&pool);
    MemPoolDelete(&pool);  // does nothing
  }
}

TEST(MemList, BehavesLikeAPlainModel) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    support::Random random(seed);
    MemModel model([&](int n) { return random.below(n); });
    for (int i = 0; i < 250; ++i) {
      const char* const operation = model.step();
      ASSERT_EQ(model.actual(), model.expected())
          << "after " << operation << ", step " << i << " of seed " << seed;
    }
  }
}

std::vector<int> codes;  // that the handler was called with
int gives_up_at;

unsigned short answer(MemException* exception) {
  codes.push_back(exception->code);
  EXPECT_EQ(exception->key, &codes) << "the default object";
  return exception->code == gives_up_at ? 0 : 0x8000;
}

TEST(MemAllocate, RaisesExceptionsInOrder) {
  const struct {
    int used, size, gives_up_at, status;
    std::vector<int> codes;
    const char* why;
  } rows[] = {
      {0, 100, 0, MEM_SUCCESS, {}, "all of the pool"},
      {1, 99, 0, MEM_SUCCESS, {}, "the last byte"},
      {1, 100, 0, MEM_SUCCESS, {MEM_POOL_OVERFLOW}, "waved through beyond the limit"},
      {1, 100, MEM_POOL_OVERFLOW, MEM_POOL_OVERFLOW, {MEM_POOL_OVERFLOW}, "given up"},
      {0, 101, MEM_POOL_TOO_SMALL, MEM_POOL_TOO_SMALL, {MEM_POOL_TOO_SMALL}, "never fits"},
      {0, 101, 0, MEM_SUCCESS, {MEM_POOL_TOO_SMALL, MEM_POOL_OVERFLOW}, "both waved through"},
      {101, -1, 0, MEM_MALLOC_FAILED, {MEM_MALLOC_FAILED}, "asked for once more, and refused"},
      {INT_MAX, 1, 0, MEM_POOL_OVERFLOW, {MEM_POOL_OVERFLOW}, "no int holds the sum"},
  };
  MemPool* pool = MemPoolNew(100);
  MemList* list = MemListNew(pool, answer);
  MemSetDefaultList(list);
  MemSetDefaultObject(&codes);
  for (const auto& row : rows) {
    codes.clear();
    gives_up_at = row.gives_up_at;
    pool->used = row.used;
    void* owner = nullptr;
    EXPECT_EQ(MemAvailable(list, row.size), row.codes.empty() || row.size < 0) << row.why;
    EXPECT_EQ(MemAllocate(nullptr, row.size, nullptr, &owner), row.status) << row.why;
    EXPECT_EQ(codes, row.codes) << row.why;
    EXPECT_EQ(owner == nullptr, row.status != MEM_SUCCESS) << row.why;
    EXPECT_EQ(pool->used, row.used + (owner == nullptr ? 0 : row.size)) << row.why;
    MemFree(nullptr, owner);
    EXPECT_EQ(pool->used, row.used) << row.why;
  }
  pool->used = 0;
  void* owner = nullptr;
  MemAllocate(list, 1, &codes, &owner);
  MemListDelete(&list);
  EXPECT_EQ(owner, nullptr) << "a list takes its blocks along";
  EXPECT_EQ(MemAllocate(nullptr, 1, nullptr, &owner), MEM_SUCCESS) << "no list is the default now";
  MemFree(nullptr, owner);
  EXPECT_NE(owner, nullptr) << "an untracked block: its owner stays as it is";
  MemPoolDelete(&pool);
}

TEST(MemSetPointer, FindsTheParentFromItsFirstByteToItsLast) {
  void* memory[4] = {};
  for (int i = 0; i < 4; ++i) {
    MemEntry rows[] = {{&memory[1], 2 * sizeof(void*), 0, nullptr, nullptr, 0, 1, -1},
                       {&rows, 1, 1, nullptr, nullptr, 0, 2, -1}};
    MemList list = {2, 2, nullptr, nullptr, rows};
    MemSetPointer(&list, &rows, &memory[i]);
    EXPECT_EQ(rows[1].parent, i == 1 || i == 2 ? 0 : -1)
        << "word " << i << ", the block is 1 and 2";
  }
}

// A story of three blocks, the second a child of the first.
TEST(MemTrace, TellsEachStepWhileItIsOn) {
  MemPool* pool = MemPoolNew(64);
  MemList* list = MemListNew(pool, [](MemException*) -> unsigned short { return 0; });
  void *first = nullptr, *other = nullptr, *third = nullptr;
  testing::internal::CaptureStdout();
  MemListInitializeSearch(list);  // not yet
  mem_trace = 1;
  MemAllocate(list, 32, pool, &first);
  void** const member = static_cast<void**>(first);
  MemAllocate(list, 8, pool, member);
  MemAllocate(list, 20, list, &third);
  int number = list->entries[0].sequence;
  for (const int size : {65, 25, -1}) MemAllocate(list, size, pool, &other);
  MemFree(list, first);
  MemSetPointer(list, *member, &other);
  void* const second = other;
  MemSetPointer(list, second, member + 1);
  member[1] = nullptr;  // lost
  MemListClear(list);   // so only the third block goes
  member[1] = second;
  MemAllocate(list, 20, list, &third);
  MemListRemoveFromSearch(list, pool);
  MemListRemoveSmallest(list);
  MemListRemoveLargest(list);
  MemListInitializeSearch(list);
  MemListRemoveOldest(list);
  MemSetPointer(list, member, &other);
  MemSetPointer(list, nullptr, &other);
  MemFree(list, std::malloc(1));
  MemAllocate(nullptr, -1, pool, &other);
  mem_trace = 0;
  std::fflush(stdout);
  std::string trace = testing::internal::GetCapturedStdout();
  trace = std::regex_replace(trace, std::regex("0x[0-9a-f]+"), "#");
  for (const char* name : {"[1]", "[2]", "[3]", "[4]"}) {
    const std::regex pattern("\\[" + std::to_string(number) + "\\]");
    trace = std::regex_replace(trace, pattern, name);
    ++number;
  }
  EXPECT_EQ(first, nullptr);
  EXPECT_EQ(third, nullptr);
  EXPECT_EQ(other, second) << "the pointer that an owner leaves stays as it is";
  EXPECT_EQ(trace, R"(Allocate:  list # key # size 32 back ptr #
  [1] Allocation address # total size 32 pool used 32
Allocate:  list # key # size 8 back ptr #
  [2] Allocation address # total size 8 pool used 40
    Parent sequence [1] total size 40
Allocate:  list # key # size 20 back ptr #
  [3] Allocation address # total size 20 pool used 60
Allocate:  list # key # size 65 back ptr #
**Pool of 64 too small
Allocate:  list # key # size 25 back ptr #
**Pool overflow current size 60
**Pool overflow after exception processing
Allocate:  list # key # size -1 back ptr #
**Malloc failed
**Malloc failed after exception processing
Free: list # address #
**[1] Is parent/nSet pointer: list # address # back ptr #
  [2] Set pointer replaces #
Set pointer: list # address # back ptr #
  [2] Set pointer replaces #
    Parent sequence [1] total size 40
Clear list # address #
**[2] Back pointer does not contain address
**[1] Is parent/nClear list # address #
  [3] Release 20 pool used 40
Allocate:  list # key # size 20 back ptr #
  [4] Allocation address # total size 20 pool used 60
Remove from search: list # object #
!!Remove: Smallest
  [4] Release 20 pool used 40
^^Remove: Smallest
!!Remove: Largest
Initialize search: list #
!!Remove: Oldest
  [2] Release 8 pool used 32
  [2] Parent sequence [1], new total 32
  [1] Release 32 pool used 0
^^Remove: Oldest
Set pointer: list # address # back ptr #
**Address not found
Set pointer: list # address 0 back ptr #
Free: list # address #
**Address not found
Allocate:  list 0 key # size -1 back ptr #
**Malloc failed
)");
  MemListDelete(&list);
  MemPoolDelete(&pool);
}

}  // namespace
