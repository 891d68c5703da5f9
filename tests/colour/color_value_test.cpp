#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_value.h>

#include <cmath>

#include <gtest/gtest.h>
#include <support/printers.h>

// In each expected value: pen, alpha, red, green, blue.
TEST(ColorValue, TakesColoursFromOtherForms) {
  EXPECT_EQ(ColorValue(0x563412, 0x10007), ColorValue(7, 0, 0x12, 0x34, 0x56))
      << "low 16 bits of pen";
  EXPECT_EQ(ColorValue(0x1000000, 7), ColorValue(-1, 0, 0, 0, 0)) << "a high bit: no pen";
  EXPECT_EQ(ColorValue(0.5f, 1.0f, 1e30f), ColorValue(-1, 255, 128, 255, 0)) << "halves go up";
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

TEST(AdjustForeground, MovesAColourCloseToTheBackgroundUntilUndone) {
  const struct {
    ColAdjT mode;
    ColorRGB before, saved, after;
    bool is_undone;
    const char* why;
  } rows[] = {
      {ColAdjNudge, {246, 103, 7}, {246, 103, 7}, {247, 103, 7}, true, "differs by 4 + 3 + 7 = 14"},
      {ColAdjNudge, {246, 103, 8}, {246, 103, 8}, {246, 103, 8}, false, "differs by 15"},
      {ColAdjNudge, {255, 100, 0}, {255, 100, 0}, {254, 100, 0}, true, "a full red goes down"},
      {ColAdjNudge, {255, 100, 0}, {255, 101, 0}, {254, 100, 0}, false, "saved another green"},
      {ColAdjNudge, {255, 100, 0}, {255, 100, 1}, {254, 100, 0}, false, "saved another blue"},
      {ColAdjInvert, {250, 100, 1}, {250, 100, 1}, {5, 155, 254}, false, "no nudge to undo"},
  };
  const auto opaque = [](ColorRGB c) { return ColorValue(-1, 255, c.red, c.green, c.blue); };
  ColorValue background = opaque({250, 100, 0});
  for (const auto& row : rows) {
    ColorValue color = opaque(row.before);
    ColorValue saved = opaque(row.saved);
    color.AdjustForeground(background, row.mode);
    EXPECT_EQ(color, opaque(row.after)) << row.why;
    color.UndoAdjustForeground(saved);
    EXPECT_EQ(color, opaque(row.is_undone ? row.saved : row.after)) << "undone: " << row.why;
  }
}

TEST(ColorValue, TakesPensFromAMap) {
  int rgb[] = {0, 0, 0, 9, 9, 9};
  ColorMap map(2, 255, rgb);
  for (const int blue : {12, 10}) {
    ColorValue color(7, 0, 9, 9, blue);
    color.SetExactColorValuePenFromRGB(map);
    EXPECT_EQ(color.GetPen(), blue == 10 ? 1 : 7) << "at a mean distance of 1/3 it is exact";
    color.SetColorValuePenFromRGB(map);
    EXPECT_EQ(color.GetPen(), 1) << "the closest, at any distance";
  }
}
