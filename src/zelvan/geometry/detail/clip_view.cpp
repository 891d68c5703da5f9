#include <zelvan/detail/same_point.h>
#include <zelvan/geometry/detail/clip_view.h>
#include <zelvan/geometry/detail/finite_point.h>
#include <zelvan/geometry/detail/orientation.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelvan {

namespace {

// Returns the direction from `a` to `b`, scaled by a power of 2 to a length near 1. The error of
// each coordinate is the rounding of one subtraction. A coordinate is NaN if scaling it would lose
// digits, and infinite if the subtraction overflows.
real_pt_t direction(const real_pt_t& a, const real_pt_t& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const int exponent = std::ilogb(std::max(std::fabs(dx), std::fabs(dy)));
  const auto scaled = [=](double d) {
    const double v = std::scalbn(d, -exponent);
    const bool is_exact = d == 0.0 || std::fabs(v) >= 0x1p-500;
    return is_exact ? v : std::numeric_limits<double>::quiet_NaN();
  };
  return {scaled(dx), scaled(dy)};
}

// Twice a triangle's area, and an upper bound of its rounding error.
struct Area {
  double size, error_bound;
};

// Computes twice the area of the triangle `a`, `b`, `c` from differences to `a`.
Area area(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c) {
  const double left = (b.x - a.x) * (c.y - a.y);
  const double right = (b.y - a.y) * (c.x - a.x);
  return {std::fabs(left - right), orientation_error_bound(left, right)};
}

// Returns where the edge from `a` to `b` crosses the side from `start` to `end`, as a share of the
// side: 0 at `start`, 1 at `end`. The edge forms a triangle with `start` and one with `end`. The
// areas of these have the ratio of the corners' distances from the crossing. The error is at most
// 27 * 2^-53.
double crossing_share(const real_pt_t& a, const real_pt_t& b, const real_pt_t& start,
                      const real_pt_t& end) {
  constexpr double largest_error = 24 * 0x1p-53;
  const Area of_start = area(a, b, start), of_end = area(a, b, end);
  const double sum = of_start.size + of_end.size;
  const bool fits = sum <= std::numeric_limits<double>::max();
  if (fits && of_start.error_bound + of_end.error_bound <= largest_error * sum)
    return of_start.size / sum;
  const WideNumber wide_start = exact_orientation(a, b, start);
  const WideNumber wide_end = exact_orientation(a, b, end);
  const int exponent = std::max(wide_start.exponent, wide_end.exponent);
  const auto scaled = [=](const WideNumber& v) {
    return std::fabs(std::scalbn(v.fraction, v.exponent - exponent));
  };
  return scaled(wide_start) / (scaled(wide_start) + scaled(wide_end));
}

real_pt_t clamp_both(const real_pt_t& p, const real_pt_t& a, const real_pt_t& b) {
  return {clamp(p.x, a.x, b.x), clamp(p.y, a.y, b.y)};
}

}  // namespace

bool ClipView::set(const real_rect_t& rect) {
  std::copy_n(rect.corners, 4, corners_);
  const auto& [a, b, c, d] = corners_;
  if (!is_finite(a) || !is_finite(b) || !is_finite(c) || !is_finite(d)) return false;
  box_ = box_around(rect.corners, 4);
  const auto& [left, bottom, right, top] = box_;
  // Crossings are computed relative to this centre. On an axis on which the box contains 0, that is
  // 0 instead of the middle, so that whole numbers stay exact.
  const auto middle = [](double low, double high) {
    return low <= 0.0 && high >= 0.0 ? 0.0 : 0.5 * low + 0.5 * high;
  };
  centre_ = {middle(left, right), middle(bottom, top)};
  // `is_within` accepts a mean of distances from the centre of up to 4 widths (or heights) of the
  // box. The error of a crossing is 7 roundings of that mean, so at most 28 roundings of the width.
  // That is less than half a unit in the last place of a coordinate that is 64 times the width.
  reach_ = {4.0 * (right - left), 4.0 * (top - bottom)};
  is_upright_ = zelvan::is_upright(rect);
  if (is_upright_) {
    corners_[0] = {left, top};
    corners_[1] = {left, bottom};
    corners_[2] = {right, bottom};
    corners_[3] = {right, top};
    return left < right && bottom < top;
  }
  const int turn = orientation_sign(a, b, c);
  if (turn == 0 || orientation_sign(b, c, d) != turn || orientation_sign(c, d, a) != turn ||
      orientation_sign(d, a, b) != turn) {
    return false;
  }
  if (turn < 0) std::swap(corners_[1], corners_[3]);
  for (int k = 0; k < 4; ++k) directions_[k] = direction(corners_[k], corners_[next_side(k)]);
  return true;
}

// Returns 1 for a point inside the line of a side, 0 on it, and -1 beyond. A direction that is NaN
// or infinite leads to the exact computation.
int ClipView::sign_inside(int side, const real_pt_t& p) const {
  const real_pt_t& start = corners_[side];
  const double left = directions_[side].x * (p.y - start.y);
  const double right = directions_[side].y * (p.x - start.x);
  const double value = left - right;
  if (std::fabs(value) > orientation_error_bound(left, right)) return sign_of(value);
  return sign_of(exact_orientation(start, corners_[next_side(side)], p).fraction);
}

PlacedPoint ClipView::place_by_orientation(const real_pt_t& p) const {
  PlacedPoint placed = {&p, 0, 0};
  for (int k = 0; k < 4; ++k) {
    const int sign = sign_inside(k, p);
    placed.beyond |= unsigned{sign < 0} << k;
    placed.not_within |= unsigned{sign <= 0} << k;
  }
  return placed;
}

LineSide ClipView::side_of_line(const real_pt_t& a, const real_pt_t& b) const {
  bool has_left = false, has_right = false;
  for (const real_pt_t& c : corners_) {
    const int sign = orientation_sign(a, b, c);
    has_left = has_left || sign > 0;
    has_right = has_right || sign < 0;
  }
  if (has_left && has_right) return LineSide::both;
  return has_left ? LineSide::left : LineSide::right;
}

// If the outer end lies beyond several neighbouring sides, the edge crosses one of them on the
// border, and the lines of the others outside the view. Which one depends on which side of the edge
// their common corners lie.
BorderPoint ClipView::crossing_in_general(PlacedPoint outer, PlacedPoint other) const {
  const real_pt_t& a = *outer.at;
  const real_pt_t& b = *other.at;
  int side = 0;
  while (!holds(outer.beyond, side) || holds(outer.beyond, previous_side(side))) ++side;
  for (int next = next_side(side); holds(outer.beyond, next); next = next_side(side)) {
    const int sign = orientation_sign(a, b, corners_[next]);
    if (sign == 0) return {corners_[next], sides_at(next), side};
    if (sign < 0) break;
    side = next;
  }
  BorderPoint point;
  if (is_upright_ && cross_upright(side, a, b, &point)) return point;
  point = {cross_side(side, outer, other), 1u << side, side};
  const int end = next_side(side);
  // Rounding must not move the point out of the edge's box or off the side.
  point.at = clamp_both(clamp_both(point.at, a, b), corners_[side], corners_[end]);
  if (is_same_point(point.at, corners_[side])) point.on |= sides_at(side);
  if (is_same_point(point.at, corners_[end])) point.on |= sides_at(end);
  return point;
}

// Computes the crossing as a mean of the ends of the side. The ends of the edge, which may be far
// away, are not part of the sum.
real_pt_t ClipView::cross_side(int side, PlacedPoint outer, PlacedPoint other) const {
  const real_pt_t& start = corners_[side];
  const real_pt_t& end = corners_[next_side(side)];
  // Start from the end in the view, if there is one: differences to it are smaller.
  const double share = other.beyond == 0 ? crossing_share(*other.at, *outer.at, start, end)
                                         : crossing_share(*outer.at, *other.at, start, end);
  const double rest = 1.0 - share;
  return {rest * start.x + share * end.x, rest * start.y + share * end.y};
}

}  // namespace zelvan
