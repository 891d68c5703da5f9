#include <zelvan/transforms/matrix_functions.h>

#include "support/polygon_set.h"
#include "transforms/matrix.h"

#include <climits>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

// Scaled by 2 and 3, about a reference point that goes from (10, 20) to (100, 200). A reflection
// negates zeros as well; the half turn has a -0.0 from 0 * -1 - 1 * 0.
TEST(SetXfm, TurnsThenScalesAboutTheReferencePoint) {
  const auto expect = [](Mtx2DOrient orient, real_pt_t x, real_pt_t y, int type, int mirror) {
    Mtx2D m = matrix({2, 3}, {4, 5}, {6, 7}, Mtx2DTypeGeneral, 3);
    set_xfm(10, 20, orient, 2, 3, 100, 200, &m);  // calls SetXfm
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

TEST(Mtx2D, DiffersByAnyOfItsSixElements) {
  for (double Mtx2D::*element :
       {&Mtx2D::m11, &Mtx2D::m12, &Mtx2D::m21, &Mtx2D::m22, &Mtx2D::tx, &Mtx2D::ty}) {
    Mtx2D identity = matrix({1, 0}, {0, 1}, {0, 0}, Mtx2DTypeGeneral), other = identity;
    EXPECT_FALSE(identity != other);
    other.*element += 7;
    EXPECT_TRUE(identity != other) << testing::PrintToString(other);
    identity.SetIdentity();
    other.SetIdentity();
    EXPECT_EQ(identity.type, Mtx2DTypeIdentity);
    EXPECT_EQ(other.type, Mtx2DTypeGeneral) << testing::PrintToString(other);
  }
}

TEST(Rotate, KeepsExactZerosAtFourAnglesAndElseUsesTheShortPi) {
  for (int degrees = -720; degrees <= 720; degrees += 15) {
    Mtx2D m = matrix({1, 0}, {0, 1}, {0, 0}, Mtx2DTypeGeneral), first = m;
    m.Rotate(degrees, Mtx2DRotateLast);
    first.Rotate(degrees, Mtx2DRotateFirst);
    const bool is_exact = degrees >= 0 && degrees < 360 && degrees % 90 == 0;
    const double radians = degrees * (is_exact ? M_PI : 3.141592654) / 180.0;
    EXPECT_NEAR(m.m12, std::sin(radians), 1e-14) << degrees << " degrees";
    EXPECT_NEAR(m.m22, std::cos(radians), 1e-14) << degrees << " degrees";
    EXPECT_NEAR(first.m11, std::cos(radians), 1e-14) << degrees << " degrees, first";
    EXPECT_EQ(m.type != Mtx2DTypeGeneral, is_exact) << degrees << " degrees";
  }
}

TEST(Product, ActsWithTheFirstMatrixFirst) {
  Mtx2D first = matrix({1, 2}, {3, 4}, {5, 6}, Mtx2DTypeGeneral, 1), result;
  Mtx2D second = matrix({7, 8}, {9, 10}, {11, 12}, Mtx2DTypeGeneral, 3);
  // 1 * 7 + 2 * 9 = 25 and so on; the origin goes to (5, 6) and from there to (100, 112).
  const Mtx2D expected = matrix({25, 28}, {57, 64}, {100, 112}, Mtx2DTypeGeneral, 2);
  Mtx2D::Multiply(&first, &second, &result);
  EXPECT_EQ(result, expected);
  multiply_matrices(&first, &second, &second);  // calls operator*
  EXPECT_EQ(second, expected) << "into an operand";
}

TEST(Invert, DividesByTheDeterminant) {
  Mtx2D m = matrix({1, 2}, {4, 0}, {5, 6}, Mtx2DTypeIdentity, 1);
  Mtx2D shear = matrix({2, 0}, {4, 4}, {6, 8}, Mtx2DTypeIdentity);
  Mtx2D singular = matrix({0, 0}, {0, 0}, {1, 1}, Mtx2DTypeIdentity);
  EXPECT_EQ(m.GetDeterminant(), 1 * 0 - 2 * 4);
  EXPECT_EQ(m.ReversesOrientation(), 1);
  EXPECT_EQ(singular.ReversesOrientation(), 0);
  EXPECT_EQ(m.Invert(), matrix({-0.0, 0.25}, {0.5, -0.125}, {-3, -0.5}, Mtx2DTypeGeneral, 1));
  EXPECT_EQ(shear.Invert(), matrix({0.5, -0.0}, {-0.5, 0.25}, {1, -2}, Mtx2DTypeGeneral));
  EXPECT_EQ(singular.Invert(), matrix({NAN, NAN}, {NAN, NAN}, {NAN, NAN}, Mtx2DTypeGeneral));
}

TEST(Decomposition, ReadsScaleAndTurnsOfTheXAxis) {
  const auto expect = [](Mtx2D m, double scale, double rotation, double turn, const char* why) {
    SCOPED_TRACE(testing::Message() << why << ": " << testing::PrintToString(m));
    double angle;
    int mirror;
    xfm_get_orientation(&m, &angle, &mirror);  // calls GetOrientation
    EXPECT_NEAR(m.GetScale(), scale, 1e-12);
    EXPECT_NEAR(m.GetRotation(), rotation * M_PI, 1e-12);
    EXPECT_NEAR(angle, turn * M_PI, 1e-12);
    EXPECT_EQ(mirror, m.mirror);
  };
  expect(matrix({0, -2}, {2, 0}, {0, 0}, 1), 2, 0.5, -0.5, "a turn back has a sign in one");
  expect(matrix({2, 0}, {0, 8}, {0, 0}, 0), 2, 0, 1.0 / 3, "2 by 8 is 4 by 4: the cosine is 2 / 4");
  expect(matrix({3, 4}, {6, 8}, {0, 0}, 2), 5, std::acos(0.6) / M_PI, 0, "3 / 0 counts as 1");
  expect(matrix({4, 0}, {0, 3.9}, {0, 0}, 0), 4, 0, 0, "a little above 1 counts as 1");
  expect(matrix({-4, 0}, {0, -3.9}, {0, 0}, 0), 4, 1, 1, "a little below -1 counts as -1");
  expect(matrix({1, 0}, {0, -1}, {0, 0}, 0, 1), 1, 0, 1, "bit 0 of mirror negates m11");
  expect(matrix({0, 1}, {1, 0}, {0, 0}, 1, 2), 1, 0.5, -0.5, "bit 1 of mirror negates m12");
}

TEST(Decomposition, ReadsQuarterTurnsBeforeOrAfterAMirror) {
  const auto expect = [](real_pt_t x, real_pt_t y, bool mirrors, int turn_first, int mirror_first,
                         double degrees, const char* why) {
    Mtx2D m = matrix(x, y, {0, 0}, Mtx2DTypeGeneral, 3);
    SCOPED_TRACE(testing::Message() << why << ": " << testing::PrintToString(m));
    unsigned short mirrored[3];
    int codes[2];
    double angle;
    m.GetOrientationAndXMirror(&mirrored[0], &codes[0]);
    m.GetXMirrorAndOrientation(&mirrored[1], &codes[1]);
    m.GetXMirrorAndRotation(&mirrored[2], &angle);
    EXPECT_EQ(codes[0], turn_first);
    EXPECT_EQ(codes[1], mirror_first);
    EXPECT_NEAR(angle, degrees, 1e-9);
    for (const auto result : mirrored) EXPECT_EQ(result, mirrors);
  };
  expect({-1, 0}, {0, -1}, 0, 2, 2, 180, "a half turn");
  expect({0, 1}, {1, 0}, 1, 3, 1, 90, "mirrored, a quarter turn if the mirror is first");
  expect({0, -1}, {-1, 0}, 1, 1, 3, 270, "mirrored, a quarter turn if the turn is first");
  expect({0.5, 0.5}, {-0.5, 0.5}, 0, 1, 1, 45 * M_PI / 3.141592654, "m12 decides, and pi is short");
  expect({1, -1e-12}, {1e-12, 1}, 0, 3, 3, 360, "hardly below zero, and not snapped");
}

TEST(Decomposition, SnapsDegreesNearQuarterTurns) {
  for (int degrees = 0; degrees < 360; degrees += 90) {
    for (const double beside : {0.0, 0.09, 0.11, 89.89, 89.91}) {
      Mtx2D m;
      unsigned short mirrored;
      double angle;
      m.Rotate(degrees + beside, Mtx2DRotateLast);
      m.GetXMirrorAndRotation(&mirrored, &angle);
      const bool snaps = beside < 0.1 || beside > 89.9;
      const double snapped = (degrees + (beside < 45 ? 0 : 90)) % 360;
      EXPECT_NEAR(angle, snaps ? snapped : degrees + beside, snaps ? 0 : 1e-7)
          << "turned by " << degrees + beside;
    }
  }
}

TEST(Mapping, DropsTheTermsThatTheTypeCallsZero) {
  const auto expect = [](int type, real_pt_t expected) {
    Mtx2D m = matrix({1, 2}, {3, 4}, {5, 6}, type);
    int_pt_t whole = {10, 100};
    real_pt_t in = {10, 100}, out[4];
    til_xfm_pnt(10, 100, &out[0].x, &out[0].y, &m);  // calls XfmPt
    m.RealXfmPt(&in, &out[1]);
    zelvan_map_points_from_device(1, &whole, &out[2], &m);  // calls InvXfmPt
    zelvan_map_points(1, &in, &out[3], &m);                 // calls RealXfmPts
    for (const auto& p : out)
      EXPECT_EQ(p, expected) << "(10, 100) by " << testing::PrintToString(m);
  };
  expect(Mtx2DTypeDiagonal, {10 + 5, 400 + 6});
  expect(Mtx2DTypeQuadrant, {300 + 5, 20 + 6});
  for (const int type : {2, 3, 4, -1}) expect(type, {10 + 300 + 5, 20 + 400 + 6});
}

// Each row is a place where another rule would answer differently.
TEST(Mapping, RoundsHalvesAwayFromZeroAndClampsNothing) {
  const auto expect = [](double v, int rounded, int times_eight, short low_half, const char* why) {
    SCOPED_TRACE(testing::Message() << why << ": " << support::digits(v));
    real_pt_t in = {v, v};
    int_pt_t one, ints, fixed;
    short_pt_t shorts;
    const Mtx2D unmoved;
    Mtx2D().XfmPt(&in, &one);
    zelvan_map_points_to_device(1, &in, &ints, &unmoved);  // calls XfmPts
    Mtx2D().XfmFPts(1, &in, &fixed);
    Mtx2D().XfmSPts(1, &in, &shorts);
    EXPECT_EQ(one, (int_pt_t{rounded, rounded}));
    EXPECT_EQ(ints, (int_pt_t{rounded, rounded}));
    EXPECT_EQ(fixed, (int_pt_t{times_eight, times_eight}));
    EXPECT_EQ(shorts, (short_pt_t{low_half, low_half}));
  };
  expect(0.5, 1, 8, 1, "half up");
  expect(-2.5, -3, -24, -3, "half down, not to even");
  expect(0x1.fffffffffffffp-2, 1, 8, 1, "adding 0.5 rounds up");
  expect(3.4, 3, 24, 3, "rounded before it is multiplied");
  expect(0x20008000, 0x20008000, 0x40000, -0x8000, "high bits are lost");
  expect(2147483647.5, INT_MIN, 0, 0, "too large");
  expect(NAN, INT_MIN, 0, 0, "not a number");
}

TEST(XfmRect, IsTheBoxOfFourMappedCorners) {
  const auto expect = [](Mtx2D m, int_rect_t in, real_pt_t low, real_pt_t high, const char* why) {
    const real_pt_t expected[] = {low, {low.x, high.y}, high, {high.x, low.y}};
    real_rect_t real, out;
    int_rect_t rounded;
    for (int i = 0; i < 4; ++i) Mtx2D().InvXfmPt(&in.corners[i], &real.corners[i]);
    m.XfmRect(&in, &out);
    m.XfmRect(&real, &rounded);
    XfmRect(&real, &real, &m);  // calls the operation of the class, in place
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(out.corners[i], expected[i]) << why << ", of integers";
      EXPECT_EQ(real.corners[i], expected[i]) << why << ", in place";
      EXPECT_EQ(rounded.corners[i].x, std::lround(expected[i].x)) << why << ", rounded";
      EXPECT_EQ(rounded.corners[i].y, std::lround(expected[i].y)) << why << ", rounded";
    }
  };
  const Mtx2D turn(0, 0, Mtx2DOrientRot90, 1, 1, 0, 0);
  const Mtx2D half(0, 0, Mtx2DOrientNone, 0.5, 1, 0, 0);
  expect(turn, {{{0, 0}, {0, -1}, {2, -1}, {2, 0}}}, {0, 0}, {1, 2}, "a quarter turn");
  expect(half, {{{1, 5}, {5, 9}, {9, 4}, {4, 1}}}, {0.5, 1}, {4.5, 9}, "no upright rectangle");
}

using Reals = support::Vertices<real_pt_t>;
using Ints = support::Vertices<int_pt_t>;

// Maps to pixels by `XfmPolySetPts`, which compares each vertex with the one before; if `apart`, by
// `XfmPolygons`, which compares only vertices of the same polygon.
Ints rounded(const Reals& in, bool apart = false) {
  support::SetArrays<real_pt_t> source(in);
  support::SetArrays<int_pt_t> room(in.size());
  drw_pset_t set = {static_cast<int>(in.size()), source.points.data(), source.flags.data()};
  drw_dpset_t out = {-1, room.points.data(), room.flags.data()};
  Mtx2D unmoved;
  if (apart) zelvan_map_polygons_to_device(&set, &out, &unmoved);  // calls XfmPolygons
  if (!apart) unmoved.XfmPolySetPts(&set, &out);
  return room.first(out.n_points);
}

TEST(XfmPolySetPts, DropsVerticesThatLandOnTheOneBefore) {
  EXPECT_EQ(rounded({{{4, 0}, 0}, {{5, 0}, 1}, {{5.25, 0}, 3}}), (Ints{{{4, 0}, 0}, {{5, 0}, 3}}))
      << "the closing flag of a repeat survives";
  EXPECT_EQ(rounded({{{0, 0}, 1}, {{5, 0}, 1}, {{0, 0}, 3}}), (Ints{{{0, 0}, 1}, {{5, 0}, 1}}))
      << "there and back is a line";
  EXPECT_EQ(rounded({{{0, 0}, 1}, {{5, 0}, 1}, {{5, 5}, 1}, {{0, 0}, 3}}).size(), 4u)
      << "a ring of three or more keeps its repeated start";
  EXPECT_EQ(rounded({{{0, 0}, 1}, {{1, 1}, 3}, {{1, 1}, 0}, {{2, 2}, 2}}),
            (Ints{{{0, 0}, 1}, {{1, 1}, 0}, {{2, 2}, 2}}))
      << "polygons that touch run together";
}

TEST(XfmPolygons, MergesVerticesOfOnePolygonOnly) {
  EXPECT_EQ(rounded({{{5, 0}, 1}, {{5.25, 0}, 1}, {{5, 0.25}, 0}, {{9, 0}, 3}}, true),
            (Ints{{{5, 0}, 0}, {{9, 0}, 3}}))
      << "of vertices that fall together the last one's flag stays";
  EXPECT_EQ(rounded({{{0, 0}, 1}, {{1, 1}, 3}, {{1, 1}, 0}, {{1.25, 1}, 2}, {{1, 1}, 2}}, true),
            (Ints{{{0, 0}, 1}, {{1, 1}, 3}, {{1, 1}, 2}, {{1, 1}, 2}}))
      << "polygons that touch stay apart, and one vertex is left of each";
  EXPECT_EQ(rounded({{{0, 0}, 1}, {{0, 5}, 1}, {{0, 0}, 3}, {{1, 1}, 1}, {{2, 2}, 7}}, true),
            (Ints{{{0, 0}, 1}, {{0, 5}, 1}, {{0, 0}, 3}}))
      << "last and first aren't compared; what no flag closes is dropped, and 7 closes nothing";
  EXPECT_EQ(rounded({{{0, 0}, 1}}, true), Ints{}) << "nothing is closed";
}

TEST(RealXfmPolygons, ComparesUnroundedCoordinates) {
  support::SetArrays<real_pt_t> in({{{1.25, 0}, 1}, {{1, -0.0}, 1}, {{1, 0}, 2}}), room(3);
  const drw_pset_t set = {3, in.points.data(), in.flags.data()};
  drw_pset_t out = {-1, room.points.data(), room.flags.data()};
  Mtx2D unmoved;
  unmoved.ty = -0.0;                          // -0.0 + -0.0 is -0.0; adding 0.0 makes it 0.0
  zelvan_map_polygons(&set, &out, &unmoved);  // calls RealXfmPolygons
  EXPECT_EQ(room.first(out.n_points), (Reals{{{1.25, 0}, 1}, {{1, 0}, 2}}))
      << "-0.0 equals 0.0, and the last of equals stays";
}

// After vertex 0, every three vertices round to one pixel, and every six are a polygon. So vertex
// 128, which begins a block, rounds to the same pixel as the one before, and vertex 256 does not.
TEST(XfmPolygon, ComparesVerticesAsItWritesThem) {
  Reals vertices = {{{-1, 0}, 3}};
  for (int i = 0; i < 300; ++i) {
    vertices.push_back({{i / 3 + i % 3 * 0.125, 0}, i % 6 == 5 ? 3 : 1});
  }
  support::SetArrays<real_pt_t> in(vertices), reals(301);
  std::vector<int_pt_t> out(301);
  drw_pset_t set = {301, in.points.data(), in.flags.data()};
  drw_pset_t kept = {-1, reals.points.data(), reals.flags.data()};
  Mtx2D unmoved;
  zelvan_map_polygons(&set, &kept, &unmoved);
  EXPECT_EQ(reals.first(kept.n_points), vertices) << "no two are one in reals, polygon by polygon";
  int count;
  unmoved.XfmPolyPts(301, &count, in.points.data(), out.data());
  unmoved.RealXfmPolyPtSet(&set, &kept);
  EXPECT_EQ(count, 101) << "three are one when rounded";
  EXPECT_EQ(kept.n_points, 301) << "no two are one in reals";
  EXPECT_EQ(rounded(vertices, true).size(), 101u) << "three are one, polygon by polygon";
}

}  // namespace
