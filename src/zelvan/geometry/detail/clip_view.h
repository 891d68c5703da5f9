/// The rectangle of a view as a convex polygon: where points lie relative to its sides, and where
/// edges cross them. Every such decision is exact, so no two contradict each other; only the
/// coordinates of a crossing are rounded.
#pragma once

#include <zelvan/geometry/detail/outline_scan.h>
#include <zelvan/transforms/records.h>

#include <bit>
#include <cmath>

namespace zelvan {

// Side k of a view runs from corner k to the next one. Sides and corners are numbered
// counter-clockwise; an upright view starts at the left, as in `box_side`.

/// Returns true if side `k` is in the set.
inline bool holds(Sides sides, int k) { return (sides >> k & 1) != 0; }
inline int next_side(int k) { return (k + 1) % 4; }
inline int previous_side(int k) { return (k + 3) % 4; }

/// A point, and the sides of the view whose lines it lies beyond. These sides are neighbours around
/// the view, and are never all four.
struct PlacedPoint {
  const real_pt_t* at;
  Sides beyond;      ///< sides whose line the point is beyond; 0 in the view or on its border
  Sides not_within;  ///< sides whose line the point is beyond or on; 0 only inside the view
};

/// Where an edge crosses the border.
struct BorderPoint {
  real_pt_t at;
  Sides on;  ///< the sides that the point lies on: two at a corner
  int side;  ///< the side that is crossed
};

enum class LineSide { left, right, both };

class ClipView {
 public:
  /// Sets the corners. Returns false if they are not finite or are not, in their order, the corners
  /// of a convex polygon.
  bool set(const real_rect_t& rect);

  /// Returns the view if it is upright, else the upright box around it.
  const ClipBox& box() const { return box_; }
  bool is_upright() const { return is_upright_; }

  const real_pt_t& corner(int k) const { return corners_[k]; }

  /// Returns the two sides that meet at a corner.
  static Sides sides_at(int corner) { return 1u << corner | 1u << previous_side(corner); }

  PlacedPoint place(const real_pt_t& p) const {
    if (!is_upright_) return place_by_orientation(p);
    const SidesOut out = sides_out(box_, p);
    return {&p, out.beyond, out.not_within};
  }

  /// Returns on which side of the line from `a` to `b` the view lies. `both` if it has corners left
  /// and right of the line.
  LineSide side_of_line(const real_pt_t& a, const real_pt_t& b) const;

  /// Returns where the edge first crosses the border on the way from `outer` to `other`; the
  /// outline may run along the edge in either direction. Requires: `outer` is beyond some side, and
  /// a part of the edge is strictly inside.
  BorderPoint crossing(PlacedPoint outer, PlacedPoint other) const {
    BorderPoint point;
    const bool is_plain = is_upright_ && (outer.beyond & (outer.beyond - 1)) == 0;
    const int side = std::countr_zero(outer.beyond);
    if (is_plain && cross_upright(side, *outer.at, *other.at, &point)) return point;
    return crossing_in_general(outer, other);
  }

 private:
  bool cross_upright(int side, const real_pt_t& a, const real_pt_t& b, BorderPoint* point) const;
  real_pt_t cross_side(int side, PlacedPoint outer, PlacedPoint other) const;
  BorderPoint crossing_in_general(PlacedPoint outer, PlacedPoint other) const;
  PlacedPoint place_by_orientation(const real_pt_t& p) const;
  int sign_inside(int side, const real_pt_t& p) const;

  real_pt_t corners_[4];
  real_pt_t directions_[4];  // of the sides, scaled to a length near 1; unset if upright
  ClipBox box_;
  real_pt_t centre_;  // the origin of the computations in `cross_upright`
  real_pt_t reach_;   // the limit for `WeighedPoint::is_within`, by axis
  bool is_upright_;
};

/// Returns `v`, or the nearer bound if it lies outside. The bounds may come in either order.
inline double clamp(double v, double a, double b) {
  const double low = a < b ? a : b, high = a > b ? a : b;
  const double raised = low > v ? low : v;
  return high < raised ? high : raised;
}

/// A point between two ends as their weighted mean: the weight of each end is the distance of the
/// other one.
///
/// The error is at most 7 roundings of the same mean of |a| and |b|. If the ends are far from 0 and
/// on different sides of it, that can be far larger than the point itself.
struct WeighedPoint {
  double a_distance, b_distance;

  double sum() const { return a_distance + b_distance; }
  double at(double a, double b) const { return (a * b_distance + b * a_distance) / sum(); }

  /// True if the mean of |a| and |b| is at most `reach`, and no overflow or underflow matters. If
  /// not, `at` may be too inexact.
  bool is_within(double reach, double a, double b) const {
    // A product that underflows has an error of at most 2^-1075, negligible beside `least`.
    // `largest` keeps out infinity.
    constexpr double least = 0x1p-900, largest = 0x1p1000;
    const double limit = reach * sum();
    return std::fabs(a) * b_distance + std::fabs(b) * a_distance <= limit && limit >= least &&
           limit <= largest;
  }
};

inline bool ClipView::cross_upright(int side, const real_pt_t& a, const real_pt_t& b,
                                    BorderPoint* point) const {
  const double bounds[] = {box_.left, box_.bottom, box_.right, box_.top};
  const bool is_vertical = side == left_side || side == right_side;
  const double along_a = is_vertical ? a.y : a.x, along_b = is_vertical ? b.y : b.x;
  const double centre = is_vertical ? centre_.y : centre_.x;
  const double from_a = along_a - centre, from_b = along_b - centre;
  const WeighedPoint share = {std::fabs((is_vertical ? a.x : a.y) - bounds[side]),
                              std::fabs((is_vertical ? b.x : b.y) - bounds[side])};
  if (!share.is_within(is_vertical ? reach_.y : reach_.x, from_a, from_b)) return false;
  const int low = is_vertical ? bottom_side : left_side, high = low + 2;
  const double along =
      clamp(clamp(centre + share.at(from_a, from_b), along_a, along_b), bounds[low], bounds[high]);
  point->at = is_vertical ? real_pt_t{bounds[side], along} : real_pt_t{along, bounds[side]};
  point->on =
      1u << side | unsigned{along == bounds[low]} << low | unsigned{along == bounds[high]} << high;
  point->side = side;
  return true;
}

}  // namespace zelvan
