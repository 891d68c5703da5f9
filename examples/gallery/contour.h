/// Contour lines of a function of the plane.
#pragma once

#include "gallery/canvas.h"

#include <functional>

namespace gallery {

/// Returns short segments of the line where `value` is `level`, in the box from `low` to `high`.
///
/// The method is marching squares, on a grid of `cells` by `cells`.
std::vector<Points> contour(const std::function<double(real_pt_t)>& value, double level,
                            real_pt_t low, real_pt_t high, int cells = 200);

}  // namespace gallery
