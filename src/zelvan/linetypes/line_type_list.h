/// The table of line types.
///
///     CLineTypeDefList line_types;                              // holds the 13 built-in ones
///     CLineTypeDefinition* dashed = line_types.GetDefinition(2);
///
/// The list owns its definitions, made by `new`, until it is destroyed or assigned to. If the heap
/// refuses, nothing is thrown: each operation says what it does instead.
///
/// Threads: a thread that changes a list must have it to itself.
#pragma once

#include <zelvan/export.h>
#include <zelvan/linetypes/line_type_definition.h>

/// A table of up to 850 line types. A line type that equals one in the table is not added; one
/// whose index is taken gets another.
class ZELVAN_API CLineTypeDefList {
 public:
  /// Makes a table of the built-in line types, 1 to 13.
  ///
  /// If the heap refuses one, it is missing. The others keep their numbers, and the list assigns
  /// the missing number to no other definition.
  CLineTypeDefList();

  /// Copies every definition, so that each list owns its own.
  ///
  /// An assignment destroys the definitions that the list held, and pointers to them become
  /// invalid. If the heap refuses, an assigned list stays as it was, and a new one is empty.
  CLineTypeDefList(const CLineTypeDefList&);
  CLineTypeDefList& operator=(const CLineTypeDefList&);

  /// Destroys every definition of the list.
  ~CLineTypeDefList();

  /// Adds a line type, or finds the one that is equal to it; returns its index in the table.
  ///
  /// `already_there` becomes true if an equal one was found, else false.
  ///
  /// - Added: the list now owns `definition`. If another line type has the same index, the list
  ///   changes that of `definition` to one more than the highest index under which a definition
  ///   was ever added. Indices changed in the table by `CLineTypeDefinition::SetIndex` don't count.
  /// - Found: the caller still owns `definition`, and its index is unchanged. (If it is the very
  ///   object in the list, the list still owns it.)
  /// - Refused: returns -1, and the caller still owns `definition`. This happens if the table
  ///   already holds 850 line types, if the index of `definition` is 0, or if its index in the
  ///   table would be 0xFFFFFFFF, which reads as -1 and has no successor.
  ///
  /// Other indices above 2147483647 are returned as negative numbers below -1.
  /// Requires: `definition` comes from `new` and isn't null.
  int AddLineTypeDefinition(CLineTypeDefinition* definition, bool& already_there);

  /// Returns the line type of that index, or null. The list still owns it.
  ///
  /// A caller who changes its index must keep indices distinct: of several equal ones the first in
  /// the table is found, and 0 is never found.
  CLineTypeDefinition* GetDefinition(unsigned int index);

 private:
  static constexpr int capacity = 850;

  CLineTypeDefinition* definitions[capacity] = {};  ///< null from `num_definitions` on
  int num_definitions = 0;
  unsigned int next_index = 0;  ///< the one for a definition whose own is taken
};

static_assert(sizeof(CLineTypeDefList) == 850 * sizeof(void*) + 8, "layout is interface");
