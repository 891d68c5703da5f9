#include <zelvan/mem/detail/entry.h>
#include <zelvan/mem/mem.h>

#include <algorithm>
#include <climits>

using zelvan::bits_of;
using zelvan::MemTrace;

namespace {

/// Releases the first entry of the highest rank, with its children. Returns 1, even if the release
/// is refused, or 0 if no entry can be chosen: excluded entries and those of total size or rank 0
/// never are.
template <typename Rank>
unsigned short remove_first_of_rank(MemList* list, const char* rule, Rank rank_of) {
  MemTrace("!!Remove: %s\n", rule);
  if (list->n_used == 0) return 0;
  int victim = -1;
  unsigned best = 0;
  bool has_child = false;
  for (int i = 0; i < list->n_entries; ++i) {
    const MemEntry& entry = list->entries[i];
    if (entry.parent >= 0) has_child = true;
    if (entry.total_size == 0 || entry.excluded != 0) continue;
    const unsigned rank = rank_of(entry);
    if (rank > best) {
      best = rank;
      victim = i;
    }
  }
  if (victim < 0) return 0;
  zelvan::Children children(has_child ? 0 : list->n_entries);
  // If the victim may have children, index them once; otherwise each child costs a scan of the
  // table.
  const MemEntry& entry = list->entries[victim];
  if (entry.total_size != entry.size) children.list_by_parent(list);
  zelvan::MemEntryReleaseWithChildren(list, victim, children);
  MemTrace("^^Remove: %s\n", rule);
  return 1;
}

}  // namespace

void MemListInitializeSearch(MemList* list) {
  for (int i = 0; i < list->n_entries; ++i) list->entries[i].excluded = 0;
  MemTrace("Initialize search: list %#llx\n", bits_of(list));
}

void MemListRemoveFromSearch(MemList* list, void* object) {
  for (int i = 0; i < list->n_entries; ++i) {
    if (list->entries[i].key == object) list->entries[i].excluded = 1;
  }
  MemTrace("Remove from search: list %#llx object %#llx\n", bits_of(list), bits_of(object));
}

unsigned short MemListRemoveLargest(MemList* list) {
  return remove_first_of_rank(list, "Largest", [](const MemEntry& entry) {
    return entry.parent < 0 ? static_cast<unsigned>(std::max(entry.total_size, 0)) : 0U;
  });
}

unsigned short MemListRemoveSmallest(MemList* list) {
  return remove_first_of_rank(list, "Smallest", [](const MemEntry& entry) {
    return entry.parent < 0 ? INT_MAX - static_cast<unsigned>(entry.total_size) : 0U;
  });
}

unsigned short MemListRemoveOldest(MemList* list) {
  // The age is a difference modulo 2^32, so it is right even if the counter has wrapped in between.
  return remove_first_of_rank(list, "Oldest", [](const MemEntry& entry) {
    return static_cast<unsigned>(zelvan::mem_sequence) - static_cast<unsigned>(entry.sequence);
  });
}
