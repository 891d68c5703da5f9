/// What composing a matrix and reading it back agree on.
#pragma once

namespace zelvan {

/// Bits of `Mtx2D::mirror`.
enum : int { mirrored_in_x = 1, mirrored_in_y = 2 };

/// Pi to ten digits, and not the full one: the elements of a turned matrix and the angle read
/// back from it are stored and compared by callers, down to the last bit.
constexpr double short_pi = 3.141592654;

/// `short_pi / 180.0`, for angles that go in. Angles that come out are multiplied by 180.0 and
/// then divided by `short_pi`, which is not always the same.
constexpr double radians_per_degree = 0.017453292522222223;
static_assert(radians_per_degree == short_pi / 180.0);

}  // namespace zelvan
