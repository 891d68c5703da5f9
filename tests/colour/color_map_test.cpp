#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include <climits>
#include <vector>

#include <gtest/gtest.h>
#include <support/printers.h>

namespace {

/// Pens 0 and 3 are alike, pen 1 is unset.
ColorMap five_pens() {
  int rgb[] = {10, 10, 10, -1, 20, 20, 30, 30, 30, 10, 10, 10, 30, 30, 32};
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
    EXPECT_EQ(other->map_size, 5U);
    EXPECT_EQ(other->max_value, 255U);
  }
  for (const int size : {-1, 0}) EXPECT_EQ(ColorMap(size, 9).colors, nullptr);
  EXPECT_EQ(ColorMap(2, 9).colors[1], ColorRGB(0, 0, 0));
}

TEST(ColorMap, SetsEntriesThatItHas) {
  ColorMap map(1, 31);
  char text[] = "RGB 1 0.5 0";
  for (const int index : {-1, 1}) {
    EXPECT_EQ(map.SetIndex(index, 0, text), 0);
    EXPECT_EQ(map.SetRGBIndex(index, 0, 0, 0), 0);
  }
  EXPECT_EQ(map.SetIndex(0, 0, text), 1);
  EXPECT_EQ(map.colors[0], ColorRGB(255, 128, 0)) << "on the scale 255";
  EXPECT_EQ(map.SetRGBIndex(0, 0, 1, 0.5f), 1);
  EXPECT_EQ(map.colors[0], ColorRGB(0, 255, 128));
}

TEST(ColorMap, ComparesAndCopiesEntries) {
  ColorMap map = five_pens();
  ColorMap other(5, 31);
  ColorMap smaller(4, 31);
  map.CopyColorMap(&smaller);
  EXPECT_EQ(smaller.max_value, 31U) << "as many entries or nothing";
  EXPECT_EQ(map.Identical(&smaller), 0);
  map.CopyColorMap(&other);
  EXPECT_EQ(other.max_value, 255U);
  other.max_value = 1;
  EXPECT_EQ(map.Identical(&other), 1) << "the scale has no say";
  for (int ColorRGB::*channel : {&ColorRGB::red, &ColorRGB::green, &ColorRGB::blue}) {
    other = map;
    other.colors[4].*channel += 1;
    EXPECT_EQ(map.Identical(&other), 0);
  }
}

TEST(ColorMap, RemembersTheLastAnswer) {
  ColorMap map = five_pens();
  ColorRGB target(30, 30, 34);
  int distance = -1;
  EXPECT_EQ(map.GetClosestColor(&target, &distance, 1), 4);
  EXPECT_EQ(distance, 1) << "a mean of two thirds";
  ColorMap empty(0, 255);
  EXPECT_EQ(empty.GetClosestColor(&target, &distance, 0), 4) << "though that was another map";
  EXPECT_EQ(distance, 1);
  target.blue = 35;
  EXPECT_EQ(empty.GetClosestColor(&target, &distance, 0), 0) << "another colour";
  EXPECT_EQ(distance, INT_MAX);
}

TEST(GetSimilarColor, FindsTheClosestOtherColour) {
  ColorMap map = five_pens();
  const struct {
    ColorRGB target;
    int pen;
    const char* why;
  } rows[] = {
      {{30, 30, 30}, 4, "not the same colour"},
      {{10, 10, 11}, 0, "pen 0 counts, and the lowest of equals"},
      {{10, 10, 10}, 2, "neither 0 nor 3, which are the same, nor 1, which is unset"},
      {{1000, 0, 0}, 0, "all are farther away than the scale is long"},
  };
  for (auto row : rows) EXPECT_EQ(map.GetSimilarColor(&row.target), row.pen) << row.why;
}

TEST(ColxGetReadOnlyColor, LooksForAnEntryWithinTheTolerance) {
  const struct {
    int count, red, green, blue, tolerance, found;
    const char* why;
  } rows[] = {
      {5, 30, 30, 32, 0, 1, "the colour itself, whatever the tolerance"},
      {4, 30, 30, 32, 0, 0, "not among the first four"},
      {0, 10, 10, 10, 9, 0, "none to look at"},
      {3, 33, 27, 32, 4, 1, "3, 3 and 2 are less than 4"},
      {3, 34, 30, 30, 4, 0, "4 in red is not"},
      {3, 30, 26, 30, 4, 0, "nor in green"},
      {3, 30, 30, 34, 4, 0, "nor in blue"},
      {1, 265, 265, 265, 999, 0, "three full scales away"},
  };
  ColorMap map = five_pens();
  ColorRWMap list(1);
  for (const auto& row : rows) {
    list.rw_count = static_cast<unsigned int>(row.count);
    EXPECT_EQ(map.ColxGetReadOnlyColor(&list, row.red, row.green, row.blue, row.tolerance),
              row.found)
        << row.why;
  }
}

TEST(GetValue, ReturnsWhatAnImageHolds) {
  ColorMap map(2, 255);
  map.colors[0] = {0x44, 0x55, 0x66};
  map.colors[1] = {0x11, 0x22, 0x33};
  EXPECT_EQ(map.GetValue(ImageType1Bit, RGBOrderRedHigh, 0), 0x445566U);
  EXPECT_EQ(map.GetValue(ImageType32Bit, RGBOrderRedHigh, 1), 0x112233U);
  EXPECT_EQ(map.GetValue(ImageType32Bit, static_cast<RGBOrder>(2), 1), 0x332211U);
  EXPECT_EQ(map.GetValue(ImageType8Bit, RGBOrderRedHigh, 77), 77U) << "the pen, whatever it is";
  EXPECT_EQ(map.GetValue(static_cast<ImageType>(2), RGBOrderRedHigh, 0), 1U) << "unknown type";
  for (const int pen : {-1, 2}) EXPECT_EQ(map.GetValue(ImageType32Bit, RGBOrderRedHigh, pen), 1U);
}

TEST(MakeRoList, ListsTheLowestOtherPens) {
  const struct {
    std::vector<unsigned int> used;
    int reserved;
    std::vector<unsigned int> others;
  } rows[] = {
      {{0, 2, 5}, 0, {1, 3, 4}},
      {{1, 2}, 3, {0}},
      {{1, 2}, 9, {}},
  };
  for (const auto& row : rows) {
    ColorRWMap list(6);
    for (const unsigned int pen : row.used) list.rw_list[list.rw_count++] = pen;
    ColorRWMap target(6);
    list.MakeRoList(&target, row.reserved);
    EXPECT_EQ(std::vector<unsigned int>(target.rw_list, target.rw_list + target.rw_count),
              row.others)
        << row.reserved << " reserved";
  }
}

TEST(MapColors, CountsHowCloseItCame) {
  ColorMap source(9, 255);
  ColorMap target(2, 255);
  const int steps[] = {0, 0, 3, 4, 7, 8, 15, 16, 31};  // of pen 0, which is in no count, and others
  for (int i = 0; i < 9; ++i) source.colors[i] = {steps[i], steps[i], steps[i]};
  ColorXfm* xfm = ColOpenXfm(12);
  xfm->xfm_table[9] = xfm->xfm_table[11] = 5;
  for (int times = 0; times < 2; ++times) ColMapColors(&source, &target, xfm);
  const std::vector<unsigned int> counts = {xfm->hist_exact, xfm->hist_3, xfm->hist_7, xfm->hist_15,
                                            xfm->hist_31};
  EXPECT_EQ(counts, (std::vector<unsigned int>{1, 1, 2, 2, 2})) << "0, 1-3, 4-7, 8-15, 16-31";
  for (const unsigned int pen : {0U, 8U}) EXPECT_EQ(xfm->DoColorXfm(pen), 1U);
  EXPECT_EQ(xfm->DoColorXfm(9), 5U) << "a pen that the source does not have";
  EXPECT_EQ(xfm->DoColorXfm(UINT_MAX), 5U) << "the last pen answers for all beyond";
  source.colors[1] = {32, 32, 32};
  xfm->MapColors(&source, &target);
  EXPECT_EQ(xfm->hist_exact + xfm->hist_31, 2U) << "32 is in no count";
  ColCloseXfm(&xfm);
  EXPECT_EQ(ColorXfm(0).DoColorXfm(1), 0U);
  EXPECT_EQ(ColorXfm(2).DoColorXfm(1), 0U) << "pen 0 at first";
}

}  // namespace
