/// A plain model of a list with its pool, and random operations on both.
///
/// The model keeps what the caller chose for each row. Parents and totals it works out anew each
/// time it needs them.
#pragma once

#include <zelvan/mem/mem.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

class MemModel {
 public:
  /// `below(n)` returns a number from 0 to `n` - 1; it decides all that happens.
  explicit MemModel(std::function<int(int)> below) : below_(std::move(below)) {
    void* owner = nullptr;
    MemAllocate(list_, 1, this, &owner);
    next_number_ = list_->entries[0].sequence + 1;
    MemFree(list_, owner);
  }

  ~MemModel() {
    clear();
    MemListDelete(&list_);
    for (const MemEntry& row : rows_) std::free(row.address);  // what the clear had to leave
    MemPoolDelete(&pool_);
  }

  /// Does one operation on both. Returns its name.
  const char* step() {
    MemEntry& row = rows_[below_(n_rows())];
    void* const address = row.address;
    switch (below_(16)) {
      case 0:
        move_owner(row);
        return "MemSetPointer";
      case 1:
        release(row);
        MemFree(list_, address);
        return "MemFree";
      case 2:
        evict([](const MemEntry& e) { return e.parent < 0 ? -e.total_size : 0; });
        MemListRemoveLargest(list_);
        return "MemListRemoveLargest";
      case 3:
        evict([](const MemEntry& e) { return e.parent < 0 ? e.total_size : 0; });
        MemListRemoveSmallest(list_);
        return "MemListRemoveSmallest";
      case 4:
        if (below_(8) == 0) clear();
        return "MemListClear";
      default:
        allocate(1 + below_(40));
        return "MemAllocate";
    }
  }

  /// The list and what the model makes of it, a row a line.
  std::string actual() const { return text_of(list_->entries, list_->n_entries, pool_->used); }
  std::string expected() const { return text_of(rows_.data(), n_rows(), used()); }

 private:
  static constexpr int limit = 500;
  static constexpr MemEntry free_row = {nullptr, 0, 0, nullptr, nullptr, 0, 0, -1};

  int n_rows() const { return static_cast<int>(rows_.size()); }

  /// Returns the index of the block that `place` lies in, other than `self`; -1 for none.
  int index_around(void** place, const MemEntry* self) const {
    for (int i = 0; i < n_rows(); ++i) {
      const char* const first = static_cast<char*>(rows_[i].address);
      const auto offset = reinterpret_cast<char*>(place) - first;
      if (&rows_[i] != self && offset >= 0 && offset < rows_[i].size) return i;
    }
    return -1;
  }

  void link() {
    for (MemEntry& row : rows_) {
      row.parent = row.address == nullptr ? -1 : index_around(row.back_ptr, &row);
      row.total_size = row.size;
    }
    for (const MemEntry& row : rows_) {
      if (row.parent >= 0) rows_[row.parent].total_size += row.size;
    }
  }

  void release(MemEntry& row) {
    if (row.total_size != row.size) return;
    row = free_row;
    link();
  }

  void release_family(int index) {
    for (MemEntry& row : rows_) {
      if (row.parent == index) release(row);
    }
    release(rows_[index]);
  }

  void clear() {
    for (int i = 0; i < n_rows(); ++i) {
      if (rows_[i].parent < 0) release_family(i);
    }
    MemListClear(list_);
  }

  /// Releases the row of the least measure, the first of equals. A measure of 0 is none.
  template <class Measure>
  void evict(Measure measure_of) {
    std::vector<std::pair<int, int>> candidates;
    for (int i = 0; i < n_rows(); ++i) {
      const int measure = measure_of(rows_[i]);
      if (measure != 0) candidates.emplace_back(measure, i);
    }
    if (candidates.empty()) return;
    release_family(std::min_element(candidates.begin(), candidates.end())->second);
  }

  /// Returns a null pointer for an owner to use: outside of all blocks, or in one.
  void** unused_place() {
    const MemEntry& row = rows_[below_(n_rows())];
    auto** const first = static_cast<void**>(row.address);
    auto** const last = first + row.size / static_cast<int>(sizeof(void*));
    void** const place = std::find(first, last, nullptr);
    return place != last ? place : std::find(slots_.begin(), slots_.end(), nullptr);
  }

  void move_owner(MemEntry& row) {
    if (row.address == nullptr) return;
    void** const old_place = std::exchange(row.back_ptr, unused_place());
    MemSetPointer(list_, row.address, row.back_ptr);
    *old_place = nullptr;
    link();
  }

  /// Allocates a block. If the pool is short of room, the handler removes the oldest one first, and
  /// the allocation fails if its own place goes with that.
  void allocate(int size) {
    void** const place = unused_place();
    const int home = index_around(place, nullptr);
    const auto is_free = [](const MemEntry& row) { return row.address == nullptr; };
    if (std::none_of(rows_.begin(), rows_.end(), is_free)) rows_.resize(n_rows() + 16, free_row);
    if (used() + size > limit) evict([](const MemEntry& e) { return e.sequence; });
    MemAllocate(list_, size, this, place);
    if (index_around(place, nullptr) != home) return;
    std::memset(*place, 0, size);
    const auto row = std::find_if(rows_.begin(), rows_.end(), is_free);
    *row = {*place, size, size, this, place, 0, next_number_++, -1};
    link();
  }

  int used() const {
    int sum = 0;
    for (const MemEntry& row : rows_) sum += row.size;
    return sum;
  }

  static std::string text_of(const MemEntry* rows, int n_rows, int used) {
    std::ostringstream text;
    text << n_rows << " rows, " << used << " bytes used\n";
    for (int i = 0; i < n_rows; ++i) {
      const MemEntry& row = rows[i];
      const bool is_held = row.back_ptr != nullptr && *row.back_ptr == row.address;
      text << i << ": size " << row.size << ", total " << row.total_size << ", number "
           << row.sequence << ", parent " << row.parent << (is_held ? ", held\n" : "\n");
    }
    return text.str();
  }

  std::function<int(int)> below_;
  int next_number_;
  MemPool* pool_ = MemPoolNew(limit);
  MemList* list_ = MemListNew(pool_, [](MemException* e) { return MemListRemoveOldest(e->list); });
  std::vector<MemEntry> rows_ = std::vector<MemEntry>(16, free_row);
  std::array<void*, 1000> slots_ = {};  ///< where owners keep their pointers outside of all blocks
};
