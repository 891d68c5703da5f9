#include <zelvan/colour/color_value.h>

#include <cmath>

#include <gtest/gtest.h>
#include <support/printers.h>

// In each expected value: pen, alpha, red, green, blue.
TEST(ColorValue, TakesColoursFromOtherForms) {
  EXPECT_EQ(ColorValue(0x563412, 0x10007), ColorValue(7, 0, 0x12, 0x34, 0x56))
      << "low 16 bits of pen";
  EXPECT_EQ(ColorValue(0x1000000, 7), ColorValue(-1, 0, 0, 0, 0)) << "a high bit: no pen";
  EXPECT_EQ(ColorValue(0.5f, 1.0f, 0.001f), ColorValue(-1, 255, 128, 255, 0)) << "halves go up";
  EXPECT_EQ(ColorValue(2.0f, -1.0f, NAN), ColorValue(-1, 255, 254, 2, 0))
      << "low 8 bits of 510, -254";
  ColorRGB wide(0x101, -1, 7);
  ColorValue color(5, 9, 0, 0, 0);
  color.SetColorValueFromRGB(wide);
  EXPECT_EQ(color, ColorValue(5, 255, 1, 255, 7)) << "low 8 bits, opaque, the pen stays";
  color.SetColorValueFromPackedColor(0x00FFFF23);
  EXPECT_EQ(color, ColorValue(0x23, 0, 0, 0, 0)) << "a pen: the low 8 bits";
  color.SetColorValueFromPackedColor(0x80332211);
  EXPECT_EQ(color, ColorValue(-1, 255, 0x11, 0x22, 0x33)) << "any of the high bits: a colour";
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

// The background is (7, 100, 100); pen and alpha of the foreground are 1 and 2.
TEST(AdjustForeground, MovesAColourThatCannotBeToldFromTheBackground) {
  const struct {
    ColAdjT mode;
    ColorRGB before, after, undone;
    const char* why;
  } rows[] = {
      {ColAdjNudge, {0, 96, 103}, {1, 96, 103}, {0, 96, 103}, "7 + 4 + 3 is less than 15"},
      {ColAdjNudge, {0, 96, 104}, {0, 96, 104}, {0, 96, 104}, "15 is not"},
      {ColAdjInvert, {5, 96, 100}, {250, 159, 155}, {250, 159, 155}, "no nudge is taken back"},
  };
  for (const auto& [mode, before, after, undone, why] : rows) {
    const auto with = [](const ColorRGB& c) { return ColorValue(1, 2, c.red, c.green, c.blue); };
    ColorValue background(9, 9, 7, 100, 100), saved = with(before), value = saved;
    value.AdjustForeground(background, mode);
    EXPECT_EQ(value, with(after)) << why;
    value.UndoAdjustForeground(saved);
    EXPECT_EQ(value, with(undone)) << why;
  }
}
