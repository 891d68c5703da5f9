/// Which country gets which colour of a palette.
#pragma once

#include "common/countries.h"

#include <cstddef>
#include <vector>

namespace example {

/// For each country an index below `n_colours`, different from those of its neighbours as far
/// as the colours suffice. Neighbours are countries that share a vertex of their outlines.
/// Requires: `n_colours` above zero.
std::vector<std::size_t> colour_apart(World& world, std::size_t n_colours);

}  // namespace example
