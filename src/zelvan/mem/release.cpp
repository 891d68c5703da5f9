#include <zelvan/mem/detail/entry.h>
#include <zelvan/mem/mem.h>

#include <algorithm>
#include <cassert>
#include <cstdlib>

namespace zelvan {

namespace {

/// Subtracts the child's size from its parent's total and ends the link, so that no size counts in
/// two parents.
void leave_parent(MemList* list, MemEntry* child) {
  if (child->parent < 0) return;
  list->entries[child->parent].total_size -= child->size;
  child->parent = -1;
}

}  // namespace

Children::~Children() { std::free(first_); }

void Children::list_by_parent(const MemList* list) {
  const int n = list->n_entries;
  if (first_row_ == n) return;
  first_ = static_cast<int*>(std::malloc(2 * static_cast<std::size_t>(n) * sizeof *first_));
  if (first_ == nullptr) return;
  next_ = first_ + n;
  std::fill(first_, first_ + 2 * static_cast<std::size_t>(n), n);
  for (int child = n - 1; child >= 0; --child) {  // backwards, so that each list is in table order
    const int parent = list->entries[child].parent;
    if (parent < 0) continue;
    assert(parent < n);
    next_[child] = first_[parent];
    first_[parent] = child;
  }
}

int Children::find_child(const MemList* list, int parent, int row) {
  const MemEntry* const rows = list->entries;
  const auto is_child = [parent](const MemEntry& entry) { return entry.parent == parent; };
  return static_cast<int>(std::find_if(rows + row, rows + list->n_entries, is_child) - rows);
}

void MemEntryRelease(MemList* list, int index, const Children& children) {
  MemEntry& entry = list->entries[index];
  if (entry.address == nullptr || entry.back_ptr == nullptr) return;
  if (*entry.back_ptr != entry.address) {
    MemTrace("**[%ld] Back pointer does not contain address\n", long{entry.sequence});
    return;
  }
  if (children.first(list, index) != list->n_entries) {
    // The line ends with "/n" and no line feed: programs that read the trace expect it so.
    MemTrace("**[%ld] Is parent/n", long{entry.sequence});
    return;
  }

  list->pool->used -= entry.size;
  if (mem_trace != 0) {
    MemTrace("  [%ld] Release %ld pool used %ld\n", long{entry.sequence}, long{entry.size},
             long{list->pool->used});
  }
  if (entry.parent >= 0) {
    const MemEntry& parent = list->entries[entry.parent];
    leave_parent(list, &entry);
    if (mem_trace != 0) {
      MemTrace("  [%ld] Parent sequence [%ld], new total %ld\n", long{entry.sequence},
               long{parent.sequence}, long{parent.total_size});
    }
  }
  // Clear the pointer first: it may lie in the block itself.
  *entry.back_ptr = nullptr;
  std::free(entry.address);
  entry = empty_entry;
  --list->n_used;
}

void MemEntryReleaseWithChildren(MemList* list, int index, const Children& children) {
  for (int child = children.first(list, index); child != list->n_entries;
       child = children.next(list, index, child)) {
    MemEntryRelease(list, child, children);
  }
  MemEntryRelease(list, index, children);
}

}  // namespace zelvan

using zelvan::bits_of;
using zelvan::MemTrace;

void MemFree(MemList* list, void* address) {
  if (list == nullptr) list = zelvan::mem_default_list;
  if (list == nullptr) {
    std::free(address);
    return;
  }
  if (mem_trace != 0) {
    MemTrace("Free: list %#llx address %#llx\n", bits_of(list), bits_of(address));
  }
  // One pass finds the row of the address. It also finds out whether a row before that one is a
  // child (of any block); if not, the search for children of the block begins at its own row.
  const MemEntry* const end = list->entries + list->n_entries;
  const MemEntry* entry = list->entries;
  bool has_child_before = false;
  for (; entry != end && entry->address != address; ++entry) {
    has_child_before |= entry->parent >= 0;
  }
  if (entry == end) {
    MemTrace("**Address not found\n");
    std::free(address);
    return;
  }
  const int index = static_cast<int>(entry - list->entries);
  zelvan::MemEntryRelease(list, index, zelvan::Children(has_child_before ? 0 : index));
}

void MemSetPointer(MemList* list, void* address, void** back_ptr) {
  if (list == nullptr) list = zelvan::mem_default_list;
  if (list == nullptr) return;
  MemTrace("Set pointer: list %#llx address %#llx back ptr %#llx\n", bits_of(list),
           bits_of(address), bits_of(back_ptr));
  if (address == nullptr) return;
  MemEntry* const end = list->entries + list->n_entries;
  const auto is_sought = [=](const MemEntry& row) { return row.address == address; };
  MemEntry* const entry = std::find_if(list->entries, end, is_sought);
  if (entry == end) {
    MemTrace("**Address not found\n");
    return;
  }
  MemTrace("  [%ld] Set pointer replaces %#llx\n", long{entry->sequence}, bits_of(entry->back_ptr));
  entry->back_ptr = back_ptr;
  zelvan::leave_parent(list, entry);
  zelvan::MemEntryFindParent(list, entry);
  *back_ptr = address;
}

void MemListClear(MemList* list) {
  int first_child = 0;
  while (first_child < list->n_entries && list->entries[first_child].parent < 0) ++first_child;
  zelvan::Children children(first_child);
  children.list_by_parent(list);
  for (int i = 0; i < list->n_entries; ++i) {
    const MemEntry& entry = list->entries[i];
    if (entry.address == nullptr || entry.parent >= 0) continue;
    if (list->n_used <= 0) {
      MemTrace("**List used is 0, entry has address\n");
      return;
    }
    if (mem_trace != 0) {
      MemTrace("Clear list %#llx address %#llx\n", bits_of(list), bits_of(entry.address));
    }
    zelvan::MemEntryReleaseWithChildren(list, i, children);
  }
}

void MemListDelete(MemList** list) {
  if (*list == nullptr) return;
  MemListClear(*list);
  if (zelvan::mem_default_list == *list) zelvan::mem_default_list = nullptr;
  std::free((*list)->entries);
  std::free(*list);
  *list = nullptr;
}
