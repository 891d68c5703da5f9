#include "digests/group.h"
#include "mem/mem_world.h"
#include "support/random.h"

namespace {

const std::array at_load = {mem_trace, zelvan::mem_sequence,
                            int{zelvan::mem_default_list != nullptr}};

// The list of the tests of the family and its model agree, and the rows are the same everywhere.
const Group lists("mem.lists", [](Digest& digest) {
  digest(at_load);
  for (int seed = 1; seed <= 16; ++seed) {
    support::Random random(seed);
    World world([&](int count) { return random.below(count); },
                [&](bool agrees) { digest(agrees); }, nullptr, seed % 3 == 0 ? INT_MAX : 500);
    for (int i = 0; i < 500; ++i) {
      world.step();
      const MemList& list = world.list();
      digest(list.n_used, list.pool->limit, list.pool->used);
      for (const MemEntry& e : std::span(list.entries, list.n_entries)) {
        digest(e.size, e.total_size, e.excluded, e.sequence, e.parent);
      }
    }
  }
});

}  // namespace
