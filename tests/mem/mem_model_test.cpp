// A world of lists under random operations, beside a model that is told of each. The model keeps
// the rows of every list and what every pointer of an owner must hold; totals, charges and counts
// it adds up anew after each step.

#include <zelvan/mem/mem.h>

#include "support/random.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

// The address sanitizer, too, shall refuse a size that no heap can give.
extern "C" const char* __asan_default_options() { return "allocator_may_return_null=1"; }

namespace {

constexpr MemEntry empty_row = {nullptr, 0, 0, nullptr, nullptr, 0, 0, -1};

auto fields(const MemEntry& e) {
  return std::tie(e.address, e.size, e.total_size, e.key, e.back_ptr, e.excluded, e.sequence,
                  e.parent);
}

class World;
World* world = nullptr;

class World : support::Random {
 public:
  static inline int operations = 0;

  explicit World(unsigned seed) : Random(seed) {
    world = this;
    for (int p = 0; p < 2; ++p) pools_[p] = MemPoolNew(limits[p]);
    for (List& l : lists_) {
      l.pool = static_cast<int>(&l - lists_) / 2;
      l.real = MemListNew(pools_[l.pool], [](MemException* e) { return world->answer(*e); });
      l.rows.assign(16, empty_row);
    }
    for (void*& slot : slots_) memory_[&slot] = nullptr;
  }

  ~World() {
    for (List& l : lists_) {
      clear(l);
      MemListDelete(&l.real);
    }
    void* untracked = nullptr;  // a list that is gone is no default any more
    EXPECT_EQ(MemAllocate(nullptr, 8, nullptr, &untracked), MEM_SUCCESS);
    MemFree(nullptr, untracked);
    for (int p = 0; p < 2; ++p) {
      EXPECT_EQ(pools_[p]->used, used(p));
      MemPoolDelete(&pools_[p]);
    }
    for (List& l : lists_) {  // what was refused is left to its owner
      for (MemEntry& row : l.rows) std::free(row.address);
    }
  }

  void step() {
    ++operations;
    List& l = lists_[below(3)];
    MemEntry& row = l.rows[below(static_cast<int>(l.rows.size()))];
    const bool is_live = row.address != nullptr;
    void** const place = any_place(l);
    switch (below(12)) {
      case 0:  // an owner overwrites a pointer
        *place = memory_[place] = this;
        break;
      case 1:
      case 2:  // or puts it back
        if (is_live) *row.back_ptr = memory_[row.back_ptr] = row.address;
        break;
      case 3:
        if (!is_live) break;
        MemSetPointer(handle(l), row.address, place);
        memory_[place] = row.address;
        row.back_ptr = place;
        row.parent = index_around(l, place, &row);
        break;
      case 4: {
        MemFree(l.real, std::malloc(1));  // unknown, so the heap's
        void* const address = row.address;
        release(l, row);
        MemFree(handle(l), address);
        break;
      }
      case 5:
        if (below(20) != 0) break;
        clear(l);
        MemListClear(l.real);
        break;
      case 6: {
        const bool starts_anew = below(2) == 0;
        if (starts_anew) MemListInitializeSearch(l.real);
        MemListRemoveFromSearch(l.real, row.key);
        for (MemEntry& e : l.rows) {
          e.excluded = e.key == row.key || (!starts_anew && e.excluded != 0);
        }
        break;
      }
      case 7:
        evict(l);
        break;
      default:
        allocate({l, any_size(), &slots_[below(4)], place});
    }
    check();
  }

 private:
  static constexpr int limits[] = {500, 200};

  struct List {
    MemList* real;
    int pool;
    std::vector<MemEntry> rows;
  };

  /// An allocation under way.
  struct Call {
    List& list;
    int size;
    void* key;
    void** place;
    int expected = 0;  ///< code of the exception that comes next; 0 if none does
    int status = MEM_SUCCESS;
  };

  MemList* handle(List& l) {
    MemSetDefaultList(l.real);
    return below(2) == 0 ? l.real : nullptr;
  }

  int any_size() {
    const int dice = below(200);
    return dice == 0 ? -1 : (dice < 10 ? 195 + below(10) : (dice < 20 ? 0 : below(40)));
  }

  /// An owner's pointer, on its own or in a block of the list.
  void** any_place(List& l) {
    for (;;) {
      void** const place =
          std::next(memory_.begin(), below(static_cast<int>(memory_.size())))->first;
      const bool is_slot = &slots_[0] <= place && place < std::end(slots_);
      if (is_slot || index_around(l, place, nullptr) >= 0) return place;
    }
  }

  static int index_around(const List& l, void** place, const MemEntry* self) {
    for (const MemEntry& row : l.rows) {
      const auto offset = reinterpret_cast<char*>(place) - static_cast<char*>(row.address);
      if (&row != self && offset >= 0 && offset < row.size) {
        return static_cast<int>(&row - l.rows.data());
      }
    }
    return -1;
  }

  int used(int pool) const {
    int sum = 0;
    for (const List& l : lists_) {
      for (const MemEntry& row : l.rows) sum += l.pool == pool ? row.size : 0;
    }
    return sum;
  }

  void release(List& l, MemEntry& row) {
    const auto names_it = [i = &row - l.rows.data()](const MemEntry& e) { return e.parent == i; };
    if (row.address == nullptr || memory_[row.back_ptr] != row.address) return;
    if (std::any_of(l.rows.begin(), l.rows.end(), names_it)) return;
    memory_[row.back_ptr] = nullptr;
    auto* const block = static_cast<void**>(row.address);
    memory_.erase(memory_.lower_bound(block), memory_.lower_bound(block + row.size / 8));
    row = empty_row;
  }

  void release_family(List& l, MemEntry& row) {
    for (MemEntry& child : l.rows) {
      if (child.parent == &row - l.rows.data()) release(l, child);
    }
    release(l, row);
  }

  void clear(List& l) {
    for (MemEntry& row : l.rows) {
      if (row.parent < 0) release_family(l, row);
    }
  }

  void evict(List& l) {
    const int rule = below(3);
    std::pair<int, MemEntry*> best = {INT_MAX, nullptr};
    for (MemEntry& row : l.rows) {
      if (row.total_size == 0 || row.excluded != 0 || (rule < 2 && row.parent >= 0)) continue;
      const int measures[] = {-row.total_size, row.total_size, row.sequence};
      best = std::min(best, {measures[rule], &row});
    }
    if (best.second != nullptr) release_family(l, *best.second);
    const auto remove = rule == 0   ? MemListRemoveLargest
                        : rule == 1 ? MemListRemoveSmallest
                                    : MemListRemoveOldest;
    EXPECT_EQ(remove(l.real), best.second != nullptr);
  }

  static MemEntry& free_row(List& l) {
    const auto is_free = [](const MemEntry& row) { return row.address == nullptr; };
    if (std::none_of(l.rows.begin(), l.rows.end(), is_free)) {
      l.rows.resize(l.rows.size() + 16, empty_row);
    }
    return *std::find_if(l.rows.begin(), l.rows.end(), is_free);
  }

  /// The exception that follows on `code` in this call; 0 if none does.
  int next_exception(const Call& call, int code) {
    const int limit = limits[call.list.pool];
    if (code == 0 && call.size > limit) return MEM_POOL_TOO_SMALL;
    if (code == 0 || code == MEM_POOL_TOO_SMALL) {
      free_row(call.list);
      if (used(call.list.pool) + call.size > limit) return MEM_POOL_OVERFLOW;
    }
    return code != MEM_MALLOC_FAILED && call.size < 0 ? MEM_MALLOC_FAILED : 0;
  }

  /// The handler: it does anything to any list, then gives up or not.
  unsigned short answer(const MemException& e) {
    Call& call = *calls_.back();
    EXPECT_EQ(std::tie(e.code, e.list, e.key, e.size),
              std::tie(call.expected, call.list.real, call.key, call.size));
    const int home = index_around(call.list, call.place, nullptr);
    const int sequence = home < 0 ? 0 : call.list.rows[home].sequence;
    for (int n = calls_.size() < 3 ? below(8) : 0; n > 0; --n) step();
    const bool is_homeless = home >= 0 && call.list.rows[home].sequence != sequence;
    const bool goes_on = below(4) != 0;
    const bool is_over = !goes_on || is_homeless;
    call.status = is_over || e.code == MEM_MALLOC_FAILED ? e.code : MEM_SUCCESS;
    call.expected = is_over ? 0 : next_exception(call, e.code);
    return goes_on ? static_cast<unsigned short>(1 << below(16)) : 0;
  }

  void allocate(Call call) {
    call.expected = next_exception(call, 0);
    calls_.push_back(&call);
    MemSetDefaultObject(call.key);
    const int status =
        MemAllocate(handle(call.list), call.size, below(2) == 0 ? call.key : nullptr, call.place);
    calls_.pop_back();
    ASSERT_EQ(std::pair(status, 0), std::pair(call.status, call.expected));
    if (status != MEM_SUCCESS) return;
    MemEntry& row = free_row(call.list);
    row = {*call.place, call.size, 0, call.key, call.place, 0, sequence_++, -1};
    row.parent = index_around(call.list, call.place, &row);
    memory_[call.place] = row.address;
    auto* const block = static_cast<void**>(row.address);
    for (int i = 0; i < call.size / 8; ++i) memory_[block + i] = block[i] = nullptr;
  }

  void check() {
    for (const auto& [place, value] : memory_) ASSERT_EQ(*place, value);
    for (List& l : lists_) {
      const int n_entries = static_cast<int>(l.rows.size());
      const int room = limits[l.pool] - used(l.pool);
      int n_used = 0;
      for (MemEntry& row : l.rows) row.total_size = row.size;
      for (MemEntry& row : l.rows) {
        if (row.parent >= 0) l.rows[row.parent].total_size += row.size;
        n_used += row.address != nullptr;
      }
      ASSERT_EQ(std::tie(l.real->n_entries, l.real->n_used), std::tie(n_entries, n_used));
      ASSERT_EQ(pools_[l.pool]->used, used(l.pool));
      ASSERT_EQ(MemAvailable(l.real, room), n_used < n_entries);
      ASSERT_EQ(MemAvailable(l.real, room + 1), 0);
      for (int i = 0; i < n_entries; ++i) {
        ASSERT_EQ(fields(l.real->entries[i]), fields(l.rows[i])) << "row " << i;
      }
    }
  }

  MemPool* pools_[2];
  List lists_[3];
  void* slots_[16] = {};
  std::map<void**, void*> memory_;  ///< all pointers of the owners', in slots and in blocks
  std::vector<Call*> calls_;
  static inline int sequence_ = 1;
};

TEST(Mem, AgreesWithAModelAfterEveryStep) {
  for (unsigned seed = 1; World::operations < 100'000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    World random_world(seed);
    const int last = World::operations + 2000;
    while (World::operations < last && !HasFailure()) random_world.step();
  }
}

}  // namespace
