#include "mem/mem_world.h"
#include "support/random.h"
#include "support/refusing_heap.h"

#include <string>

// A size that no heap can give is refused under the address sanitizer, too.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 0x8000; }
unsigned short evict(MemException* e) { return MemListRemoveOldest(e->list); }
unsigned short fill(MemException* e) {  // takes the last row away from the one who asks
  static void* slot;
  if (e->code == MEM_POOL_OVERFLOW) MemAllocate(e->list, 0, nullptr, &slot);
  return 1;
}

TEST(Mem, AgreesWithAModelAfterEveryStep) {
  for (unsigned seed = 1; seed <= 60 && !HasFailure(); ++seed) {
    SCOPED_TRACE(seed);
    support::Random random(seed);
    World world([&](int count) { return random.below(count); });
    for (int i = 0; i < 500 && !HasFailure(); ++i) world.step();
  }
}

// A list of blocks of 8 bytes, the first of which has the number 0, takes one of 16 while the
// heap refuses the first request, the second and so on: once, or from there to the end.
TEST(Mem, GivesTheStatedStatusForEachRefusalOfTheHeap) {
  const struct {
    const char* name;
    MemExceptionHandler handler;
    int n_blocks, limit, used;  // the charge without these blocks
    const char* statuses[2];    // refused once, for good; the last is of a run without refusal
    bool is_child = false;      // of the first block
  } rows[] = {
      {"gives up", give_up, 16, 144, 0, {"240", "240"}},
      {"goes on", go_on, 16, 144, 0, {"000", "240"}},
      {"makes room in table and heap", evict, 16, 144, 0, {"000", "440"}},
      {"makes room in the pool", evict, 15, 120, 0, {"00", "40"}},
      {"fills the table on overflow", fill, 15, 120, 0, {"0020", "4420"}},
      {"releases the pointer's home", evict, 16, 128, 0, {"21", "21"}, true},
      {"goes up to the largest int", go_on, 1, INT_MAX, INT_MAX - 24, {"00", "40"}},
      {"can't go on beyond an int", go_on, 1, INT_MAX, INT_MAX - 23, {"11", "41"}},
  };
  for (const auto& row : rows) {
    for (const bool lasting : {false, true}) {
      SCOPED_TRACE(testing::Message() << row.name << (lasting ? ", for good" : ", once"));
      MemPool pool = {row.limit, row.used};
      MemList* list;
      void *slots[16], *slot;
      std::string statuses;
      const auto prepare = [&] {
        list = MemListNew(&pool, row.handler);
        zelvan::mem_sequence = 0;
        for (int i = 0; i < row.n_blocks; ++i) MemAllocate(list, 8, nullptr, &slots[i]);
        slot = &slot;
      };
      prepare();
      const auto operation = [&] {
        void** const place = row.is_child ? static_cast<void**>(slots[0]) : &slot;
        statuses += char('0' + MemAllocate(list, 16, &slots, place));
      };
      const auto check = [&](bool) {
        EXPECT_EQ(slot == &slot, statuses.back() != '0');
        MemListDelete(&list);
        EXPECT_EQ(pool.used, row.used);
        prepare();
      };
      support::refuse_each_request(operation, check, lasting);
      EXPECT_EQ(statuses, row.statuses[lasting]);
      MemListDelete(&list);
    }
  }
}

TEST(Mem, MakesNoHalfOfAPoolOrList) {
  MemPool* pool;
  MemList* list;
  int n = 0;
  const auto operation = [&] {
    pool = MemPoolNew(-(n++ % 2));
    list = pool == nullptr ? nullptr : MemListNew(pool, give_up);
  };
  const auto check = [&](bool refused) {
    EXPECT_EQ(list == nullptr, refused);
    EXPECT_TRUE(pool == nullptr || pool->limit == INT_MAX);
    MemListDelete(&list);
    MemPoolDelete(&pool);
  };
  EXPECT_EQ(support::refuse_each_request(operation, check), 3);
}

TEST(Mem, LooksForAParentFromItsFirstByteToItsLast) {
  void* memory[3];
  auto* const bytes = reinterpret_cast<char*>(memory);
  for (int at = 7; at <= 16; ++at) {  // the block is the second word
    MemEntry rows[] = {{&memory[1], 8, 8, nullptr, nullptr, 0, 1, -1}, zelvan::empty_entry};
    MemList list = {2, 1, nullptr, nullptr, rows};
    rows[1].back_ptr = reinterpret_cast<void**>(bytes + at);
    zelvan::MemEntryFindParent(&list, &rows[1]);
    EXPECT_EQ(rows[1].parent, at >= 8 && at < 16 ? 0 : -1) << at;
  }
}

TEST(Mem, TracesALongScenario) {
  MemPool pool = {100, 0};
  MemList* list = MemListNew(&pool, [](MemException* e) -> unsigned short {
    if (e->code != MEM_POOL_OVERFLOW) return e->code == MEM_POOL_TOO_SMALL;
    MemListInitializeSearch(e->list);
    MemListRemoveFromSearch(e->list, e->key);
    MemListRemoveLargest(e->list);
    return MemAvailable(e->list, e->size);
  });
  void *slots[3] = {}, *const unknown = std::malloc(1);
  std::map<std::string, const void*> names = {
      {"@L", list}, {"@A", &slots[0]}, {"@B", &slots[1]}, {"@C", &slots[2]}, {"@U", unknown}};
  const auto allocate = [&](int size, std::uintptr_t key, void* place) {
    auto** const back_ptr = static_cast<void**>(place);
    if (MemAllocate(list, size, reinterpret_cast<void*>(key), back_ptr) == MEM_SUCCESS) {
      names["@" + std::to_string(zelvan::mem_sequence - 1)] = *back_ptr;
    }
    return *back_ptr;
  };
  zelvan::mem_sequence = 1;
  mem_trace = 1;
  testing::internal::CaptureStdout();
  MemFree(list, unknown);
  void* const first = allocate(40, 7, &slots[0]);
  allocate(24, 8, first);
  MemFree(list, first);
  allocate(101, 9, &slots[2]);  // in vain, at the cost of both
  allocate(-1, 9, &slots[2]);
  void* const third = allocate(50, 9, &slots[1]);
  MemSetPointer(list, list, &slots[0]);
  MemSetPointer(list, third, &slots[0]);
  slots[0] = nullptr;  // the owner forgets
  MemListRemoveOldest(list);
  MemListClear(list);
  slots[0] = third;
  list->n_used = 0;
  MemListClear(list);
  list->n_used = 1;
  MemListRemoveSmallest(list);
  MemListDelete(&list);
  mem_trace = 0;
  std::string expected = R"(Free: list @L address @U
**Address not found
Allocate:  list @L key 0x7 size 40 back ptr @A
  [1] Allocation address @1 total size 40 pool used 40
Allocate:  list @L key 0x8 size 24 back ptr @1
  [2] Allocation address @2 total size 24 pool used 64
    Parent sequence [1] total size 64
Free: list @L address @1
**[1] Is parent/nAllocate:  list @L key 0x9 size 101 back ptr @C
**Pool of 100 too small
**Pool overflow current size 64
Initialize search: list @L
Remove from search: list @L object 0x9
!!Remove: Largest
  [2] Release 24 pool used 40
  [2] Parent sequence [1], new total 40
  [1] Release 40 pool used 0
^^Remove: Largest
**Pool overflow after exception processing
Allocate:  list @L key 0x9 size -1 back ptr @C
**Malloc failed
**Malloc failed after exception processing
Allocate:  list @L key 0x9 size 50 back ptr @B
  [3] Allocation address @3 total size 50 pool used 50
Set pointer: list @L address @L back ptr @A
**Address not found
Set pointer: list @L address @3 back ptr @A
  [3] Set pointer replaces @B
!!Remove: Oldest
**[3] Back pointer does not contain address
^^Remove: Oldest
Clear list @L address @3
**[3] Back pointer does not contain address
**List used is 0, entry has address
!!Remove: Smallest
  [3] Release 50 pool used 0
^^Remove: Smallest
)";
  for (const auto& [name, address] : names) {
    for (std::size_t at; (at = expected.find(name)) != expected.npos;) {
      expected.replace(at, 2, testing::PrintToString(address));
    }
  }
  EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
}

}  // namespace
