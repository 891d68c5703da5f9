#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_value.h>

#include <cmath>

#include <gtest/gtest.h>
#include <support/printers.h>

// In each expected value: pen, alpha, red, green, blue.
TEST(ColorValue, TakesColoursFromOtherForms) {
  EXPECT_EQ(ColorValue(0x563412, 0x10007), ColorValue(7, 0, 0x12, 0x34, 0x56)) << "16 bits of pen";
  EXPECT_EQ(ColorValue(0x1000000, 7), ColorValue(-1, 0, 0, 0, 0)) << "a high bit: no pen";
  EXPECT_EQ(ColorValue(0.5f, 0.75f, 1e30f), ColorValue(-1, 255, 128, 191, 0)) << "halves go up";
  EXPECT_EQ(ColorValue(2.0f, -1.0f, NAN), ColorValue(-1, 255, 254, 2, 0))
      << "low 8 bits of 510, -254";
  ColorRGB wide(0x101, -1, 7);
  ColorValue color(5, 9, 0, 0, 0);
  color.SetColorValueFromRGB(wide);
  EXPECT_EQ(color, ColorValue(5, 255, 1, 255, 7)) << "low 8 bits, opaque, the pen stays";
  color.SetBackgroundColorValueFromRGB(wide);
  EXPECT_EQ(color, ColorValue(5, 0, 1, 255, 7)) << "a background";
  color.SetColorValueFromPackedColor(0x00FFFF23);
  EXPECT_EQ(color, ColorValue(0x23, 0, 0, 0, 0)) << "a pen: the low 8 bits";
  color.SetColorValueFromPackedColor(0x80332211);
  EXPECT_EQ(color, ColorValue(-1, 255, 0x11, 0x22, 0x33)) << "any of the high bits: a colour";
}

TEST(ColorValue, TakesTheExclusiveOrOfTwoColours) {
  ColorValue color(1, 2, 3, 4, 5), first(6, 7, 0xFF, 0x0F, 0xAA), second(8, 9, 0x0F, 0xF0, 0xAA);
  color.SetXorValue(first, second);
  EXPECT_EQ(color, ColorValue(6, 2, 0xF0, 0xFF, 0)) << "the pen of the first; alpha stays";
}

TEST(ColorValue, TakesTheClosestPenOfAMap) {
  int rgb[] = {42, 50, 60, 10, 20, 30, 40, 50, 60};
  ColorMap map(3, 255, rgb);
  ColorValue color(7, 0, 42, 50, 60), near_pen_1(7, 0, 11, 20, 30), other = near_pen_1;
  color.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(color.pen, 7) << "the distance is two thirds, rounded to 1";
  color.GetClosestColor(map);
  EXPECT_EQ(color.pen, 2) << "pen 0 is not searched";
  near_pen_1.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(near_pen_1.pen, 1) << "the distance is a third, rounded to 0";
  other.SetColorValuePenFromRGB(map);
  EXPECT_EQ(other.pen, 1);
}

TEST(ColorValue, IsEqualIfAllFiveFieldsAre) {
  const ColorValue value(1, 2, 3, 4, 5);
  EXPECT_TRUE(value == ColorValue(value));
  for (const ColorValue& other :
       {ColorValue(0, 2, 3, 4, 5), ColorValue(1, 0, 3, 4, 5), ColorValue(1, 2, 0, 4, 5),
        ColorValue(1, 2, 3, 0, 5), ColorValue(1, 2, 3, 4, 0)}) {
    EXPECT_TRUE(value != other) << testing::PrintToString(other);
  }
}

TEST(AdjustForeground, MovesAColourCloseToTheBackgroundUntilUndone) {
  const auto adjusted = [](ColorValue color, ColAdjT mode) {
    ColorValue background(1, 2, 250, 100, 10);
    color.AdjustForeground(background, mode);
    return color;
  };
  const auto undone = [](ColorValue color, ColorValue saved) {
    color.UndoAdjustForeground(saved);
    return color;
  };
  const ColorValue close(3, 4, 246, 103, 17);
  const ColorValue nudged(3, 4, 247, 103, 17);
  const ColorValue distinct(3, 4, 246, 103, 18);
  EXPECT_EQ(adjusted(close, ColAdjNudge), nudged) << "differs by 4 + 3 + 7 = 14";
  EXPECT_EQ(adjusted(distinct, ColAdjNudge), distinct) << "differs by 15";
  EXPECT_EQ(adjusted(ColorValue(3, 4, 255, 99, 11), ColAdjNudge).red, 254) << "a full red";
  EXPECT_EQ(adjusted(close, ColAdjInvert), ColorValue(3, 4, 9, 152, 238));
  EXPECT_EQ(undone(nudged, close), close);
  EXPECT_EQ(undone(nudged, distinct), nudged) << "another blue was saved";
  EXPECT_EQ(undone(nudged, ColorValue(3, 4, 246, 102, 17)), nudged) << "another green was saved";
  EXPECT_EQ(undone(nudged, ColorValue(3, 9, 249, 103, 17)), nudged) << "a red 2 away was saved";
}
