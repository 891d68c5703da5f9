/// Two pools and three lists under operations by chance, those of handlers among them, beside a
/// model that is told of each: it keeps the rows of the lists and what every owner's pointer
/// must hold. Totals and charges it adds up anew after each step.
#pragma once

#include <zelvan/mem/detail/entry.h>
#include <zelvan/mem/mem.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

class World {
 public:
  int operations = 0;

  /// `below(n)` gives a number from 0 to `n` - 1.
  explicit World(std::function<int(int)> below_n) : below(std::move(below_n)) {
    now = this;
    zelvan::mem_sequence = INT_MAX - 100;  // soon it wraps
    for (void*& slot : slots_) memory_[&slot] = nullptr;
    for (List& l : lists_) {
      l.pool = &l == &lists_[1] ? lists_[0].pool : MemPoolNew(500);
      l.real = MemListNew(l.pool, [](MemException* e) { return now->answer(*e); });
      l.rows.assign(16, zelvan::empty_entry);
    }
  }

  ~World() {
    for (List& l : lists_) {
      clear(l);
      MemListDelete(&l.real);
    }
    void* untracked;  // a list that is gone is no default any more
    EXPECT_EQ(MemAllocate(nullptr, 8, nullptr, &untracked), MEM_SUCCESS);
    MemFree(nullptr, untracked);
    for (List& l : lists_) {  // what was refused stays charged and is left to its owner
      EXPECT_EQ(l.pool->used, used(l.pool));
      if (&l != lists_) MemPoolDelete(&l.pool);
    }
    for (List& l : lists_) {
      for (MemEntry& row : l.rows) std::free(row.address);
    }
  }

  void step() {
    ++operations;
    List& l = lists_[below(3)];
    MemEntry& row = l.rows[below(static_cast<int>(l.rows.size()))];
    void* const address = row.address;
    void** const place = any_place(l);
    MemSetDefaultList(l.real);
    MemList* const handle = below(2) == 0 ? l.real : nullptr;
    switch (below(11)) {
      case 0:  // an owner overwrites a pointer
        *place = memory_[place] = this;
        break;
      case 1:  // or puts it back
        if (address != nullptr) *row.back_ptr = memory_[row.back_ptr] = address;
        break;
      case 2:
        MemSetPointer(handle, address, place);
        if (address == nullptr) break;
        memory_[row.back_ptr = place] = address;
        row.parent = index_around(l, place, &row);
        break;
      case 3:
        release(l, row);
        MemFree(handle, address);
        MemFree(handle, std::malloc(1));  // of no list
        break;
      case 4:
        if (below(20) != 0) break;
        clear(l);
        MemListClear(l.real);
        break;
      case 5:
        if (below(2) == 0) {
          MemListInitializeSearch(l.real);
          for (MemEntry& e : l.rows) e.excluded = 0;
        }
        MemListRemoveFromSearch(l.real, row.key);
        for (MemEntry& e : l.rows) e.excluded |= e.key == row.key;
        break;
      case 6:
        evict(l);
        break;
      default: {
        const int rare_sizes[] = {below(10) + 495, -below(2)};
        const int size = below(20) == 0 ? rare_sizes[below(2)] : below(40);
        allocate(handle, {l, size, &slots_[below(4)], place});
      }
    }
    check();
  }

 private:
  static inline World* now;

  struct List {
    MemList* real;
    MemPool* pool;
    std::vector<MemEntry> rows;
  };

  /// An allocation under way, with the exception that comes next, or 0, and its result so far.
  struct Call {
    List& list;
    int size;
    void* key;
    void** place;
    int expected = 0, status = MEM_SUCCESS;
  };

  static bool is_free(const MemEntry& row) { return row.address == nullptr; }

  /// An owner's pointer, on its own or in a block of the list.
  void** any_place(List& l) {
    void** const place = std::next(memory_.begin(), below(static_cast<int>(memory_.size())))->first;
    return index_around(l, place, nullptr) >= 0 ? place : &slots_[below(16)];
  }

  static int index_around(const List& l, void** place, const MemEntry* self) {
    const auto found = std::ranges::find_if(l.rows, [=](const MemEntry& row) {
      const auto offset = reinterpret_cast<char*>(place) - static_cast<char*>(row.address);
      return &row != self && offset >= 0 && offset < row.size;
    });
    return found == l.rows.end() ? -1 : static_cast<int>(found - l.rows.begin());
  }

  int used(const MemPool* pool) const {
    int sum = 0;
    for (const List& l : lists_) {
      for (const MemEntry& row : l.rows) sum += l.pool == pool ? row.size : 0;
    }
    return sum;
  }

  void release(List& l, MemEntry& row) {
    if (is_free(row) || memory_[row.back_ptr] != row.address) return;
    if (std::ranges::count(l.rows, &row - l.rows.data(), &MemEntry::parent) != 0) return;
    memory_[row.back_ptr] = nullptr;
    auto* const block = static_cast<void**>(row.address);
    memory_.erase(memory_.lower_bound(block), memory_.lower_bound(block + row.size / 8));
    row = zelvan::empty_entry;
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
      const int age = static_cast<int>(sequence_ - static_cast<unsigned>(row.sequence));
      const int measures[] = {-row.total_size, row.total_size, -age};
      best = std::min(best, {measures[rule], &row});
    }
    if (best.second != nullptr) release_family(l, *best.second);
    const decltype(&MemListRemoveOldest) removals[] = {MemListRemoveLargest, MemListRemoveSmallest,
                                                       MemListRemoveOldest};
    EXPECT_EQ(removals[rule](l.real), best.second != nullptr);
  }

  static MemEntry& free_row(List& l) {
    if (std::ranges::none_of(l.rows, is_free))
      l.rows.resize(l.rows.size() + 16, zelvan::empty_entry);
    return *std::ranges::find_if(l.rows, is_free);
  }

  int exception_after(int code, const Call& call) {
    if (code == 0 && call.size > call.list.pool->limit) return MEM_POOL_TOO_SMALL;
    if (code == 0 || code == MEM_POOL_TOO_SMALL) {
      free_row(call.list);
      if (used(call.list.pool) + call.size > call.list.pool->limit) return MEM_POOL_OVERFLOW;
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
    const bool goes_on = below(4) != 0;
    const bool is_homeless = home >= 0 && call.list.rows[home].sequence != sequence;
    const bool is_over = !goes_on || is_homeless || e.code == MEM_MALLOC_FAILED;
    call.status = is_over ? e.code : MEM_SUCCESS;
    call.expected = is_over ? 0 : exception_after(e.code, call);
    return goes_on ? static_cast<unsigned short>(1 << below(16)) : 0;
  }

  void allocate(MemList* handle, Call call) {
    call.expected = exception_after(0, call);
    calls_.push_back(&call);
    MemSetDefaultObject(call.key);
    const int status =
        MemAllocate(handle, call.size, below(2) == 0 ? call.key : nullptr, call.place);
    calls_.pop_back();
    ASSERT_EQ(std::pair(status, 0), std::pair(call.status, call.expected));
    if (status != MEM_SUCCESS) return;
    auto* const block = static_cast<void**>(memory_[call.place] = *call.place);
    for (int i = 0; i < call.size / 8; ++i) memory_[block + i] = block[i] = nullptr;
    MemEntry& row = free_row(call.list);
    row = {block, call.size, 0, call.key, call.place, 0, static_cast<int>(sequence_++), -1};
    row.parent = index_around(call.list, call.place, &row);
  }

  void check() {
    for (const auto& [place, value] : memory_) ASSERT_EQ(*place, value);
    for (List& l : lists_) {
      const int n_entries = static_cast<int>(l.rows.size());
      const int n_used = n_entries - static_cast<int>(std::ranges::count_if(l.rows, is_free));
      const int charge = used(l.pool), room = l.pool->limit - charge;
      ASSERT_EQ(std::tie(l.real->n_entries, l.real->n_used, l.pool->used),
                std::tie(n_entries, n_used, charge));
      ASSERT_EQ(MemAvailable(l.real, room), n_used < n_entries);
      ASSERT_EQ(MemAvailable(l.real, room + 1), 0);
      for (MemEntry& row : l.rows) row.total_size = row.size;
      for (MemEntry& row : l.rows) {
        if (row.parent >= 0) l.rows[row.parent].total_size += row.size;
      }
      const auto fields = [](const MemEntry& e) {
        return std::tie(e.address, e.size, e.total_size, e.key, e.back_ptr, e.excluded, e.sequence,
                        e.parent);
      };
      for (int i = 0; i < n_entries; ++i) {
        ASSERT_EQ(fields(l.real->entries[i]), fields(l.rows[i])) << "row " << i;
      }
    }
  }

  std::function<int(int)> below;
  unsigned sequence_ = INT_MAX - 100;
  List lists_[3];  // two of them share a pool
  void* slots_[16] = {};
  std::map<void**, void*> memory_;  ///< all pointers of owners, in slots and in blocks
  std::vector<Call*> calls_;
};
