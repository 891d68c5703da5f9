/// Line types for callers that reach the library by flat names: read fragment by fragment.
///
/// What is here belongs to `CLineTypeDefList` and its definitions. Asking changes nothing, so any
/// number of threads may ask one list. Requires, except where a null pointer is named: none.
#pragma once

#include <zelvan/export.h>
#include <zelvan/linetypes/line_type_list.h>

/// Makes a table of the 13 built-in line types; null if the heap refuses it.
/// It goes back with `zelvan_delete_line_types`.
ZELVAN_C_API CLineTypeDefList* zelvan_new_line_types();

/// Releases a table. Null does nothing.
ZELVAN_C_API void zelvan_delete_line_types(CLineTypeDefList* list);

/// Returns the number of fragments of the line type of that index, 0 to 20; -1 if there is none.
ZELVAN_C_API int zelvan_count_fragments(const CLineTypeDefList* list, unsigned int index);

/// Returns the length of fragment `i`, counted from 0, of a line type: an even one is a dash, an
/// odd one a gap. -1.0 if there is no such line type or fragment.
ZELVAN_C_API double zelvan_get_fragment(const CLineTypeDefList* list, unsigned int index, int i);

/// Returns the pattern length of a line type, as `CLineTypeDefinition::GetPatternLength`; -1.0 if
/// there is no such line type.
ZELVAN_C_API double zelvan_get_pattern_length(const CLineTypeDefList* list, unsigned int index);
