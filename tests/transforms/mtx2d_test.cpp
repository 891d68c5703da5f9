#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"
#include "support/random.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

namespace {

using support::bits;

Mtx2D matrix(double m11, double m12, double m21, double m22, double tx, double ty, int mirror,
             int type) {
  Mtx2D m;
  m.m11 = m11;
  m.m12 = m12;
  m.m21 = m21;
  m.m22 = m22;
  m.tx = tx;
  m.ty = ty;
  m.mirror = mirror;
  m.type = type;
  return m;
}

// Every operation on one matrix whose elements tell each other apart, down to the sign of
// zero: the whole record is compared.
TEST(Mtx2D, ComposesInTheStatedOrder) {
  const Mtx2D start = matrix(2, 0, 0, 3, 10, 20, 0, 0);
  const double c = std::cos(30.0 * 0.017453292522222223);
  const double s = std::sin(30.0 * 0.017453292522222223);
  const struct {
    const char* name;
    std::function<void(Mtx2D&)> apply;
    Mtx2D expected;
  } rows[] = {
      {"Translate", [](Mtx2D& m) { m.Translate(1, 2); }, matrix(2, 0, 0, 3, 11, 22, 0, 0)},
      {"Scale", [](Mtx2D& m) { m.Scale(5, 7); }, matrix(10, 0, 0, 21, 50, 140, 0, 0)},
      {"Rotate 0", [](Mtx2D& m) { m.Rotate(0, 2); }, matrix(2, 0, 0, 3, 10, 20, 0, 0)},
      {"Rotate 90", [](Mtx2D& m) { m.Rotate(90, 2); }, matrix(0, 2, -3, 0, -20, 10, 0, 1)},
      {"Rotate 180", [](Mtx2D& m) { m.Rotate(180, 2); }, matrix(-2, 0, -0.0, -3, -10, -20, 0, 0)},
      {"Rotate 270", [](Mtx2D& m) { m.Rotate(270, 2); }, matrix(0, -2, 3, 0, 20, -10, 0, 1)},
      {"Rotate 90 first", [](Mtx2D& m) { m.Rotate(90, 1); }, matrix(0, 3, -2, 0, 10, 20, 0, 1)},
      {"any mode but 1 acts last", [](Mtx2D& m) { m.Rotate(90, 0); },
       matrix(0, 2, -3, 0, -20, 10, 0, 1)},
      {"Rotate 30", [](Mtx2D& m) { m.Rotate(30, 2); },
       matrix(2 * c, 2 * s, 0 * c - 3 * s, 3 * c, c * 10 - s * 20, c * 20 + s * 10, 0, 2)},
      {"Rotate 30 first", [](Mtx2D& m) { m.Rotate(30, 1); },
       matrix(2 * c, 3 * s, 0 * c - 2 * s, 3 * c, 10, 20, 0, 2)},
      {"ReflectInX", [](Mtx2D& m) { m.ReflectInX(); }, matrix(2, -0.0, 0, -3, 10, -20, 1, 0)},
      {"ReflectInY", [](Mtx2D& m) { m.ReflectInY(); }, matrix(-2, 0, -0.0, 3, -10, 20, 2, 0)},
      {"ShearInX", [](Mtx2D& m) { m.ShearInX(4); }, matrix(2, 0, 4, 3, 10, 20, 0, 2)},
      {"ShearInX replaces", [](Mtx2D& m) { m.ShearInX(4), m.ShearInX(0); },
       matrix(2, 0, 0, 3, 10, 20, 0, 0)},
      {"InvertYAxis", [](Mtx2D& m) { m.InvertYAxis(100); }, matrix(2, 0, 0, -3, 10, 100, 0, 0)},
      {"Orient 6", [](Mtx2D& m) { m.Orient(Mtx2DOrientRot90ReflectY); },
       matrix(-0.0, 2, 3, 0, 20, 10, 2, 1)},
      {"Orient 7", [](Mtx2D& m) { m.Orient(Mtx2DOrientRot90ReflectX); },
       matrix(0, -2, -3, -0.0, -20, -10, 1, 1)},
      {"Orient 8 does nothing", [](Mtx2D& m) { m.Orient(static_cast<Mtx2DOrient>(8)); },
       matrix(2, 0, 0, 3, 10, 20, 0, 0)},
      {"SetXfm", [](Mtx2D& m) { m.SetXfm(10, 20, Mtx2DOrientRot90, 2, 3, 100, 200); },
       matrix(0, 3, -2, 0, 140, 170, 0, 1)},
      {"SetXfm about 0", [](Mtx2D& m) { m.SetXfm(0, 0, Mtx2DOrientNone, 1, 1, -0.0, -0.0); },
       matrix(1, 0, 0, 1, 0.0, 0.0, 0, 0)},
      {"SetXfm clears mirror",
       [](Mtx2D& m) { m.mirror = 3, m.SetXfm(0, 0, Mtx2DOrientReflectX, 1, 1, 5, 6); },
       matrix(1, -0.0, 0, -1, 5, 6, 1, 0)},
      {"Initialize", [](Mtx2D& m) { m.Initialize(); }, matrix(1, 0, 0, 1, 0, 0, 0, 0)},
  };
  for (const auto& row : rows) {
    Mtx2D m = start;
    row.apply(m);
    EXPECT_EQ(bits(m), bits(row.expected)) << row.name;
  }
}

// Angles that are no exact quadrant keep no exact zero, whatever they are close to.
TEST(Mtx2D, OnlyFourAnglesAreExact) {
  const struct {
    double angle;
    int type;
  } rows[] = {{0.0, 0},   {-0.0, 0},  {90.0, 1},   {180.0, 0}, {270.0, 1},
              {360.0, 2}, {-90.0, 2}, {-270.0, 2}, {450.0, 2}, {90.0000001, 2}};
  for (const auto& row : rows) {
    Mtx2D m;
    m.Rotate(row.angle, Mtx2DRotateLast);
    EXPECT_EQ(m.type, row.type) << row.angle;
  }
}

// The tag of the identity is given by one operation and taken by deriving the type.
TEST(Mtx2D, TagsTheIdentityOnlyWhenAsked) {
  Mtx2D m;
  EXPECT_EQ(m.IsIdentity(), 0);
  m.SetIdentity();
  EXPECT_EQ(m.IsIdentity(), 1);
  m.Translate(5.0, 0.0);
  EXPECT_EQ(m.IsIdentity(), 1) << "the tag outlives a translation";
  m.Orient(static_cast<Mtx2DOrient>(-1));
  EXPECT_EQ(m.IsIdentity(), 0);
  m.SetIdentity();
  EXPECT_EQ(m.type, Mtx2DTypeDiagonal) << "a translation is no identity";
  Mtx2D a, b;
  a.SetIdentity();
  b.SetIdentity();
  EXPECT_EQ((a * b).type, Mtx2DTypeDiagonal);

  const double nan = std::nan("");
  const struct {
    double m11, m12, m21, m22;
    int type;
  } rows[] = {{1, 0, 0, 1, 0}, {0, 0, 0, 0, 0},    {0, 1, 0, 0, 1},   {-0.0, 1, 1, -0.0, 1},
              {1, 0, 1, 1, 2}, {1, -0.0, 0, 1, 0}, {nan, 0, 0, 1, 0}, {0, nan, 0, 0, 1}};
  for (const auto& row : rows) {
    Mtx2D t = matrix(row.m11, row.m12, row.m21, row.m22, 0, 0, 0, 3);
    t.SetType();
    EXPECT_EQ(t.type, row.type) << row.m11 << ' ' << row.m12 << ' ' << row.m21 << ' ' << row.m22;
  }
}

TEST(Mtx2D, DiffersByItsElementsAlone) {
  const Mtx2D a = matrix(1, 2, 3, 4, 5, 6, 0, 2);
  EXPECT_EQ(a != matrix(1, 2, 3, 4, 5, 6, 3, 0), 0);
  for (double Mtx2D::*element :
       {&Mtx2D::m11, &Mtx2D::m12, &Mtx2D::m21, &Mtx2D::m22, &Mtx2D::tx, &Mtx2D::ty}) {
    Mtx2D b = a;
    b.*element = std::nextafter(b.*element, 9.0);
    EXPECT_EQ(a != b, 1);
    b.*element = std::nan("");
    EXPECT_EQ(b != b, 1);
  }
}

// Over random matrices: a product is its factors one after the other, an inverse leads back,
// and both keep the record of reflections.
TEST(Mtx2D, MultipliesAndInverts) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    const auto element = [&] { return random.between(-3.0, 3.0); };
    Mtx2D a = matrix(element(), element(), element(), element(), element(), element(), 1, 2);
    Mtx2D b = matrix(element(), element(), element(), element(), element(), element(), 3, 2);
    Mtx2D product = a * b;
    Mtx2D filled;
    Mtx2D::Multiply(&a, &b, &filled);
    EXPECT_EQ(bits(product), bits(filled));
    EXPECT_EQ(product.mirror, 2);

    Mtx2D back = a.Invert();
    EXPECT_EQ(back.mirror, 1);
    real_pt_t p = {element(), element()}, q, r, s;
    a.RealXfmPt(&p, &q);
    b.RealXfmPt(&q, &r);
    product.RealXfmPt(&p, &s);
    EXPECT_NEAR(r.x, s.x, 1e-12);
    EXPECT_NEAR(r.y, s.y, 1e-12);
    back.RealXfmPt(&q, &s);
    const double error = 1e-13 / std::fabs(a.GetDeterminant());
    EXPECT_NEAR(s.x, p.x, error);
    EXPECT_NEAR(s.y, p.y, error);
    EXPECT_EQ(a.ReversesOrientation(), a.GetDeterminant() < 0.0);
  }
  Mtx2D turned = matrix(1, 2, 3, 4, 5, 6, 0, 2);
  EXPECT_EQ(turned.GetDeterminant(), -2.0);
  EXPECT_EQ(bits(turned.Invert()), bits(matrix(-2, 1, 1.5, -0.5, 1, -2, 0, 2)));
  EXPECT_EQ(matrix(0, 0, 0, 0, 1, 1, 2, 0).Invert().type, Mtx2DTypeGeneral) << "all NaN";
}

}  // namespace
