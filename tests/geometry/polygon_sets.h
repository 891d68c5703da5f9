/// Polygon sets for clipping, and what to clip them to.
#pragma once

#include <zelvan/transforms/records.h>

#include "support/random.h"

#include <cmath>
#include <utility>
#include <vector>

struct PolygonSet {
  std::vector<real_pt_t> points;
  std::vector<int> flags;

  void add(real_pt_t p, int flag) {
    points.push_back(p);
    flags.push_back(flag);
  }
  drw_pset_t record() { return {static_cast<int>(points.size()), points.data(), flags.data()}; }
};

/// Up to `most` vertices: on small whole numbers, with vertices on the sides and corners of the
/// rectangle all the time, in general position, close to the tolerances, with huge, tiny and not
/// even numbers, and on walks that stay to one side for a while. Some outlines cross a side so
/// often that the crossings are sorted, many of them at the same place.
inline std::pair<PolygonSet, real_rect_t> set_on_rectangle(support::Random& random, int most) {
  constexpr double e = 1.1920928955078125e-07, tiny = 0x1p-126;
  constexpr int exponents[] = {-1060, -537, -64, -63, -25, -24, -23, -22, 300, 511, 1020};
  const int kind = random.below(8), step = kind == 7;
  const double scale = kind == 4 ? std::ldexp(1, exponents[random.below(11)]) : 1;
  const double flat = kind == 5 ? std::nextafter(tiny, tiny * random.below(3)) : 1;
  const auto place = [&](int range, int from) {
    const double whole = random.below(range) + from;
    if (kind == 1) return random.between(from, from + range);
    if (kind == 2 && random.below(9) == 0) return random.hard_double();
    if (kind == 3) return whole + (random.below(5) - 2) * e / 2;
    return whole == 0 && random.below(2) == 0 ? -0.0 : whole * scale;
  };
  PolygonSet set;
  const int n = 1 + random.below(most);
  for (int i = 0; i < n; ++i) {
    const int closing = random.below(n / 2 + 2) == 0 ? 2 : 0;
    real_pt_t p = {place(6, -1), place(6, -1) * flat};
    if (i > 0 && (step != 0 || random.below(8) == 0)) {  // a step or none from the last one
      const auto [x, y] = set.points.back();
      p = {x + random.below(2 * step + 1) - step, y + random.below(2 * step + 1) - step};
    }
    set.add(p, random.below(2) + closing);
  }
  // Upright or leaning, in either sense; now and then it is flat or a point.
  const double x = place(2, 0), y = place(2, 0), w = place(9, -4), h = place(9, -4);
  const double leans = random.below(2), lean = leans * place(5, -2), rise = leans * place(5, -2);
  return {set, {{{x, y}, {x + lean, y + h}, {x + lean + w, y + h + rise}, {x + w, y + rise}}}};
}

/// Rings that cross themselves and hold others, on a grid or anywhere, about views that are upright
/// or turned. Every fifth set has values of all kinds and places next to the corners of the view.
inline std::pair<PolygonSet, real_rect_t> set_in_view(support::Random& random, int number) {
  const bool is_on_grid = number % 3 == 0, is_turned = number % 4 > 1, is_hard = number % 5 == 0;
  const double w = 1 + random.below(9);
  const double h = 1 + (is_on_grid ? random.below(8) : random.between(0, 8));
  const double c = is_turned ? random.between(-1, 1) : 1, s = std::sqrt(1 - c * c);
  real_rect_t view;
  for (int i = 0; i < 4; ++i) {
    const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (number % 7 < 3) ? h : -h;
    view.corners[i] = {u * c - v * s, u * s + v * c};
  }
  PolygonSet set;
  for (int rings = 1 + random.below(3); rings > 0; --rings) {
    const double size = random.below(3) == 0 ? 3 : 12;
    for (int n = random.below(random.below(4) == 0 ? 70 : 9); n >= 0; --n) {
      real_pt_t p = {random.between(-size, size), random.between(-size, size)};
      const int corner = is_hard ? random.below(8) : 8;  // or just beside it
      if (corner < 4) p = view.corners[corner];
      for (double* v : {&p.x, &p.y}) {
        if (is_on_grid) *v = std::round(*v);
        if (corner < 4) *v = std::nextafter(*v, random.between(-9, 9));
        if (is_hard && random.below(5) == 0) *v = random.hard_double();
      }
      set.add(p, random.below(2) + (n == 0 ? 2 : 0));
    }
  }
  return {set, view};
}
