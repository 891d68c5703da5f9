#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/color_value.h>

#include <array>
#include <cstdlib>
#include <limits>

#include <gtest/gtest.h>

namespace {

using Fields = std::array<int, 5>;  // pen, alpha, red, green, blue

Fields fields(const ColorValue& v) {
  return {v.GetPen(), v.GetAlpha(), v.GetRed(), v.GetGreen(), v.GetBlue()};
}

unsigned char byte(int v) { return static_cast<unsigned char>(v); }

TEST(ColorValue, IsMadeOfPenOrChannels) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  ColorRGB wide(0x101, -1, 0x7F02);
  ColorValue colour(5, 6, 7, 8, 9), background = colour, direct = colour, pen = colour;
  colour.SetColorValueFromRGB(wide);
  background.SetBackgroundColorValueFromRGB(wide);
  direct.SetColorValueFromPackedColor(0xFF123456);
  pen.SetColorValueFromPackedColor(0x00FFFF23);
  ColorValue a(3, 4, 0xF0, 0xFF, 0x01), b(30, 40, 0x0F, 0xF0, 0x03), blend = background;
  blend.SetXorValue(a, b);
  a.SetXorValue(a, b);
  const struct {
    ColorValue value;
    Fields expected;
  } rows[] = {
      {ColorValue(), {1, 255, 0, 0, 0}},
      {ColorValue(short{-7}), {-7, 0, 0, 0, 0}},
      {ColorValue(byte(1), byte(2), byte(3)), {-1, 255, 1, 2, 3}},
      {ColorValue(byte(1), byte(2), byte(3), byte(4)), {-1, 1, 2, 3, 4}},
      {ColorValue(0x01000000, 7), {-1, 0, 0, 0, 0}},
      {ColorValue(-1, 7), {-1, 0, 255, 255, 255}},
      {ColorValue(0x00123456, 0x18007), {-32761, 0, 0x56, 0x34, 0x12}},
      {ColorValue(1.0f, 0.5f, 0.001f), {-1, 255, 255, 128, 0}},
      {ColorValue(1.01f, -0.01f, nan), {-1, 255, 2, 254, 0}},          // 258 and -2
      {ColorValue(8421505.0f, 1e30f, -0.001f), {-1, 255, 127, 0, 0}},  // first needs 33 bits
      {colour, {5, 255, 1, 255, 2}},
      {background, {5, 0, 1, 255, 2}},
      {direct, {-1, 255, 0x56, 0x34, 0x12}},
      {pen, {0x23, 0, 0, 0, 0}},
      {blend, {3, 0, 0xFF, 0x0F, 0x02}},
      {a, {3, 4, 0xFF, 0x0F, 0x02}},
  };
  for (const auto& row : rows) EXPECT_EQ(fields(row.value), row.expected);
  for (int field = 0; field < 5; ++field) {  // each counts in a comparison
    const ColorValue other(field == 0, field == 1, field == 2, field == 3, field == 4);
    EXPECT_TRUE(other == ColorValue(other) && other != ColorValue(short{0})) << field;
    EXPECT_FALSE(other == ColorValue(short{0}) || other != ColorValue(other)) << field;
  }
}

// Every difference of red and green near the bound, at every red. What is undone is just what
// looks like a nudge.
TEST(ColorValue, KeepsAForegroundApartFromItsBackground) {
  for (int red = 0; red < 256; ++red) {
    for (int step = -16; step <= 16; ++step) {
      for (int mode = 0; mode < 4; ++mode) {
        const int green = 100 + step / 2, shifted = red + step - step / 2;
        if (shifted < 0 || shifted > 255) continue;
        ColorValue background(8, 8, red, 100, 77), before(2, 3, shifted, green, 77);
        ColorValue after = before;
        after.AdjustForeground(background, static_cast<ColAdjT>(mode));
        Fields expected = fields(before);
        if (std::abs(step) < 15 && mode == 1) expected[2] = shifted == 255 ? 254 : shifted + 1;
        if (std::abs(step) < 15 && mode == 2) expected = {2, 3, 255 - shifted, 255 - green, 178};
        ASSERT_EQ(fields(after), expected) << red << ' ' << step << ' ' << mode;

        ColorValue undone = after;
        undone.UndoAdjustForeground(background);
        const bool is_a_nudge = std::abs(expected[2] - red) == 1 && expected[3] == 100;
        ASSERT_EQ(fields(undone), is_a_nudge && expected[4] == 77 ? fields(background) : expected);
      }
    }
  }
}

}  // namespace
