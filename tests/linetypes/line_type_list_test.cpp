#include <zelvan/linetypes/line_type_functions.h>

#include <climits>
#include <cmath>
#include <memory>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

static std::unique_ptr<CLineTypeDefinition> definition(unsigned int index, double pattern_length,
                                                       const std::vector<double>& lengths) {
  auto made = std::make_unique<CLineTypeDefinition>();
  made->SetIndex(index);
  made->SetPatternLength(pattern_length);
  for (const double length : lengths) made->AddFragment(length);
  return made;
}

using Added = std::pair<int, bool>;  // the index, and whether it was there already

/// Adds a definition; if the list takes it, the list owns it.
static Added add(CLineTypeDefList& list, std::unique_ptr<CLineTypeDefinition> made) {
  bool already_there = true;
  const int index = list.AddLineTypeDefinition(made.get(), already_there);
  if (!already_there && index != -1) made.release();
  return {index, already_there};
}

TEST(CLineTypeDefList, StartsWithThirteenBuiltInLineTypes) {
  const std::tuple<unsigned int, double, std::vector<double>> rows[] = {
      {1, 10.0, {100}},
      {2, 5.0, {60, 40}},
      {3, 2.5, {10, 40}},
      {4, 7.5, {80, 30, 20, 30}},
      {5, 10.0, {80, 30, 20, 30, 20, 30}},
      {6, 10.0, {110}},
      {7, 12.0, {120}},
      {8, 13.0, {130}},
      {9, 7.5, {80, 70}},
      {10, 15.0, {140, 50, 60, 50}},
      {11, 21.5, {310, 30, 60, 30}},
      {12, 6.5, {90, 40}},
      {13, 15.5, {130, 20, 60, 20, 60, 20}},
  };
  CLineTypeDefList* const list = zelvan_new_line_types();
  for (const auto& [index, pattern_length, fragments] : rows) {
    EXPECT_EQ(zelvan_get_pattern_length(list, index), pattern_length) << "line type " << index;
    std::vector<double> found;
    for (int i = 0; i < zelvan_count_fragments(list, index); ++i) {
      found.push_back(zelvan_get_fragment(list, index, i));
    }
    EXPECT_EQ(found, fragments) << "line type " << index;
  }
  for (const int i : {-1, 4}) EXPECT_EQ(zelvan_get_fragment(list, 4, i), -1) << "fragment " << i;
  for (const unsigned int index : {0, 14}) {  // no such line types
    EXPECT_EQ(zelvan_count_fragments(list, index), -1) << index;
    EXPECT_EQ(zelvan_get_pattern_length(list, index), -1) << index;
  }
  zelvan_delete_line_types(list);
}

TEST(AddLineTypeDefinition, FindsAnEqualOneAndLeavesTheCallersAlone) {
  CLineTypeDefList list;
  const auto dashed = definition(99, 5.0, {60, 40});
  bool already_there = false;
  EXPECT_EQ(list.AddLineTypeDefinition(dashed.get(), already_there), 2);
  EXPECT_TRUE(already_there);
  EXPECT_EQ(dashed->GetIndex(), 99u);
  list.GetDefinition(2)->AddFragment(std::nan(""));
  EXPECT_EQ(list.AddLineTypeDefinition(list.GetDefinition(2), already_there), 2) << "the object";
}

TEST(AddLineTypeDefinition, RefusesIndicesThatItCannotHold) {
  CLineTypeDefList list;
  EXPECT_EQ(add(list, definition(0, 5.0, {60, 40})), (Added{-1, false})) << "also if equal";
  EXPECT_EQ(add(list, definition(UINT_MAX, 0.0, {1})), (Added{-1, false})) << "reads as -1";
  EXPECT_EQ(add(list, definition(UINT_MAX - 1, 0.0, {1})), (Added{-2, false}));
  EXPECT_EQ(add(list, definition(1, 0.0, {2})), (Added{-1, false})) << "no index is left above";
}

TEST(AddLineTypeDefinition, TakesEightHundredAndFifty) {
  CLineTypeDefList list;
  for (int i = 14; i <= 850; ++i) {
    ASSERT_EQ(add(list, definition(i, 0.5, {i + 0.5})), (Added{i, false}));
  }
  EXPECT_EQ(add(list, definition(851, 0.0, {1})), (Added{-1, false})) << "the table is full";
  EXPECT_EQ(add(list, definition(1, 10.0, {100})), (Added{-1, false})) << "also if equal";
}

TEST(AddLineTypeDefinition, TakesTheIndexAboveAllOthersIfItsOwnIsTaken) {
  CLineTypeDefList list;
  const auto added = [&](unsigned int index, double fragment) {
    return add(list, definition(index, 0.5, {fragment}));
  };
  EXPECT_EQ(added(40, 1.0), (Added{40, false})) << "a free index";
  EXPECT_EQ(added(40, 2.0), (Added{41, false})) << "a taken index";
  EXPECT_EQ(added(30, 1.0), (Added{40, true})) << "an equal definition under another index";
  EXPECT_EQ(added(30, 3.0), (Added{30, false})) << "a free index below others";
  EXPECT_EQ(added(30, 4.0), (Added{42, false})) << "above all, not above its own";
}

TEST(CLineTypeDefList, CopiesItsDefinitions) {
  CLineTypeDefList copy;
  {
    CLineTypeDefList list;
    add(list, definition(40, 0.5, {1}));
    copy = list;
    const CLineTypeDefinition* const kept = copy.GetDefinition(40);
    copy = static_cast<CLineTypeDefList&>(copy);
    EXPECT_EQ(copy.GetDefinition(40), kept) << "assigned to itself, a list stays";
    EXPECT_NE(copy.GetDefinition(40), list.GetDefinition(40)) << "each list owns its own";
  }
  EXPECT_TRUE(*copy.GetDefinition(40) == *definition(0, 0.5, {1}));
  CLineTypeDefList made = copy;
  EXPECT_EQ(add(made, definition(40, 0.0, {7})), (Added{41, false})) << "indices go on above 40";
}
