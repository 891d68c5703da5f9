/// A list under operations by chance, those of its handler among them, beside a model that is told
/// of each: it keeps the rows of the list, the charge, and what every owner's pointer must hold.
/// Totals it adds up anew each time. Chance decides all, no address.
#pragma once

#include <zelvan/mem/detail/entry.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstdlib>
#include <functional>
#include <map>
#include <span>
#include <tuple>
#include <utility>
#include <vector>

class World {
 public:
  /// `below_n(n)` gives a number from 0 to `n` - 1, and `expect_that` is told whether the list
  /// agrees with the model. A pool of `limit` bytes begins with 500 of them to spare.
  World(std::function<int(int)> below_n, std::function<void(bool)> expect_that, int limit = 500)
      : below(std::move(below_n)), expect(std::move(expect_that)), used_(limit - 500) {
    now = this;
    zelvan::mem_sequence = static_cast<int>(sequence_);
    for (void*& slot : slots_) memory_[&slot] = nullptr;
    const int all_there_is[] = {0, INT_MIN};
    pool_ = MemPoolNew(limit == INT_MAX ? all_there_is[below(2)] : limit);
    expect(pool_->limit == limit && std::exchange(pool_->used, used_) == 0);
    list_ = MemListNew(pool_, [](MemException* e) { return now->answer(*e); });
    MemSetDefaultList(list_);
    MemList* other = MemListNew(pool_, nullptr);
    for (int i = 0; i < 2; ++i) MemListDelete(&other);  // is none any more, and was no default
  }

  ~World() {
    clear();
    MemListDelete(&list_);
    for (const int size : {8, -1}) {  // a list that is gone is no default any more
      void* untracked = nullptr;
      expect(MemAllocate(nullptr, size, this, &untracked) == (size < 0 ? MEM_MALLOC_FAILED : 0));
      MemSetPointer(nullptr, untracked, nullptr), MemFree(nullptr, untracked);
    }
    expect(pool_->used == used_);  // what was refused stays charged and is left to its owner
    for (const MemEntry& row : rows_) std::free(row.address);
    for (int i = 0; i < 2; ++i) MemPoolDelete(&pool_);
  }

  void step() {
    MemEntry& row = rows_[below(static_cast<int>(rows_.size()))];
    void** const place = some_place();
    MemList* const handle = below(2) == 0 ? list_ : nullptr;
    const int kind = below(4);
    void* const address = kind == 0 ? nullptr : kind == 1 ? std::malloc(1) : row.address;
    const bool is_unknown = kind == 1 || (address == nullptr && n_used() == list_->n_entries);
    switch (below(11)) {
      case 0:  // an owner overwrites a pointer
        *place = memory_[place] = this;
        break;
      case 1:  // or puts it back
        if (!is_free(row)) *row.back_ptr = memory_[row.back_ptr] = row.address;
        break;
      case 2:
        MemSetPointer(handle, address, place);
        if (address == nullptr || is_unknown) break;
        memory_[row.back_ptr = place] = address;
        find_parent(row);
        break;
      case 3:
        MemFree(handle, address);
        if (kind == 1) return check();
        if (address != nullptr) release(row);
        break;
      case 4:
        if (below(20) != 0) break;
        clear();
        MemListClear(list_);
        list_->n_used = 0;  // as no operation leaves it
        MemListClear(list_);
        list_->n_used = n_used();
        break;
      case 5:
        if (below(2) == 0) {
          MemListInitializeSearch(list_);
          for (MemEntry& e : rows_) e.excluded = 0;
        }
        MemListRemoveFromSearch(list_, row.key);
        for (MemEntry& e : rows_) e.excluded |= e.key == row.key;
        break;
      case 6:
        evict();
        break;
      default:
        const int size = below(40) == 0 ? 495 + below(10) : below(41) - 1;
        allocate(handle, {size, &slots_[below(4)], place});
    }
    if (kind == 1) std::free(address);
    check();
  }

  const MemList& list() const { return *list_; }

 private:
  static inline World* now;

  /// An allocation under way, with the exception that comes next, or 0, and its result so far.
  struct Call {
    int size;
    void* key;
    void** place;
    int expected = 0, status = MEM_SUCCESS;
  };

  /// Where an owner's pointer is: in a slot, or in a block.
  void** some_place() {
    const MemEntry& row = rows_[below(static_cast<int>(rows_.size()))];
    void** const slot = &slots_[below(16)];
    if (row.size < 8 || below(2) == 0) return slot;
    return static_cast<void**>(row.address) + below(row.size / 8);
  }

  static bool is_free(const MemEntry& row) { return row.address == nullptr; }
  static bool is_root(const MemEntry& row) { return row.address != nullptr && row.parent < 0; }
  int index(const MemEntry& row) const { return static_cast<int>(&row - rows_.data()); }
  int n_used() const {
    return static_cast<int>(rows_.size()) -
           static_cast<int>(std::count_if(rows_.begin(), rows_.end(), is_free));
  }
  int total(const MemEntry& row) const {
    int sum = row.size;
    for (const MemEntry& e : rows_) sum += e.parent == index(row) ? e.size : 0;
    return sum;
  }

  int index_around(void** place, const MemEntry* self) const {
    const auto found = std::find_if(rows_.begin(), rows_.end(), [=](const MemEntry& row) {
      const auto offset = reinterpret_cast<char*>(place) - static_cast<char*>(row.address);
      return &row != self && offset >= 0 && offset < row.size;
    });
    return found == rows_.end() ? -1 : index(*found);
  }

  void find_parent(MemEntry& row) { row.parent = index_around(row.back_ptr, &row); }

  void release(MemEntry& row) {
    const MemEntry old = row;
    if (is_free(row)) return;
    if (memory_[old.back_ptr] != old.address) return;
    const auto is_child = [&](const MemEntry& e) { return e.parent == index(row); };
    if (std::any_of(rows_.begin(), rows_.end(), is_child)) return;
    row = zelvan::empty_entry, used_ -= old.size;
    memory_[old.back_ptr] = nullptr;
    auto* const block = static_cast<void**>(old.address);
    memory_.erase(memory_.lower_bound(block), memory_.lower_bound(block + old.size / 8));
  }

  void release_family(MemEntry& row) {
    for (MemEntry& child : rows_) {
      if (child.parent == index(row)) release(child);
    }
    release(row);
  }

  void clear() {
    for (MemEntry& row : rows_) {
      if (is_root(row)) release_family(row);
    }
  }

  void evict() {
    static constexpr decltype(&MemListRemoveOldest) rules[] = {
        MemListRemoveLargest, MemListRemoveSmallest, MemListRemoveOldest};
    const int rule = below(3);
    std::pair<int, MemEntry*> best = {INT_MAX, nullptr};
    for (MemEntry& row : rows_) {
      const int size = total(row);
      if (size == 0 || row.excluded != 0 || (rule < 2 && row.parent >= 0)) continue;
      const int age = static_cast<int>(sequence_ - static_cast<unsigned>(row.sequence));
      best = std::min(best, {std::array{-size, size, -age}[rule], &row});
    }
    if (best.second != nullptr) release_family(*best.second);
    expect(rules[rule](list_) == (best.second != nullptr));
  }

  MemEntry& free_row() {
    if (std::none_of(rows_.begin(), rows_.end(), is_free))
      rows_.resize(rows_.size() + 16, zelvan::empty_entry);
    return *std::find_if(rows_.begin(), rows_.end(), is_free);
  }

  int exception_after(int code, const Call& call) {
    if (code == 0 && call.size > pool_->limit) return MEM_POOL_TOO_SMALL;
    if (code == 0 || code == MEM_POOL_TOO_SMALL) {
      free_row();
      if (0LL + used_ + call.size > pool_->limit) return MEM_POOL_OVERFLOW;
    }
    return code == MEM_MALLOC_FAILED || call.size >= 0 ? 0 : MEM_MALLOC_FAILED;
  }

  /// The handler: it does anything to the list, then gives up or not.
  unsigned short answer(const MemException& e) {
    Call& call = *calls_.back();
    expect(std::tie(e.code, e.list, e.key, e.size) ==
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
    const bool is_default = below(2) == 0;
    MemSetDefaultObject(is_default ? call.key : this);
    const int status = MemAllocate(handle, call.size, is_default ? nullptr : call.key, call.place);
    calls_.pop_back();
    if (call.status == MEM_SUCCESS && 0LL + used_ + call.size > INT_MAX) {
      call.status = MEM_POOL_OVERFLOW;
    }
    expect(status == call.status && call.expected == 0);
    if (status != MEM_SUCCESS) return;
    auto* const block = static_cast<void**>(memory_[call.place] = *call.place);
    for (int i = 0; i < call.size / 8; ++i) memory_[block + i] = block[i] = nullptr;
    MemEntry& row = free_row();
    row = {block, call.size, 0, call.key, call.place, 0, static_cast<int>(sequence_++), -1};
    used_ += call.size;
    find_parent(row);
  }

  void check() {
    bool agrees =
        std::all_of(memory_.begin(), memory_.end(), [](auto& m) { return *m.first == m.second; });
    const int n_entries = static_cast<int>(rows_.size()), room = pool_->limit - used_, n = n_used();
    agrees = agrees && std::tie(list_->n_entries, list_->n_used, pool_->used) ==
                           std::tie(n_entries, n, used_);
    agrees = agrees && MemAvailable(list_, room) == (n < n_entries) &&
             MemAvailable(list_, room + 1) == 0;
    const auto fields = [](const MemEntry& e) {
      return std::tie(e.address, e.size, e.total_size, e.key, e.back_ptr, e.excluded, e.sequence,
                      e.parent);
    };
    for (MemEntry& row : rows_) row.total_size = row.size;
    for (MemEntry& row : rows_) {
      if (row.parent >= 0) rows_[row.parent].total_size += row.size;
    }
    for (MemEntry& row : rows_) {
      agrees = agrees && fields(list_->entries[index(row)]) == fields(row);
    }
    expect(agrees);
  }

  std::function<int(int)> below;
  std::function<void(bool)> expect;
  unsigned sequence_ = INT_MAX - 100;  // soon it wraps
  MemPool* pool_;
  MemList* list_;
  std::vector<MemEntry> rows_ = std::vector(16, zelvan::empty_entry);
  void* slots_[16] = {};
  std::map<void**, void*> memory_;  ///< all pointers of owners, in slots and in blocks
  std::vector<Call*> calls_;
  int used_;
};
