/// Functions with C linkage that read line types, fragment by fragment.
///
/// The rules of `CLineTypeDefList` and its definitions hold. These functions only read a list, so
/// any number of threads may read one. Requires: no null pointer, except where a comment allows
/// one.
#pragma once

#include <zelvan/export.h>
#include <zelvan/linetypes/line_type_list.h>

/// Returns a new table of the built-in line types, 1 to 13; null if the heap refuses it.
///
/// If the heap refuses a line type, that one is missing. Release the table with
/// `zelvan_delete_line_types`.
ZELVAN_C_API CLineTypeDefList* zelvan_new_line_types();

/// Releases a table. Null does nothing.
ZELVAN_C_API void zelvan_delete_line_types(CLineTypeDefList* list);

/// Returns the number of fragments of a line type, 0 to 20; -1 if no line type has that index.
ZELVAN_C_API int zelvan_count_fragments(const CLineTypeDefList* list, unsigned int index);

/// Returns the length of fragment `i` of a line type; -1.0 if there is no such fragment or type.
///
/// Fragments are counted from 0: even ones are dashes, odd ones gaps. The time grows with `i`.
ZELVAN_C_API double zelvan_get_fragment(const CLineTypeDefList* list, unsigned int index, int i);

/// Returns the pattern length of a line type; -1.0 if there is no such line type.
///
/// It is what `CLineTypeDefinition::GetPatternLength` returns, not the sum of the fragments.
ZELVAN_C_API double zelvan_get_pattern_length(const CLineTypeDefList* list, unsigned int index);
