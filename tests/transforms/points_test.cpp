#include <zelvan/transforms/aligned_rect.h>
#include <zelvan/transforms/points.h>

#include "support/bits.h"
#include "support/random.h"

#include <cmath>

#include <gtest/gtest.h>

using support::bits;

// Which operand wins a tie shows in the sign of a zero, and in what a NaN leaves behind.
TEST(CAlignedRect, SortsByTheInterfacesComparisons) {
  for (int code = 0; code < 256; ++code) {
    const double values[] = {-0.0, 0.0, 1.0, NAN};
    DblPt p(values[code % 4], values[code / 4 % 4]), q(values[code / 16 % 4], values[code / 64]);
    CAlignedRect boxes[] = {{p, q}, {p.x, p.y, q.x, q.y}, {9, 9, 9, 9}, {9, 9, 9, 9}};
    boxes[2].set(p, q), boxes[3].set(p.x, p.y, q.x, q.y);
    for (CAlignedRect& box : boxes) {
      EXPECT_EQ(bits(box.left()), bits(p.x < q.x ? p.x : q.x));
      EXPECT_EQ(bits(box.bottom()), bits(p.y < q.y ? p.y : q.y));
      EXPECT_EQ(bits(box.right()), bits(q.x > p.x ? q.x : p.x));
      EXPECT_EQ(bits(box.top()), bits(q.y > p.y ? q.y : p.y));
    }
  }
}

// A point on the grown or shrunk edge is inside, while equality ends just before the tolerance. In
// tenths the digest sees that the tolerance is added to the point, not to the edge.
TEST(CAlignedRect, HoldsItsEdgesWithinTheTolerance) {
  support::Random random(1);
  support::FnvDigest digest;
  for (int i = 0; i < 100000 && !HasFailure(); ++i) {
    const double unit = i % 2 == 0 ? 0.5 : 0.1;
    const auto from = [&](int low, int n) { return (low + random.below(n)) * unit; };
    DblPt low{from(0, 99), from(0, 99)}, high{low.x + from(0, 9), low.y + from(0, 9)};
    DblPt p{low.x + from(-9, 27), low.y + from(-9, 27)};
    double tol = from(-4, 13);
    double* const values[] = {&low.x, &low.y, &high.x, &high.y, &p.x, &p.y, &tol};
    if (i % 9 == 0) *values[i % 7] = NAN;
    const bool inside = CAlignedRect(low, high).isInside(p, tol), equal = low.isEqualTo(p, tol);
    digest.add(inside), digest.add(equal);
    if (unit == 0.1) continue;
    EXPECT_EQ(equal, std::fabs(p.x - low.x) < tol && std::fabs(p.y - low.y) < tol);
    EXPECT_EQ(inside, std::fabs(2 * p.x - low.x - high.x) <= high.x - low.x + 2 * tol &&
                          std::fabs(2 * p.y - low.y - high.y) <= high.y - low.y + 2 * tol);
  }
  EXPECT_EQ(digest.value(), 3731133807399406853u);
}
