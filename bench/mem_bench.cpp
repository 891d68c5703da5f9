// Blocks of a list: released and allocated again among a thousand live ones, a list filled and
// deleted, many blocks cleared. Nothing else takes blocks back from their owners, so malloc and
// free beside them show what the bookkeeping costs.

#include <zelvan/mem/mem.h>

#include "contest.h"

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr int size = 64;

unsigned short give_up(MemException*) { return 0; }

/// A list and the owners' pointers, all blocks live.
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
  // A stride that comes by every block, in no order.
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

const bench::Rows rows([] {
  replace(1000);
  fill_and_delete(1000);
  fill_and_delete(30'000);
});

}  // namespace
