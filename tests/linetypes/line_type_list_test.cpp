#include <zelvan/linetypes/line_type_list.h>

#include "support/random.h"
#include "support/refusing_heap.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <memory>
#include <set>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Definition = CLineTypeDefinition;

Definition line_type(unsigned index, std::vector<double> fragments, double length = 1.0) {
  Definition result;
  result.SetIndex(index);
  result.SetPatternLength(length);
  for (const double fragment : fragments) result.AddFragment(fragment);
  return result;
}

TEST(LineTypePattern, TakesTwentyFragmentsAndNoEmptyGap) {
  CLineTypeDefPattern p, copy;
  EXPECT_EQ(p.GetFirstFragment(), -1.0);
  std::vector<double> taken;
  for (const double length : {0.0, 0.0, -0.0, 0.1, -0.0, -1.0, 0.7, 0x1p-60, 0.0, 0.0, 1e9}) {
    const bool fits = taken.size() % 2 == 0 || length != 0.0;
    ASSERT_EQ(p.AddFragment(length), fits) << length << " after " << taken.size();
    if (fits) taken.push_back(length);
  }
  for (; taken.size() < 20; taken.push_back(0.3)) ASSERT_TRUE(p.AddFragment(0.3));
  EXPECT_FALSE(p.AddFragment(0.3));
  double sum = 0.0;
  for (std::size_t i = 0; i < taken.size(); sum += taken[i++]) {
    copy = p;
    ASSERT_EQ(i == 0 ? p.GetFirstFragment() : p.GetNextFragment(), taken[i]);
    ASSERT_EQ(copy.GetNextFragment(), taken[i]) << "a copy goes on from there";
  }
  Definition d = line_type(7, {9, 9});
  d.SetPattern(p);  // at the end of its walk
  EXPECT_EQ(d, line_type(1, taken));
  EXPECT_EQ(d.GetPattern().GetFragmentSum(), sum);
  EXPECT_EQ(d.GetPattern().GetNextFragment(), taken[0]);
  d.RemoveAllFragments();
  EXPECT_EQ(d, line_type(1, {}));
  EXPECT_EQ(d.GetPattern().GetFragmentSum(), 0.0);
  EXPECT_EQ(d.GetIndex(), 7u);
}

TEST(LineTypeDefinition, IsEqualByFragmentsAndLengthAlone) {
  const Definition d = line_type(1, {0.0, 2.0});
  EXPECT_EQ(d, line_type(2, {-0.0, 2.0}));
  for (const Definition& other :
       {line_type(1, {0.0, 2.0, 0.0}), line_type(1, {0.0, 2.0 + 0x1p-51}), line_type(1, {0.0, NAN}),
        line_type(1, {0.0, 2.0}, 1.0 + 0x1p-52)}) {
    EXPECT_TRUE(d != other && !(d == other) && !(other == d));
  }
}

// A list beside a vector, with indices and patterns that meet all the time, until it is full.
TEST(LineTypeList, BehavesLikeAVector) {
  SCOPED_TRACE("seed 3");
  support::Random random(3);
  CLineTypeDefList list;
  std::vector<Definition> model;
  std::set<unsigned> taken;
  for (unsigned i = 1; i <= 13; taken.insert(i++)) model.push_back(*list.GetDefinition(i));
  for (int i = 0; i < 20000; ++i) {
    const unsigned next = *taken.rbegin() + 1;
    const unsigned indices[] = {0, unsigned(random.below(999)), next, next + 1, UINT_MAX};
    const unsigned index = i == 400 ? UINT_MAX - 1 : indices[random.below(5)];
    auto d = std::make_unique<Definition>(line_type(index, {60.0, random.below(2000) + 1.0}));
    const bool is_refused = model.size() == 850 || index == 0;
    const auto found = std::find(model.begin(), model.end(), *d);
    const bool is_there = !is_refused && found != model.end();
    const unsigned own = taken.count(index) ? next : index;
    const unsigned given = is_refused ? UINT_MAX : is_there ? found->GetIndex() : own;
    const bool is_kept = !is_there && given != UINT_MAX;
    bool already_there = !is_there;
    ASSERT_EQ(list.AddLineTypeDefinition(d.get(), already_there), int(given)) << i;
    ASSERT_EQ(already_there, is_there) << i;
    ASSERT_EQ(d->GetIndex(), is_kept ? given : index) << i;
    if (!is_kept) continue;
    taken.insert(given);
    model.push_back(*d);
    ASSERT_EQ(list.GetDefinition(given), d.release());
  }
  EXPECT_EQ(model.size(), 850u);
  EXPECT_EQ(list.GetDefinition(0), nullptr);
}

TEST(LineTypeList, OwnsEachDefinitionOnceAndAssignsAllOrNothing) {
  CLineTypeDefList list, other;
  auto* const odd = new Definition(line_type(20, {NAN}));  // doesn't equal itself
  bool already_there;
  for (int i = 0; i < 2; ++i) EXPECT_EQ(list.AddLineTypeDefinition(odd, already_there), 20);
  Definition* const kept = other.GetDefinition(1);
  const auto assign = [&] { other = list; };
  const auto check = [&](bool refused) {
    EXPECT_EQ(other.GetDefinition(1) == kept, refused);
    EXPECT_EQ(other.GetDefinition(20) == nullptr, refused);
  };
  EXPECT_EQ(support::refuse_each_request(assign, check), 14);
  EXPECT_NE(other.GetDefinition(20), odd);
  other = static_cast<CLineTypeDefList&>(other);
  EXPECT_EQ(*CLineTypeDefList(other).GetDefinition(13), *list.GetDefinition(13));
}

}  // namespace
