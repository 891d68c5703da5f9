/// The table of line types.
///
///     CLineTypeDefList line_types;                              // holds the 13 built-in ones
///     CLineTypeDefinition* dashed = line_types.GetDefinition(2);
///
/// The list owns the definitions in it, heap objects of `new`, and never lets go of one before
/// it is destroyed or assigned to. Where the heap refuses, nothing is thrown: each operation says
/// what it does instead.
///
/// Threads: whoever changes a list excludes all others from it.
#pragma once

#include <zelvan/export.h>
#include <zelvan/linetypes/line_type_definition.h>

/// Up to 850 line types. None is added that is equal to another or takes its index.
class ZELVAN_API CLineTypeDefList {
 public:
  /// The built-in line types, 1 to 13. One that finds no memory is missing; the others keep
  /// their numbers, and no later definition is given the missing one's.
  CLineTypeDefList();

  /// Copies every definition, so that each list owns its own. The definitions that an assigned
  /// list held are destroyed, and pointers to them end. Where the heap refuses, an assigned list
  /// stays as it was, and a new one is empty.
  CLineTypeDefList(const CLineTypeDefList&);
  CLineTypeDefList& operator=(const CLineTypeDefList&);

  /// Destroys every definition in it.
  ~CLineTypeDefList();

  /// Adds a line type, or finds the one that is equal to it. Gives the index under which the
  /// table has it, and tells in `already_there` whether it had it before.
  ///
  /// Added, `definition` belongs to the list. Where another line type has its index, it gets a new
  /// one, which is set in it: one above every index under which a definition was ever added. What
  /// `CLineTypeDefinition::SetIndex` did to a definition in the table since then doesn't count.
  /// Found, it stays the caller's, its own index untouched, unless it is the very object that the
  /// list holds.
  ///
  /// -1, not `already_there` and still the caller's: the table of 850 is full, the index of
  /// `definition` is 0, or it would have to go in with the index 0xFFFFFFFF, which reads as -1
  /// and has no successor. Other indices beyond 2147483647 come back as their negative
  /// counterparts below -1.
  ///
  /// Requires: `definition` comes from `new` and isn't null.
  int AddLineTypeDefinition(CLineTypeDefinition* definition, bool& already_there);

  /// The line type of that index, or null. It stays the list's. Whoever changes its index keeps
  /// indices apart: of several equal ones the first in the table is found, and 0 never.
  CLineTypeDefinition* GetDefinition(unsigned int index);

 private:
  static constexpr int capacity = 850;

  CLineTypeDefinition* definitions[capacity] = {};  ///< null from `num_definitions` on
  int num_definitions = 0;
  unsigned int next_index = 0;  ///< the one to hand out next
};

static_assert(sizeof(CLineTypeDefList) == 850 * sizeof(void*) + 8, "layout is interface");
