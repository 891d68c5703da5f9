/// Colours for countries, so that neighbours differ.
#pragma once

#include "common/countries.h"

#include <cstddef>
#include <vector>

namespace example {

/// Returns an index below `n_colours` for each country. Neighbours have different ones, unless
/// `n_colours` is too small for that.
///
/// Neighbours are countries whose outlines share a vertex. Requires: `n_colours` above zero.
std::vector<std::size_t> colour_apart(World& world, std::size_t n_colours);

}  // namespace example
