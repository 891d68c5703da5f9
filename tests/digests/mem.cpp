#include "digests/group.h"
#include "digests/printed.h"
#include "mem_world.h"
#include "support/heap.h"

namespace {

const std::array at_load = {mem_trace, zelvan::mem_sequence,
                            int{zelvan::mem_default_list != nullptr}};

// A list and its model agree; its rows and its trace are the same everywhere.
const Group lists("mem.lists", [](Digest& digest) {
  digest(at_load);
  printed = &digest;
  for (int seed = 1; seed <= 16; ++seed) {
    mem_trace = seed % 4;
    Random random(seed);
    World world([&](int count) { return random.below(count); },
                [&](bool agrees) { digest.expect(agrees); }, seed % 3 == 0 ? INT_MAX : 500);
    for (int i = 0; i < 500; ++i) {
      world.step();
      const MemList& list = world.list();
      digest(list.n_used, list.pool->limit, list.pool->used);
      for (const MemEntry& e : std::span(list.entries, list.n_entries)) {
        digest(e.size, e.total_size, e.excluded, e.sequence, e.parent);
      }
    }
  }
  mem_trace = 0;
});

// A block holds its first byte to its last.
const Group parents("mem.parents", [](Digest& digest) {
  void* memory[3];
  for (int at = 7; at <= 16; ++at) {  // the block is the eight bytes in the middle
    char* const block = reinterpret_cast<char*>(memory) + 8;
    MemEntry rows[] = {{block, 8, 8, nullptr, nullptr, 0, 1, -1}, zelvan::empty_entry};
    MemList list = {2, 1, nullptr, nullptr, rows};
    rows[1].back_ptr = reinterpret_cast<void**>(block - 8 + at);
    zelvan::MemEntryFindParent(&list, &rows[1]);
    digest.expect(rows[1].parent == (at >= 8 && at < 16 ? 0 : -1));
  }
});

// A table as its caller may leave it: parents in circles or of no row, totals of any sign, owners
// who have moved on. Every other time without a trace, and the heap refuses a list of the children.
const Group written("mem.written", [](Digest& digest) {
  printed = &digest;
  zelvan::mem_sequence = 9;
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    constexpr int n = 5;
    void* owners[n];
    MemEntry rows[n];
    MemPool pool = {INT_MAX, 1000};
    MemList list = {n, n, &pool, nullptr, rows};
    for (int k = 0; k < n; ++k) {
      const int size = random.below(9), total = random.below(4) == 0 ? random.below(9) - 6 : size;
      const int parent = random.below(3) == 0 ? random.below(3 * n) : -1;
      rows[k] = {std::malloc(1), size, total, nullptr, &owners[k], 0, k + 1, parent};
      owners[k] = parent < n && random.below(8) != 0 ? rows[k].address : nullptr;
    }
    void* const any = rows[random.below(n)].address;
    mem_trace = i / 5 % 2;
    heap::refuse(mem_trace == 0, true);
    int found = 0;
    if (i % 5 == 0) MemListClear(&list);
    if (i % 5 == 1) MemFree(&list, any);
    if (i % 5 == 2) found = MemListRemoveLargest(&list);
    if (i % 5 == 3) found = MemListRemoveSmallest(&list);
    if (i % 5 == 4) found = MemListRemoveOldest(&list);
    heap::grant_all();
    digest(found, pool.used, list.n_used);
    for (const MemEntry& e : rows) {
      digest(e.size, e.total_size, e.sequence, e.parent);
      std::free(e.address);
    }
  }
  mem_trace = 0;
});

}  // namespace
