/// What allocation, release and eviction share: the state of the module, its trace, and the
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

/// Writes one line of the trace. Callers test `mem_trace` first.
__attribute__((format(printf, 1, 2))) void MemTrace(const char* format, ...);

/// A pointer as the trace shows it, by `%#llx`.
inline unsigned long long bits_of(const void* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}

/// The first entry of that address; null if there is none. A null address finds an empty entry.
MemEntry* find_entry(MemList* list, const void* address);

/// Makes `entry` the child of the first entry but itself whose block its back pointer lies in, if
/// there is one. Requires: it has no parent yet.
void MemEntryFindParent(MemList* list, MemEntry* entry);

/// Makes `entry` the child of `home`, in whose block its back pointer lies; null for none.
void become_child(MemList* list, MemEntry* entry, MemEntry* home);

/// Where the children in a table are. The fact itself stands in `MemEntry::parent` alone; this only
/// saves looks at rows that can't be children. It holds while entries are released, which ends
/// links and makes none.
class Children {
 public:
  /// Requires: no row before `first_row` is a child.
  explicit Children(int first_row) : first_row_(first_row) {}
  ~Children();
  Children(const Children&) = delete;
  Children& operator=(const Children&) = delete;

  /// Lists the children of each entry, for many releases. Where the heap refuses, each of them
  /// looks through the table.
  void list_by_parent(const MemList* list);

  /// Returns the row of the first child of the entry at `parent`; `n_entries` if there is none.
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
  /// Returns the first row from `row` on that is a child of the entry at `parent`, or `n_entries`.
  static int find_child(const MemList* list, int parent, int row);

  /// Returns the first from the listed child at `child` on that is still one, or `n_entries`.
  int skip_released(const MemList* list, int parent, int child) const {
    while (child < list->n_entries && list->entries[child].parent != parent) child = next_[child];
    return child;
  }

  int first_row_;
  int* first_ = nullptr;  ///< of each entry, its first child; `n_entries` for none
  int* next_ = nullptr;   ///< of each child, the next child of its parent; `n_entries` at the end
};

/// Releases the block at `index` and empties the entry. Changes nothing where the owner's
/// pointer holds another value or the entry is a parent.
void MemEntryRelease(MemList* list, int index, const Children& children);

/// Releases the children of the entry at `index` in the order of the table, then the entry. A
/// child that is a parent stays, and so does the entry.
void MemEntryReleaseWithChildren(MemList* list, int index, const Children& children);

}  // namespace zelvan
