/// A model of clipping: which places are covered, and where a visible edge is drawn.
#pragma once

#include <zelvan/geometry/clip_functions.h>
#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "support/polygon_set.h"
#include "support/random.h"

#include <complex>

#include <gtest/gtest.h>

using Set = support::Vertices<real_pt_t>;
using Place = std::complex<double>;

inline const real_rect_t upright_and_other_views[] = {
    {{{-4, -4}, {-4, 4}, {4, 4}, {4, -4}}},   {{{-3, 5}, {-1, 5}, {-1, -4}, {-3, -4}}},
    {{{1, -7}, {7, 1}, {-1, 7}, {-7, -1}}},   {{{-5, -2}, {2, -1}, {3, 4}, {-4, 3}}},
    {{{-6, -5}, {6, -5}, {1, -1}, {-1, -1}}},
};

/// Returns what `clip` appends to a set that holds one vertex already. Multiplies the coordinates
/// by `scale` before the call, and divides the result by it.
template <class Clip>
Set clipped(Clip clip, const Set& in, real_rect_t view, double scale = 1) {
  support::SetArrays<real_pt_t> source(in), target(9 * in.size() + 1);
  for (real_pt_t& p : source.points) p = {p.x * scale, p.y * scale};
  for (real_pt_t& p : view.corners) p = {p.x * scale, p.y * scale};
  drw_pset_t from = {static_cast<int>(in.size()), source.points.data(), source.flags.data()};
  drw_pset_t to = {1, target.points.data(), target.flags.data()};
  clip(&from, &to, &view);
  Set out = target.first(to.n_points);
  out.erase(out.begin());
  for (auto& vertex : out) vertex.point = {vertex.point.x / scale, vertex.point.y / scale};
  return out;
}

/// Expects `out` for `in` clipped to the square from (0, 0) to (10, 10). Adds a polygon of one
/// vertex before `in`, and one vertex that no flag closes after it: neither may matter.
template <class Clip>
void expect_rings(Clip clip, Set in, const Set& out, const char* why) {
  in.insert(in.begin(), {{3, 3}, drw_edge_close_visible});
  in.push_back({{1, 1}, drw_edge_visible});
  EXPECT_EQ(clipped(clip, in, {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}}), out)
      << why << ": " << testing::PrintToString(in);
}

template <class Visit>
void for_each_edge(const Set& set, Visit visit) {
  for (std::size_t i = 0, first = 0; i < set.size(); ++i) {
    const bool closes = set[i].flag >= 2;
    const real_pt_t from = set[i].point, to = set.at(closes ? first : i + 1).point;
    visit(Place(from.x, from.y), Place(to.x, to.y), set[i].flag % 2 != 0);
    if (closes) first = i + 1;
  }
}

/// Returns the winding number about a point: the sum of the angles under which it sees the edges.
inline long winding(const Set& set, real_pt_t about) {
  const Place p(about.x, about.y);
  double angle = 0;
  for_each_edge(set, [&](Place a, Place b, bool) { angle += std::arg((b - p) / (a - p)); });
  return std::lround(angle / (2 * M_PI));
}

inline bool is_drawn(const Set& set, Place p) {
  bool is_on_edge = false;
  for_each_edge(set, [&](Place a, Place b, bool is_visible) {
    const double detour = std::abs(p - a) + std::abs(b - p) - std::abs(b - a);
    is_on_edge = is_on_edge || (is_visible && detour < 1e-13);
  });
  return is_on_edge;
}

inline Set border_of(const real_rect_t& view) {
  const auto& [a, b, c, d] = view.corners;
  return {{a, 1}, {b, 1}, {c, 1}, {d, 3}};
}

/// Expects that inside the view `out` has the visible edges of `in` and its winding numbers (turned
/// by `rule` into the expected ones), and that outside it has neither.
inline void expect_clipped(const Set& in, const Set& out, const real_rect_t& view,
                           long (*rule)(long)) {
  SCOPED_TRACE(testing::PrintToString(in) + "\nclipped to " + testing::PrintToString(view) +
               "\nis " + testing::PrintToString(out));
  const Set border = border_of(view);
  for (double y = -8.3; y < 9; y += 1.6717) {
    for (double x = -8.6; x < 9; x += 1.6717) {
      const long wanted = winding(border, {x, y}) == 0 ? 0 : rule(winding(in, {x, y}));
      ASSERT_EQ(rule(winding(out, {x, y})), wanted) << "windings about " << Place(x, y);
    }
  }
  for (const Set* set : {&in, &out}) {
    for_each_edge(*set, [&](Place from, Place to, bool) {
      const Place p = from + 0.3819 * (to - from);
      const bool is_inside = winding(border, {p.real(), p.imag()}) != 0 && !is_drawn(border, p);
      if (std::abs(to - from) < 1e-13) return;  // only a point, which other edges share
      EXPECT_EQ(is_drawn(out, p), is_inside && is_drawn(in, p)) << "visible edge at " << p;
    });
  }
}

inline Set random_ring(support::Random* random) {  // around the origin; it never crosses itself
  Set ring(3 + random->below(random->below(40) == 0 ? 450 : 6));
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const double turn = (i + 0.9 * random->unit()) / ring.size();
    const Place p = std::polar(random->between(1, 9), turn * 2 * M_PI);
    ring[i] = {{p.real(), p.imag()}, random->below(2)};
  }
  ring.back().flag += 2;
  return ring;
}
