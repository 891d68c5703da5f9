#include <zelvan/linetypes/line_type_definition.h>

#include <algorithm>

namespace {

constexpr double no_more_fragments = -1.0;

}  // namespace

CLineTypeDefPattern::CLineTypeDefPattern() = default;

bool CLineTypeDefPattern::AddFragment(double length) {
  const bool is_gap = num_fragments % 2 == 1;
  if (num_fragments == capacity || (is_gap && length == 0.0)) return false;
  fragments[num_fragments++] = length;
  fragment_sum += length;
  return true;
}

double CLineTypeDefPattern::GetFirstFragment() {
  next_fragment = 0;
  return GetNextFragment();
}

double CLineTypeDefPattern::GetNextFragment() {
  return next_fragment == num_fragments ? no_more_fragments : fragments[next_fragment++];
}

int CLineTypeDefPattern::GetNumFragments() { return num_fragments; }

double CLineTypeDefPattern::GetFragmentSum() const { return fragment_sum; }

void CLineTypeDefPattern::RemoveAllFragments() { *this = CLineTypeDefPattern(); }

bool CLineTypeDefPattern::operator==(const CLineTypeDefPattern& other) const {
  return std::equal(fragments, fragments + num_fragments, other.fragments,
                    other.fragments + other.num_fragments);
}

bool CLineTypeDefPattern::operator!=(const CLineTypeDefPattern& other) const {
  return !(*this == other);
}

CLineTypeDefinition::CLineTypeDefinition() = default;

bool CLineTypeDefinition::AddFragment(double length) { return pattern.AddFragment(length); }

void CLineTypeDefinition::RemoveAllFragments() { pattern.RemoveAllFragments(); }

unsigned int CLineTypeDefinition::GetIndex() const { return index; }

void CLineTypeDefinition::SetIndex(unsigned int new_index) { index = new_index; }

double CLineTypeDefinition::GetPatternLength() const { return pattern_length; }

void CLineTypeDefinition::SetPatternLength(double length) { pattern_length = length; }

CLineTypeDefPattern& CLineTypeDefinition::GetPattern() { return pattern; }

void CLineTypeDefinition::SetPattern(CLineTypeDefPattern source) {
  pattern.RemoveAllFragments();
  // Not `pattern = source`: that would take over the cursor of `source` too.
  double length = source.GetFirstFragment();
  for (int n = source.GetNumFragments(); n > 0; --n) {
    pattern.AddFragment(length);
    length = source.GetNextFragment();
  }
}

bool CLineTypeDefinition::operator==(const CLineTypeDefinition& other) const {
  return pattern_length == other.pattern_length && pattern == other.pattern;
}

bool CLineTypeDefinition::operator!=(const CLineTypeDefinition& other) const {
  return !(*this == other);
}
