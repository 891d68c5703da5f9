#include <zelvan/transforms/matrix_functions.h>

#include "support/polygon_set.h"
#include "transforms/matrix.h"

#include <algorithm>
#include <climits>
#include <cmath>

#include <gtest/gtest.h>

namespace {

bool is_close(double a, double b) {
  return std::fabs(a - b) < 1e-12 || (std::isnan(a) && std::isnan(b));
}

// ---- construction and state

// Scaled by 2 and 3, about a reference point that goes from (10, 20) to (100, 200). A reflection
// negates zeros as well; the half turn has a -0.0 from 0 * -1 - 1 * 0.
TEST(SetXfm, TurnsThenScalesAboutTheReferencePoint) {
  const auto expect = [](Mtx2DOrient orient, real_pt_t x, real_pt_t y, int type, int mirror) {
    Mtx2D m(10, 20, orient, 2, 3, 100, 200);
    const real_pt_t origin = {100 - 10 * x.x - 20 * y.x, 200 - 10 * x.y - 20 * y.y};
    EXPECT_EQ(m, matrix(x, y, origin, type, mirror)) << "orientation " << orient;
  };
  expect(Mtx2DOrientNone, {2, 0}, {0, 3}, Mtx2DTypeDiagonal, 0);
  expect(Mtx2DOrientRot90, {0, 3}, {-2, 0}, Mtx2DTypeQuadrant, 0);
  expect(Mtx2DOrientRot180, {-2, 0}, {-0.0, -3}, Mtx2DTypeDiagonal, 0);
  expect(Mtx2DOrientRot270, {0, -3}, {2, 0}, Mtx2DTypeQuadrant, 0);
  expect(Mtx2DOrientReflectX, {2, -0.0}, {0, -3}, Mtx2DTypeDiagonal, 1);
  expect(Mtx2DOrientReflectY, {-2, 0}, {-0.0, 3}, Mtx2DTypeDiagonal, 2);
  expect(Mtx2DOrientRot90ReflectY, {-0.0, 3}, {2, 0}, Mtx2DTypeQuadrant, 2);
  expect(Mtx2DOrientRot90ReflectX, {0, -3}, {-2, -0.0}, Mtx2DTypeQuadrant, 1);
}

TEST(SetXfm, ForgetsTheMatrixAndRecordsNoNegativeScale) {
  Mtx2D m = matrix({2, 3}, {4, 5}, {6, 7}, Mtx2DTypeGeneral, 3);
  m.SetXfm(0, 0, Mtx2DOrientNone, -1, 2, -0.0, -0.0);
  EXPECT_EQ(m, matrix({-1, 0}, {-0.0, 2}, {-0.0, 0}, Mtx2DTypeDiagonal))
      << "ty is 2 * (0.0 - 0.0) + -0.0, which is 0.0";
}

TEST(SetIdentity, TagsOnlyTheExactIdentity) {
  Mtx2D m;
  EXPECT_EQ(m.IsIdentity(), 0) << "not before SetIdentity";
  m.SetIdentity();
  m.Translate(5, 0);
  EXPECT_EQ(m.IsIdentity(), 1) << "the tag outlives a Translate";
  using M = Mtx2D;
  for (const auto element : {&M::m11, &M::m12, &M::m21, &M::m22, &M::tx, &M::ty}) {
    Mtx2D other;
    other.*element += 0x1p-52;
    EXPECT_EQ(other != Mtx2D(), 1) << testing::PrintToString(other);
    other.SetIdentity();
    EXPECT_EQ(other.IsIdentity(), 0) << testing::PrintToString(other);
  }
}

TEST(NotEqual, ComparesTheElementsAlone) {
  const Mtx2D with_nan = matrix({1, NAN}, {0, 1}, {0, 0}, Mtx2DTypeGeneral);
  EXPECT_EQ(with_nan != with_nan, 1) << "NaN differs from itself";
  EXPECT_EQ(Mtx2D() != matrix({1, -0.0}, {0, 1}, {0, 0}, Mtx2DTypeGeneral, 3), 0);
}

TEST(SetType, ComparesTheElementsWithZero) {
  const auto expect = [](real_pt_t x, real_pt_t y, int type, const char* why) {
    Mtx2D m = matrix(x, y, {0, 0}, Mtx2DTypeIdentity);
    m.SetType();
    EXPECT_EQ(m.type, type) << why << ": " << testing::PrintToString(m);
  };
  expect({2, -0.0}, {0, 3}, Mtx2DTypeDiagonal, "a zero may have a sign");
  expect({-0.0, 2}, {3, 0}, Mtx2DTypeQuadrant, "x and y change places");
  expect({0, 2}, {0, 0}, Mtx2DTypeQuadrant, "m12 alone");
  expect({0, 0}, {2, 0}, Mtx2DTypeQuadrant, "m21 alone");
  expect({2, 0x1p-1074}, {0, 3}, Mtx2DTypeGeneral, "next to zero is not zero");
  expect({0, 2}, {3, 4}, Mtx2DTypeGeneral, "m22 is not zero");
  expect({4, 2}, {3, 0}, Mtx2DTypeGeneral, "m11 is not zero");
  expect({2, NAN}, {0, 3}, Mtx2DTypeGeneral, "NaN is not zero");
}

// ---- composition in place

// From a matrix whose type is stale: some steps derive it.
TEST(Composition, ActsAfterTheMatrix) {
  const auto expect = [](const char* step, const Mtx2D& expected, void (*compose)(Mtx2D&)) {
    Mtx2D m = matrix({1, 2}, {3, 4}, {5, 6}, Mtx2DTypeIdentity, 1);
    compose(m);
    EXPECT_EQ(m, expected) << step;
  };
  using M = Mtx2D;
  const int derived = Mtx2DTypeGeneral, kept = Mtx2DTypeIdentity;
  expect("Translate", matrix({1, 2}, {3, 4}, {15, 26}, kept, 1), [](M& m) { m.Translate(10, 20); });
  expect("Scale", matrix({2, -6}, {6, -12}, {10, -18}, kept, 1), [](M& m) { m.Scale(2, -3); });
  expect("Rotate last", matrix({-2, 1}, {-4, 3}, {-6, 5}, derived, 1),
         [](M& m) { m.Rotate(90, 0); });
  expect("Rotate first", matrix({3, 4}, {-1, -2}, {5, 6}, derived, 1),
         [](M& m) { m.Rotate(90, 1); });
  expect("Orient, unknown", matrix({1, 2}, {3, 4}, {5, 6}, derived, 1),
         [](M& m) { m.Orient(Mtx2DOrient{8}); });
  expect("ReflectInX", matrix({1, -2}, {3, -4}, {5, -6}, kept, 0), [](M& m) { m.ReflectInX(); });
  expect("ReflectInY", matrix({-1, 2}, {-3, 4}, {-5, 6}, kept, 3), [](M& m) { m.ReflectInY(); });
  expect("ShearInX", matrix({1, 2}, {9, 4}, {5, 6}, derived, 1), [](M& m) { m.ShearInX(9); });
  expect("InvertYAxis", matrix({1, 2}, {3, -4}, {5, 9}, kept, 1), [](M& m) { m.InvertYAxis(9); });
}

TEST(Rotate, KeepsExactZerosAtFourAnglesAndElseUsesTheShortPi) {
  for (int degrees = -720; degrees <= 720; degrees += 15) {
    Mtx2D m;
    m.Rotate(degrees, Mtx2DRotateLast);
    const bool is_exact = degrees >= 0 && degrees < 360 && degrees % 90 == 0;
    const double radians = degrees * (is_exact ? M_PI : 3.141592654) / 180.0;
    EXPECT_NEAR(m.m12, std::sin(radians), 1e-14) << degrees << " degrees";
    EXPECT_NEAR(m.m22, std::cos(radians), 1e-14) << degrees << " degrees";
    EXPECT_EQ(m.type != Mtx2DTypeGeneral, is_exact) << degrees << " degrees";
  }
}

// ---- products and measures

TEST(Product, ActsWithTheFirstMatrixFirst) {
  Mtx2D first = matrix({1, 2}, {3, 4}, {5, 6}, Mtx2DTypeGeneral, 1), result;
  Mtx2D second = matrix({7, 8}, {9, 10}, {11, 12}, Mtx2DTypeGeneral, 3);
  // 1 * 7 + 2 * 9 = 25 and so on; the origin goes to (5, 6) and from there to (100, 112).
  const Mtx2D expected = matrix({25, 28}, {57, 64}, {100, 112}, Mtx2DTypeGeneral, 2);
  EXPECT_EQ(first * second, expected);
  Mtx2D::Multiply(&first, &second, &result);
  EXPECT_EQ(result, expected);
}

TEST(Invert, UndoesTheMatrix) {
  const auto expect = [](Mtx2D m, const Mtx2D& inverse, const char* why) {
    EXPECT_EQ(m.Invert(), inverse) << why << ": " << testing::PrintToString(m);
  };
  expect(matrix({1, 2}, {3, 4}, {5, 6}, 3, 1), matrix({-2, 1}, {1.5, -0.5}, {1, -2}, 2, 1),
         "the determinant is -2; the type is derived");
  expect(matrix({2, 0}, {0, 4}, {6, 8}, 3), matrix({0.5, -0.0}, {-0.0, 0.25}, {-3, -2}, 0),
         "quotients of zero are negated");
  expect(matrix({0, 0}, {0, 0}, {1, 1}, 3), matrix({NAN, NAN}, {NAN, NAN}, {NAN, NAN}, 2),
         "a singular matrix is not detected");
}

TEST(Determinant, IsNegativeWhereASenseIsReversed) {
  Mtx2D reversing = matrix({2, 3}, {4, 5}, {0, 0}, Mtx2DTypeGeneral);
  Mtx2D singular = matrix({1, 2}, {2, 4}, {0, 0}, Mtx2DTypeGeneral);
  EXPECT_EQ(reversing.GetDeterminant(), 2 * 5 - 3 * 4);
  EXPECT_EQ(reversing.ReversesOrientation(), 1);
  EXPECT_EQ(singular.ReversesOrientation(), 0);
}

// ---- decomposition

TEST(Decomposition, ReadsScaleAndTurnsOfTheXAxis) {
  const auto expect = [](Mtx2D m, double scale, double rotation, double turn, const char* why) {
    double angle;
    int mirror;
    xfm_get_orientation(&m, &angle, &mirror);  // calls GetOrientation
    EXPECT_PRED2(is_close, m.GetScale(), scale) << why;
    EXPECT_PRED2(is_close, m.GetRotation(), rotation * M_PI) << why;
    EXPECT_PRED2(is_close, angle, turn * M_PI) << why;
    EXPECT_EQ(mirror, m.mirror) << why;
  };
  expect(matrix({0, 2}, {-2, 0}, {0, 0}, 1), 2, 0.5, 0.5, "a quarter turn");
  expect(matrix({0, -2}, {2, 0}, {0, 0}, 1), 2, 0.5, -0.5, "a turn back has a sign in one");
  expect(matrix({2, 0}, {0, 8}, {0, 0}, 0), 2, 0, 1.0 / 3, "2 by 8 is 4 by 4: the cosine is 2 / 4");
  expect(matrix({3, 4}, {6, 8}, {0, 0}, 2), 5, std::acos(0.6) / M_PI, 0, "3 / 0 counts as 1");
  expect(matrix({-2, 0}, {0, 0.5}, {0, 0}, 2), 2, 1, 1, "-2 / 1 counts as -1");
  expect(matrix({1, 0}, {0, -1}, {0, 0}, 0, 1), 1, 0, 1, "bit 0 of mirror negates m11");
  expect(matrix({0, 1}, {1, 0}, {0, 0}, 1, 2), 1, 0.5, -0.5, "bit 1 of mirror negates m12");
  expect(matrix({0, 0}, {1, 1}, {0, 0}, 2), 0, NAN, NAN, "no first row");
}

TEST(Decomposition, ReadsQuarterTurnsBeforeOrAfterAMirror) {
  const auto expect = [](real_pt_t x, real_pt_t y, int mirrored, int turn_first, int mirror_first,
                         double degrees, const char* why) {
    Mtx2D m = matrix(x, y, {0, 0}, Mtx2DTypeGeneral, 3);
    unsigned short seen[3];
    int orientation;
    double angle;
    m.GetOrientationAndXMirror(&seen[0], &orientation);
    EXPECT_EQ(orientation, turn_first) << why << ", turn first";
    m.GetXMirrorAndOrientation(&seen[1], &orientation);
    EXPECT_EQ(orientation, mirror_first) << why << ", mirror first";
    m.GetXMirrorAndRotation(&seen[2], &angle);
    EXPECT_PRED2(is_close, angle, degrees) << why;
    for (const auto was_mirrored : seen) EXPECT_EQ(was_mirrored, mirrored) << why;
  };
  expect({1, 0}, {0, 1}, 0, 0, 0, 0, "the identity");
  expect({0, 1}, {-1, 0}, 0, 1, 1, 90, "a quarter turn");
  expect({-1, 0}, {0, -1}, 0, 2, 2, 180, "a half turn");
  expect({0, -1}, {1, 0}, 0, 3, 3, 270, "three quarters of a turn");
  expect({0, 1}, {1, 0}, 1, 3, 1, 90, "mirrored, a quarter turn if the mirror is first");
  expect({0, -1}, {-1, 0}, 1, 1, 3, 270, "mirrored, a quarter turn if the turn is first");
  expect({1, 1}, {-1, 1}, 0, 1, 1, 45 * M_PI / 3.141592654, "m12 decides, and pi is short");
  expect({0, 0}, {1, 1}, 0, -1, -1, NAN, "no first row");
  expect({1, -1e-12}, {1e-12, 1}, 0, 3, 3, 360, "hardly below zero, and not snapped");
}

TEST(Decomposition, SnapsDegreesNearQuarterTurns) {
  for (const double quarter : {0.0, 90.0, 180.0, 270.0, 360.0}) {
    for (const double turn : {quarter - 0.11, quarter - 0.09, quarter + 0.09, quarter + 0.11}) {
      const bool snaps = std::fabs(turn - quarter) < 0.1;
      if (turn < 0 || turn > 360) continue;
      Mtx2D m;
      unsigned short mirrored;
      double angle;
      m.Rotate(turn, Mtx2DRotateLast);
      m.GetXMirrorAndRotation(&mirrored, &angle);
      EXPECT_NEAR(angle, snaps ? std::fmod(quarter, 360) : turn, snaps ? 0 : 1e-7) << turn;
    }
  }
}

// ---- mapping of points and rectangles

TEST(Mapping, DropsTheTermsThatTheTypeCallsZeroInEveryOperation) {
  const auto expect = [](int type, real_pt_t expected) {
    Mtx2D m = matrix({1, 2}, {3, 4}, {5, 6}, type);
    int_pt_t whole = {10, 100}, rounded;
    real_pt_t in = {10, 100}, out[5];
    m.XfmPt(10, 100, &out[0].x, &out[0].y);
    m.RealXfmPt(&in, &out[1]);
    m.InvXfmPt(&whole, &out[2]);
    m.RealXfmPts(1, &in, &out[3]);
    til_xfm_pnt(10, 100, &out[4].x, &out[4].y, &m);
    for (const auto& p : out) EXPECT_EQ(p, expected) << testing::PrintToString(m);
    m.XfmPt(&in, &rounded);
    EXPECT_EQ(1.0 * rounded.x, expected.x) << testing::PrintToString(m);
    EXPECT_EQ(1.0 * rounded.y, expected.y) << testing::PrintToString(m);
  };
  expect(Mtx2DTypeDiagonal, {10 + 5, 400 + 6});
  expect(Mtx2DTypeQuadrant, {300 + 5, 20 + 6});
  for (const int type : {2, 3, 4, -1}) expect(type, {10 + 300 + 5, 20 + 400 + 6});
}

TEST(Mapping, AddsTheTranslationLast) {
  const double small = 0x1p-53;  // 1 + small is rounded to 1; small + small would count
  Mtx2D m = matrix({1, small}, {small, 1}, {small, small}, Mtx2DTypeGeneral);
  real_pt_t in = {1, 1}, out;
  m.RealXfmPt(&in, &out);
  EXPECT_EQ(out, in);
  EXPECT_EQ(matrix({1, 0}, {0, 1}, in, 0) * m, matrix({1, small}, {small, 1}, in, 2)) << "product";
}

// Each row is a place where another rule would answer differently.
TEST(Mapping, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const auto expect = [](double v, int rounded, int times_eight, short low_half, const char* why) {
    real_pt_t in[] = {{v, 0}, {0, v}};
    int_pt_t ints[2], fixed[2];
    short_pt_t shorts[2];
    Mtx2D m;
    m.XfmPts(2, in, ints);
    m.XfmFPts(2, in, fixed);
    m.XfmSPts(2, in, shorts);
    EXPECT_EQ(ints[0], (int_pt_t{rounded, 0})) << why << ": x is " << v;
    EXPECT_EQ(ints[1], (int_pt_t{0, rounded})) << why << ": y is " << v;
    EXPECT_EQ(fixed[0], (int_pt_t{times_eight, 0})) << why << ": x is " << v;
    EXPECT_EQ(shorts[1], (short_pt_t{0, low_half})) << why << ": y is " << v;
  };
  expect(0.5, 1, 8, 1, "half up");
  expect(-2.5, -3, -24, -3, "half down, not to even");
  expect(0x1.fffffffffffffp-2, 1, 8, 1, "adding 0.5 rounds up");
  expect(3.4, 3, 24, 3, "rounded before it is multiplied");
  expect(32768, 32768, 262144, -32768, "16 bits wrap");
  expect(0x20000001, 0x20000001, 8, 1, "high bits are lost");
  expect(2147483647.25, INT_MAX, -8, -1, "the last that fits");
  expect(2147483647.5, INT_MIN, 0, 0, "too large");
  expect(-2147483648.5, INT_MIN, 0, 0, "too small");
  expect(NAN, INT_MIN, 0, 0, "not a number");
}

TEST(XfmRect, IsTheBoxOfFourMappedCorners) {
  const auto expect = [](Mtx2D m, int_rect_t in, real_pt_t low, real_pt_t high, const char* why) {
    const auto corners = [](const auto& rect) {
      return std::vector(rect.corners, rect.corners + 4);
    };
    real_rect_t expected = {{low, {low.x, high.y}, high, {high.x, low.y}}}, real, out, flat;
    int_rect_t expected_ints, ints;
    Mtx2D().XfmPts(4, expected.corners, expected_ints.corners);
    for (int turn = 0; turn < 4; ++turn) {  // any corner may come first
      std::rotate(in.corners, in.corners + 1, in.corners + 4);
      for (int i = 0; i < 4; ++i) Mtx2D().InvXfmPt(&in.corners[i], &real.corners[i]);
      m.XfmRect(&in, &out);
      m.XfmRect(&real, &ints);
      XfmRect(&real, &flat, &m);
      m.XfmRect(&real, &real);
      EXPECT_EQ(corners(out), corners(expected)) << why << ", of integers";
      EXPECT_EQ(corners(ints), corners(expected_ints)) << why << ", rounded";
      EXPECT_EQ(corners(flat), corners(expected)) << why << ", flat function";
      EXPECT_EQ(corners(real), corners(expected)) << why << ", in place";
    }
  };
  const Mtx2D turn(0, 0, Mtx2DOrientRot90, 1, 1, 0, 0), scale(0, 0, Mtx2DOrientNone, 0.5, 4, 0, 0);
  expect(turn, {{{0, 0}, {0, 1}, {2, 1}, {2, 0}}}, {-1, 0}, {0, 2}, "a quarter turn");
  expect(Mtx2D(), {{{0, 5}, {5, 9}, {9, 4}, {4, 1}}}, {0, 1}, {9, 9}, "no upright rectangle");
  expect(scale, {{{1, 0}, {1, 0}, {3, 1 << 30}, {3, 9}}}, {0.5, 0}, {1.5, 0x1p32},
         "rounded after the box is taken: 2^32 is its top");
}

// ---- mapping of polygons

using Reals = support::Vertices<real_pt_t>;
using Ints = support::Vertices<int_pt_t>;

TEST(XfmPolygon, DropsVerticesThatLandOnTheOneBefore) {
  const auto expect = [](const Reals& in, const Ints& kept, const char* why) {
    support::SetArrays<real_pt_t> source(in), real_out(in.size());
    support::SetArrays<int_pt_t> out(in.size()), line(in.size());
    const int n = static_cast<int>(in.size());
    drw_pset_t set = {n, source.points.data(), source.flags.data()};
    drw_pset_t real_set = {-1, real_out.points.data(), real_out.flags.data()};
    drw_dpset_t int_set = {-1, out.points.data(), out.flags.data()};
    int count;
    Mtx2D m;
    m.XfmPolySetPts(&set, &int_set);
    m.XfmPolyPts(n, &count, set.points, line.points.data());
    m.RealXfmPolyPtSet(&set, &real_set);
    EXPECT_EQ(out.first(int_set.n_points), kept) << why;
    EXPECT_EQ(count, int_set.n_points) << why << ", XfmPolyPts";
    EXPECT_EQ(line.points, out.points) << why << ", XfmPolyPts";
    Reals real_kept;
    for (const auto& [p, flag] : kept) real_kept.push_back({{1.0 * p.x, 1.0 * p.y}, flag});
    EXPECT_EQ(real_out.first(real_set.n_points), real_kept) << why << ", in reals";
  };
  expect({}, {}, "nothing");
  expect({{{4, 0}, 0}, {{5, 0}, 1}, {{5, 0}, 3}}, {{{4, 0}, 0}, {{5, 0}, 3}},
         "the closing flag of a repeat survives");
  expect({{{0, 0}, 0}, {{5, 5}, 1}, {{0, 0}, 3}}, {{{0, 0}, 0}, {{5, 5}, 1}},
         "there and back is a line");
  expect({{{0, 0}, 1}, {{5, 5}, 1}, {{5, 0}, 1}, {{0, 0}, 3}},
         {{{0, 0}, 1}, {{5, 5}, 1}, {{5, 0}, 1}, {{0, 0}, 3}}, "only neighbours are compared");
  expect({{{0, 0}, 1}, {{1, 1}, 3}, {{1, 1}, 0}, {{2, 2}, 2}},
         {{{0, 0}, 1}, {{1, 1}, 0}, {{2, 2}, 2}}, "polygons that touch run together");
  Reals long_in;
  Ints long_kept;
  for (int i = 0; i < 300; ++i) long_in.push_back({{i / 3 * 1.0, 0}, i % 4});
  for (int i = 0; i < 100; ++i) long_kept.push_back({{i, 0}, (3 * i + 2) % 4});
  expect(long_in, long_kept, "each vertex three times");
}

TEST(XfmPolygon, ComparesWhatItWrites) {
  real_pt_t in[] = {{0.1, 0.1}, {0.2, 0.2}, {5, 5}}, reals[3];
  int_pt_t ints[3];
  int flags[] = {1, 1, 3}, out_flags[3], count;
  drw_pset_t set = {3, in, flags}, out = {0, reals, out_flags};
  Mtx2D().XfmPolyPts(3, &count, in, ints);
  Mtx2D().RealXfmPolyPtSet(&set, &out);
  EXPECT_EQ(count, 2) << "0.1 and 0.2 are both rounded to 0";
  EXPECT_EQ(out.n_points, 3) << "in reals they stay apart";
}

}  // namespace
