#include <zelvan/linetypes/line_type_list.h>

#include "support/bits.h"
#include "support/random.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>

#include <gtest/gtest.h>

namespace {

using Definition = CLineTypeDefinition;

Definition line_type(unsigned index, const std::vector<double>& fragments, double length = 1.0) {
  Definition result;
  result.SetIndex(index);
  result.SetPatternLength(length);
  for (const double fragment : fragments) result.AddFragment(fragment);
  return result;
}

TEST(LineTypeDefinition, TakesTwentyFragmentsAndNoEmptyGap) {
  Definition d = line_type(7, {}), other = line_type(8, {1.0, 1.0});
  CLineTypeDefPattern &p = d.GetPattern(), &q = other.GetPattern();
  EXPECT_EQ(p.GetFirstFragment(), -1.0);
  const double lengths[] = {0.0, -0.0, -1.0, 0.1, 0.0, 1e9, 0x1p-60, 0.3};
  std::vector<double> taken;
  double sum = 0.0;
  for (int i = 0; i < 40; ++i) {
    const double length = lengths[i % 8];
    const bool fits = taken.size() < 20 && (taken.size() % 2 == 0 || length != 0.0);
    ASSERT_EQ(d.AddFragment(length), fits) << length << " after " << taken.size();
    if (fits) taken.push_back(length), sum += length;
  }
  EXPECT_EQ(p.GetFirstFragment(), taken[0]);
  EXPECT_EQ(CLineTypeDefPattern(p).GetNextFragment(), taken[1]) << "a copy goes on from there";
  other.SetPattern(p);
  EXPECT_TRUE(other == d && !(other != d) && p == q && !(p != q) && other.GetIndex() == 8u);
  EXPECT_EQ(q.GetNextFragment(), taken[0]) << "rewound";
  EXPECT_EQ(std::pair(q.GetNumFragments(), q.GetFragmentSum()), std::pair(20, sum));
  taken.back() = std::nextafter(taken.back(), 0.0);
  for (Definition u : {line_type(7, taken), line_type(7, {}), line_type(7, {NAN})}) {
    EXPECT_TRUE(d != u && !(u == d) && p != u.GetPattern() && !(u.GetPattern() == p));
  }
  other.RemoveAllFragments();
  EXPECT_TRUE(other == line_type(7, {}) && other != line_type(8, {}, 1.0 + 0x1p-52));
  EXPECT_EQ(q.GetFragmentSum() + q.GetNextFragment(), -1.0);
}

// A list beside a vector, with indices and patterns that meet all the time, until it is full.
TEST(LineTypeList, BehavesLikeAVector) {
  support::Random random(3);
  CLineTypeDefList list;
  std::vector<Definition> model;
  unsigned next = 1;
  support::FnvDigest built_in;
  for (; next <= 13; ++next) {
    model.push_back(*list.GetDefinition(next));
    CLineTypeDefPattern& pattern = model.back().GetPattern();
    built_in.add(support::bits(model.back().GetPatternLength()));
    for (double length = pattern.GetFirstFragment(); length > 0; length = pattern.GetNextFragment())
      built_in.add(support::bits(length));
  }
  EXPECT_EQ(built_in.value(), 2951346056431713192u);
  for (int i = 0; i < 20000; ++i) {
    const unsigned indices[] = {0, unsigned(random.below(999)), next, next + 1, UINT_MAX};
    const unsigned index = i == 400 ? UINT_MAX - 1 : indices[random.below(5)];
    auto d = std::make_unique<Definition>(line_type(index, {60.0, random.below(2000) + 1.0}));
    const bool is_refused = model.size() == 850 || index == 0;
    const auto found = std::ranges::find(model, *d);
    const bool is_there = !is_refused && found != model.end();
    const bool is_taken = std::ranges::count(model, index, &Definition::GetIndex) != 0;
    const unsigned own = is_taken ? next : index;
    const unsigned given = is_refused ? UINT_MAX : is_there ? found->GetIndex() : own;
    const bool is_kept = !is_there && given != UINT_MAX;
    bool already_there = !is_there;
    ASSERT_EQ(list.AddLineTypeDefinition(d.get(), already_there), int(given)) << i;
    ASSERT_EQ(std::pair(already_there, d->GetIndex()),
              std::pair(is_there, is_kept ? given : index));
    if (!is_kept) continue;
    next = std::max(next, given + 1);
    model.push_back(*d);
    ASSERT_EQ(list.GetDefinition(given), d.release());
  }
  EXPECT_EQ(model.size(), 850u);
}

TEST(LineTypeList, OwnsEachDefinitionOnce) {
  CLineTypeDefList list, other;
  auto* const odd = new Definition(line_type(20, {NAN}));  // doesn't equal itself
  bool already_there;
  EXPECT_EQ(other.AddLineTypeDefinition(new Definition(line_type(1, {7})), already_there), 14);
  for (int i = 0; i < 2; ++i) EXPECT_EQ(list.AddLineTypeDefinition(odd, already_there), 20);
  list.GetDefinition(1)->SetIndex(0);
  other = list, list = static_cast<CLineTypeDefList&>(list);
  EXPECT_TRUE(already_there && list.GetDefinition(20) == odd && other.GetDefinition(20) != odd);
  EXPECT_EQ(other.GetDefinition(0), nullptr);
  auto* const next = new Definition(line_type(2, {5}));
  EXPECT_EQ(CLineTypeDefList(other).AddLineTypeDefinition(next, already_there), 21);
}

}  // namespace
