/// Lists of names, each with a pointer that belongs to the caller.
///
/// A list is a pointer to its first node, null when empty. `VarAddNameInfo` adds at the tail,
/// `VarInsertNameInfo` anywhere. Look-ups search from the first node on. To walk a list:
///
///     for (VarNameInfo* entry = list; entry != nullptr; VarNextListEntry(&entry)) ...
///
/// Comparisons ignore the case of ASCII letters. For a comparison, a name ends at its first
/// control character (codes 1 to 31) or after 1600 characters, and a null name is empty. A name is
/// stored as a copy that keeps its case and in which every control character is replaced by a NUL.
///
/// The list owns nodes and names, both from `malloc`. `info` belongs to the caller and is never
/// dereferenced. No operation frees a whole list: delete it name by name. If the heap refuses, an
/// operation that adds or renames returns null and leaves the list as it was.
///
/// Threads: a thread that changes a list must have it to itself.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// A node of a list.
struct VarNameInfo {
  VarNameInfo* next;  ///< null at the tail
  char* name;         ///< the stored name, owned by the list; NUL-terminated
  void* info;         ///< the caller's
};

/// Adds a node at the tail. Returns the stored name; null if the list has the name already.
///
/// Only here are whole names compared: `name` doesn't end at a control character or after 1600
/// characters. So a name with a control character is added even if its stored form is in the list;
/// look-ups then find the first of the two.
///
/// Requires: `list` and `name` are not null.
ZELVAN_C_API char* VarAddNameInfo(VarNameInfo** list, const char* name, void* info);

/// Adds a node beside the node named `reference`: after it if `position` is 1, before it
/// otherwise.
///
/// If `position` is 2, it does what `VarAddNameInfo` does and ignores `reference`.
///
/// Returns the stored name; null if the list has the name already, or if it has no `reference`
/// (unless `position` is 2). Of several nodes named `reference`, uses the last one.
///
/// Requires: `list` and `name` are not null.
ZELVAN_C_API char* VarInsertNameInfo(VarNameInfo** list, const char* name, void* info, int position,
                                     const char* reference);

/// Removes the first node of that name, frees it with its name, and returns its `info`.
///
/// Returns null if there is no such node, and also if the node's `info` is null.
/// Requires: `list` is not null.
ZELVAN_C_API void* VarDeleteNameInfo(VarNameInfo** list, const char* name);

/// Swaps the `info` of two named nodes; does nothing if either is missing.
///
/// The nodes keep their names and places. Of several nodes of a name, uses the last one. `list` may
/// be null.
ZELVAN_C_API void VarExchangeNameInfo(VarNameInfo* list, const char* name1, const char* name2);

/// Renames the first node named `old_name`. Returns the new stored name; null if there is no such
/// node.
///
/// Frees the old stored name. Doesn't check whether another node has `new_name` already. `list`
/// may be null, and `new_name` may be the stored name itself.
///
/// Requires: `new_name` is not null.
ZELVAN_C_API char* VarReplaceNameInfo(VarNameInfo* list, const char* old_name,
                                      const char* new_name);

/// Stores the `info` of the first node of that name in `*info` and returns 1.
///
/// Returns 0 and leaves `*info` unchanged if there is no such node. `list` may be null.
///
/// Requires: `info` is not null.
ZELVAN_C_API unsigned short VarLookupNameInfo(VarNameInfo* list, const char* name, void** info);

/// Returns the stored name of a node. Requires: `entry` is not null.
ZELVAN_C_API char* VarGetName(VarNameInfo* entry);

/// Returns the `info` of a node; null if `entry` is null.
ZELVAN_C_API void* VarListInfo(VarNameInfo* entry);

/// Moves the cursor `*entry` to the next node, or to null after the last one.
///
/// Does nothing if `entry` is null. Requires: `*entry` is not null.
ZELVAN_C_API void VarNextListEntry(VarNameInfo** entry);

static_assert(offsetof(VarNameInfo, next) == 0 && offsetof(VarNameInfo, name) == sizeof(void*) &&
                  offsetof(VarNameInfo, info) == 2 * sizeof(void*) &&
                  sizeof(VarNameInfo) == 3 * sizeof(void*),
              "layout is interface");
