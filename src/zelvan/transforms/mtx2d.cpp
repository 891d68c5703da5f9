#include <zelvan/transforms/detail/conventions.h>
#include <zelvan/transforms/mtx2d.h>

#include <cmath>

namespace {

using zelvan::mirrored_in_x;
using zelvan::mirrored_in_y;

struct Turn {
  double cosine;
  double sine;
};

// Quadrant turns are exact, which keeps the matrix on the fast mapping paths.
Turn turn_by(double degrees) {
  if (degrees == 0.0) return {1.0, 0.0};
  if (degrees == 90.0) return {0.0, 1.0};
  if (degrees == 180.0) return {-1.0, 0.0};
  if (degrees == 270.0) return {0.0, -1.0};
  const double radians = degrees * zelvan::radians_per_degree;
  return {std::cos(radians), std::sin(radians)};
}

void write_product(const Mtx2D& a, const Mtx2D& b, Mtx2D* result) {
  result->m11 = a.m11 * b.m11 + a.m12 * b.m21;
  result->m12 = a.m11 * b.m12 + a.m12 * b.m22;
  result->m21 = a.m21 * b.m11 + a.m22 * b.m21;
  result->m22 = a.m21 * b.m12 + a.m22 * b.m22;
  result->tx = (a.tx * b.m11 + a.ty * b.m21) + b.tx;
  result->ty = (a.tx * b.m12 + a.ty * b.m22) + b.ty;
  result->mirror = a.mirror ^ b.mirror;
  result->SetType();
}

}  // namespace

Mtx2D::Mtx2D(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx, double dy) {
  SetXfm(x0, y0, orient, sx, sy, dx, dy);
}

void Mtx2D::SetXfm(double x0, double y0, Mtx2DOrient orient, double sx, double sy, double dx,
                   double dy) {
  Identity();
  tx = 0.0 - x0;  // negating a reference of 0.0 would make -0.0
  ty = 0.0 - y0;
  Orient(orient);
  m11 *= sx;
  m21 *= sx;
  m12 *= sy;
  m22 *= sy;
  tx = sx * tx + dx;
  ty = sy * ty + dy;
  SetType();
}

void Mtx2D::SetIdentity() {
  if (m11 == 1.0 && m22 == 1.0 && m12 == 0.0 && m21 == 0.0 && tx == 0.0 && ty == 0.0) {
    type = Mtx2DTypeIdentity;
  }
}

void Mtx2D::SetType() {
  if (m12 == 0.0 && m21 == 0.0) {
    type = Mtx2DTypeDiagonal;
  } else if (m11 == 0.0 && m22 == 0.0) {
    type = Mtx2DTypeQuadrant;
  } else {
    type = Mtx2DTypeGeneral;
  }
}

unsigned short Mtx2D::operator!=(const Mtx2D& other) const {
  return m11 != other.m11 || m12 != other.m12 || m21 != other.m21 || m22 != other.m22 ||
         tx != other.tx || ty != other.ty;
}

void Mtx2D::Translate(double dx, double dy) {
  tx += dx;
  ty += dy;
}

void Mtx2D::Scale(double sx, double sy) {
  m11 *= sx;
  m21 *= sx;
  tx *= sx;
  m12 *= sy;
  m22 *= sy;
  ty *= sy;
}

void Mtx2D::Rotate(double angle, int mode) {
  const auto [c, s] = turn_by(angle);
  const Mtx2D old = *this;
  if (mode == Mtx2DRotateFirst) {
    m11 = old.m21 * s + old.m11 * c;
    m12 = old.m22 * s + old.m12 * c;
    m21 = old.m21 * c - old.m11 * s;
    m22 = old.m22 * c - old.m12 * s;
  } else {
    m11 = old.m11 * c - old.m12 * s;
    m12 = old.m12 * c + old.m11 * s;
    m21 = old.m21 * c - old.m22 * s;
    m22 = old.m22 * c + old.m21 * s;
    tx = c * old.tx - s * old.ty;
    ty = c * old.ty + s * old.tx;
  }
  SetType();
}

void Mtx2D::Orient(Mtx2DOrient orient) {
  const bool turns_a_quarter = orient == Mtx2DOrientRot90 || orient == Mtx2DOrientRot90ReflectX ||
                               orient == Mtx2DOrientRot90ReflectY;
  if (turns_a_quarter) Rotate(90.0, Mtx2DRotateLast);
  if (orient == Mtx2DOrientRot180) Rotate(180.0, Mtx2DRotateLast);
  if (orient == Mtx2DOrientRot270) Rotate(270.0, Mtx2DRotateLast);
  if (orient == Mtx2DOrientReflectX || orient == Mtx2DOrientRot90ReflectX) ReflectInX();
  if (orient == Mtx2DOrientReflectY || orient == Mtx2DOrientRot90ReflectY) ReflectInY();
  SetType();
}

void Mtx2D::ReflectInX() {
  m12 = -m12;
  m22 = -m22;
  ty = -ty;
  mirror ^= mirrored_in_x;
}

void Mtx2D::ReflectInY() {
  m11 = -m11;
  m21 = -m21;
  tx = -tx;
  mirror ^= mirrored_in_y;
}

void Mtx2D::ShearInX(double shear) {
  m21 = shear;
  SetType();
}

void Mtx2D::InvertYAxis(double height) {
  m22 *= -1.0;
  ty = height;
}

Mtx2D Mtx2D::operator*(const Mtx2D& other) {
  Mtx2D result;
  write_product(*this, other, &result);
  return result;
}

void Mtx2D::Multiply(Mtx2D* first, Mtx2D* second, Mtx2D* result) {
  write_product(*first, *second, result);
}

Mtx2D Mtx2D::Invert() {
  const double det = m11 * m22 - m12 * m21;
  Mtx2D result;
  result.m11 = m22 / det;
  result.m12 = -(m12 / det);
  result.m21 = -(m21 / det);
  result.m22 = m11 / det;
  result.tx = (ty * m21 - tx * m22) / det;
  result.ty = -((ty * m11 - tx * m12) / det);
  result.mirror = mirror;
  result.SetType();
  return result;
}

double Mtx2D::GetDeterminant() { return m22 * m11 - m21 * m12; }

unsigned short Mtx2D::ReversesOrientation() { return GetDeterminant() < 0.0; }
