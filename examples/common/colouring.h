/// Colours for countries, so that few neighbours have the same.
#pragma once

#include "common/countries.h"

#include <cstddef>
#include <vector>

namespace example {

/// Returns an index below `n_colours` for each country, so that few neighbours have the same one.
///
/// The countries choose in turn, and no choice is changed later. So neighbours may have the same
/// colour even if `n_colours` would suffice for all to differ. Neighbours are countries whose
/// outlines share a vertex. Requires: `n_colours` above zero.
std::vector<std::size_t> colour_apart(World& world, std::size_t n_colours);

}  // namespace example
