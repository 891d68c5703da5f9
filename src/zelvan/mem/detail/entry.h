/// Shared parts of allocation, release and eviction: the state of the module, its trace, and
/// operations on one entry of a table.
#pragma once

#include <zelvan/mem/mem.h>

#include <cstddef>
#include <cstdint>

namespace zelvan {

extern MemList* mem_default_list;
extern void* mem_default_object;
extern int mem_sequence;  ///< the next serial number

constexpr MemEntry empty_entry = {nullptr, 0, 0, nullptr, nullptr, 0, 0, -1};

/// Prints to the trace as `printf` does, without adding a line feed, if `mem_trace` is set. What
/// allocates or releases a block tests it first: a call takes a nanosecond, the block only thirty.
__attribute__((format(printf, 1, 2))) void MemTrace(const char* format, ...);

/// Returns a pointer as the number that the trace prints by `%#llx`.
inline unsigned long long bits_of(const void* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}

/// Makes `entry` a child of the first other entry whose block contains the back pointer of `entry`,
/// if there is one. Requires: `entry` has no parent yet.
void MemEntryFindParent(MemList* list, MemEntry* entry);

/// Makes `entry` a child of `parent`, whose block contains the back pointer of `entry`. Does
/// nothing if `parent` is null.
void make_child(MemList* list, MemEntry* entry, MemEntry* parent);

/// An index of the children in a table. It only saves time: whether a row is a child is still
/// decided by `MemEntry::parent`. It stays valid while entries are released, since a release
/// removes links and adds none.
class Children {
 public:
  /// Requires: no row before `first_row` is a child.
  explicit Children(int first_row) : first_row_(first_row) {}
  ~Children();
  Children(const Children&) = delete;
  Children& operator=(const Children&) = delete;

  /// Builds lists of children by parent, for many releases. If the heap refuses, each release
  /// searches the table instead.
  void list_by_parent(const MemList* list);

  /// Returns the row of the first child of the entry at `parent`; `n_entries` if it has no child.
  int first(const MemList* list, int parent) const {
    if (first_row_ == list->n_entries) return first_row_;  // there is no child at all
    return first_ == nullptr ? find_child(list, parent, first_row_)
                             : skip_released(list, parent, first_[parent]);
  }

  /// Returns the row of the next child of that entry after its child at `last`, or `n_entries`.
  int next(const MemList* list, int parent, int last) const {
    return first_ == nullptr ? find_child(list, parent, last + 1)
                             : skip_released(list, parent, next_[last]);
  }

 private:
  /// Returns the first row, from `row` on, that is a child of the entry at `parent`; `n_entries` if
  /// no row is.
  static int find_child(const MemList* list, int parent, int row);

  /// Returns the first row that is still a child of the entry at `parent`, following the links from
  /// row `child` on; `n_entries` if no row is. Released children have left their parent, but
  /// are still linked.
  int skip_released(const MemList* list, int parent, int child) const {
    while (child < list->n_entries && list->entries[child].parent != parent) child = next_[child];
    return child;
  }

  int first_row_;
  int* first_ = nullptr;  ///< by parent: its first child, or `n_entries`
  int* next_ = nullptr;   ///< by child: the next child of its parent, or `n_entries`
};

/// Releases the block at `index` and empties the entry. Does nothing if the owner's pointer holds
/// another value or the entry is a parent.
void MemEntryRelease(MemList* list, int index, const Children& children);

/// Releases the children of the entry at `index` in table order, then the entry. A child whose
/// release is refused stays, and then the entry stays as well.
void MemEntryReleaseWithChildren(MemList* list, int index, const Children& children);

}  // namespace zelvan
