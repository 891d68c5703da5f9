/// What composing a matrix and reading it back agree on.
#pragma once

#include <zelvan/detail/short_pi.h>

namespace zelvan {

/// Bits of `Mtx2D::mirror`.
enum : int { mirrored_in_x = 1, mirrored_in_y = 2 };

/// `short_pi / 180.0`, for angles that go in. Angles that come out are multiplied by 180.0 and
/// then divided by `short_pi`, which is not always the same.
constexpr double radians_per_degree = 0.017453292522222223;
static_assert(radians_per_degree == short_pi / 180.0);

}  // namespace zelvan
