#include <zelvan/transforms/mtx2d.h>

#include "support/bits.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

namespace {

constexpr double pi = std::numbers::pi;
const double nan_value = std::nan("");

Mtx2D linear(double m11, double m12, double m21, double m22) {
  Mtx2D m;
  m.m11 = m11;
  m.m12 = m12;
  m.m21 = m21;
  m.m22 = m22;
  m.SetType();
  return m;
}

struct Reading {
  unsigned short mirrored;
  int turn_first, mirror_first;  // quadrant codes of the two readings
  double degrees;                // of the turn, the mirror being first
};

Reading read(Mtx2D m) {
  Reading r{};
  m.GetOrientationAndXMirror(&r.mirrored, &r.turn_first);
  unsigned short again;
  m.GetXMirrorAndOrientation(&again, &r.mirror_first);
  EXPECT_EQ(again, r.mirrored);
  m.GetXMirrorAndRotation(&again, &r.degrees);
  EXPECT_EQ(again, r.mirrored);
  return r;
}

double orientation(Mtx2D m) {
  double angle;
  int mirror = -1;
  m.GetOrientation(&angle, &mirror);
  EXPECT_EQ(mirror, m.mirror);
  return angle;
}

// All eight orientations under several scales: a quarter turn is read exactly, whatever stands
// beside it.
TEST(Mtx2DDecompose, ReadsTheEightOrientations) {
  const struct {
    unsigned short mirrored;
    int turn_first, mirror_first;
    double degrees, orientation, rotation;
  } rows[] = {
      {0, 0, 0, 0, 0, 0},
      {0, 1, 1, 90, pi / 2, pi / 2},
      {0, 2, 2, 180, pi, pi},
      {0, 3, 3, 270, -pi / 2, pi / 2},
      {1, 0, 0, 0, pi, 0},
      {1, 2, 2, 180, pi, pi},
      {1, 3, 1, 90, -pi / 2, pi / 2},
      {1, 1, 3, 270, -pi / 2, pi / 2},
  };
  const struct { double x, y; } scales[] = {{1, 1}, {0.1, 0.1}, {1e150, 1e150}, {3, 5}, {1e-9, 4}};
  for (int orient = 0; orient < 8; ++orient) {
    for (const auto& scale : scales) {
      SCOPED_TRACE(testing::Message() << "orientation " << orient << ", scale " << scale.x);
      const auto& row = rows[orient];
      Mtx2D m(7, 8, static_cast<Mtx2DOrient>(orient), scale.x, scale.y, 9, 10);
      const Reading r = read(m);
      EXPECT_EQ(r.mirrored, row.mirrored);
      EXPECT_EQ(r.turn_first, row.turn_first);
      EXPECT_EQ(r.mirror_first, row.mirror_first);
      EXPECT_EQ(r.degrees, row.degrees);
      EXPECT_EQ(m.GetRotation(), row.rotation);
      EXPECT_EQ(m.GetScale(), row.rotation == pi / 2 ? scale.y : scale.x);
      if (scale.x == scale.y) {
        EXPECT_EQ(orientation(m), row.orientation);
      }
    }
  }
}

TEST(Mtx2DDecompose, ReadsTurnsScalesAndSingularMatrices) {
  Mtx2D by_30, by_200, both_mirrors, turned;
  by_30.Rotate(30, 2);
  by_200.Rotate(200, 2);
  both_mirrors.ReflectInX();
  both_mirrors.ReflectInY();
  turned.Rotate(-30, 2);
  const struct {
    const char* name;
    Mtx2D m;
    unsigned short mirrored;
    int turn_first, mirror_first;
    double degrees, orientation, rotation;
  } rows[] = {
      {"30 degrees has code 1", by_30, 0, 1, 1, 30, pi / 6, pi / 6},
      {"200 degrees has code 3", by_200, 0, 3, 3, 200, -pi * 160 / 180, pi * 160 / 180},
      {"-30 degrees", turned, 0, 3, 3, 330, -pi / 6, pi / 6},
      {"two mirrors make a half turn", both_mirrors, 0, 2, 2, 180, 0, pi},
      {"only a uniform scale is divided out", linear(3, 0, 0, 5), 0, 0, 0, 0,
       std::acos(3 / std::sqrt(15)), 0},
      {"a quotient above 1 is clamped", linear(5, 0, 0, 3), 0, 0, 0, 0, 0, 0},
      {"and below -1", linear(-5, 0, 0, -3), 0, 2, 2, 180, pi, pi},
      {"singular", linear(2, 0, 0, 0), 0, 0, 0, 0, 0, 0},
      {"singular, turned", linear(-2, 0, 3, 0), 0, 2, 2, 180, pi, pi},
      {"no first row", linear(0, 0, 3, 4), 0, -1, -1, nan_value, nan_value, nan_value},
      {"below zero by next to nothing", linear(1, -1e-300, 0, 1), 0, 3, 3, 360, 0, 0},
      {"just above zero", linear(1, 1e-3, -1e-3, 1), 0, 1, 1, 0, 0.001, 0.001},
      {"a zero of either sign", linear(1, -0.0, 0, 1), 0, 0, 0, 0, 0, 0},
  };
  for (const auto& row : rows) {
    Mtx2D m = row.m;
    const Reading r = read(m);
    EXPECT_EQ(r.mirrored, row.mirrored) << row.name;
    EXPECT_EQ(r.turn_first, row.turn_first) << row.name;
    EXPECT_EQ(r.mirror_first, row.mirror_first) << row.name;
    const double pairs[][2] = {{r.degrees, row.degrees},
                               {orientation(m), row.orientation},
                               {m.GetRotation(), row.rotation}};
    for (const auto& [got, expected] : pairs) {
      if (std::isnan(expected)) {
        EXPECT_TRUE(std::isnan(got)) << row.name << ": " << got;
      } else {
        EXPECT_NEAR(got, expected, 1e-7) << row.name;
      }
    }
  }
  EXPECT_EQ(by_30.GetRotation(), turned.GetRotation()) << "the sign is lost";
  EXPECT_EQ(orientation(by_30), -orientation(turned));
  EXPECT_NEAR(linear(3, 4, 9, 9).GetScale(), 5, 1e-15);

  double e[6];
  Mtx2D(1, 2, Mtx2DOrientNone, 3, 4, 50, 60).GetElements(e, e + 1, e + 2, e + 3, e + 4, e + 5);
  const double elements[] = {3, 0, 0, 4, 47, 52};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(e[i], elements[i]);
}

// `mirror` says which of the signs GetOrientation takes out, the elements being the same.
TEST(Mtx2DDecompose, TakesRecordedReflectionsOut) {
  const double expected[] = {30, 150, -30, -150};
  for (int mirror = 0; mirror < 4; ++mirror) {
    Mtx2D m;
    m.Rotate(30, 2);
    m.mirror = mirror;
    EXPECT_NEAR(orientation(m) * 180 / pi, expected[mirror], 1e-6) << mirror;
  }
}

// Across each bound in steps of about the last digit: strictly between two bounds an angle is
// drawn to the quadrant, on the bound and beyond it comes back as it was computed.
TEST(Mtx2DDecompose, SnapsStrictlyBetweenItsBounds) {
  const struct {
    double low, high, snapped;
  } ranges[] = {
      {0.0, 0.1, 0}, {89.9, 90.1, 90}, {179.9, 180.1, 180}, {269.9, 270.1, 270}, {359.9, 360, 0}};
  int on_a_bound = 0;
  for (const auto& range : ranges) {
    for (const double bound : {range.low, range.high}) {
      if (bound == 0 || bound == 360) continue;  // rows of the table above
      SCOPED_TRACE(testing::Message() << "bound " << bound);
      int snapped = 0, kept = 0;
      const double radians = (bound < 180 ? bound : bound - 360) * 3.141592654 / 180;
      for (int step = -3000; step <= 3000; ++step) {
        const double a = std::cos(radians) + step * 0x1p-54, b = std::sin(radians);
        double degrees = std::acos(a / std::sqrt(a * a + b * b)) * 180.0 / 3.141592654;
        if (b < 0.0) degrees = 360.0 - degrees;
        const bool snaps = degrees > range.low && degrees < range.high;
        ASSERT_EQ(read(linear(a, b, -b, a)).degrees, snaps ? range.snapped : degrees);
        ++(snaps ? snapped : kept);
        on_a_bound += degrees == bound;
      }
      EXPECT_GT(std::min(snapped, kept), 100) << "the walk should cross the bound";
    }
  }
  EXPECT_GT(on_a_bound, 0);
}

}  // namespace
