// Measures three things: releasing a block and allocating it again while a thousand others are
// live; filling a list and deleting it; and clearing a list, with and without blocks that hold the
// owners' pointers of others (their parents). The library can release a block at any time, because
// it knows the pointer through which the owner uses the block and sets it to null. We know
// of no public library that does that, so it is compared with malloc and free. The difference is
// the cost of the bookkeeping.

#include <zelvan/mem/mem.h>

#include "contest.h"

#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int size = 64;

unsigned short give_up(MemException*) { return 0; }

/// A list, empty at first, and the owners' pointers; `fill` allocates a block for each of them.
struct World {
  explicit World(int n) : owners(static_cast<std::size_t>(n)) {
    pool = MemPoolNew(0);
    list = MemListNew(pool, give_up);
  }
  ~World() {
    MemListDelete(&list);
    MemPoolDelete(&pool);
  }
  World(const World&) = delete;
  void fill() {
    for (void*& owner : owners) MemAllocate(list, size, nullptr, &owner);
  }
  MemPool* pool;
  MemList* list;
  std::vector<void*> owners;
};

bool always() { return true; }

void replace(int n) {
  const auto world = std::make_shared<World>(n);
  world->fill();
  const auto plain = std::make_shared<std::vector<void*>>(static_cast<std::size_t>(n));
  for (void*& owner : *plain) owner = std::malloc(size);
  // A stride that visits every block, out of order.
  const auto ours = [world, i = std::size_t{0}]() mutable {
    for (int k = 0; k < 100; ++k) {
      i = (i + 617) % world->owners.size();
      MemFree(world->list, world->owners[i]);
      MemAllocate(world->list, size, nullptr, &world->owners[i]);
    }
  };
  const auto theirs = [plain, i = std::size_t{0}]() mutable {
    for (int k = 0; k < 100; ++k) {
      i = (i + 617) % plain->size();
      std::free((*plain)[i]);
      (*plain)[i] = std::malloc(size);
    }
  };
  bench::contest("release and allocate a block at " + std::to_string(n) + " live ones", always,
                 {{"zelvan", ours}, {"malloc and free", theirs}}, 100);
}

void fill_and_delete(int n) {
  const auto ours = [n] {
    World world(n);
    world.fill();
  };
  const auto theirs = [n] {
    std::vector<void*> owners(static_cast<std::size_t>(n));
    for (void*& owner : owners) owner = std::malloc(size);
    for (void* owner : owners) std::free(owner);
  };
  bench::contest("fill a new list with " + std::to_string(n) + " blocks, delete it", always,
                 {{"zelvan", ours}, {"malloc and free", theirs}}, n);
}

// ---- clearing

/// Writes `n` blocks directly into the list's table, since `MemAllocate` would scan the table for
/// each block. Returns the owners' pointers. `with_parents`: the first of every three blocks holds
/// the owners' pointers of the other two.
std::vector<void*> fill_at_once(MemList* list, int n, bool with_parents) {
  std::free(list->entries);
  list->n_entries = (n + 15) / 16 * 16;
  list->n_used = n;
  list->entries = static_cast<MemEntry*>(
      std::malloc(static_cast<std::size_t>(list->n_entries) * sizeof(MemEntry)));
  std::vector<void*> owners(static_cast<std::size_t>(n));
  for (int i = 0; i < list->n_entries; ++i) {
    MemEntry& entry = list->entries[i];
    entry = {nullptr, 0, 0, nullptr, nullptr, 0, 0, -1};
    if (i >= n) continue;
    void* const block = std::malloc(size);
    entry = {block, size, size, nullptr, &owners[static_cast<std::size_t>(i)], 0, i + 1, -1};
    if (with_parents && i % 3 != 0) {
      entry.parent = i - i % 3;
      entry.back_ptr = static_cast<void**>(list->entries[entry.parent].address) + i % 3;
      list->entries[entry.parent].total_size += size;
    }
    *entry.back_ptr = block;
    list->pool->used += size;
  }
  return owners;
}

/// Adds a row. Each iteration calls `part()`, which measures a part of its own work and returns the
/// seconds.
template <class Part>
void add_timed(const std::string& name, int n, Part part) {
  const auto run = [n, part](benchmark::State& state) {
    for (auto _ : state) state.SetIterationTime(part());
    state.SetItemsProcessed(state.iterations() * n);
  };
  benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime();
}

template <class Work>
double seconds_of(Work work) {
  const std::clock_t start = std::clock();  // processor time, as in the other rows
  work();
  return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void clear(int n, bool with_parents) {
  const std::string row = "clear " + std::to_string(n) + " blocks, " +
                          (with_parents ? "two of three with a parent" : "none with a parent");
  add_timed(row + "/zelvan", n, [=] {
    World world(0);
    const std::vector<void*> owners = fill_at_once(world.list, n, with_parents);
    const double seconds = seconds_of([&] { MemListClear(world.list); });
    if (world.list->n_used != 0 || world.pool->used != 0) std::abort();
    return seconds;
  });
  add_timed(row + "/free", n, [=] {
    std::vector<void*> owners(static_cast<std::size_t>(n));
    for (void*& owner : owners) owner = std::malloc(size);
    return seconds_of([&] {
      for (void* owner : owners) std::free(owner);
    });
  });
}

const bench::Rows rows([] {
  replace(1000);
  fill_and_delete(1000);
  fill_and_delete(30'000);
  for (const bool with_parents : {false, true}) {
    for (const int n : {1000, 30'000, 300'000}) clear(n, with_parents);
  }
});

}  // namespace
