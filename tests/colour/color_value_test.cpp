#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_value.h>

#include <cmath>

#include <gtest/gtest.h>
#include <support/printers.h>

namespace {

ColorValue value(int pen, int alpha, int red, int green, int blue) {
  const auto byte = [](int v) { return static_cast<unsigned char>(v); };
  return {static_cast<short>(pen), byte(alpha), byte(red), byte(green), byte(blue)};
}

TEST(ColorValue, IsMadeOfPenOrChannels) {
  EXPECT_EQ(ColorValue(), value(1, 255, 0, 0, 0)) << "pen 1, opaque black";
  EXPECT_EQ(ColorValue(short{-7}), value(-7, 0, 0, 0, 0)) << "a pen alone";
  EXPECT_EQ(ColorValue(0x563412, 0x10007), value(7, 0, 0x12, 0x34, 0x56)) << "low 16 bits of pen";
  EXPECT_EQ(ColorValue(0x1000000, 7), value(-1, 0, 0, 0, 0)) << "a high bit: no pen";
  EXPECT_EQ(ColorValue(0.5f, 1.0f, 0.001f), value(-1, 255, 128, 255, 0)) << "halves go up";
  EXPECT_EQ(ColorValue(2.0f, -1.0f, NAN), value(-1, 255, 254, 2, 0)) << "low 8 bits of 510, -254";
  const ColorValue zero = value(0, 0, 0, 0, 0);
  for (int field = 0; field < 5; ++field) {
    const ColorValue one = value(field == 0, field == 1, field == 2, field == 3, field == 4);
    EXPECT_EQ(zero == one, 0) << "field " << field;
    EXPECT_EQ(zero != one, 1) << "field " << field;
  }
}

TEST(ColorValue, TakesColoursFromOtherForms) {
  ColorRGB wide(0x101, -1, 7);
  ColorValue color = value(5, 9, 0, 0, 0);
  color.SetColorValueFromRGB(wide);
  EXPECT_EQ(color, value(5, 255, 1, 255, 7)) << "low 8 bits, opaque, the pen stays";
  color.SetBackgroundColorValueFromRGB(wide);
  EXPECT_EQ(color, value(5, 0, 1, 255, 7)) << "alpha 0";
  color.SetColorValueFromPackedColor(0x00FFFF23);
  EXPECT_EQ(color, value(0x23, 0, 0, 0, 0)) << "a pen: the low 8 bits";
  color.SetColorValueFromPackedColor(0x80332211);
  EXPECT_EQ(color, value(-1, 255, 0x11, 0x22, 0x33)) << "any of the high bits: a colour";
  ColorValue a = value(3, 1, 12, 12, 12);
  ColorValue b = value(4, 2, 10, 12, 1);
  color.SetXorValue(a, b);
  EXPECT_EQ(color, value(3, 255, 6, 0, 13)) << "the pen of the first, its own alpha";
}

TEST(AdjustForeground, MovesAwayWithinFourteenStepsAndBack) {
  const struct {
    ColorValue color, adjusted;
    int mode;
    const char* why;
  } rows[] = {
      {value(7, 8, 105, 95, 104), value(7, 8, 106, 95, 104), ColAdjNudge, "14 in all"},
      {value(7, 8, 105, 95, 105), value(7, 8, 105, 95, 105), ColAdjNudge, "15 in all: far enough"},
      {value(7, 8, 114, 100, 100), value(7, 8, 141, 155, 155), ColAdjInvert, "255 minus each"},
      {value(7, 8, 100, 100, 100), value(7, 8, 100, 100, 100), 3, "an unknown mode"},
  };
  for (const auto& row : rows) {
    ColorValue background = value(1, 2, 100, 100, 100);
    ColorValue color = row.color;
    color.AdjustForeground(background, static_cast<ColAdjT>(row.mode));
    EXPECT_EQ(color, row.adjusted) << row.why;
  }
  ColorValue brightest = value(1, 2, 255, 0, 0);
  ColorValue saved = brightest;
  brightest.AdjustForeground(saved, ColAdjNudge);
  EXPECT_EQ(brightest, value(1, 2, 254, 0, 0)) << "a step down where there is none up";
  brightest.pen = 9;
  brightest.UndoAdjustForeground(saved);
  EXPECT_EQ(brightest, saved) << "all of it is copied";
  for (const ColorValue& other : {value(9, 2, 253, 0, 0), value(9, 2, 254, 1, 0)}) {
    ColorValue color = other;
    color.UndoAdjustForeground(saved);
    EXPECT_EQ(color, other) << "no nudge of red by 1";
  }
}

TEST(ColorValue, LooksItsPenUpInAMap) {
  int rgb[] = {9, 9, 9, 50, 50, 50, 90, 90, 90};
  ColorMap map(3, 255, rgb);
  ColorValue color = value(7, 8, 89, 91, 90);
  color.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(color.pen, 7) << "two steps away";
  color.SetColorValuePenFromRGB(map);
  EXPECT_EQ(color, value(2, 8, 89, 91, 90));
  color = value(7, 8, 51, 50, 50);
  color.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(color.pen, 1) << "one step away counts as exact";
}

}  // namespace
