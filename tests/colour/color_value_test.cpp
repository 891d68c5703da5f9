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

ColorValue of_bytes(unsigned char r, unsigned char g, unsigned char b) { return {r, g, b}; }

TEST(ColorValue, IsMadeOfPenOrChannels) {
  const struct {
    ColorValue made, expected;
    const char* why;
  } rows[] = {
      {ColorValue(), value(1, 255, 0, 0, 0), "pen 1, opaque black"},
      {ColorValue(short{-7}), value(-7, 0, 0, 0, 0), "a pen alone"},
      {of_bytes(1, 2, 3), value(-1, 255, 1, 2, 3), "channels alone"},
      {ColorValue(0x563412, 0x10007), value(7, 0, 0x12, 0x34, 0x56), "no high bit: low 16 of pen"},
      {ColorValue(0x1000000, 7), value(-1, 0, 0, 0, 0), "a high bit: no pen"},
      {ColorValue(0.5f, 1.0f, 0.001f), value(-1, 255, 128, 255, 0), "rounded, halves up"},
      {ColorValue(2.0f, -1.0f, NAN), value(-1, 255, 510 - 256, 256 - 254, 0), "low 8 bits"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.made, row.expected) << row.why;
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

TEST(ColorValue, ComparesAllFields) {
  const ColorValue zero = value(0, 0, 0, 0, 0);
  for (int field = 0; field < 5; ++field) {
    const ColorValue one = value(field == 0, field == 1, field == 2, field == 3, field == 4);
    EXPECT_EQ(zero == one, 0) << "field " << field;
    EXPECT_EQ(zero != one, 1) << "field " << field;
  }
}

TEST(AdjustForeground, MovesAwayWithinFourteenSteps) {
  const struct {
    int red, green, blue, mode;
    ColorValue expected;
    const char* why;
  } rows[] = {
      {105, 95, 104, ColAdjNudge, value(7, 8, 106, 95, 104), "14 in all"},
      {105, 95, 105, ColAdjNudge, value(7, 8, 105, 95, 105), "15 in all: far enough"},
      {100, 86, 100, ColAdjNudge, value(7, 8, 101, 86, 100), "14 in green, below"},
      {100, 100, 85, ColAdjInvert, value(7, 8, 100, 100, 85), "15 in blue"},
      {114, 100, 100, ColAdjInvert, value(7, 8, 141, 155, 155), "255 minus each"},
      {100, 100, 100, 0, value(7, 8, 100, 100, 100), "no mode"},
      {100, 100, 100, 3, value(7, 8, 100, 100, 100), "an unknown mode"},
  };
  for (const auto& row : rows) {
    ColorValue background = value(1, 2, 100, 100, 100);
    ColorValue color = value(7, 8, row.red, row.green, row.blue);
    color.AdjustForeground(background, static_cast<ColAdjT>(row.mode));
    EXPECT_EQ(color, row.expected) << row.why;
  }
  ColorValue brightest = value(1, 2, 255, 0, 0);
  brightest.AdjustForeground(brightest, ColAdjNudge);
  EXPECT_EQ(brightest, value(1, 2, 254, 0, 0)) << "a step down where there is none up";
}

TEST(UndoAdjustForeground, TakesBackANudgeAlone) {
  ColorValue saved = value(7, 8, 100, 50, 20);
  for (const ColorValue& nudged : {value(1, 2, 101, 50, 20), value(1, 2, 99, 50, 20)}) {
    ColorValue color = nudged;
    color.UndoAdjustForeground(saved);
    EXPECT_EQ(color, saved);
  }
  for (const ColorValue& other : {value(1, 2, 100, 50, 20), value(1, 2, 102, 50, 20),
                                  value(1, 2, 101, 51, 20), value(1, 2, 101, 50, 21)}) {
    ColorValue color = other;
    color.UndoAdjustForeground(saved);
    EXPECT_EQ(color, other) << "no nudge of red by 1";
  }
}

TEST(ColorValue, LooksItsPenUpInAMap) {
  int rgb[] = {9, 9, 9, 50, 50, 50, 90, 90, 90};
  ColorMap map(3, 255, rgb);
  ColorValue color = value(7, 8, 89, 90, 90);
  color.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(color, value(2, 8, 89, 90, 90)) << "one step away counts as exact";
  color = value(7, 8, 89, 91, 90);
  color.SetExactColorValuePenFromRGB(map);
  EXPECT_EQ(color.pen, 7) << "two steps do not";
  color.SetColorValuePenFromRGB(map);
  EXPECT_EQ(color, value(2, 8, 89, 91, 90));
  color = value(7, 8, 9, 9, 9);
  color.GetClosestColor(map);
  EXPECT_EQ(color, value(1, 8, 9, 9, 9)) << "never pen 0";
}

}  // namespace
