// Measures distances and extents of curves, compared with the same arithmetic in one loop by hand.
// Also measures the distance of two points, where a call costs more than the work.

#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>

#include "contest.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

utl_conic_t ellipse = {0.25, 0.1, 1.0, -1.0, 0.5, -4.0, {4.0, 1.0}, {-2.0, 1.0}, 0};

// Computes the samples as a user would do by hand: brings the ellipse into its standard form, and
// calls cos and sin for angles at equal steps.
template <class Visit>
void each_sample(Visit visit) {
  utl_ellipse_t form;
  utl_standard_ellipse(&ellipse, &form);
  const int count = 1 + static_cast<int>(std::fabs(form.sweep) / 0.087);
  const double step = form.sweep / (count - 1);
  double t = 0.0;
  for (int i = 0; i < count; ++i, t += step) {
    const double u = std::cos(t + form.start) * form.axis_x - form.off_x;
    const double v = std::sin(t + form.start) * form.axis_y - form.off_y;
    visit(real_pt_t{u * form.cos_rot - v * form.sin_rot, v * form.cos_rot + u * form.sin_rot});
  }
}

double estimate(double dx, double dy) {
  dx = std::fabs(dx), dy = std::fabs(dy);
  return dx > dy ? 0.96 * dx + 0.398 * dy : 0.96 * dy + 0.398 * dx;
}

double distance_by_hand(const real_pt_t& p) {
  double nearest = HUGE_VAL;
  each_sample(
      [&](const real_pt_t& q) { nearest = std::min(nearest, estimate(p.x - q.x, p.y - q.y)); });
  return nearest;
}

void extent_by_hand(real_pt_t* max, real_pt_t* min) {
  *max = *min = ellipse.start;
  const auto grow = [&](const real_pt_t& q) {
    max->x = std::max(max->x, q.x), max->y = std::max(max->y, q.y);
    min->x = std::min(min->x, q.x), min->y = std::min(min->y, q.y);
  };
  grow(ellipse.end);
  each_sample(grow);
}

real_pt_t point = {3.0, -7.0};

/// Returns the point of `all` that is nearest to `point`, the first one if several are. That is
/// what the approximate distances of the library are for.
template <class Distance>
const real_pt_t* nearest_of(std::vector<real_pt_t>& all, Distance distance) {
  const real_pt_t* found = nullptr;
  double nearest = HUGE_VAL;
  for (real_pt_t& p : all) {
    const double d = distance(p);
    if (d < nearest) nearest = d, found = &p;
  }
  return found;
}

double by_library(real_pt_t& p) { return utl_point_point(&p, &point); }
double by_hand(const real_pt_t& p) { return estimate(p.x - point.x, p.y - point.y); }
double by_max_and_min(const real_pt_t& p) {
  const double dx = std::fabs(p.x - point.x), dy = std::fabs(p.y - point.y);
  return 0.96 * std::max(dx, dy) + 0.398 * std::min(dx, dy);
}

// Each search compares the same points in the same order. With a thousand of them, the branch
// predictor learns which way each branch goes; with a hundred thousand it can't.
void nearest_point(int n) {
  const auto points = std::make_shared<std::vector<real_pt_t>>();
  std::mt19937_64 random(1);
  for (int i = 0; i < n; ++i) {
    points->push_back(
        {static_cast<double>(random() % 10'000), static_cast<double>(random() % 9'999)});
  }
  const auto with = [points](auto distance) {
    return [points, distance] { benchmark::DoNotOptimize(nearest_of(*points, distance)); };
  };
  bench::contest(
      "distance to one of " + std::to_string(n) + " points",
      [points] {
        const real_pt_t* const found = nearest_of(*points, by_library);
        return found == nearest_of(*points, by_hand) &&
               found == nearest_of(*points, by_max_and_min);
      },
      {{"zelvan", with([](real_pt_t& p) { return by_library(p); })},
       {"plain loop, inline", with([](real_pt_t& p) { return by_hand(p); })},
       {"max and min, inline", with([](real_pt_t& p) { return by_max_and_min(p); })}},
      n);
}

const bench::Rows rows([] {
  bench::contest(
      "distance to an ellipse",
      [] { return utl_point_conarc(&point, &ellipse) == distance_by_hand(point); },
      {{"zelvan", [] { benchmark::DoNotOptimize(utl_point_conarc(&point, &ellipse)); }},
       {"the same loop inline", [] { benchmark::DoNotOptimize(distance_by_hand(point)); }}});
  static real_pt_t a, b, c, d;
  const auto ours = [] { utl_maxmin_conic(&ellipse, &a, &b); };
  const auto by_hand = [] { extent_by_hand(&c, &d); };
  bench::contest("extent of an ellipse by samples",
                 [=] {
                   ours(), by_hand();
                   return a.x == c.x && a.y == c.y && b.x == d.x && b.y == d.y;
                 },
                 {{"zelvan", ours}, {"the same loop inline", by_hand}});
  nearest_point(1000);
  nearest_point(100'000);
});

}  // namespace
