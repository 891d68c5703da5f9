#include <zelvan/transforms/detail/conventions.h>
#include <zelvan/transforms/mtx2d.h>

#include <cmath>

namespace {

using zelvan::mirrored_in_x;
using zelvan::mirrored_in_y;
using zelvan::short_pi;

// Returns the mirror in the x axis: the identity after `ReflectInX`.
Mtx2D x_mirror() {
  Mtx2D m;
  m.ReflectInX();
  return m;
}

// Reads the matrix as a turn first and a mirror in the x axis after it. Stores whether there is a
// mirror, and returns the matrix without it. Multiplies by the whole mirror instead of negating
// elements, so that an infinite element has the effect that it has in any product.
Mtx2D without_last_mirror(Mtx2D m, unsigned short* mirrored) {
  *mirrored = m.ReversesOrientation();
  return *mirrored ? m * x_mirror() : m;
}

// Reads the matrix as a mirror in the x axis first and a turn after it. Stores whether there is a
// mirror, and returns the matrix without it.
Mtx2D without_first_mirror(Mtx2D m, unsigned short* mirrored) {
  *mirrored = m.ReversesOrientation();
  return *mirrored ? x_mirror() * m : m;
}

int quadrant_code(const Mtx2D& m) {
  if (m.m12 == 0.0) return m.m11 > 0.0 ? 0 : m.m11 < 0.0 ? 2 : -1;
  return m.m12 < 0.0 ? 3 : 1;
}

// Snaps an angle to 0, 90, 180 or 270 degrees if it is less than 0.1 degrees away. An angle between
// 359.9 and 360 becomes 0; exactly 360 stays.
double snap_to_quadrants(double degrees) {
  if (degrees > 0.0 && degrees < 0.1) degrees = 0.0;
  if (degrees > 89.9 && degrees < 90.1) degrees = 90.0;
  if (degrees > 179.9 && degrees < 180.1) degrees = 180.0;
  if (degrees > 269.9 && degrees < 270.1) degrees = 270.0;
  if (degrees > 359.9 && degrees < 360.0) degrees = 0.0;
  return degrees;
}

}  // namespace

void Mtx2D::GetElements(double* m11_out, double* m12_out, double* m21_out, double* m22_out,
                        double* tx_out, double* ty_out) {
  *m11_out = m11;
  *m12_out = m12;
  *m21_out = m21;
  *m22_out = m22;
  *tx_out = tx;
  *ty_out = ty;
}

double Mtx2D::GetScale() { return std::sqrt(m11 * m11 + m12 * m12); }

double Mtx2D::GetRotation() { return std::acos(m11 / std::sqrt(m11 * m11 + m12 * m12)); }

void Mtx2D::GetOrientation(double* angle, int* mirror_out) {
  const double scale = std::sqrt(std::fabs(m11 * m22 - m12 * m21));
  const double a = mirror & mirrored_in_x ? -m11 : m11;
  const double b = mirror & mirrored_in_y ? -m12 : m12;
  double cosine = a / scale;
  if (cosine < -1.0) cosine = -1.0;
  if (cosine > 1.0) cosine = 1.0;
  const double turn = std::acos(cosine);
  *angle = b < 0.0 ? -turn : turn;
  *mirror_out = mirror;
}

void Mtx2D::GetOrientationAndXMirror(unsigned short* mirrored, int* orientation) {
  *orientation = quadrant_code(without_last_mirror(*this, mirrored));
}

void Mtx2D::GetXMirrorAndOrientation(unsigned short* mirrored, int* orientation) {
  *orientation = quadrant_code(without_first_mirror(*this, mirrored));
}

void Mtx2D::GetXMirrorAndRotation(unsigned short* mirrored, double* angle) {
  const Mtx2D turned = without_first_mirror(*this, mirrored);
  const double a = turned.m11;
  const double b = turned.m12;
  double degrees = std::acos(a / std::sqrt(a * a + b * b)) * 180.0 / short_pi;
  if (b < 0.0) degrees = 360.0 - degrees;
  *angle = snap_to_quadrants(degrees);
}
