#include <zelvan/detail/short_pi.h>
#include <zelvan/geometry/trig.h>

#include <cmath>

void utl_rotate_point(real_pt_t* center, real_pt_t* point, double sine, double cosine) {
  const double dx = point->x - center->x;
  const double dy = point->y - center->y;
  point->x = dx * cosine + center->x - dy * sine;
  point->y = dx * sine + center->y + dy * cosine;
}

double utl_angle2d(double x1, double y1, double x2, double y2) {
  double angle = std::atan2(y2, x2) - std::atan2(y1, x1);
  while (angle > zelvan::short_pi) angle += -zelvan::short_two_pi;
  while (angle < -zelvan::short_pi) angle += zelvan::short_two_pi;
  return angle;
}

void drw_get_trig(int degrees, double* sine, double* cosine) {
  int reduced = degrees % 360;
  if (reduced < 0) reduced += 360;
  const double radians = static_cast<double>(reduced) * zelvan::short_pi / 180.0;
  *sine = std::sin(radians);
  *cosine = std::cos(radians);
}
