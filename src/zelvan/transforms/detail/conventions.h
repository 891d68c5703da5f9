/// Conventions that composing and decomposing a matrix share.
#pragma once

#include <zelvan/detail/short_pi.h>

namespace zelvan {

/// Bits of `Mtx2D::mirror`.
enum : int { mirrored_in_x = 1, mirrored_in_y = 2 };

/// `short_pi / 180.0`, for angles that are passed in. Results are multiplied by 180.0 and then
/// divided by `short_pi`, which can round differently.
constexpr double radians_per_degree = 0.017453292522222223;
static_assert(radians_per_degree == short_pi / 180.0);

}  // namespace zelvan
