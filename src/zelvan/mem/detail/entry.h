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

/// A pointer as the trace shows it, by `%#zx`.
inline unsigned long long bits_of(const void* pointer) {
  return reinterpret_cast<std::uintptr_t>(pointer);
}

/// The first entry of that address; null if there is none. A null address finds an empty entry.
MemEntry* find_entry(MemList* list, const void* address);

/// Makes `entry` the child of the entry whose block its back pointer lies in, if there is one.
/// Requires: it has no parent yet.
void MemEntryFindParent(MemList* list, MemEntry* entry);

/// Gives the block at `index` back and empties the entry. Changes nothing where the owner's
/// pointer holds another value or the entry is a parent.
void MemEntryRelease(MemList* list, int index);

/// Releases the children of the entry at `index` in the order of the table, then the entry. A
/// child that is a parent stays, and so does the entry.
void MemEntryReleaseWithChildren(MemList* list, int index);

}  // namespace zelvan
