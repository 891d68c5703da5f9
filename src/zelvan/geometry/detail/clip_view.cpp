#include <zelvan/geometry/detail/clip_view.h>
#include <zelvan/geometry/detail/orientation.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace zelvan {

namespace {

bool is_finite(const real_pt_t& p) { return std::isfinite(p.x) && std::isfinite(p.y); }

bool are_same(const real_pt_t& a, const real_pt_t& b) { return a.x == b.x && a.y == b.y; }

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
  reach_ = 1024.0 * std::max({-left, right, -bottom, top});
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

ClipView::Distance ClipView::distance(int side, const real_pt_t& p) const {
  const real_pt_t& start = corners_[side];
  const double left = directions_[side].x * (p.y - start.y);
  const double right = directions_[side].y * (p.x - start.x);
  const double value = left - right;
  if (std::fabs(value) > orientation_noise(left, right)) return {value, sign_of(value)};
  return {value, sign_of(exact_orientation(start, corners_[next_side(side)], p).fraction)};
}

PlacedPoint ClipView::place_by_orientation(const real_pt_t& p) const {
  PlacedPoint placed = {&p, 0, 0};
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
  point = {{}, 1u << side, side};
  if (is_upright_ || !cross_turned(side, a, b, &point.at)) {
    point.at = exact_crossing(side, a, b);
  }
  const int end = next_side(side);
  // Rounding must lead neither out of the edge's box nor off the side.
  point.at = clamp_both(clamp_both(point.at, a, b), corners_[side], corners_[end]);
  if (are_same(point.at, corners_[side])) point.on |= sides_at(side);
  if (are_same(point.at, corners_[end])) point.on |= sides_at(end);
  return point;
}

bool ClipView::cross_turned(int side, const real_pt_t& a, const real_pt_t& b,
                            real_pt_t* point) const {
  const WeighedPoint share = {std::fabs(distance(side, a).value),
                              std::fabs(distance(side, b).value)};
  *point = {share.at(a.x, b.x), share.at(a.y, b.y)};
  return share.is_within(reach_, a.x, b.x) && share.is_within(reach_, a.y, b.y);
}

// The same along the side: the share of a corner is the other corner's distance from the edge,
// which is exact but for one rounding.
real_pt_t ClipView::exact_crossing(int side, const real_pt_t& a, const real_pt_t& b) const {
  const real_pt_t& start = corners_[side];
  const real_pt_t& end = corners_[next_side(side)];
  const WideNumber of_start = exact_orientation(a, b, start);
  const WideNumber of_end = exact_orientation(a, b, end);
  const int exponent = std::max(of_start.exponent, of_end.exponent);
  const double start_distance =
      std::fabs(std::scalbn(of_start.fraction, of_start.exponent - exponent));
  const double end_distance = std::fabs(std::scalbn(of_end.fraction, of_end.exponent - exponent));
  const double start_share = end_distance / (start_distance + end_distance);
  const double end_share = start_distance / (start_distance + end_distance);
  return {start.x * start_share + end.x * end_share, start.y * start_share + end.y * end_share};
}

}  // namespace zelvan
