#include "support/vector_forms.h"

#include <zelvan/transforms/mtx2d.h>

#include <memory>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"

#include <gtest/gtest.h>

namespace {

using support::bits;
using support::GuardedArray;
using support::Random;

// What the four array operations write for one input.
struct Mapped {
  GuardedArray<real_pt_t> reals;
  GuardedArray<int_pt_t> ints, fixed;
  GuardedArray<short_pt_t> shorts;

  Mapped(Mtx2D& m, int n, real_pt_t* in) : reals(n), ints(n), fixed(n), shorts(n) {
    m.RealXfmPts(n, in, reals.data());
    m.XfmPts(n, in, ints.data());
    m.XfmFPts(n, in, fixed.data());
    m.XfmSPts(n, in, shorts.data());
  }
};

// Every vector form gives the bits of the plain loop, on hard points, at every length.
TEST(ArrayMapping, GivesTheSameBitsInEveryForm) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    Random random(seed);
    Mtx2D m = random.matrix(static_cast<int>(seed) % 4);
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", type " << m.type);
    for (int n = 0; n <= 70; ++n) {
      GuardedArray<real_pt_t> in(random.hard_points(n));
      std::unique_ptr<Mapped> plain;
      support::with_each_form([&] { plain = std::make_unique<Mapped>(m, n, in.data()); },
                              [&](const char* form) {
                                Mapped vector(m, n, in.data());
                                for (int i = 0; i < n; ++i) {
                                  SCOPED_TRACE(testing::Message()
                                               << form << ", point " << i << " of " << n);
                                  ASSERT_EQ(bits(vector.reals[i]), bits(plain->reals[i]));
                                  ASSERT_EQ(bits(vector.ints[i]), bits(plain->ints[i]));
                                  ASSERT_EQ(bits(vector.fixed[i]), bits(plain->fixed[i]));
                                  ASSERT_EQ(bits(vector.shorts[i]), bits(plain->shorts[i]));
                                }
                              });
    }
  }
}

}  // namespace
