#include <zelvan/geometry/detail/clip_view.h>
#include <zelvan/geometry/detail/orientation.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelvan {

namespace {

bool is_finite(const real_pt_t& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

bool are_same(const real_pt_t& a, const real_pt_t& b) { return a.x == b.x && a.y == b.y; }

// True when a ring starts along x and turns by right angles.
bool is_upright_from(const real_pt_t& a, const real_pt_t& b, const real_pt_t& c,
                     const real_pt_t& d) {
  return a.y == b.y && b.x == c.x && c.y == d.y && d.x == a.x;
}

// The direction from `a` to `b`, scaled by a power of 2, so that it has each coordinate within
// rounding. Where that is beyond doubles they are NaN.
real_pt_t direction(const real_pt_t& a, const real_pt_t& b) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  const int exponent = std::ilogb(std::max(std::fabs(dx), std::fabs(dy)));
  const auto scaled = [=](double d) {
    const double v = std::scalbn(d, -exponent);
    const bool is_exact = d == 0.0 || (std::fabs(v) >= 0x1p-500 && std::fabs(v) <= 2.0);
    return is_exact ? v : std::numeric_limits<double>::quiet_NaN();
  };
  return {scaled(dx), scaled(dy)};
}

double clamp(double v, double a, double b) {
  const double low = a < b ? a : b, high = a < b ? b : a;
  return v < low ? low : v > high ? high : v;
}

real_pt_t clamp(const real_pt_t& p, const real_pt_t& a, const real_pt_t& b) {
  return {clamp(p.x, a.x, b.x), clamp(p.y, a.y, b.y)};
}

}  // namespace

bool ClipView::set(const real_rect_t& rect) {
  std::copy_n(rect.corners, 4, corners_);
  const auto& [a, b, c, d] = corners_;
  if (!is_finite(a) || !is_finite(b) || !is_finite(c) || !is_finite(d)) return false;
  const auto [left, right] = std::minmax({a.x, b.x, c.x, d.x});
  const auto [bottom, top] = std::minmax({a.y, b.y, c.y, d.y});
  box_ = {left, bottom, right, top};
  reach_ = 1024.0 * std::max({-left, right, -bottom, top});
  is_upright_ = is_upright_from(a, b, c, d) || is_upright_from(b, c, d, a);
  if (is_upright_) {
    corners_[0] = {left, bottom};
    corners_[1] = {right, bottom};
    corners_[2] = {right, top};
    corners_[3] = {left, top};
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

ClipView::Distance ClipView::distance(int side, const real_pt_t& p) const {
  const real_pt_t& start = corners_[side];
  const double left = directions_[side].x * (p.y - start.y);
  const double right = directions_[side].y * (p.x - start.x);
  const double value = left - right;
  if (std::fabs(value) > orientation_noise(left, right)) return {value, sign_of(value)};
  return {value, sign_of(exact_orientation(start, corners_[next_side(side)], p).fraction)};
}

PlacedPoint ClipView::place_by_orientation(const real_pt_t& p) const {
  PlacedPoint placed = {p, 0, 0};
  for (int k = 0; k < 4; ++k) {
    const int sign = distance(k, p).sign;
    placed.beyond |= unsigned{sign < 0} << k;
    placed.not_within |= unsigned{sign <= 0} << k;
  }
  return placed;
}

bool ClipView::is_split(const real_pt_t& a, const real_pt_t& b, bool* view_is_left) const {
  bool has_left = false, has_right = false;
  for (const real_pt_t& c : corners_) {
    const int sign = orientation_sign(a, b, c);
    has_left = has_left || sign > 0;
    has_right = has_right || sign < 0;
  }
  *view_is_left = has_left;
  return has_left && has_right;
}

// Of two neighbouring sides that the outer end lies beyond, the edge crosses one on the border
// and the other's line outside; the corner between them tells which.
BorderPoint ClipView::crossing(const PlacedPoint& outer, const PlacedPoint& other) const {
  int side = 0;
  while (!holds(outer.beyond, side) || holds(outer.beyond, previous_side(side))) ++side;
  for (int next = next_side(side); holds(outer.beyond, next); next = next_side(side)) {
    const int sign = orientation_sign(outer.at, other.at, corners_[next]);
    if (sign == 0) return {corners_[next], sides_at(next), side};
    if (sign < 0) break;
    side = next;
  }
  BorderPoint point = {crossing_with(side, outer.at, other.at), 1u << side, side};
  for (const int end : {side, next_side(side)}) {
    if (are_same(point.at, corners_[end])) point.on |= sides_at(end);
  }
  return point;
}

double ClipView::distance_upright(int side, const real_pt_t& p) const {
  switch (side) {
    case bottom_side:
      return p.y - box_.bottom;
    case right_side:
      return box_.right - p.x;
    case top_side:
      return box_.top - p.y;
    default:
      return p.x - box_.left;
  }
}

// An end's share in the crossing is the distance of the other one. Nothing cancels in this
// unless far ends lie on both sides of an axis and the view is near to it: with ends up to the
// 1024-fold of what the view reaches, some ten bits. Beyond that, and where the distances are
// beyond doubles, the same is done along the side: the share of a corner is the exact distance of
// the other corner from the edge. Either form gives an edge and its reverse the same point.
real_pt_t ClipView::crossing_with(int side, const real_pt_t& a, const real_pt_t& b) const {
  const real_pt_t& start = corners_[side];
  const real_pt_t& end = corners_[next_side(side)];
  const double from_a =
      std::fabs(is_upright_ ? distance_upright(side, a) : distance(side, a).value);
  const double from_b =
      std::fabs(is_upright_ ? distance_upright(side, b) : distance(side, b).value);
  const double sum = from_a + from_b;
  const double of_a = from_b / sum, of_b = from_a / sum;
  const bool is_near = std::fabs(a.x) * of_a + std::fabs(b.x) * of_b <= reach_ &&
                       std::fabs(a.y) * of_a + std::fabs(b.y) * of_b <= reach_;
  real_pt_t crossing = {a.x * of_a + b.x * of_b, a.y * of_a + b.y * of_b};
  if (!is_near || !(sum > 0.0 && sum < std::numeric_limits<double>::infinity())) {
    const WideNumber of_end = exact_orientation(a, b, start);
    const WideNumber of_start = exact_orientation(a, b, end);
    const int exponent = std::max(of_start.exponent, of_end.exponent);
    const double end_weight = std::fabs(std::scalbn(of_end.fraction, of_end.exponent - exponent));
    const double start_weight =
        std::fabs(std::scalbn(of_start.fraction, of_start.exponent - exponent));
    const double weight = start_weight + end_weight;
    crossing.x = start.x * (start_weight / weight) + end.x * (end_weight / weight);
    crossing.y = start.y * (start_weight / weight) + end.y * (end_weight / weight);
  }
  // Rounding must lead neither out of the edge's box nor off the side.
  return clamp(clamp(crossing, a, b), start, end);
}

}  // namespace zelvan
