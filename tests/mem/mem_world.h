/// A list under operations by chance, those of its handler among them, beside a model that is
/// told of each: it keeps the rows of the list, the charge, and what every owner's pointer must
/// hold. Totals it adds up anew after each step.
#pragma once

#include <zelvan/mem/detail/entry.h>

#include <algorithm>
#include <array>
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
  /// `below(n)` gives a number from 0 to `n` - 1.
  explicit World(std::function<int(int)> below_n) : below(std::move(below_n)) {
    now = this;
    zelvan::mem_sequence = static_cast<int>(sequence_);
    for (void*& slot : slots_) memory_[&slot] = nullptr;
    list_ = MemListNew(&pool_, [](MemException* e) { return now->answer(*e); });
    MemSetDefaultList(list_);
  }

  ~World() {
    clear();
    MemListDelete(&list_);
    void* untracked;  // a list that is gone is no default any more
    EXPECT_EQ(MemAllocate(nullptr, 8, nullptr, &untracked), MEM_SUCCESS);
    MemFree(nullptr, untracked);
    EXPECT_EQ(pool_.used, used_);  // what was refused stays charged and is left to its owner
    for (const MemEntry& row : rows_) std::free(row.address);
  }

  void step() {
    MemEntry& row = rows_[below(static_cast<int>(rows_.size()))];
    void* const address = row.address;
    // An owner's pointer, on its own or in a block.
    void** const place = std::next(memory_.begin(), below(static_cast<int>(memory_.size())))->first;
    MemList* const handle = below(2) == 0 ? list_ : nullptr;
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
        row.parent = index_around(place, &row);
        break;
      case 3:
        release(row);
        MemFree(handle, address);
        MemFree(handle, std::malloc(1));  // of no list
        break;
      case 4:
        if (below(20) != 0) break;
        clear();
        MemListClear(list_);
        break;
      case 5: {
        const bool is_anew = below(2) == 0;
        if (is_anew) MemListInitializeSearch(list_);
        MemListRemoveFromSearch(list_, row.key);
        for (MemEntry& e : rows_) e.excluded = e.key == row.key || (!is_anew && e.excluded != 0);
        break;
      }
      case 6:
        evict();
        break;
      default: {
        const int size = below(40) == 0 ? 495 + below(10) : below(41) - 1;
        allocate(handle, {size, &slots_[below(4)], place});
      }
    }
    check();
  }

 private:
  static inline World* now;

  /// An allocation under way, with the exception that comes next, or 0, and its result so far.
  struct Call {
    int size;
    void* key;
    void** place;
    int expected = 0, status = MEM_SUCCESS;
  };

  static bool is_free(const MemEntry& row) { return row.address == nullptr; }

  int index_around(void** place, const MemEntry* self) const {
    const auto found = std::ranges::find_if(rows_, [=](const MemEntry& row) {
      const auto offset = reinterpret_cast<char*>(place) - static_cast<char*>(row.address);
      return &row != self && offset >= 0 && offset < row.size;
    });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
  }

  void release(MemEntry& row) {
    if (is_free(row) || memory_[row.back_ptr] != row.address) return;
    if (std::ranges::count(rows_, &row - rows_.data(), &MemEntry::parent) != 0) return;
    memory_[row.back_ptr] = nullptr;
    auto* const block = static_cast<void**>(row.address);
    memory_.erase(memory_.lower_bound(block), memory_.lower_bound(block + row.size / 8));
    used_ -= row.size;
    row = zelvan::empty_entry;
  }

  void release_family(MemEntry& row) {
    for (MemEntry& child : rows_) {
      if (child.parent == &row - rows_.data()) release(child);
    }
    release(row);
  }

  void clear() {
    for (MemEntry& row : rows_) {
      if (row.parent < 0) release_family(row);
    }
  }

  void evict() {
    static constexpr decltype(&MemListRemoveOldest) removals[] = {
        MemListRemoveLargest, MemListRemoveSmallest, MemListRemoveOldest};
    const int rule = below(3);
    std::pair<int, MemEntry*> best = {INT_MAX, nullptr};
    for (MemEntry& row : rows_) {
      if (row.total_size == 0 || row.excluded != 0 || (rule < 2 && row.parent >= 0)) continue;
      const int age = static_cast<int>(sequence_ - static_cast<unsigned>(row.sequence));
      best = std::min(best, {std::array{-row.total_size, row.total_size, -age}[rule], &row});
    }
    if (best.second != nullptr) release_family(*best.second);
    EXPECT_EQ(removals[rule](list_), best.second != nullptr);
  }

  MemEntry& free_row() {
    if (std::ranges::none_of(rows_, is_free)) rows_.resize(rows_.size() + 16, zelvan::empty_entry);
    return *std::ranges::find_if(rows_, is_free);
  }

  int exception_after(int code, const Call& call) {
    if (code == 0 && call.size > pool_.limit) return MEM_POOL_TOO_SMALL;
    if (code == 0 || code == MEM_POOL_TOO_SMALL) {
      free_row();
      if (used_ + call.size > pool_.limit) return MEM_POOL_OVERFLOW;
    }
    return code != MEM_MALLOC_FAILED && call.size < 0 ? MEM_MALLOC_FAILED : 0;
  }

  /// The handler: it does anything to the list, then gives up or not.
  unsigned short answer(const MemException& e) {
    Call& call = *calls_.back();
    EXPECT_EQ(std::tie(e.code, e.list, e.key, e.size),
              std::tie(call.expected, list_, call.key, call.size));
    const int home = index_around(call.place, nullptr);
    const int sequence = home < 0 ? 0 : rows_[home].sequence;
    for (int n = calls_.size() < 3 ? below(8) : 0; n > 0; --n) step();
    const bool goes_on = below(4) != 0;
    const bool is_homeless = home >= 0 && rows_[home].sequence != sequence;
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
    used_ += call.size;
    MemEntry& row = free_row();
    row = {block, call.size, 0, call.key, call.place, 0, static_cast<int>(sequence_++), -1};
    row.parent = index_around(call.place, &row);
  }

  void check() {
    for (const auto& [place, value] : memory_) ASSERT_EQ(*place, value);
    const int n_entries = static_cast<int>(rows_.size()), room = pool_.limit - used_;
    const int n_used = n_entries - static_cast<int>(std::ranges::count_if(rows_, is_free));
    ASSERT_EQ(std::tie(list_->n_entries, list_->n_used, pool_.used),
              std::tie(n_entries, n_used, used_));
    ASSERT_EQ(MemAvailable(list_, room), n_used < n_entries);
    ASSERT_EQ(MemAvailable(list_, room + 1), 0);
    for (MemEntry& row : rows_) row.total_size = row.size;
    for (const MemEntry& row : rows_) {
      if (row.parent >= 0) rows_[row.parent].total_size += row.size;
    }
    const auto fields = [](const MemEntry& e) {
      return std::tie(e.address, e.size, e.total_size, e.key, e.back_ptr, e.excluded, e.sequence,
                      e.parent);
    };
    for (int i = 0; i < n_entries; ++i) ASSERT_EQ(fields(list_->entries[i]), fields(rows_[i])) << i;
  }

  std::function<int(int)> below;
  unsigned sequence_ = INT_MAX - 100;  // soon it wraps
  MemPool pool_ = {500, 0};
  MemList* list_;
  std::vector<MemEntry> rows_ = std::vector(16, zelvan::empty_entry);
  void* slots_[16] = {};
  std::map<void**, void*> memory_;  ///< all pointers of owners, in slots and in blocks
  std::vector<Call*> calls_;
  int used_ = 0;
};
