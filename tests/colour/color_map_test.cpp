#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "colour/closest_model.h"
#include "colour/printing.h"

#include <climits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// A map of greys.
ColorMap greys(const std::vector<int>& levels) {
  std::vector<int> rgb;
  for (int level : levels) rgb.insert(rgb.end(), 3, level);
  return ColorMap(static_cast<int>(levels.size()), 255, rgb.data());
}

std::pair<int, int> closest(ColorMap& map, ColorRGB target, unsigned short fresh = 1) {
  int distance = -1;
  const int index = map.GetClosestColor(&target, &distance, fresh);
  return {index, distance};
}

using Found = std::pair<int, int>;

// Asked before any other search, since tests of one program share the memory of the last answer.
const Found black_at_load = [] {
  ColorMap map = greys({0, 200});
  return closest(map, {0, 0, 0}, 0);
}();

TEST(ClosestColor, IsWhatAWalkFinds) {
  std::mt19937 random(4);
  for (int size = 0; size <= 70; ++size) {
    for (int round = 0; round < 40; ++round) {
      ColorMap map = random_map(size, random);
      for (int search = 0; search < 10; ++search) {
        ColorRGB target = random_target(map, random);
        ASSERT_EQ(closest(map, target), closest_in(map, target))
            << "size " << size << " round " << round << " scale " << map.max_value << ": "
            << target;
      }
    }
  }
}

// 4096 squared leaves no room for a 1 beside it: only where both come first do they count.
TEST(ClosestColor, AddsGreenAndRedBeforeBlue) {
  for (int size : {3, 9}) {
    ColorMap map(size, 10000);
    for (int i = 1; i < size; ++i) map.colors[i] = {1, 1, 4096};
    map.colors[2] = {4096, 1, 1};
    EXPECT_EQ(closest(map, {0, 0, 0}).first, 2) << size;
  }
}

TEST(ClosestColor, LeavesEntryZeroAndUnsetSlotsOut) {
  const struct {
    std::vector<int> greys;
    int target;
    Found expected;
  } rows[] = {
      {{50, 90, 60}, 50, {2, 10}}, {{50}, 50, {0, 0}},         {{50}, 70, {0, 20}},
      {{50, -1, -1}, 60, {0, 10}}, {{50, 61, 59}, 60, {1, 1}}, {{}, 60, {0, INT_MAX}},
      {{0, 60, 60}, 60, {1, 0}},   {{0, 315}, 60, {1, 255}},   {{0, 316}, 60, {0, 60}},
  };
  for (const auto& row : rows) {
    ColorMap map = greys(row.greys);
    EXPECT_EQ(closest(map, {row.target, row.target, row.target}), row.expected);
  }
}

TEST(ClosestColor, RemembersTheLastAnswerOfAnyMap) {
  EXPECT_EQ(black_at_load, Found(0, 0));
  ColorMap map = greys({0, 10, 20});
  ColorMap other = greys({0, 0, 0, 20});
  const ColorRGB target(20, 20, 21);
  EXPECT_EQ(closest(map, target), Found(2, 0));
  EXPECT_EQ(closest(other, target, 0), Found(2, 0));
  map.SetRGBIndex(2, 1.0f, 1.0f, 1.0f);
  EXPECT_EQ(closest(map, target, 0), Found(2, 0));
  EXPECT_EQ(closest(map, {20, 20, 22}, 0), Found(1, 11));
  EXPECT_EQ(closest(map, target, 0), Found(1, 10));
  EXPECT_EQ(closest(other, {20, 20, 20}), Found(3, 0));  // an exact match is kept as well
  EXPECT_EQ(closest(map, {20, 20, 20}, 0), Found(3, 0));
}

TEST(ClosestColor, BecomesThePenOfAValue) {
  ColorMap map = greys({0, 10, 20});
  const int rows[][4] = {{20, 20, 2, 2}, {20, 21, 2, 2}, {21, 21, 2, 7}, {5, 5, 1, 7}};
  for (const auto& [red, green, pen, exact_pen] : rows) {
    ColorValue closest(7, 8, red, green, 20), same = closest, exact = closest;
    closest.GetClosestColor(map);
    same.SetColorValuePenFromRGB(map);
    exact.SetExactColorValuePenFromRGB(map);
    EXPECT_TRUE(closest == ColorValue(pen, 8, red, green, 20) && same == closest) << red;
    EXPECT_TRUE(exact == ColorValue(exact_pen, 8, red, green, 20)) << red;
  }
}

TEST(SimilarColor, IsTheClosestOfOtherColours) {
  const struct {
    std::vector<int> greys;
    int target, expected;
  } rows[] = {{{50, 90, 61, 50}, 50, 2}, {{40, 90, 60, 50}, 50, 0}, {{-1, 90, -50}, -1, 1},
              {{50, 50}, 50, 0},         {{90, -1}, 400, 0},        {{}, 50, 0},
              {{1000, 50, 300}, 50, 2}};
  for (const auto& row : rows) {
    ColorMap map = greys(row.greys);
    ColorRGB target(row.target, row.target, row.target);
    EXPECT_EQ(map.GetSimilarColor(&target), row.expected) << row.target;
  }
}

TEST(ColorMap, SetsComparesAndCopies) {
  ColorMap map = greys({1, 2, 3}), copy = map, longer = greys({1, 2, 3, 4}), empty(-5, 255);
  char blue[] = "HSV 240 1 1";
  for (int index : {-1, 3, INT_MIN, INT_MAX}) {
    EXPECT_EQ(map.SetIndex(index, 0, blue) + map.SetRGBIndex(index, 0.0f, 0.0f, 0.0f), 0);
  }
  EXPECT_EQ(map.SetRGBIndex(1, 0.0f, 2.0f, 0.0f), 0);
  copy.max_value = 7;
  EXPECT_TRUE(map.Identical(&copy));
  EXPECT_EQ(copy.SetIndex(0, 0, blue) + copy.SetRGBIndex(1, 0.0f, 1.0f, 0.0f), 2);
  EXPECT_EQ(copy.colors[0], ColorRGB(0, 0, 255));
  EXPECT_EQ(copy.colors[1], ColorRGB(0, 255, 0));
  map.CopyColorMap(&copy);
  EXPECT_EQ(copy.max_value, 255u);
  EXPECT_TRUE(map.Identical(&copy));
  copy.colors[2].blue = 4;
  EXPECT_FALSE(map.Identical(&copy));

  EXPECT_FALSE(map.Identical(&longer));
  map.CopyColorMap(&longer);
  longer.CopyColorMap(&map);
  EXPECT_EQ(map.map_count, 3u);
  EXPECT_EQ(longer.colors[3], ColorRGB(4, 4, 4));
  const ColorMap& itself = longer;
  longer = itself;
  longer.map_count = 3;  // a copy keeps it
  for (ColorMap* source : {&longer, &empty, &longer}) {
    map = *source;
    EXPECT_TRUE(map.map_size == source->map_size && map.Identical(source));
  }
}

__attribute__((noinline, no_sanitize("null"))) unsigned int value_of(ColorMap* map, int type,
                                                                     int order, int index) {
  return map->GetValue(static_cast<ImageType>(type), static_cast<RGBOrder>(order), index);
}

TEST(ColorMap, GivesValuesForImages) {
  ColorMap map = greys({0, 1});
  map.colors[1] = {255, 0, 16};
  ColorMap empty(0, 255);
  const struct {
    ColorMap* map;
    int type, order, index;
    unsigned int expected;
  } rows[] = {
      {&map, 32, 1, 1, 0x00FF0010}, {&map, 32, 0, 1, 0x001000FF}, {&map, 1, 1, 1, 0x00FF0010},
      {&map, 1, 2, 1, 0x001000FF},  {&map, 32, 1, 0, 0},          {&map, 32, 1, 2, 1},
      {&map, 1, 1, -1, 1},          {&map, 8, 1, 77, 77},         {&map, 8, 1, -1, 0xFFFFFFFF},
      {&map, 24, 1, 1, 1},          {&map, 0, 1, 0, 1},           {&empty, 32, 1, 0, 1},
      {nullptr, 32, 1, 0, 1},       {nullptr, 8, 1, 77, 0},       {nullptr, 32, 0, -1, 0},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(value_of(row.map, row.type, row.order, row.index), row.expected)
        << row.type << ' ' << row.order << ' ' << row.index;
  }
}

TEST(ReadOnlyColor, IsCloseInEachChannel) {
  ColorMap map = greys({10, 20, 30});
  const struct {
    unsigned int count;
    ColorRGB color;
    int tolerance;
    bool expected;
  } rows[] = {
      {2, {20, 20, 20}, 0, true},     {2, {20, 20, 21}, 1, false},  {2, {20, 20, 21}, 2, true},
      {2, {22, 21, 20}, 2, false},    {2, {30, 30, 30}, 0, false},  {3, {30, 30, 30}, 0, true},
      {0, {10, 10, 10}, 9, false},    {9, {30, 30, 30}, 0, true},   {1, {10, 10, 774}, 999, true},
      {1, {10, 10, 775}, 999, false}, {1, {10, 10, 11}, -5, false},
  };
  for (const auto& row : rows) {
    ColorRWMap list(1);
    list.rw_count = row.count;
    const ColorRGB& c = row.color;
    EXPECT_EQ(map.ColxGetReadOnlyColor(&list, c.red, c.green, c.blue, row.tolerance), row.expected)
        << c << " within " << row.tolerance;
  }
}

// Every list of pens of a table of six, with every number of reserved ones.
TEST(ReadOnlyPens, AreTheOthersFromBelow) {
  const int size = 6;
  for (int pens = 0; pens < 1 << size; ++pens) {
    for (int reserved = -1; reserved <= size + 1; ++reserved) {
      ColorRWMap used(size), target(size);
      std::vector<unsigned int> others;
      for (unsigned int pen = 0; pen < size; ++pen) {
        pens >> pen & 1 ? void(used.rw_list[used.rw_count++] = pen) : others.push_back(pen);
      }
      for (int i = 0; i < reserved && !others.empty(); ++i) others.pop_back();
      if (reserved < 0 && used.rw_count > 0) others.push_back(size);
      used.MakeRoList(&target, reserved);
      ASSERT_EQ(std::vector(target.rw_list, target.rw_list + target.rw_count), others)
          << pens << ' ' << reserved;
    }
  }
}

TEST(ColorXfm, TranslatesAndCounts) {
  std::vector<int> levels = {77};  // of a pen that no count sees
  for (int level = 0; level < 40; ++level) levels.push_back(level);
  ColorMap source = greys(levels), target = greys({5, 0, 0}), shorter = greys({1, 2});
  ColorXfm* xfm = ColOpenXfm(41);
  EXPECT_EQ(xfm->DoColorXfm(20), 0u);
  for (int round = 0; round < 2; ++round) {  // the second starts from 0
    ColMapColors(&source, &target, xfm);
    EXPECT_EQ((std::vector{xfm->hist_exact, xfm->hist_3, xfm->hist_7, xfm->hist_15, xfm->hist_31}),
              (std::vector{1u, 3u, 4u, 8u, 16u}));
  }
  // To its own colours, upside down: each pen finds itself, and the last answers for all beyond.
  ColorMap turned = source;
  std::reverse(turned.colors + 1, turned.colors + 41);
  ColMapColors(&source, &turned, xfm);
  EXPECT_EQ(xfm->hist_exact, 40u);
  for (unsigned int pen = 1; pen < 41; ++pen) EXPECT_EQ(xfm->DoColorXfm(pen), 41 - pen);
  for (unsigned int pen : {41u, 0xFFFFFFFFu}) EXPECT_EQ(xfm->DoColorXfm(pen), 1u);
  ColMapColors(&shorter, &target, xfm);  // a table longer than the source keeps what lies beyond
  EXPECT_EQ(xfm->DoColorXfm(2), 39u);
  EXPECT_EQ(ColorXfm(0).DoColorXfm(5), 0u);
  ColCloseXfm(&xfm);
  EXPECT_NE(xfm, nullptr);
  xfm = nullptr;
  ColCloseXfm(&xfm);
}

}  // namespace
