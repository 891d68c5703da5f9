#include <zelvan/mem/detail/entry.h>

#include "digests/group.h"
#include "digests/heap.h"
#include "support/random.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

using support::Random;

const std::array<int, 3> at_load = {mem_trace, zelvan::mem_sequence,
                                    zelvan::mem_default_list != nullptr};

/// A list under operations by chance, those of its handler among them. Owners keep their pointers
/// in slots and in blocks; some write over them.
class World {
 public:
  World(Digest& digest, int seed) : digest_(digest), random_(static_cast<unsigned>(seed)) {
    now = this;
    zelvan::mem_sequence = INT_MAX - 100;  // soon it wraps
    pool_ = MemPoolNew(seed % 3 == 0 ? -seed : 500);
    pool_->used = pool_->limit - 500;
    list_ = MemListNew(pool_, [](MemException* e) { return now->answer(*e); });
    MemSetDefaultList(list_);
  }

  ~World() {
    MemListClear(list_);
    take();
    std::vector<void*> left;  // to its owners, since the release was refused
    for (int i = 0; i < list_->n_entries; ++i) left.push_back(list_->entries[i].address);
    MemListDelete(&list_);
    digest_(list_ == nullptr, zelvan::mem_default_list == nullptr, pool_->used);
    for (void* block : left) std::free(block);
    for (const int size : {8, -1}) {
      void* untracked = nullptr;
      digest_(MemAllocate(nullptr, size, this, &untracked));
      digest_(untracked == nullptr);
      MemSetPointer(nullptr, untracked, nullptr);
      MemFree(nullptr, untracked);
    }
    for (int i = 0; i < 2; ++i) MemPoolDelete(&pool_);
    digest_(pool_ == nullptr);
  }

  void step() {
    MemEntry& row = some_row();
    MemList* const handle = random_.below(2) == 0 ? list_ : nullptr;
    void* const known = random_.below(3) == 0 ? nullptr : row.address;
    void* const key = &slots_[random_.below(4)];
    void** const place = some_place();
    switch (random_.below(12)) {
      case 0:  // an owner overwrites a pointer
        *place = this;
        break;
      case 1:  // or puts it back
        if (row.address != nullptr) *row.back_ptr = row.address;
        break;
      case 2:
        MemSetPointer(handle, random_.below(4) == 0 ? this : known, place);
        break;
      case 3:
        MemFree(handle, random_.below(4) == 0 ? std::malloc(1) : known);
        break;
      case 4:
        if (random_.below(20) != 0) break;
        MemListClear(list_);
        list_->n_used -= 100;  // as no operation leaves it
        MemListClear(list_);
        list_->n_used += 100;
        break;
      case 5:
        if (random_.below(2) == 0) MemListInitializeSearch(list_);
        MemListRemoveFromSearch(list_, key);
        break;
      case 6:
        digest_(MemListRemoveLargest(list_));
        break;
      case 7:
        digest_(MemListRemoveSmallest(list_));
        break;
      case 8:
        digest_(MemListRemoveOldest(list_));
        break;
      default:
        allocate(handle, key, place);
    }
    take();
  }

 private:
  static inline World* now;

  MemEntry& some_row() { return list_->entries[random_.below(list_->n_entries)]; }

  /// Where an owner can keep a pointer: in a slot, or in a block, at a place for eight bytes.
  void** some_place() {
    const MemEntry& row = some_row();
    void** const slot = &slots_[random_.below(16)];
    if (row.size < 8 || random_.below(2) == 0) return slot;
    return reinterpret_cast<void**>(static_cast<char*>(row.address) +
                                    8 * random_.below(row.size / 8));
  }

  void allocate(MemList* handle, void* key, void** place) {
    const int size = random_.below(40) == 0 ? 495 + random_.below(10) : random_.below(41) - 1;
    const bool has_default = random_.below(2) == 0;
    MemSetDefaultObject(key);
    ++depth_;
    const int status = MemAllocate(handle, size, has_default ? nullptr : key, place);
    --depth_;
    digest_(status);
    if (status == MEM_SUCCESS) std::memset(*place, 0, static_cast<std::size_t>(size));
  }

  /// The handler: it does anything to the list, then gives up or not.
  unsigned short answer(const MemException& e) {
    digest_(e.code, e.list == list_, e.size, place_of(e.key));
    for (int n = depth_ < 3 ? random_.below(8) : 0; n > 0; --n) step();
    const int bit = random_.below(16);
    return random_.below(4) == 0 ? 0 : static_cast<unsigned short>(1 << bit);
  }

  /// The number of a slot, or of a row and of a byte in its block; -1 for null.
  int place_of(const void* address) const {
    const auto* const place = static_cast<const char*>(address);
    const auto* const slots = reinterpret_cast<const char*>(slots_);
    if (place == nullptr) return -1;
    if (place >= slots && place < slots + sizeof slots_) {
      return static_cast<int>(static_cast<void* const*>(address) - slots_);
    }
    for (int i = 0; i < list_->n_entries; ++i) {
      const auto* const block = static_cast<const char*>(list_->entries[i].address);
      if (block == nullptr || place < block || place >= block + list_->entries[i].size) continue;
      return 1000 * (i + 1) + static_cast<int>(place - block);
    }
    return -2;
  }

  void take() {
    const int room = pool_->limit - pool_->used;
    digest_(list_->n_entries, list_->n_used, pool_->limit, pool_->used, MemAvailable(list_, room),
            MemAvailable(list_, room + 1));
    for (int i = 0; i < list_->n_entries; ++i) {
      const MemEntry& e = list_->entries[i];
      if (e.address != nullptr) digest_(place_of(e.back_ptr), *e.back_ptr == e.address);
      digest_(i, e.size, e.total_size, place_of(e.key), e.excluded, e.sequence, e.parent);
    }
    for (void* const slot : slots_) digest_(slot == nullptr);
  }

  Digest& digest_;
  Random random_;
  MemPool* pool_;
  MemList* list_;
  void* slots_[16] = {};
  int depth_ = 0;
};

const Group lists("mem.lists", [](Digest& digest) {
  digest(at_load);
  const long blocks = heap::blocks;
  for (int seed = 1; seed <= 16; ++seed) {
    World world(digest, seed);
    for (int i = 0; i < 500; ++i) world.step();
  }
  digest(heap::blocks - blocks);
});

unsigned short give_up(MemException*) { return 0; }
unsigned short go_on(MemException*) { return 0x8000; }
unsigned short evict(MemException* e) { return MemListRemoveOldest(e->list); }
unsigned short fill(MemException* e) {  // takes the last row away from the one who asks
  static void* slot;
  if (e->code == MEM_POOL_OVERFLOW && e->size != 0) {
    MemFree(e->list, slot);
    MemAllocate(e->list, 0, nullptr, &slot);
  }
  return 1;
}

// A list of blocks of 8 bytes, with a full table or not, takes one of 16, whose owner may be in the
// oldest of them; the same once more with the heap whole, and the clearing of what is left.
const Group refusals("mem.refusals", [](Digest& digest) {
  heap::refuse_each([&] {
    MemPool* pool = MemPoolNew(0);
    digest(heap::is_null(pool));
    if (pool != nullptr) MemPoolDelete(&pool);
  });
  const long blocks = heap::blocks;
  for (const auto handler : {give_up, go_on, evict, fill}) {
    for (const int n : {15, 16}) {
      for (const int limit : {120, 128, 144}) {
        for (const bool has_owner : {false, true}) {
          heap::refuse_each([&] {
            MemPool pool = {limit, 0};
            MemList* list = MemListNew(&pool, handler);
            digest(list == nullptr);
            if (list == nullptr) return;
            void *slots[16], *slot = &slot;
            zelvan::mem_sequence = 0;  // the number of the first, and of an empty row
            for (int i = 0; i < n; ++i) {
              slots[i] = nullptr;
              MemAllocate(list, 8, nullptr, &slots[i]);
            }
            for (int turn = 0; turn < 2; ++turn) {
              void** const owner = std::find_if(slots, slots + n, [](void* s) { return s; });
              const bool is_child = has_owner && owner != slots + n;
              void** const place = is_child ? static_cast<void**>(*owner) : &slot;
              const int status = MemAllocate(list, 16, nullptr, place);
              digest(status, slot == &slot, pool.used, list->n_used);
              if (status == MEM_SUCCESS) MemFree(list, *place);
            }
            MemListClear(list);
            digest(pool.used);
            MemListDelete(&list);
          });
          digest(heap::blocks - blocks);
        }
      }
    }
  }
});

}  // namespace
