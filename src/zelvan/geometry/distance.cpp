#include <zelvan/detail/extremes.h>
#include <zelvan/detail/short_pi.h>
#include <zelvan/geometry/detail/conic_samples.h>
#include <zelvan/geometry/distance.h>

#include <cmath>
#include <utility>

using zelvan::larger_or_second;
using zelvan::smaller_or_second;

namespace {

// The result if there is nothing to measure: larger than any coordinate of a drawing.
constexpr double no_distance = 6.022e+23;

// The octagonal estimate of a length from its absolute differences.
double octagonal(double longer, double shorter) { return 0.96 * longer + 0.398 * shorter; }

double estimate(double dx, double dy) {
  dx = std::fabs(dx);
  dy = std::fabs(dy);
  // In this order of arguments, one of the two functions returns the NaN if there is one.
  return octagonal(larger_or_second(dx, dy), smaller_or_second(dy, dx));
}

double estimate(const real_pt_t& p, const real_pt_t& q) { return estimate(p.x - q.x, p.y - q.y); }

real_pt_t midpoint(const real_pt_t& p, const real_pt_t& q) {
  return {(p.x + q.x) * 0.5, (p.y + q.y) * 0.5};
}

// Returns the nearest point of the segment from `low` to `high`, which are ordered by x and then by
// y. Vertical and horizontal segments are exact. On any other, the foot of the perpendicular is the
// nearest point if its x is between those of the ends, else the end at that side; its y is not
// tested.
real_pt_t nearest_on_segment(const real_pt_t& p, const real_pt_t& low, const real_pt_t& high) {
  const double dx = high.x - low.x;
  const double dy = high.y - low.y;
  if (dx == 0.0) return {low.x, p.y > high.y ? high.y : larger_or_second(low.y, p.y)};
  if (dy == 0.0) return {p.x > high.x ? high.x : larger_or_second(low.x, p.x), low.y};
  const double foot_x =
      ((p.y - low.y) * (dy * dx) + (dx * dx) * p.x + low.x * (dy * dy)) / (dy * dy + dx * dx);
  if (foot_x < low.x) return low;
  if (foot_x > high.x) return high;
  return {foot_x, (foot_x - low.x) / dx * dy + low.y};
}

double angle_about(const real_pt_t& center, const real_pt_t& p) {
  return std::atan2(p.y - center.y, p.x - center.x);
}

}  // namespace

double utl_point_point(real_pt_t* p, real_pt_t* q) { return estimate(*p, *q); }

double utl_point_line(real_pt_t* p, real_pt_t* a, real_pt_t* b) {
  const bool a_is_high = a->x > b->x || (a->x == b->x && a->y > b->y);
  const real_pt_t& low = a_is_high ? *b : *a;
  const real_pt_t& high = a_is_high ? *a : *b;
  return estimate(*p, nearest_on_segment(*p, low, high));
}

// The larger of two excesses: the distance to each centre line, less half the box's extent across
// that line.
double utl_point_box(real_pt_t* p, real_pt_t* box) {
  real_pt_t bottom = midpoint(box[0], box[1]);
  real_pt_t top = midpoint(box[2], box[3]);
  real_pt_t left = midpoint(box[2], box[0]);
  real_pt_t right = midpoint(box[3], box[1]);
  const double d1 = utl_point_line(p, &bottom, &top) - 0.5 * estimate(box[0], box[1]);
  const double d2 = utl_point_line(p, &left, &right) - 0.5 * estimate(box[0], box[2]);
  const double d = larger_or_second(d1, d2);
  return d < 0.0 ? 0.0 : d;
}

double utl_point_circle(real_pt_t* p, real_pt_t* center, double radius) {
  const double dx = p->x - center->x;
  const double dy = p->y - center->y;
  return std::fabs(std::sqrt(dx * dx + dy * dy) - radius);
}

double utl_point_circarc(real_pt_t* p, real_pt_t* center, double radius, real_pt_t* a, real_pt_t* b,
                         short clockwise) {
  const real_pt_t* start = a;
  const real_pt_t* end = b;
  if (clockwise != 0) std::swap(start, end);
  double point_angle = angle_about(*center, *p);
  const double start_angle = angle_about(*center, *start);
  double end_angle = angle_about(*center, *end);
  while (start_angle > end_angle) end_angle += zelvan::short_two_pi;
  while (start_angle > point_angle) point_angle += zelvan::short_two_pi;
  if (point_angle > end_angle) {
    return smaller_or_second(estimate(*p, *start), estimate(*p, *end));
  }
  return utl_point_circle(p, center, radius);
}

double utl_point_conarc(real_pt_t* p, utl_conic_t* conic) {
  double nearest = no_distance;
  const char type = zelvan::visit_conic_samples(conic, [&](const real_pt_t& sample) {
    // A branch predicts well here: along an arc the same difference stays the larger for long.
    const double dx = std::fabs(p->x - sample.x);
    const double dy = std::fabs(p->y - sample.y);
    const double distance = dx > dy ? octagonal(dx, dy) : octagonal(dy, dx);
    if (distance < nearest) nearest = distance;
  });
  return type == utl_conic_line ? utl_point_line(p, &conic->start, &conic->end) : nearest;
}
