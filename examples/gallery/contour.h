/// Lines along which a function of the plane has one value.
#pragma once

#include "gallery/canvas.h"

#include <functional>

namespace gallery {

/// Short segments of the line where `value` is `level`, between `low` and `high`, found on a
/// grid of so many cells in each direction (marching squares).
std::vector<Points> contour(const std::function<double(real_pt_t)>& value, double level,
                            real_pt_t low, real_pt_t high, int cells = 200);

}  // namespace gallery
