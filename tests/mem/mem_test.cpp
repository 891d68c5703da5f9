#include "mem_model.h"

#include <climits>
#include <cstdint>
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
  for (unsigned seed = 1; seed <= 10; ++seed) {
    support::Random random(seed);
    MemModel model([&](int n) { return random.below(n); });
    for (int i = 0; i < 250; ++i) {
      const char* const operation = model.step();
      ASSERT_EQ(model.actual(), model.expected())
          << "after " << operation << ", step " << i << " of seed " << seed;
    }
  }
}

struct {
  std::vector<int> codes;
  int gives_up_at;
  MemException last;
} handler;

unsigned short answer(MemException* exception) {
  handler.codes.push_back(exception->code);
  handler.last = *exception;
  return exception->code == handler.gives_up_at ? 0 : 0x8000;
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
  MemSetDefaultObject(&handler);
  for (const auto& row : rows) {
    handler = {{}, row.gives_up_at, {0, list, &handler, row.size}};
    pool->used = row.used;
    void* owner = list;
    EXPECT_EQ(MemAvailable(list, row.size), row.codes.empty() || row.size < 0) << row.why;
    EXPECT_EQ(MemAllocate(nullptr, row.size, nullptr, &owner), row.status) << row.why;
    EXPECT_EQ(handler.codes, row.codes) << row.why;
    EXPECT_EQ(handler.last.list, list) << row.why;
    EXPECT_EQ(handler.last.key, &handler) << row.why << ": the default object";
    EXPECT_EQ(handler.last.size, row.size) << row.why;
    EXPECT_EQ(owner == list, row.status != MEM_SUCCESS) << row.why;
    EXPECT_EQ(pool->used, row.used + (owner == list ? 0 : row.size)) << row.why;
    if (owner != list) MemFree(nullptr, owner);
    EXPECT_EQ(pool->used, row.used) << row.why;
  }
  MemListDelete(&list);
  void* owner = nullptr;
  EXPECT_EQ(MemAllocate(nullptr, 1, nullptr, &owner), MEM_SUCCESS) << "no list is the default now";
  EXPECT_EQ(MemAllocate(nullptr, -1, nullptr, &owner), MEM_MALLOC_FAILED);
  MemFree(nullptr, owner);
  EXPECT_NE(owner, nullptr) << "an untracked block: its owner stays as it is";
  MemPoolDelete(&pool);
}

/// An expression that finds the pointer as the trace writes it.
std::string digits(const void* pointer) {
  std::ostringstream text;
  text << "\\b0x" << std::hex << reinterpret_cast<std::uintptr_t>(pointer) << "\\b";
  return text.str();
}

std::string bracketed(int number) { return "\\[" + std::to_string(number) + "\\]"; }

TEST(MemTrace, TellsEachStep) {
  MemPool* pool = MemPoolNew(64);
  MemList* list = MemListNew(pool, [](MemException*) -> unsigned short { return 0; });
  void* owner = nullptr;
  void* other_owner = nullptr;
  void* third_owner = nullptr;
  void* const stranger = std::malloc(1);
  testing::internal::CaptureStdout();
  MemListInitializeSearch(list);  // the trace is still off
  mem_trace = 1;
  MemAllocate(list, 32, pool, &owner);
  void** const member = static_cast<void**>(owner);
  MemAllocate(list, 8, pool, member);
  void* const child = *member;
  MemAllocate(list, 20, list, &third_owner);
  void* const third = third_owner;
  const int number = list->entries[0].sequence;
  for (const int size : {65, 25, -1}) MemAllocate(list, size, pool, &other_owner);
  MemFree(list, owner);
  MemSetPointer(list, child, &other_owner);
  MemSetPointer(list, child, member);
  *member = third_owner = nullptr;  // lost, so nothing can be released
  MemListClear(list);
  *member = child;
  third_owner = third;
  MemListRemoveFromSearch(list, list);
  MemListRemoveSmallest(list);  // not the third block
  MemListRemoveLargest(list);
  MemListInitializeSearch(list);
  MemListRemoveOldest(list);
  MemSetPointer(list, stranger, &other_owner);
  MemFree(list, stranger);
  MemAllocate(nullptr, -1, pool, &owner);
  mem_trace = 0;
  std::fflush(stdout);
  std::string trace = testing::internal::GetCapturedStdout();
  const std::pair<std::string, const char*> names[] = {{digits(list), "LIST"},
                                                       {digits(pool), "KEY"},
                                                       {digits(member), "BLOCK"},
                                                       {digits(child), "CHILD"},
                                                       {digits(&owner), "OWNER"},
                                                       {digits(&other_owner), "OTHER"},
                                                       {digits(stranger), "STRANGER"},
                                                       {digits(third), "THIRD"},
                                                       {digits(&third_owner), "OWNER 3"},
                                                       {bracketed(number), "[N]"},
                                                       {bracketed(number + 1), "[N+1]"},
                                                       {bracketed(number + 2), "[N+2]"}};
  for (const auto& [value, name] : names) {
    trace = std::regex_replace(trace, std::regex(value), name);
  }
  EXPECT_EQ(owner, nullptr);
  EXPECT_EQ(third_owner, nullptr);
  EXPECT_EQ(other_owner, child) << "the pointer that an owner gives up stays as it is";
  EXPECT_EQ(trace, R"(Allocate:  list LIST key KEY size 32 back ptr OWNER
  [N] Allocation address BLOCK total size 32 pool used 32
Allocate:  list LIST key KEY size 8 back ptr BLOCK
  [N+1] Allocation address CHILD total size 8 pool used 40
    Parent sequence [N] total size 40
Allocate:  list LIST key LIST size 20 back ptr OWNER 3
  [N+2] Allocation address THIRD total size 20 pool used 60
Allocate:  list LIST key KEY size 65 back ptr OTHER
**Pool of 64 too small
Allocate:  list LIST key KEY size 25 back ptr OTHER
**Pool overflow current size 60
**Pool overflow after exception processing
Allocate:  list LIST key KEY size -1 back ptr OTHER
**Malloc failed
**Malloc failed after exception processing
Free: list LIST address BLOCK
**[N] Is parent/nSet pointer: list LIST address CHILD back ptr OTHER
  [N+1] Set pointer replaces BLOCK
Set pointer: list LIST address CHILD back ptr BLOCK
  [N+1] Set pointer replaces OTHER
    Parent sequence [N] total size 40
Clear list LIST address BLOCK
**[N+1] Back pointer does not contain address
**[N] Is parent/nClear list LIST address THIRD
**[N+2] Back pointer does not contain address
Remove from search: list LIST object LIST
!!Remove: Smallest
  [N+1] Release 8 pool used 52
  [N+1] Parent sequence [N], new total 32
  [N] Release 32 pool used 20
^^Remove: Smallest
!!Remove: Largest
Initialize search: list LIST
!!Remove: Oldest
  [N+2] Release 20 pool used 0
^^Remove: Oldest
Set pointer: list LIST address STRANGER back ptr OTHER
**Address not found
Free: list LIST address STRANGER
**Address not found
Allocate:  list 0 key KEY size -1 back ptr OWNER
**Malloc failed
)");
  MemListDelete(&list);
  MemPoolDelete(&pool);
}

}  // namespace
