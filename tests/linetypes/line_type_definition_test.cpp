#include <zelvan/linetypes/line_type_definition.h>

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

static CLineTypeDefPattern pattern(const std::vector<double>& lengths) {
  CLineTypeDefPattern made;
  for (const double length : lengths) EXPECT_TRUE(made.AddFragment(length)) << length;
  return made;
}

static std::vector<double> fragments(CLineTypeDefPattern walked) {
  std::vector<double> lengths;
  double length = walked.GetFirstFragment();
  for (int n = walked.GetNumFragments(); n > 0; --n) {
    lengths.push_back(length);
    length = walked.GetNextFragment();
  }
  EXPECT_EQ(length, -1.0) << "after the last fragment";
  return lengths;
}

TEST(AddFragment, TakesTwentyFragments) {
  CLineTypeDefPattern full = pattern(std::vector<double>(20, 2.0));
  EXPECT_FALSE(full.AddFragment(2.0)) << "the 21st";
  EXPECT_EQ(full.GetFragmentSum(), 40.0);
  // 1e16 + 1 rounds to 1e16, so the 1 is lost if it is added second.
  EXPECT_EQ(pattern({1e16, 1.0, -1e16}).GetFragmentSum(), 0.0) << "in the order of the fragments";
  EXPECT_EQ(fragments(full), std::vector<double>(20, 2.0));
}

TEST(AddFragment, TakesADotButNoGapOfLengthZero) {
  for (const double zero : {0.0, -0.0}) {
    CLineTypeDefPattern dotted = pattern({zero});
    EXPECT_FALSE(dotted.AddFragment(zero)) << "the second is a gap";
    EXPECT_TRUE(dotted.AddFragment(5.0));
    EXPECT_TRUE(dotted.AddFragment(zero)) << "the third is a dash";
    EXPECT_EQ(fragments(dotted), (std::vector{0.0, 5.0, 0.0}));
  }
}

TEST(PatternEquality, ComparesFragmentsExactlyAndNothingElse) {
  CLineTypeDefPattern walked = pattern({1.0, 2.0});
  walked.GetNextFragment();
  EXPECT_TRUE(walked == pattern({1.0, 2.0})) << "the cursor doesn't count";
  EXPECT_TRUE(pattern({0.0}) == pattern({-0.0}));
  const double above_2 = std::nextafter(2.0, 3.0);
  for (const std::vector<double>& other :
       {std::vector<double>{}, {1.0}, {1.0, 2.0, 3.0}, {1.0, above_2}, {std::nan(""), 2.0}}) {
    EXPECT_TRUE(walked != pattern(other)) << testing::PrintToString(other);
    EXPECT_FALSE(walked == pattern(other)) << testing::PrintToString(other);
  }
}

TEST(CLineTypeDefinition, KeepsIndexAndLengthApartFromThePattern) {
  CLineTypeDefinition definition;
  definition.SetIndex(4000000000u);
  definition.SetPatternLength(2.5);
  CLineTypeDefPattern source = pattern({0.0, 5.0, 0.0, 7.0});
  source.GetFirstFragment();
  definition.SetPattern(source);
  EXPECT_EQ(source.GetNextFragment(), 5.0) << "the source's walk goes on";
  EXPECT_EQ(definition.GetPattern().GetNextFragment(), 0.0) << "the copy's walk starts anew";
  EXPECT_EQ(fragments(definition.GetPattern()), (std::vector{0.0, 5.0, 0.0, 7.0}));
  EXPECT_EQ(definition.GetIndex(), 4000000000u);
  EXPECT_EQ(definition.GetPatternLength(), 2.5);
  definition.RemoveAllFragments();
  EXPECT_EQ(fragments(definition.GetPattern()), std::vector<double>{});
}
