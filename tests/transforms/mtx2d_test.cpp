#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"
#include "support/random.h"

#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using support::bits;

// On a matrix whose elements tell each other apart, down to the sign of zero: all eight fields.
TEST(Mtx2D, ComposesInTheStatedOrder) {
  const auto expect = [](auto step, const std::array<double, 8>& fields) {
    Mtx2D m(0, 0, Mtx2DOrientNone, 2, 3, 10, 20);
    step(m);
    const double got[] = {m.m11, m.m12, m.m21, m.m22, m.tx, m.ty, 1.0 * m.mirror, 1.0 * m.type};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(bits(got[i]), bits(fields[i])) << fields[0] << ' ' << i;
  };
  const double c = std::cos(30.0 * 0.017453292522222223);
  const double s = std::sin(30.0 * 0.017453292522222223);
  expect([](Mtx2D& m) { m.Rotate(90, 1); }, {0, 3, -2, 0, 10, 20, 0, 1});
  expect([](Mtx2D& m) { m.Rotate(30, 1); }, {2 * c, 3 * s, -2 * s, 3 * c, 10, 20, 0, 2});
  expect([](Mtx2D& m) { m.Rotate(30, 2); },
         {2 * c, 2 * s, -3 * s, 3 * c, c * 10 - s * 20, c * 20 + s * 10, 0, 2});
  expect([](Mtx2D& m) { m.SetXfm(10, 20, Mtx2DOrientRot90, 2, 3, 100, 200); },
         {0, 3, -2, 0, 140, 170, 0, 1});
  expect([](Mtx2D& m) { m.ShearInX(4), m = m * m; }, {4, 0, 20, 9, 110, 80, 0, 2});
  expect([](Mtx2D& m) { m.ShearInX(4), m = m.Invert(); },
         {0.5, -0.0, -4 / 6.0, 2 / 6.0, 50 / 6.0, -40 / 6.0, 0, 2});
}

// All operations one after the other, on plain and hard elements and many zeros, as an operation
// and by its flat name: the same bits in all eight fields, and the same on every compiler at every
// optimisation level. The flat products and the inverse write over their operand.
TEST(Mtx2D, GivesTheSameBitsByBothNames) {
  support::Digest digest;
  for (unsigned seed = 1; seed <= 3000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 4), other = random.matrix(2);
    for (double* e : {&m.m11, &m.m12, &m.m21, &m.m22, &m.tx, &m.ty}) {
      if (random.below(3) == 0) *e = random.below(2) ? 0.0 : -0.0;
    }
    m.mirror = random.below(4), other.mirror = random.below(4);
    double p = random.hard_double(), q = random.between(-9, 9);
    const auto orient = static_cast<Mtx2DOrient>(random.below(10) - 1);
    const double quarter = 90 * random.below(4);
    const int mode = random.below(3);
    Mtx2D flat = m, filled;
    const auto same = [&] {
      ASSERT_EQ(bits(flat), bits(m));
      for (const auto field : bits(m)) digest.add(field);
      digest.add(support::bits(m.GetDeterminant())), digest.add(m.ReversesOrientation());
    };
    m.SetType(), set_matrix_type(&flat), same();
    m.Translate(p, q), translate_matrix(p, q, &flat), same();
    m.Rotate(quarter, mode), rotate_matrix(quarter, &flat, mode), same();
    m.Scale(q, p), scale_matrix(q, p, &flat), same();
    m.ReflectInX(), reflect_matrix_x(&flat), same();
    m.Orient(orient), orient_matrix(orient, &flat), same();
    m.ReflectInY(), reflect_matrix_y(&flat), same();
    Mtx2D::Multiply(&m, &other, &filled), multiply_matrices(&flat, &other, &flat);
    m = m * other, same();
    ASSERT_EQ(bits(filled), bits(m));
    m = m.Invert(), invert_matrix(&flat, &flat), same();
    m = other * m, multiply_matrices(&other, &flat, &flat), same();
    m.InvertYAxis(p), flat.InvertYAxis(p), same();
    m.ShearInX(q), flat.ShearInX(q), same();
    m.SetXfm(p, q, orient, q, p, 1, q), set_xfm(p, q, orient, q, p, 1, q, &flat), same();
    m.SetXfm(0, 0, orient, q, p, -0.0, -0.0), set_xfm(0, 0, orient, q, p, -0.0, -0.0, &flat);
    same(), m.Initialize(), initialize_matrix(&flat), same();
  }
  EXPECT_EQ(digest.value(), 6498291840578060000u);
}

// The tag of the identity is given by one operation, to an exact identity, and taken by deriving
// the type. A matrix differs from another by its elements alone. Of angles only four are exact.
TEST(Mtx2D, TagsAndComparesByExactElements) {
  Mtx2D m, fresh;
  EXPECT_EQ(m.IsIdentity(), 0);
  m.SetIdentity();
  EXPECT_EQ(m.IsIdentity(), 1);
  EXPECT_EQ((m * m).type, Mtx2DTypeDiagonal);
  EXPECT_EQ(m != fresh, 0);
  for (double Mtx2D::*element :
       {&Mtx2D::m11, &Mtx2D::m12, &Mtx2D::m21, &Mtx2D::m22, &Mtx2D::tx, &Mtx2D::ty}) {
    Mtx2D other;
    other.*element = std::nextafter(other.*element, 9.0);
    other.SetIdentity();
    EXPECT_EQ(other.IsIdentity(), 0);
    EXPECT_EQ(m != other, 1);
    other.*element = std::nan("");
    EXPECT_EQ(other != other, 1);
  }
  m.Translate(5.0, 0.0);
  EXPECT_EQ(m.IsIdentity(), 1) << "the tag outlives a translation";
  for (const double angle : {360.0, -90.0, -270.0, 450.0, 90.0000001}) {
    Mtx2D turned;
    turned.Rotate(angle, Mtx2DRotateLast);
    EXPECT_EQ(turned.type, Mtx2DTypeGeneral) << angle;
  }
}

}  // namespace
