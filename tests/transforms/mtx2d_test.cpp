#include <zelvan/transforms/matrix_functions.h>

#include "support/bits.h"
#include "support/random.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <gtest/gtest.h>

namespace {

using support::bits;

// The eight orientations as they are made and as they are read, in quarter turns: with the turn
// before the mirror, with the mirror first, by the bits that record it, and without a sign.
TEST(Mtx2D, MakesAndReadsOrientations) {
  const std::array<double, 10> rows[] = {
      {2, 0, 0, 2, 80, 160, 0, 0, 0, 0},    {0, 2, -2, 0, 140, 180, 1, 1, 1, 1},
      {-2, 0, 0, -2, 120, 240, 2, 2, 2, 2}, {0, -2, 2, 0, 60, 220, 3, 3, -1, 1},
      {2, 0, 0, -2, 80, 240, 0, 0, 2, 0},   {-2, 0, 0, 2, 120, 160, 2, 2, 2, 2},
      {0, 2, 2, 0, 60, 180, 3, 1, -1, 1},   {0, -2, -2, 0, 140, 220, 1, 3, -1, 1}};
  for (int i = 0; i < 8; ++i) {
    Mtx2D m(10, 20, static_cast<Mtx2DOrient>(i), 2, 2, 100, 200);
    unsigned short mirrored;
    int turn_first, mirror_first, mirror;
    double angle;
    m.GetOrientationAndXMirror(&mirrored, &turn_first), m.GetOrientation(&angle, &mirror);
    m.GetXMirrorAndOrientation(&mirrored, &mirror_first);
    EXPECT_EQ(rows[i], (std::array{m.m11, m.m12, m.m21, m.m22, m.tx, m.ty, 1.0 * turn_first,
                                   1.0 * mirror_first, angle / M_PI_2, m.GetRotation() / M_PI_2}));
    EXPECT_EQ(mirrored, i > 3);
  }
}

double turn_in_degrees(Mtx2D m) {
  const double v = std::acos(m.m11 / m.GetScale()) * 180.0 / 3.141592654;
  const double turn = m.m12 < 0.0 ? 360.0 - v : v;
  const double quadrant = 90.0 * std::round(turn / 90.0);
  const bool snaps = turn != 360.0 && quadrant - 0.1 < turn && turn < quadrant + 0.1;
  return snaps ? std::fmod(quadrant, 360.0) : turn;
}

// All that can be read from a matrix goes into the digest, save the angles, whose last bit is the
// platform's: these are worked out here.
void read(Mtx2D m, support::FnvDigest& digest) {
  unsigned short mirrored[3];
  int codes[4];
  double degrees, angle, flat_angle, e[6];
  m.GetElements(e, e + 1, e + 2, e + 3, e + 4, e + 5);
  m.GetOrientationAndXMirror(mirrored, codes), m.GetXMirrorAndOrientation(mirrored + 1, codes + 1);
  m.GetXMirrorAndRotation(mirrored + 2, &degrees), m.GetOrientation(&angle, codes + 2);
  xfm_get_orientation(&m, &flat_angle, codes + 3);
  for (const auto field : bits(m)) digest.add(field);
  for (const double v : e) digest.add(bits(v));
  for (const int v : codes) digest.add(v);
  for (const int v : mirrored) digest.add(v);
  digest.add(bits(m.GetScale())), digest.add(bits(m.GetDeterminant()));
  digest.add(m.ReversesOrientation()), digest.add(m != m);
  ASSERT_EQ(bits(m.GetRotation()), bits(std::acos(m.m11 / m.GetScale())));
  const double scale = std::sqrt(std::fabs(m.GetDeterminant()));
  const double x = std::acos(std::clamp((m.mirror & 1 ? -m.m11 : m.m11) / scale, -1.0, 1.0));
  ASSERT_EQ(bits(angle), bits((m.mirror & 2 ? m.m12 > 0.0 : m.m12 < 0.0) ? -x : x));
  ASSERT_EQ(bits(flat_angle), bits(angle));
  Mtx2D flip;
  flip.ReflectInX();
  ASSERT_EQ(bits(degrees), bits(turn_in_degrees(mirrored[0] ? flip * m : m)));
}

// Each operation by both its names, from every linear part of some values at the edge of arithmetic
// and then from any, with stale tags: the same bits in all eight fields, on every compiler.
TEST(Mtx2D, GivesTheSameBitsByBothNames) {
  const double edges[] = {-INFINITY, -2.0, -0.0, 0.0, 0x1p-1074, 2.0, INFINITY, NAN};
  support::FnvDigest digest;
  for (int seed = 0; seed < 6000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 4), other = random.matrix(2), one = random.matrix(5);
    for (int rest = seed; double* element : {&m.m11, &m.m12, &m.m21, &m.m22}) {
      if (seed < 4096) *element = edges[rest % 8], rest /= 8;
    }
    Mtx2D flat = m, two = one, three = one;
    const double p = random.hard_double(), q = random.between(-9, 9);
    const auto orient = static_cast<Mtx2DOrient>(random.below(10) - 1);
    const int mode = random.below(3), quarters = -random.below(4);  // 0 of them are -0.0 degrees
    const auto same = [&] {
      ASSERT_EQ(bits(flat), bits(m));
      read(m, digest), m.type = flat.type = random.below(4);
    };
    same(), m.SetType(), set_matrix_type(&flat), same();
    m.Translate(p, q), translate_matrix(p, q, &flat), same();
    m.Scale(q, p), scale_matrix(q, p, &flat), same();
    m.ReflectInX(), reflect_matrix_x(&flat), same();
    m.ReflectInY(), reflect_matrix_y(&flat), same();
    m.InvertYAxis(p), flat.InvertYAxis(p), same(), m.ShearInX(q), flat.ShearInX(q), same();
    m.Rotate(-90.0 * quarters, mode), rotate_matrix(-90.0 * quarters, &flat, mode), same();
    m.Orient(orient), orient_matrix(orient, &flat), same();
    Mtx2D::Multiply(&m, &other, &one), multiply_matrices(&m, &other, &two);
    m = m * other, multiply_matrices(&flat, &other, &flat);
    ASSERT_TRUE(bits(one) == bits(m) && bits(two) == bits(m)), same();
    invert_matrix(&m, &three), m = m.Invert(), invert_matrix(&flat, &flat);
    ASSERT_EQ(bits(three), bits(m)), same();
    m = other * m, multiply_matrices(&other, &flat, &flat), same();
    m.SetXfm(p, q, orient, q, p, 1, q), set_xfm(p, q, orient, q, p, 1, q, &flat), same();
    m.SetXfm(0, 0, orient, q, p, -0.0, -0.0), set_xfm(0, 0, orient, q, p, -0.0, -0.0, &flat);
    same(), m = m.Invert(), invert_matrix(&flat, &flat), same();
    m.Initialize(), initialize_matrix(&flat), same();
  }
  EXPECT_EQ(digest.value(), 7797885490347169955u);
}

// The identity's tag goes to an exact identity alone, and a matrix differs from another by its
// elements alone, in which a zero has no sign.
TEST(Mtx2D, TagsAndComparesByExactElements) {
  const double values[] = {-1.0, -0.0, 0.0, 0x1p-1074, 1.0, 1.0 + 0x1p-52};
  for (int rest, code = 0; code < 6 * 6 * 6 * 6 * 6 * 6; ++code) {
    Mtx2D m;
    m.mirror = m.type = 1, rest = code;
    for (double* element : {&m.m11, &m.m12, &m.m21, &m.m22, &m.tx, &m.ty}) {
      *element = values[rest % 6], rest /= 6;
    }
    m.SetIdentity();
    ASSERT_TRUE(m.type == (m != Mtx2D() ? 1 : 3) && m.IsIdentity() == (m.type == 3)) << code;
  }
}

// Four angles are exact and no other, however near and however many turns away. Read back, they
// snap close to a quarter turn: across the bounds this goes in steps below the last digit.
TEST(Mtx2D, TurnsBySinesOfTheShortPi) {
  for (int i = -1800; i < 1800 && !HasFailure(); ++i) {
    const double beyond[] = {0.0, 1e-7, 0.1, -0.1}, angle = i / 4 + beyond[i & 3];
    const double radians = angle * 0.017453292522222223;
    const bool is_exact = angle == 0 || angle == 90 || angle == 180 || angle == 270;
    const auto expected = [=](double v) { return bits(is_exact ? std::round(v) + 0.0 : v); };
    Mtx2D m;
    m.Rotate(angle, Mtx2DRotateLast);
    EXPECT_EQ(bits(m.m11), expected(std::cos(radians))) << angle;
    EXPECT_EQ(bits(m.m12), expected(std::sin(radians))) << angle;
    support::FnvDigest unused;
    for (int step = -16; step <= 16; ++step, m.m11 = std::cos(radians) + step * 0x1p-54) {
      read(m, unused);
    }
  }
}

}  // namespace
