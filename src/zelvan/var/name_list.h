/// Lists of names, each with a value of the caller's.
///
/// A list is a pointer to its first node, null when empty. Order is order of insertion, and
/// every operation walks from the first node. To walk a list yourself:
///
///     for (VarNameInfo* entry = list; entry != nullptr; VarNextListEntry(&entry)) ...
///
/// Names compare without the case of ASCII letters. For a comparison, a name ends at its first
/// control character (codes 1 to 31) or after 1600 characters, and a null name is an empty
/// one. A name is stored as a copy in which every control character became a terminator, its
/// case kept.
///
/// The list owns nodes and names, both from `malloc`; `info` is the caller's and never looked
/// into. No operation frees a whole list: delete it name by name. Where the heap refuses, an
/// adding or renaming operation gives null and the list stays as it was.
///
/// Threads: whoever changes a list excludes all others from it.
#pragma once

#include <zelvan/export.h>

#include <cstddef>

/// A node of a list.
struct VarNameInfo {
  VarNameInfo* next;  ///< null at the tail
  char* name;         ///< the stored name, the list's; ended by a terminator
  void* info;         ///< the caller's value, of any meaning
};

/// Adds a node at the tail. Gives the stored name; null if the name is there already.
///
/// The test for a name that is there takes `name` as it is written, not up to its first control
/// character. So a name with one may enter although its stored form is there; lookups then find
/// the older node.
///
/// Requires: `list` and `name` are not null.
ZELVAN_C_API char* VarAddNameInfo(VarNameInfo** list, const char* name, void* info);

/// Adds a node beside the node named `reference`: after it if `position` is 1, before it
/// otherwise. With a `position` of 2 it is `VarAddNameInfo`, and `reference` plays no part.
///
/// Returns the stored name; null if the name is there already. With another `position` than 2 also
/// null if `reference` is not there, so always for an empty list. Of several nodes named
/// `reference` the last one counts.
///
/// Requires: `list` and `name` are not null.
ZELVAN_C_API char* VarInsertNameInfo(VarNameInfo** list, const char* name, void* info, int position,
                                     const char* reference);

/// Takes the first node of that name out, frees it with its name, and gives its `info`. Null
/// if there is no such node, which a stored null can't be told from.
///
/// Requires: `list` is not null.
ZELVAN_C_API void* VarDeleteNameInfo(VarNameInfo** list, const char* name);

/// Swaps the `info` of two named nodes, which keep their names and places. Changes nothing if
/// either is missing. Of several nodes of a name the last one counts. `list` may be null.
ZELVAN_C_API void VarExchangeNameInfo(VarNameInfo* list, const char* name1, const char* name2);

/// Renames the first node named `old_name`. Gives the new stored name; null if there is no such
/// node. No test is made whether `new_name` is there already. `list` may be null, and
/// `new_name` may be the stored name itself.
///
/// Requires: `new_name` is not null.
ZELVAN_C_API char* VarReplaceNameInfo(VarNameInfo* list, const char* old_name,
                                      const char* new_name);

/// Stores the `info` of the first node of that name in `*info` and gives 1. Gives 0 and leaves
/// `*info` alone if there is none. `list` may be null.
///
/// Requires: `info` is not null.
ZELVAN_C_API unsigned short VarLookupNameInfo(VarNameInfo* list, const char* name, void** info);

/// The stored name of a node. Requires: `entry` is not null.
ZELVAN_C_API char* VarGetName(VarNameInfo* entry);

/// The `info` of a node; null for a null `entry`.
ZELVAN_C_API void* VarListInfo(VarNameInfo* entry);

/// Moves the cursor `*entry` to the next node, or to null behind the last one. Does nothing if
/// `entry` is null. Requires: `*entry` is not null.
ZELVAN_C_API void VarNextListEntry(VarNameInfo** entry);

static_assert(offsetof(VarNameInfo, next) == 0 && offsetof(VarNameInfo, name) == sizeof(void*) &&
                  offsetof(VarNameInfo, info) == 2 * sizeof(void*) &&
                  sizeof(VarNameInfo) == 3 * sizeof(void*),
              "layout is interface");
