#include <zelvan/pick/pick_polyline.h>
#include <zelvan/pick/pick_rect.h>
#include <zelvan/pick/polygon.h>

#include "support/refusing_heap.h"

#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace {

// What holds for the arrays of polylines holds for those of polygons.
template <class Region>
class OwnedArray : public testing::Test {};

using Regions = testing::Types<CPickPolyline, CPolygon>;
TYPED_TEST_SUITE(OwnedArray, Regions);

double xs[] = {0, 10, 10, 0}, ys[] = {0, 0, 10, 10};

template <class Region>
struct Derived : Region {
  Derived() = default;
  using Region::n_points;
  using Region::points;
};

TYPED_TEST(OwnedArray, IsCopiedDeeply) {
  TypeParam a(4u, xs, ys), fresh(5u), empty(1u), from_points(4u, a.start());
  EXPECT_EQ(fresh.end() - fresh.start(), 5);
  for (DblPt& p : std::vector<DblPt>(fresh.start(), fresh.end())) {
    EXPECT_EQ(p.x, 0.0);
    EXPECT_EQ(p.y, 0.0);
  }
  EXPECT_EQ(from_points.start()[2].x, 10.0);

  TypeParam b(a);
  b.set(0, 9.0, 9.0);
  EXPECT_EQ(a.start()[0].x, 0.0);
  fresh = a;
  fresh.set(3, 7.0, 7.0);
  EXPECT_EQ(a.start()[3].y, 10.0);
  EXPECT_EQ(fresh.end() - fresh.start(), 4);
  TypeParam& self = a;
  a = self;
  EXPECT_EQ(a.start()[1].x, 10.0);
  a = empty;
  EXPECT_EQ(a.start(), nullptr);
  EXPECT_EQ(a.end(), nullptr);
  EXPECT_FALSE(a.isInside(0.0, 0.0, 1e9));
}

TYPED_TEST(OwnedArray, IsMappedIntoACopyOfTheSameClass) {
  Mtx2D shift;
  shift.Translate(1.0, 2.0);
  TypeParam a(4u, xs, ys), empty(0u);
  std::unique_ptr<CPickRegion> copy(a.xfm(shift));
  auto* mapped = dynamic_cast<TypeParam*>(copy.get());
  ASSERT_NE(mapped, nullptr);
  EXPECT_NE(mapped->start(), a.start());
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(mapped->start()[i].x, xs[i] + 1.0);
    EXPECT_EQ(mapped->start()[i].y, ys[i] + 2.0);
    EXPECT_EQ(a.start()[i].x, xs[i]);
  }
  EXPECT_EQ(empty.xfm(shift), nullptr);
}

// A derived class may leave a single point, which is no shape but is copied and mapped.
TYPED_TEST(OwnedArray, MayBeFilledByADerivedClass) {
  Derived<TypeParam> one;
  EXPECT_EQ(one.start(), nullptr);
  one.points = static_cast<DblPt*>(std::malloc(sizeof(DblPt)));
  one.n_points = 1;
  one.set(0, 3.0, 4.0);
  EXPECT_FALSE(static_cast<TypeParam&>(one).isInside(3.0, 4.0, 1.0));
  Mtx2D identity;
  std::unique_ptr<CPickRegion> copy(one.xfm(identity));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(dynamic_cast<TypeParam&>(*copy).start()[0].y, 4.0);
}

// Every request refused in turn: constructors and assignment leave the empty region, xfm gives
// null, and nothing is thrown.
TYPED_TEST(OwnedArray, IsEmptyWhenTheHeapRefuses) {
  TypeParam source(4u, xs, ys);
  Mtx2D identity;
  std::optional<TypeParam> made;
  const auto is_whole_or_empty = [&](bool refused) {
    EXPECT_EQ(made->end() - made->start(), refused ? 0 : 4);
    EXPECT_EQ(made->start() == nullptr, refused);
  };
  using support::refuse_each_request;
  EXPECT_EQ(refuse_each_request([&] { made.emplace(4u); }, is_whole_or_empty), 1);
  EXPECT_EQ(refuse_each_request([&] { made.emplace(4u, xs, ys); }, is_whole_or_empty), 1);
  EXPECT_EQ(refuse_each_request([&] { made.emplace(4u, source.start()); }, is_whole_or_empty), 1);
  EXPECT_EQ(refuse_each_request([&] { made.emplace(source); }, is_whole_or_empty), 1);
  EXPECT_EQ(refuse_each_request([&] { *made = source; }, is_whole_or_empty), 1);

  std::unique_ptr<CPickRegion> copy;
  EXPECT_EQ(refuse_each_request([&] { copy.reset(source.xfm(identity)); },
                                [&](bool refused) { EXPECT_EQ(copy == nullptr, refused); }),
            2);
}

TEST(CPickRect, GivesNoCopyWhenTheHeapRefuses) {
  CPickRect rect(0, 0, 1, 1);
  Mtx2D identity;
  std::unique_ptr<CPickRegion> copy;
  EXPECT_EQ(support::refuse_each_request([&] { copy.reset(rect.xfm(identity)); },
                                         [&](bool refused) { EXPECT_EQ(!copy, refused); }),
            1);
}

}  // namespace
