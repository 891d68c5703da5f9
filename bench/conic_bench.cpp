// Distances and extents of curves, beside the same arithmetic written in one loop by hand, and the
// distance of two points, where a call costs more than the work.

#include <zelvan/geometry/conic.h>
#include <zelvan/geometry/distance.h>
#include <zelvan/geometry/extent.h>

#include "contest.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

utl_conic_t ellipse = {0.25, 0.1, 1.0, -1.0, 0.5, -4.0, {4.0, 1.0}, {-2.0, 1.0}, 0};

// What a user would write who has the standard form: a loop over angles.
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
std::vector<real_pt_t> points;

double sum_by_library() {
  double sum = 0.0;
  for (real_pt_t& p : points) sum += utl_point_point(&p, &point);
  return sum;
}

double sum_by_hand() {
  double sum = 0.0;
  for (const real_pt_t& p : points) sum += estimate(p.x - point.x, p.y - point.y);
  return sum;
}

const bench::Rows rows([] {
  std::mt19937_64 random(1);
  for (int i = 0; i < 1000; ++i) {
    points.push_back(
        {static_cast<double>(random() % 10'000), static_cast<double>(random() % 9'999)});
  }
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
  bench::contest(
      "distance of two points", [] { return sum_by_library() == sum_by_hand(); },
      {{"zelvan", [] { benchmark::DoNotOptimize(sum_by_library()); }},
       {"plain loop, inline", [] { benchmark::DoNotOptimize(sum_by_hand()); }}},
      1000);
});

}  // namespace
