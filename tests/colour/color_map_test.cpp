#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_map_functions.h>
#include <zelvan/colour/color_xfm.h>

#include <climits>
#include <memory>
#include <vector>

#include <gtest/gtest.h>
#include <support/printers.h>

/// Pens 0 and 3 are alike; pen 1 is unset.
static ColorMap five_pens() {
  int rgb[] = {0, 10, 10, -1, 20, 20, 30, 30, 30, 0, 10, 10, 30, 30, 32};
  return {5, 255, rgb};
}

TEST(ColorMap, OwnsItsEntries) {
  ColorMap map = five_pens();
  ColorMap copy(map);
  ColorMap target(1, 7);
  target = map;
  map.colors[4] = {1, 2, 3};
  for (const ColorMap* other : {&copy, &target}) {
    EXPECT_EQ(other->colors[4], ColorRGB(30, 30, 32));
    EXPECT_EQ(other->max_value, 255U);
  }
}

TEST(ColorMap, IsIdenticalToOneOfEqualEntriesOnAnyScale) {
  ColorMap map = five_pens();
  ColorMap other(5, 7);
  map.CopyColorMap(&other);
  map.max_value = 7;
  EXPECT_EQ(map.Identical(&other), 1) << "the other is on the scale " << other.max_value;
  for (ColorRGB pen_3 : {ColorRGB(1, 10, 10), ColorRGB(0, 9, 10), ColorRGB(0, 10, 9)}) {
    other.SetMap(3, &pen_3);
    EXPECT_EQ(map.Identical(&other), 0) << testing::PrintToString(pen_3) << " is not (0, 10, 10)";
  }
  other.map_count = 3;
  map.CopyColorMap(&other);
  EXPECT_EQ(other.max_value, 255u) << "a map of another size stays as it is";
}

TEST(ColorMap, SetsEntriesThatItHas) {
  ColorMap map(1, 31);
  char text[] = "RGB 1 0.5 0";
  for (const int index : {-1, 1, 0}) {
    EXPECT_EQ(zelvan_set_named_color(&map, index, "Red"), index == 0) << index;
    EXPECT_EQ(map.colors[0], index == 0 ? ColorRGB(255, 0, 0) : ColorRGB()) << "by its name";
    EXPECT_EQ(map.SetIndex(index, 0, text), index == 0) << index;
    EXPECT_EQ(zelvan_set_color(&map, index, text), index == 0) << index;
    EXPECT_EQ(map.SetRGBIndex(index, 0, 0.5f, 1), index == 0) << index;
  }
  EXPECT_EQ(map.colors[0], ColorRGB(0, 128, 255)) << "on the scale 255, though the map's is 31";
}

TEST(GetValue, IsWhatAnImageHoldsForAPen) {
  const int rgb[] = {0, 0, 0, 0x11, 0x22, 0x33};
  const std::unique_ptr<ColorMap, void (*)(ColorMap*)> map(zelvan_new_color_map(2, 31, rgb),
                                                           zelvan_delete_color_map);
  EXPECT_EQ(map->max_value, 31u);
  ColorMap empty(0, 255);
  EXPECT_EQ(map->GetValue(ImageType8Bit, RGBOrderRedHigh, 9), 9u) << "the pen itself";
  for (const ImageType packed : {ImageType1Bit, ImageType32Bit}) {
    EXPECT_EQ(map->GetValue(packed, RGBOrderBlueHigh, 1), 0x332211u);
    EXPECT_EQ(map->GetValue(packed, RGBOrderRedHigh, 1), 0x112233u);
    EXPECT_EQ(map->GetValue(packed, RGBOrderRedHigh, 2), 1u) << "beyond the map";
    EXPECT_EQ(map->GetValue(packed, RGBOrderRedHigh, -1), 1u) << "before it";
    EXPECT_EQ(empty.GetValue(packed, RGBOrderRedHigh, 0), 1u) << "no entries";
  }
  EXPECT_EQ(map->GetValue(static_cast<ImageType>(2), RGBOrderRedHigh, 1), 1u) << "no such type";
}

TEST(GetClosestColor, RemembersTheLastAnswer) {
  ColorMap map = five_pens();
  const std::unique_ptr<ColorMap> empty(ColOpen(0, 255));
  ColorRGB target(30, 30, 34);
  int distance = -1;
  for (ColorMap* asked : {&map, empty.get()}) {
    EXPECT_EQ(asked->GetClosestColor(&target, &distance, asked == &map), 4);
    EXPECT_EQ(distance, 1) << "a mean of two thirds";
  }
  target.blue = 35;
  EXPECT_EQ(empty->GetClosestColor(&target, &distance, 0), 0) << "another colour";
  EXPECT_EQ(distance, INT_MAX);
}

TEST(GetSimilarColor, FindsTheClosestOtherColour) {
  ColorMap map = five_pens();
  const auto find = [&](ColorRGB target) { return map.GetSimilarColor(&target); };
  EXPECT_EQ(find({30, 30, 30}), 4) << "pen 2 is the colour itself";
  EXPECT_EQ(find({0, 10, 11}), 0) << "pen 0 counts, and the lowest of equals";
  EXPECT_EQ(find({0, 10, 10}), 2) << "pens 0 and 3 are the colour itself, 1 is unset";
  EXPECT_EQ(find({1000, 0, 0}), 0) << "all are farther away than black is from white";
}

TEST(ColxGetReadOnlyColor, LooksForAnEntryWithinTheTolerance) {
  ColorMap map = five_pens();
  ColorRWMap list(1);
  list.rw_count = 3;
  const auto find = [&](ColorRGB color, int tolerance) {
    return map.ColxGetReadOnlyColor(&list, color.red, color.green, color.blue, tolerance);
  };
  EXPECT_EQ(find({0, 10, 10}, 0), 1) << "the colour itself, whatever the tolerance";
  EXPECT_EQ(find({30, 30, 32}, 0), 0) << "not among the first three";
  EXPECT_EQ(find({33, 27, 32}, 4), 1) << "3, 3 and 2 are less than 4";
  EXPECT_EQ(find({34, 30, 30}, 4), 0) << "4 in red is not";
  EXPECT_EQ(find({30, 26, 30}, 4), 0) << "4 in green is not";
  EXPECT_EQ(find({30, 30, 34}, 4), 0) << "4 in blue is not";
  EXPECT_EQ(find({285, 285, 285}, 999), 0) << "three full scales away";
}

TEST(MakeRoList, ListsTheLowestFreePens) {
  ColorRWMap used(3);
  ColorRWMap free(6);
  used.rw_count = 2;
  for (const int i : {1, 2}) used.rw_list[i] = i + 1;  // used: 0, 2; the 3 is beyond rw_count
  used.MakeRoList(&free, 1);
  EXPECT_EQ(std::vector(free.rw_list, free.rw_list + free.rw_count), (std::vector{1u, 3u, 4u}))
      << "6 pens less 2 in use and 1 reserved";
  used.MakeRoList(&free, 5);
  EXPECT_EQ(free.rw_count, 0u) << "4 free pens less 5 reserved";
  used.MakeRoList(&free, -9);
  EXPECT_EQ(free.rw_count, 6u) << "no more than there is room for";
}

TEST(MapColors, CountsHowCloseItCame) {
  ColorMap source(10, 255);
  ColorMap target(2, 255);
  const int steps[] = {0, 0, 3, 4, 7, 8, 15, 16, 31, 32};  // pen 0 and the last are not counted
  for (int i = 0; i < 10; ++i) source.colors[i] = {steps[i], steps[i], steps[i]};
  ColorXfm xfm(12);
  xfm.xfm_table[10] = xfm.xfm_table[11] = 5;
  const auto counts = [&] {
    return std::vector{xfm.hist_exact, xfm.hist_3, xfm.hist_7, xfm.hist_15, xfm.hist_31};
  };
  EXPECT_EQ(counts(), std::vector<unsigned int>(5)) << "all are 0 at first";
  for (int times = 0; times < 2; ++times) ColMapColors(&source, &target, &xfm);
  EXPECT_EQ(counts(), (std::vector<unsigned int>{1, 1, 2, 2, 2}));
  EXPECT_EQ(xfm.DoColorXfm(9), 1U);
  EXPECT_EQ(xfm.DoColorXfm(10), 5U) << "a pen that the source does not have";
  EXPECT_EQ(xfm.DoColorXfm(UINT_MAX), 5U) << "beyond the table the last pen decides";
}
