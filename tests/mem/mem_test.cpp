#include "mem_model.h"

#include <climits>
#include <cstdlib>
#include <regex>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <support/random.h>

TEST(MemList, BehavesLikeAPlainModelWithoutATrace) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    support::Random random(seed);
    MemModel model([&](int n) { return random.below(n); });
    const char* operation = "nothing";
    testing::internal::CaptureStdout();
    for (int i = 0; i < 250 && model.difference().empty(); ++i) operation = model.step();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "") << "the trace is off";
    EXPECT_EQ(model.difference(), "") << "after " << operation << ", seed " << seed;
  }
}

static std::vector<int> codes;  // of the exceptions that the handler saw
static int gives_up_at;

static unsigned short answer(MemException* exception) {
  codes.push_back(exception->code);
  return exception->code == gives_up_at ? 0 : 0x8000;
}

TEST(MemAllocate, RaisesExceptionsInOrder) {
  MemPool pool = {100, 0};
  MemList* list = MemListNew(&pool, answer);
  const auto expect = [&](int used, int size, int at, int status, const std::vector<int>& raised,
                          const char* why) {
    codes.clear();
    gives_up_at = at;
    pool.used = used;
    void* owner = nullptr;
    EXPECT_EQ(MemAvailable(list, size), raised.empty()) << why;
    EXPECT_EQ(MemAllocate(list, size, nullptr, &owner), status) << why;
    EXPECT_EQ(codes, raised) << why;
    EXPECT_EQ(pool.used, used + (status == MEM_SUCCESS ? size : 0)) << why;
    MemFree(list, owner);
  };
  expect(1, 99, 0, MEM_SUCCESS, {}, "the last byte");
  expect(1, 100, 0, MEM_SUCCESS, {MEM_POOL_OVERFLOW}, "the handler goes on, beyond the limit");
  expect(0, 101, MEM_POOL_TOO_SMALL, MEM_POOL_TOO_SMALL, {MEM_POOL_TOO_SMALL}, "it stops");
  expect(0, 101, 0, MEM_SUCCESS, {MEM_POOL_TOO_SMALL, MEM_POOL_OVERFLOW}, "it goes on twice");
  expect(INT_MAX, 1, 0, MEM_POOL_OVERFLOW, {MEM_POOL_OVERFLOW}, "no int holds the sum");
  MemListDelete(&list);
}

TEST(MemFree, RefusesABlockThatItsOwnerNoLongerHolds) {
  MemPool pool = {100, 0};
  MemList* list = MemListNew(&pool, answer);
  void* owner = nullptr;
  MemAllocate(list, 8, nullptr, &owner);
  void* const block = std::exchange(owner, &pool);
  MemFree(list, block);
  ASSERT_EQ(pool.used, 8) << "the block stays";
  list->entries[0].back_ptr = nullptr;  // no owner at all
  MemFree(list, block);
  MemListDelete(&list);
  std::free(block);
}

TEST(MemListRemoveFromSearch, KeepsBlocksOfAnObjectFromRemovals) {
  MemPool pool = {100, 0};
  MemList* list = MemListNew(&pool, answer);
  void* owner = nullptr;
  EXPECT_EQ(MemAllocate(nullptr, 8, &pool, &owner), MEM_SUCCESS) << "without a list";
  MemSetPointer(nullptr, owner, &owner);
  MemFree(nullptr, owner);
  EXPECT_EQ(MemListRemoveOldest(list), 0) << "the list has no block";
  MemSetDefaultList(list);
  MemSetDefaultObject(&pool);
  MemAllocate(nullptr, 8, nullptr, &owner);
  MemListRemoveFromSearch(list, &pool);
  EXPECT_EQ(MemListRemoveLargest(list), 0) << "the default object owns the block";
  MemListInitializeSearch(list);
  EXPECT_EQ(MemListRemoveLargest(list), 1) << "no object is excluded any more";
  MemSetDefaultObject(nullptr);
  MemListDelete(&list);
  EXPECT_EQ(list, nullptr) << "deleted";
}

// In the expected lines @ stands for any address and N for any serial number. "/n" is no line end.
TEST(MemTrace, PrintsEachStepWhileItIsOn) {
  MemPool pool = {20, 0};
  MemList* list = MemListNew(&pool, answer);
  gives_up_at = MEM_POOL_OVERFLOW;
  void *owner = nullptr, *other = nullptr;
  MemAllocate(list, 4, nullptr, &other);
  testing::internal::CaptureStdout();
  mem_trace = 1;
  MemAllocate(list, 16, nullptr, &owner);
  MemAllocate(list, 1, nullptr, nullptr);
  MemSetPointer(list, other, static_cast<void**>(owner));
  MemFree(list, owner);
  MemFree(list, std::malloc(1));  // frees a block that the list does not know
  MemListRemoveFromSearch(list, nullptr);
  MemListInitializeSearch(list);
  MemListRemoveLargest(list);
  mem_trace = 0;
  const std::string text = testing::internal::GetCapturedStdout();
  const std::string numbered = std::regex_replace(text, std::regex("0x[0-9a-f]+"), "@");
  EXPECT_EQ(std::regex_replace(numbered, std::regex("\\[[0-9]+\\]"), "[N]"),
            "Allocate:  list @ key 0 size 16 back ptr @\n"
            "  [N] Allocation address @ total size 16 pool used 20\n"
            "Allocate:  list @ key 0 size 1 back ptr 0\n"
            "**Pool overflow current size 20\n"
            "**Pool overflow after exception processing\n"
            "Set pointer: list @ address @ back ptr @\n"
            "  [N] Set pointer replaces @\n"
            "    Parent sequence [N] total size 20\n"
            "Free: list @ address @\n"
            "**[N] Is parent/nFree: list @ address @\n"
            "**Address not found\n"
            "Remove from search: list @ object 0\n"
            "Initialize search: list @\n"
            "!!Remove: Largest\n"
            "  [N] Release 4 pool used 16\n"
            "  [N] Parent sequence [N], new total 16\n"
            "  [N] Release 16 pool used 0\n"
            "^^Remove: Largest\n");
  MemListDelete(&list);
}
