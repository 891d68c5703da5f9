/// A plain model of a list with its pool, and random operations on both.
#pragma once

#include <zelvan/mem/mem.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class MemModel {
 public:
  /// `below(n)` returns a number from 0 to `n` - 1; it decides all that happens.
  explicit MemModel(std::function<int(int)> below) : below_(std::move(below)) {}

  ~MemModel() {
    clear();
    MemListDelete(&list_);
    for (const Row& row : rows_) std::free(row.address);  // clear() does not free grandchildren
    MemPoolDelete(&pool_);
  }

  /// Does one operation on the list and on the model. Returns its name.
  const char* step() {
    const int index = below_(n_rows());
    void* const address = rows_[index].address;
    switch (below_(16)) {
      case 0:
        release(index);
        MemFree(list_, address);
        return "MemFree";
      case 1:
        evict([this](int i) { return rows_[i].parent < 0 ? -total(i) : 0; });
        MemListRemoveLargest(list_);
        return "MemListRemoveLargest";
      case 2:
        evict([this](int i) { return rows_[i].parent < 0 ? total(i) : 0; });
        MemListRemoveSmallest(list_);
        return "MemListRemoveSmallest";
      case 3:
        if (below_(4) == 0) clear();
        return "MemListClear";
      case 4:
        set_pointer(index, below_(n_rows()));
        return "MemSetPointer";
      default:
        allocate(1 + below_(40), address == nullptr ? -1 : index);
        return "MemAllocate";
    }
  }

  /// Returns how the list differs from the model, in lines; empty if it doesn't.
  std::string difference() const {
    std::string text;
    const auto compare = [&](const std::string& what, int actual, int expected) {
      if (actual == expected) return;
      text += what + " " + std::to_string(actual) + ", not " + std::to_string(expected) + "\n";
    };
    compare("bytes used", pool_->used, used());
    for (int i = 0; i < n_rows(); ++i) {
      const MemEntry& entry = list_->entries[i];
      const std::string row = "row " + std::to_string(i);
      compare(row + ": size", entry.size, rows_[i].size);
      compare(row + ": total size", entry.total_size, total(i));
      compare(row + ": parent", entry.parent, rows_[i].parent);
    }
    return text;
  }

 private:
  struct Row {
    void* address = nullptr;
    int size = 0, number = 0, parent = -1;
  };

  int n_rows() const { return static_cast<int>(rows_.size()); }

  int used() const {
    int sum = 0;
    for (const Row& row : rows_) sum += row.size;
    return sum;
  }

  int total(int index) const {
    int sum = rows_[index].size;
    for (const Row& row : rows_) sum += row.parent == index ? row.size : 0;
    return sum;
  }

  void release(int index) {
    if (total(index) == rows_[index].size) rows_[index] = Row();
  }

  void release_family(int index) {
    for (int i = 0; i < n_rows(); ++i) {
      if (rows_[i].parent == index) release(i);
    }
    release(index);
  }

  void clear() {
    for (int i = 0; i < n_rows(); ++i) {
      if (rows_[i].parent < 0) release_family(i);
    }
    MemListClear(list_);
  }

  /// Releases the block with the least measure above 0, the first of equals, and its children.
  void evict(const std::function<int(int)>& measure) {
    int least = -1;
    for (int i = 0; i < n_rows(); ++i) {
      if (measure(i) != 0 && (least < 0 || measure(i) < measure(least))) least = i;
    }
    if (least >= 0) release_family(least);
  }

  /// Returns the address of a null pointer, for an owner: in the block `*parent` if that has one;
  /// else outside all blocks, and sets `*parent` to -1.
  void** find_place(int* parent) {
    if (*parent >= 0) {
      auto** const first = static_cast<void**>(rows_[*parent].address);
      auto** const last = first + rows_[*parent].size / static_cast<int>(sizeof(void*));
      auto** const place = std::find(first, last, nullptr);
      if (place != last) return place;
    }
    *parent = -1;
    return &outside_.emplace_back(nullptr);
  }

  /// Moves the pointer to a block into the block `parent`. A block is no parent of itself.
  void set_pointer(int index, int parent) {
    MemSetPointer(list_, rows_[index].address, find_place(&parent));
    if (rows_[index].address != nullptr) rows_[index].parent = parent == index ? -1 : parent;
  }

  /// Allocates a block, with its owner's pointer in the block `parent` if that has room, else
  /// outside. A full pool first loses its oldest block; if that is the parent, allocation fails.
  void allocate(int size, int parent) {
    void** const place = find_place(&parent);
    const auto is_free = [](const Row& row) { return row.address == nullptr; };
    if (std::none_of(rows_.begin(), rows_.end(), is_free)) rows_.resize(rows_.size() + 16);
    if (used() + size > pool_->limit) evict([this](int i) { return rows_[i].number; });
    MemAllocate(list_, size, this, place);
    if (parent >= 0 && rows_[parent].address == nullptr) return;
    std::memset(*place, 0, size);
    *std::find_if(rows_.begin(), rows_.end(), is_free) = {*place, size, ++last_number_, parent};
  }

  std::function<int(int)> below_;
  MemPool* pool_ = MemPoolNew(500);
  MemList* list_ = MemListNew(pool_, [](MemException* e) { return MemListRemoveOldest(e->list); });
  std::vector<Row> rows_ = std::vector<Row>(16);
  std::deque<void*> outside_;  ///< owners' pointers that lie in no block
  int last_number_ = 0;
};
