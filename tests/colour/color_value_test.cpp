#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/color_value.h>

#include <cstdlib>
#include <limits>
#include <tuple>

#include <gtest/gtest.h>

namespace {

using Fields = std::tuple<int, int, int, int, int>;  // pen, alpha, red, green, blue

Fields fields(const ColorValue& value) {
  return {value.GetPen(), value.GetAlpha(), value.GetRed(), value.GetGreen(), value.GetBlue()};
}

unsigned char byte(int v) { return static_cast<unsigned char>(v); }

TEST(ColorValue, IsMadeOfPenOrChannels) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const struct {
    ColorValue value;
    Fields expected;
  } rows[] = {
      {ColorValue(), {1, 255, 0, 0, 0}},
      {ColorValue(short{-7}), {-7, 0, 0, 0, 0}},
      {ColorValue(byte(1), byte(2), byte(3)), {-1, 255, 1, 2, 3}},
      {ColorValue(byte(1), byte(2), byte(3), byte(4)), {-1, 1, 2, 3, 4}},
      {ColorValue(short{9}, byte(1), byte(2), byte(3), byte(4)), {9, 1, 2, 3, 4}},
      {ColorValue(0x01000000, 7), {-1, 0, 0, 0, 0}},
      {ColorValue(-1, 7), {-1, 0, 255, 255, 255}},
      {ColorValue(0x00123456, 0x18007), {-32761, 0, 0x56, 0x34, 0x12}},
      {ColorValue(1.0f, 0.5f, 0.001f), {-1, 255, 255, 128, 0}},
      {ColorValue(1.01f, -0.01f, nan), {-1, 255, 2, 254, 0}},          // 258 and -2
      {ColorValue(8421505.0f, 1e30f, -0.001f), {-1, 255, 127, 0, 0}},  // the first needs 33 bits
  };
  for (const auto& row : rows) EXPECT_EQ(fields(row.value), row.expected);
}

TEST(ColorValue, ReadsAPackedNumberAsColourOrPen) {
  const struct {
    unsigned int packed;
    Fields expected;
  } rows[] = {
      {0x00000123, {0x23, 0, 0, 0, 0}}, {0x00FFFF00, {0, 0, 0, 0, 0}},
      {0x00FFFFFF, {255, 0, 0, 0, 0}},  {0xFF123456, {-1, 255, 0x56, 0x34, 0x12}},
      {0x01000000, {-1, 255, 0, 0, 0}}, {0x80030201, {-1, 255, 1, 2, 3}},
  };
  for (const auto& row : rows) {
    ColorValue value(5, 5, 5, 5, 5);
    value.SetColorValueFromPackedColor(row.packed);
    EXPECT_EQ(fields(value), row.expected) << std::hex << row.packed;
  }
}

TEST(ColorValue, TakesChannelsFromOthersAndKeepsTheRest) {
  ColorValue value(5, 6, 7, 8, 9);
  ColorRGB wide(0x101, -1, 0x7F02);
  value.SetColorValueFromRGB(wide);
  EXPECT_EQ(fields(value), Fields(5, 255, 1, 255, 2));
  value.SetBackgroundColorValueFromRGB(wide);
  EXPECT_EQ(fields(value), Fields(5, 0, 1, 255, 2));

  ColorValue a(3, 4, 0xF0, 0xFF, 0x01);
  ColorValue b(30, 40, 0x0F, 0xF0, 0x03);
  value.SetXorValue(a, b);
  EXPECT_EQ(fields(value), Fields(3, 0, 0xFF, 0x0F, 0x02));
  a.SetXorValue(a, b);
  EXPECT_EQ(fields(a), Fields(3, 4, 0xFF, 0x0F, 0x02));

  // Each field counts in a comparison.
  for (int field = 0; field < 5; ++field) {
    const ColorValue other(field == 0, field == 1, field == 2, field == 3, field == 4);
    EXPECT_TRUE(other == ColorValue(other));
    EXPECT_TRUE(other != ColorValue(short{0})) << field;
    EXPECT_FALSE(other == ColorValue(short{0})) << field;
  }
}

// Every difference of red and green near the bound, at every red.
TEST(ColorValue, KeepsAForegroundApartFromItsBackground) {
  const int mode_count = 4;
  for (int red = 0; red < 256; ++red) {
    for (int step = -16; step <= 16; ++step) {
      for (int mode = 0; mode < mode_count; ++mode) {
        const int green = 100 + step / 2;
        ColorValue background(8, 8, red, 100, 77);
        const int shifted = red + step - step / 2;
        if (shifted < 0 || shifted > 255) continue;
        const ColorValue before(2, 3, shifted, green, 77);
        ColorValue after = before;
        after.AdjustForeground(background, static_cast<ColAdjT>(mode));

        Fields expected = fields(before);
        if (std::abs(step) < 15 && mode == 1) {
          std::get<2>(expected) = shifted == 255 ? 254 : shifted + 1;
        } else if (std::abs(step) < 15 && mode == 2) {
          expected = Fields(2, 3, 255 - shifted, 255 - green, 178);
        }
        ASSERT_EQ(fields(after), expected) << red << ' ' << step << ' ' << mode;
      }
    }
  }
}

TEST(ColorValue, UndoesJustANudge) {
  ColorValue saved(2, 3, 100, 50, 60);
  const struct {
    ColorValue adjusted;
    bool is_undone;
  } rows[] = {
      {{9, 9, 101, 50, 60}, true},  {{9, 9, 99, 50, 60}, true},   {{9, 9, 100, 50, 60}, false},
      {{9, 9, 102, 50, 60}, false}, {{9, 9, 101, 51, 60}, false}, {{9, 9, 101, 50, 61}, false},
  };
  for (const auto& row : rows) {
    ColorValue value = row.adjusted;
    value.UndoAdjustForeground(saved);
    EXPECT_EQ(fields(value), fields(row.is_undone ? saved : row.adjusted));
  }
}

}  // namespace
