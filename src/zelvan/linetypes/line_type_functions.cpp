#include <zelvan/linetypes/line_type_functions.h>

#include <new>

namespace {

// `GetDefinition` only reads the list, but isn't declared const.
CLineTypeDefinition* find(const CLineTypeDefList* list, unsigned int index) {
  return const_cast<CLineTypeDefList*>(list)->GetDefinition(index);
}

}  // namespace

CLineTypeDefList* zelvan_new_line_types() { return new (std::nothrow) CLineTypeDefList; }

void zelvan_delete_line_types(CLineTypeDefList* list) { delete list; }

int zelvan_count_fragments(const CLineTypeDefList* list, unsigned int index) {
  CLineTypeDefinition* const definition = find(list, index);
  return definition == nullptr ? -1 : definition->GetPattern().GetNumFragments();
}

double zelvan_get_fragment(const CLineTypeDefList* list, unsigned int index, int i) {
  if (i < 0 || i >= zelvan_count_fragments(list, index)) return -1.0;
  CLineTypeDefPattern pattern = find(list, index)->GetPattern();  // a copy, with its own cursor
  double length = pattern.GetFirstFragment();
  for (; i > 0; --i) length = pattern.GetNextFragment();
  return length;
}

double zelvan_get_pattern_length(const CLineTypeDefList* list, unsigned int index) {
  const CLineTypeDefinition* const definition = find(list, index);
  return definition == nullptr ? -1.0 : definition->GetPatternLength();
}
