#include "common/line_dashes.h"

#include <zelvan/linetypes/line_type_list.h>

namespace example {

std::optional<std::vector<double>> line_dashes(int line_type) {
  constexpr double pixels_per_unit = 0.15;
  CLineTypeDefList line_types;
  CLineTypeDefinition* const found = line_types.GetDefinition(static_cast<unsigned>(line_type));
  if (found == nullptr) return std::nullopt;
  CLineTypeDefPattern pattern = found->GetPattern();
  std::vector<double> dashes;
  if (pattern.GetNumFragments() == 1) return dashes;
  double fragment = pattern.GetFirstFragment();
  for (int n = pattern.GetNumFragments(); n > 0; --n, fragment = pattern.GetNextFragment()) {
    dashes.push_back(fragment * pixels_per_unit);
  }
  return dashes;
}

}  // namespace example
