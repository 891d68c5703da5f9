/// Checks the results of clipping to a view, independently of the library's method.
#pragma once

#include <zelvan/transforms/records.h>

#include <algorithm>
#include <cmath>
#include <vector>

struct PolygonSet {
  std::vector<real_pt_t> points;
  std::vector<int> flags;
};

template <class Visit>
void for_each_edge(const PolygonSet& set, Visit visit) {
  for (std::size_t i = 0, first = 0; i < set.flags.size(); ++i) {
    const bool closes = set.flags[i] > 1;
    visit(set.points[i], set.points[closes ? first : i + 1], set.flags[i] % 2);
    if (closes) first = i + 1;
  }
}

inline double area(real_pt_t a, real_pt_t b, real_pt_t c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}
inline double length(real_pt_t a, real_pt_t b) {
  return std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y));
}

inline int winding(const PolygonSet& set, real_pt_t p) {
  int sum = 0;
  for_each_edge(set, [&](real_pt_t a, real_pt_t b, int) {
    if (a.y <= p.y && b.y > p.y) sum += area(a, b, p) > 0;
    if (a.y > p.y && b.y <= p.y) sum -= area(a, b, p) < 0;
  });
  return sum;
}

class ClipJudge {
 public:
  ClipJudge(const real_rect_t& view, double rounding) : c_(view.corners), rounding_(rounding) {
    for (int k = 0; k < 4; ++k) {
      scale_[k] = 1 / std::copysign(length(c_[k], c_[(k + 1) % 4]), area(c_[0], c_[1], c_[2]));
    }
  }

  /// Returns true if three things hold: the winding number about each place is kept, so both fill
  /// rules agree; the length of visible edges is right; and each vertex is one of the outline or on
  /// the border, along which no edge is visible.
  bool approves(const PolygonSet& in, const PolygonSet& out,
                const std::vector<real_pt_t>& places) const {
    bool is_right = true;
    for (const real_pt_t p : places) {
      is_right = is_right && winding(out, p) == (depth(p) > 0 ? winding(in, p) : 0);
    }
    double visible = 0;
    for_each_edge(in, [&](real_pt_t a, real_pt_t b, int flag) {
      if (flag != 0) visible += length_inside(a, b);
    });
    for_each_edge(out, [&](real_pt_t a, real_pt_t b, int flag) {
      visible -= flag * length(a, b);
      const bool may_be_visible = length_inside(a, b) > 0 || length(a, b) < 1e-12;
      const auto is_a = [&](real_pt_t p) { return p.x == a.x && p.y == a.y; };
      const bool is_own = depth(a) > 0 && std::any_of(in.points.begin(), in.points.end(), is_a);
      is_right =
          is_right && (flag == 0 || may_be_visible) && (is_own || std::fabs(depth(a)) <= rounding_);
    });
    return is_right && std::fabs(visible) < 1e-11;
  }

 private:
  /// Returns the distance of a point from the line of a side, negative outside.
  double depth(int k, real_pt_t p) const { return area(c_[k], c_[(k + 1) % 4], p) * scale_[k]; }
  double depth(real_pt_t p) const {
    return std::min({depth(0, p), depth(1, p), depth(2, p), depth(3, p)});
  }

  /// Returns the length of the part of an edge that is inside and not along the border.
  double length_inside(real_pt_t a, real_pt_t b) const {
    double from = 0, to = 1;
    for (int k = 0; k < 4; ++k) {
      const double at_a = depth(k, a), at_b = depth(k, b);
      if (at_a < 1e-12 && at_b < 1e-12) return 0;
      (at_a < at_b ? from : to) = at_a < at_b
                                      ? std::max(from, at_a / (at_a - at_b))
                                      : std::min(to, at_a == at_b ? 1 : at_a / (at_a - at_b));
    }
    return std::max(to - from, 0.0) * length(a, b);
  }

  const real_pt_t* c_;
  double rounding_, scale_[4];
};
