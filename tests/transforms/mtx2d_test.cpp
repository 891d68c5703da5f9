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

double turn_in_degrees(const Mtx2D& m) {
  const double cosine = m.m11 / std::sqrt(m.m11 * m.m11 + m.m12 * m.m12);
  const double v = std::acos(cosine) * 180.0 / 3.141592654, turn = m.m12 < 0.0 ? 360.0 - v : v;
  const double quadrant = 90.0 * std::round(turn / 90.0);
  const bool snaps = turn != 360.0 && quadrant - 0.1 < turn && turn < quadrant + 0.1;
  return snaps ? std::fmod(quadrant, 360.0) : turn;
}

// All that can be read from a matrix goes into the digest, save the angles, whose last bit is the
// platform's: these are worked out here.
void read(Mtx2D m, support::Digest& digest) {
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
  const double turn = std::acos(m.m11 / std::sqrt(m.m11 * m.m11 + m.m12 * m.m12));
  ASSERT_EQ(bits(m.GetRotation()), bits(turn));
  const double scale = std::sqrt(std::fabs(m.m11 * m.m22 - m.m12 * m.m21));
  const double x = std::acos(std::clamp((m.mirror & 1 ? -m.m11 : m.m11) / scale, -1.0, 1.0));
  ASSERT_EQ(bits(angle), bits((m.mirror & 2 ? m.m12 > 0.0 : m.m12 < 0.0) ? -x : x));
  ASSERT_EQ(bits(flat_angle), bits(angle));
  Mtx2D flip;
  flip.ReflectInX();
  ASSERT_EQ(bits(degrees), bits(turn_in_degrees(mirrored[0] ? flip * m : m)));
  for (double Mtx2D::*element :
       {&Mtx2D::m11, &Mtx2D::m12, &Mtx2D::m21, &Mtx2D::m22, &Mtx2D::tx, &Mtx2D::ty}) {
    Mtx2D near = m;
    near.*element = std::nextafter(m.*element, 0.5), near.SetIdentity();
    digest.add(near != m), digest.add(near.type);
  }
  m.SetIdentity(), digest.add(m.IsIdentity());
}

// All operations one after the other, as an operation and by its flat name, from every linear part
// of some values at the edge of arithmetic and then from any: the same bits in all eight fields,
// and the same on every compiler at every optimisation level.
TEST(Mtx2D, GivesTheSameBitsByBothNames) {
  const double edges[] = {-INFINITY, -2.0, -0.0, 0.0, 3.0, INFINITY, NAN};
  support::Digest digest;
  for (int seed = 0; seed < 4000 && !HasFailure(); ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    support::Random random(seed);
    Mtx2D m = random.matrix(seed % 4), other = random.matrix(2), one, two;
    for (int rest = seed; double* element : {&m.m11, &m.m12, &m.m21, &m.m22}) {
      if (seed < 2401) *element = edges[rest % 7], rest /= 7;
    }
    Mtx2D flat = m;
    const double p = random.hard_double(), q = random.between(-9, 9),
                 quarter = 90 * random.below(4);
    const auto orient = static_cast<Mtx2DOrient>(random.below(10) - 1);
    const int mode = random.below(3);
    const auto same = [&](Mtx2D& by_flat_name) {
      ASSERT_EQ(bits(by_flat_name), bits(m));
      read(m, digest), one = two = random.matrix(5);
    };
    same(flat), m.Translate(p, q), translate_matrix(p, q, &flat), same(flat);
    m.Scale(q, p), scale_matrix(q, p, &flat), same(flat);
    m.ReflectInX(), reflect_matrix_x(&flat), same(flat);
    m.ReflectInY(), reflect_matrix_y(&flat), same(flat);
    m.InvertYAxis(p), flat.InvertYAxis(p), same(flat);
    m.SetType(), set_matrix_type(&flat), same(flat);
    m.Rotate(quarter, mode), rotate_matrix(quarter, &flat, mode), same(flat);
    m.ShearInX(q), flat.ShearInX(q), same(flat);
    m.Orient(orient), orient_matrix(orient, &flat), same(flat);
    Mtx2D::Multiply(&m, &other, &one), multiply_matrices(&m, &other, &two);
    m = m * other, same(one), multiply_matrices(&flat, &other, &flat), same(flat);
    invert_matrix(&m, &one), m = m.Invert(), same(one), invert_matrix(&flat, &flat), same(flat);
    m = other * m, multiply_matrices(&other, &flat, &flat), same(flat);
    m.SetXfm(p, q, orient, q, p, 1, q), set_xfm(p, q, orient, q, p, 1, q, &flat), same(flat);
    m.SetXfm(0, 0, orient, q, p, -0.0, -0.0), set_xfm(0, 0, orient, q, p, -0.0, -0.0, &flat);
    same(flat), m.Initialize(), initialize_matrix(&flat), same(flat);
  }
  EXPECT_EQ(digest.value(), 8686526542504200086u);
}

// Four angles are exact and no other, however near and however many turns away. Read back, they
// snap close to a quarter turn: across the bounds this goes in steps below the last digit.
TEST(Mtx2D, TurnsBySinesOfTheShortPi) {
  for (int i = -1800; i < 1800 && !HasFailure(); ++i) {
    const double beyond[] = {-0.0, 1e-7, 0.1, -0.1}, angle = i / 4 * -1.0 + beyond[i & 3];
    const double radians = angle * 0.017453292522222223;
    const bool is_exact = angle == 0 || angle == 90 || angle == 180 || angle == 270;
    const auto expected = [=](double v) { return bits(is_exact ? std::round(v) + 0.0 : v); };
    Mtx2D m;
    m.Rotate(angle, Mtx2DRotateLast);
    EXPECT_EQ(bits(m.m11), expected(std::cos(radians))) << angle;
    EXPECT_EQ(bits(m.m12), expected(std::sin(radians))) << angle;
    support::Digest unused;
    for (int step = -16; step <= 16; ++step)
      read(m, unused), m.m11 = std::cos(radians) + step * 0x1p-54;
  }
}

}  // namespace
