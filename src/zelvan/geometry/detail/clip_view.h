/// The rectangle of a view as a convex polygon: where points lie to its sides, and where edges
/// cross them. Each such question is decided exactly, so no two answers contradict each other;
/// only the coordinates of a crossing are rounded.
#pragma once

#include <zelvan/geometry/detail/outline_scan.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

/// A set of sides: bit k stands for side k, which runs from corner k to the next. Corners and
/// sides are counted counter-clockwise; of an upright view the bottom is side 0.
using Sides = unsigned;

inline bool holds(Sides sides, int k) { return (sides >> k & 1) != 0; }
inline int next_side(int k) { return (k + 1) % 4; }
inline int previous_side(int k) { return (k + 3) % 4; }

/// A point and the sides that keep it out. Those that a point lies beyond follow each other
/// around the view, and are never all four.
struct PlacedPoint {
  real_pt_t at;
  Sides beyond;      ///< whose line it lies beyond; none for a point of the view or its border
  Sides not_within;  ///< whose line it lies beyond or on
};

/// Where an edge crosses the border.
struct BorderPoint {
  real_pt_t at;
  Sides on;  ///< two at a corner
  int side;  ///< the one that is crossed
};

class ClipView {
 public:
  /// False for corners that are not finite or do not go round a convex polygon with an area.
  bool set(const real_rect_t& rect);

  /// The view if it is upright, else the upright box around it.
  const ClipBox& box() const { return box_; }
  bool is_upright() const { return is_upright_; }

  const real_pt_t& corner(int k) const { return corners_[k]; }

  /// The two that meet in a corner.
  static Sides sides_at(int corner) { return 1u << corner | 1u << previous_side(corner); }

  PlacedPoint place(const real_pt_t& p) const {
    if (!is_upright_) return place_by_orientation(p);
    const auto sides = [](bool bottom, bool right, bool top, bool left) -> Sides {
      return unsigned{bottom} | unsigned{right} << 1 | unsigned{top} << 2 | unsigned{left} << 3;
    };
    return {p, sides(p.y<box_.bottom, p.x> box_.right, p.y > box_.top, p.x < box_.left),
            sides(p.y <= box_.bottom, p.x >= box_.right, p.y >= box_.top, p.x <= box_.left)};
  }

  /// True when the line through both points has corners of the view on either side. If not,
  /// `*view_is_left` tells where the view lies, seen from `a` towards `b`.
  bool is_split(const real_pt_t& a, const real_pt_t& b, bool* view_is_left) const;

  /// Where the edge between both points, in either direction, passes between outside and inside.
  /// Requires: `outer` beyond some side, and a part of the edge strictly inside.
  BorderPoint crossing(const PlacedPoint& outer, const PlacedPoint& other) const;

 private:
  struct Distance {
    double value;  // positive inside; NaN where it is beyond doubles
    int sign;      // exact
  };

  PlacedPoint place_by_orientation(const real_pt_t& p) const;
  Distance distance(int side, const real_pt_t& p) const;
  double distance_upright(int side, const real_pt_t& p) const;
  real_pt_t crossing_with(int side, const real_pt_t& a, const real_pt_t& b) const;

  real_pt_t corners_[4];
  real_pt_t directions_[4];  // of the sides, of a length near 1; only of a turned view
  ClipBox box_;
  double reach_;  // edges through here are computed from their own ends
  bool is_upright_;
};

}  // namespace zelvan
