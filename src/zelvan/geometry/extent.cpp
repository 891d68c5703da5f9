#include <zelvan/detail/extremes.h>
#include <zelvan/detail/pair.h>
#include <zelvan/detail/same_point.h>
#include <zelvan/detail/short_pi.h>
#include <zelvan/geometry/detail/conic_samples.h>
#include <zelvan/geometry/extent.h>

#include <cmath>
#include <limits>

using zelvan::is_same_point;
using zelvan::larger_or_second;
using zelvan::Pair;
using zelvan::smaller_or_second;

namespace {

struct Range {
  double max, min;

  void widen(double v) {
    if (v > max) max = v;
    if (v < min) min = v;
  }
};

Range range_of(double a, double b) { return {larger_or_second(a, b), smaller_or_second(a, b)}; }

// Where an extreme of an arc lies: at an end, at the end that reaches further, or at the circle's
// own extreme point, which the arc passes.
enum Extreme : unsigned char { at_start, at_end, at_further, on_axis };

struct ArcExtremes {
  Extreme max_x, max_y, min_x, min_y;
};

// Where the extremes of a counter-clockwise arc lie, by the quadrants of its start (row) and end
// (column).
constexpr ArcExtremes extremes_of_arcs[4][4] = {
    {{at_start, at_end, at_end, at_start},
     {at_start, on_axis, at_end, at_further},
     {at_start, on_axis, on_axis, at_end},
     {at_further, on_axis, on_axis, on_axis}},
    {{on_axis, at_further, on_axis, on_axis},
     {at_start, at_start, at_end, at_end},
     {at_further, at_start, on_axis, at_end},
     {at_end, at_start, on_axis, on_axis}},
    {{on_axis, at_end, at_start, on_axis},
     {on_axis, on_axis, at_further, on_axis},
     {at_end, at_start, at_start, at_end},
     {at_end, at_further, at_start, on_axis}},
    {{on_axis, at_end, at_further, at_start},
     {on_axis, on_axis, at_end, at_start},
     {on_axis, on_axis, on_axis, at_further},
     {at_end, at_end, at_start, at_start}},
};

double maximum(Extreme where, double start, double end, double axis) {
  if (where == on_axis) return axis;
  if (where == at_further) return larger_or_second(start, end);
  return where == at_start ? start : end;
}

double minimum(Extreme where, double start, double end, double axis) {
  return where == at_further ? smaller_or_second(start, end) : maximum(where, start, end, axis);
}

// Returns the angle of `p` about `center`, from 0 up to a whole turn.
double turn_about(const real_pt_t& center, const real_pt_t& p) {
  const double angle = std::atan2(p.y - center.y, p.x - center.x);
  return angle < 0.0 ? angle + zelvan::short_two_pi : angle;
}

// Returns the quadrant of an angle. An end just below due east can round to a whole turn, which
// would be quadrant 4; it belongs to quadrant 3.
int quadrant_of(double turn) {
  const int quadrant = static_cast<int>((turn + turn) / zelvan::short_pi);
  return quadrant < 4 ? quadrant : 3;
}

void fold_in(double* coefficients, double t, Range* range) {
  if (t > 0.0 && t < 1.0) range->widen(utl_evaluate_cubic(coefficients, t));
}

Range cubic_range(double* coefficients) {
  const double a = coefficients[0];
  const double b = coefficients[1];
  const double c = coefficients[2];
  const double d = coefficients[3];
  Range range = range_of(d, b + a + c + d);
  if (a == 0.0) {
    fold_in(coefficients, b == 0.0 ? -c : -c / (b + b), &range);
    return range;
  }
  const double three_a = 3.0 * a;
  const double discriminant = b * b - three_a * c;
  if (discriminant < 0.0) return range;
  const double root = std::sqrt(discriminant);
  fold_in(coefficients, (root - b) / three_a, &range);
  fold_in(coefficients, (-b - root) / three_a, &range);
  return range;
}

}  // namespace

void utl_maxmin_arc(real_pt_t* center, float radius, real_pt_t* a, real_pt_t* b, short clockwise,
                    real_pt_t* max, real_pt_t* min) {
  const real_pt_t c = *center;
  const real_pt_t start = clockwise == 0 ? *a : *b;
  const real_pt_t end = clockwise == 0 ? *b : *a;
  const double r = radius;
  if (is_same_point(start, c) || is_same_point(end, c)) {
    *max = c;
    *min = c;
    return;
  }
  const double start_turn = turn_about(c, start);
  const double end_turn = turn_about(c, end);
  if (std::isnan(start_turn) || std::isnan(end_turn)) {
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    *max = {nan, nan};
    *min = {nan, nan};
    return;
  }
  const int from = quadrant_of(start_turn);
  const int to = quadrant_of(end_turn);
  const bool all_round = from == to && start_turn >= end_turn;
  const ArcExtremes at =
      all_round ? ArcExtremes{on_axis, on_axis, on_axis, on_axis} : extremes_of_arcs[from][to];
  *max = {maximum(at.max_x, start.x, end.x, c.x + r), maximum(at.max_y, start.y, end.y, c.y + r)};
  *min = {minimum(at.min_x, start.x, end.x, c.x - r), minimum(at.min_y, start.y, end.y, c.y - r)};
}

void utl_maxmin_circle(real_pt_t* center, double radius, real_pt_t* max, real_pt_t* min) {
  const real_pt_t c = *center;
  *max = {c.x + radius, c.y + radius};
  *min = {c.x - radius, c.y - radius};
}

void utl_maxmin_conic(utl_conic_t* conic, real_pt_t* max, real_pt_t* min) {
  const Pair start = {conic->start.x, conic->start.y};
  const Pair end = {conic->end.x, conic->end.y};
  Pair high = start > end ? start : end;
  Pair low = start < end ? start : end;
  zelvan::visit_conic_samples(conic, [&](const real_pt_t& sample) {
    const Pair v = {sample.x, sample.y};
    high = v > high ? v : high;
    low = v < low ? v : low;
  });
  *max = {high[0], high[1]};
  *min = {low[0], low[1]};
}

void utl_maxmin_cubic(double* coefficients, real_pt_t* max, real_pt_t* min) {
  const Range x = cubic_range(coefficients);
  const Range y = cubic_range(coefficients + 4);
  *max = {x.max, y.max};
  *min = {x.min, y.min};
}

void utl_maxmin_rotrect(real_pt_t* center, double* box, double angle) {
  const double cosine = std::cos(angle);
  const double sine = std::sin(angle);
  const auto turned = [&](double x, double y) -> real_pt_t {
    const double dx = x - center->x;
    const double dy = y - center->y;
    return {dx * cosine - dy * sine + center->x, dx * sine + dy * cosine + center->y};
  };
  const real_pt_t first = turned(box[0], box[1]);
  const real_pt_t others[] = {turned(box[0], box[3]), turned(box[2], box[3]),
                              turned(box[2], box[1])};
  Range x = {first.x, first.x};
  Range y = {first.y, first.y};
  for (const real_pt_t& corner : others) {
    x.widen(corner.x);
    y.widen(corner.y);
  }
  box[0] = x.min;
  box[1] = y.min;
  box[2] = x.max;
  box[3] = y.max;
}

double utl_evaluate_cubic(double* coefficients, double t) {
  return ((t * coefficients[0] + coefficients[1]) * t + coefficients[2]) * t + coefficients[3];
}
