#include "digests/group.h"
#include "digests/printed.h"
#include "mem_world.h"

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

}  // namespace
