#include <zelvan/colour/color_rgb.h>

#include "colour/printing.h"

#include <climits>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

const float nan = std::numeric_limits<float>::quiet_NaN();
const float above_one = std::nextafter(1.0f, 2.0f);
const float below_zero = -std::numeric_limits<float>::denorm_min();
const ColorRGB before(11, 12, 13);  // what a refused setter leaves

TEST(ColorRGB, SetsChannelsInRange) {
  const struct {
    float r, g, b;
    ColorRGB expected;
  } rows[] = {
      {1.0f, 0.5f, 0.001f, {255, 128, 0}},
      {-0.0f, 0x1.010100p-9f, 0x1.010102p-9f, {0, 0, 1}},  // on both sides of 0.5 / 255
      {above_one, 0.0f, 0.0f, before},
      {0.0f, above_one, 0.0f, before},
      {0.0f, 0.0f, above_one, before},
      {below_zero, 0.0f, 0.0f, before},
      {0.0f, below_zero, 0.0f, before},
      {0.0f, 0.0f, below_zero, before},
      {nan, 0.0f, 1.0f, {INT_MIN, 0, 255}},
  };
  for (const auto& row : rows) {
    ColorRGB color = before;
    EXPECT_EQ(color.SetRGBColor(row.r, row.g, row.b), !(row.expected == before));
    EXPECT_EQ(color, row.expected);
  }
}

TEST(ColorRGB, SetsHueSaturationAndValueInRange) {
  const struct {
    float h, s, v;
    ColorRGB expected;
  } rows[] = {
      {0.0f, 1.0f, 1.0f, {255, 0, 0}},       {359.9f, 1.0f, 1.0f, {255, 0, 0}},
      {359.0f, 1.0f, 1.0f, {255, 0, 4}},     {90.0f, 1.0f, 1.0f, {128, 255, 0}},
      {150.0f, 0.5f, 1.0f, {128, 255, 191}}, {210.0f, 1.0f, 0.5f, {0, 64, 128}},
      {240.0f, 1.0f, 1.0f, {0, 0, 255}},     {270.0f, 1.0f, 1.0f, {128, 0, 255}},
      {123.0f, 0.0f, 0.2f, {51, 51, 51}},    {360.0f, 1.0f, 1.0f, before},
      {below_zero, 1.0f, 1.0f, before},      {0.0f, above_one, 1.0f, before},
      {0.0f, below_zero, 1.0f, before},      {0.0f, 1.0f, above_one, before},
      {0.0f, 1.0f, below_zero, before},      {5.0f, nan, 1.0f, {255, 255, 255}},
      {nan, 1.0f, 1.0f, {255, 0, 0}},
  };
  for (const auto& row : rows) {
    ColorRGB color = before;
    EXPECT_EQ(color.SetHSVColor(row.h, row.s, row.v), !(row.expected == before));
    EXPECT_EQ(color, row.expected) << row.h << ' ' << row.s << ' ' << row.v;
  }
}

TEST(ColorRGB, WrapsAHueOutsideTheCircle) {
  for (int scale : {255, 1, 1000, -255}) {
    for (float hue = 0.0f; hue < 360.0f; hue += 0.25f) {
      for (float turns : {-720.0f, -360.0f, 360.0f, 3600.0f}) {
        ColorHSV inside = {hue, 0.75f, 0.9f};
        ColorHSV outside = {hue + turns, 0.75f, 0.9f};
        ColorRGB expected, color;
        expected.HsvToRgb(&inside, scale);
        color.HsvToRgb(&outside, scale);
        ASSERT_EQ(color, expected) << outside.hue;
      }
    }
  }
  for (float hue : {below_zero, std::numeric_limits<float>::infinity()}) {
    ColorHSV hsv = {hue, 1.0f, 1.0f};
    ColorRGB color;
    color.HsvToRgb(&hsv, 255);
    EXPECT_EQ(color, ColorRGB(255, 0, 0));
  }
  ColorHSV grey = {nan, -1.0f, 0.5f};
  ColorRGB color;
  color.HsvToRgb(&grey, 255);
  EXPECT_EQ(color, ColorRGB(128, 128, 128));
}

TEST(ColorRGB, GivesHueSaturationAndValue) {
  const struct {
    ColorRGB color;
    int scale;
    ColorHSV expected;
  } rows[] = {
      {{0, 0, 0}, 255, {0.0f, 0.0f, 0.0f}},
      {{51, 51, 51}, 255, {0.0f, 0.0f, 0.2f}},
      {{0, 0, 255}, 255, {240.0f, 1.0f, 1.0f}},
      {{255, 255, 0}, 255, {60.0f, 1.0f, 1.0f}},   // a tie of red and green goes to red,
      {{255, 0, 255}, 255, {300.0f, 1.0f, 1.0f}},  // of red and blue as well,
      {{0, 7, 7}, 7, {180.0f, 1.0f, 1.0f}},        // of green and blue to green
      {{3, 0, 1}, 4, {340.0f, 1.0f, 0.75f}},       // a sector of -1/3, rounded twice
      {{255, 0, 1}, 255, {0x1.67c3c4p+8f, 1.0f, 1.0f}},
      {{1, 1, 4}, 3, {240.0f, 0.75f, 0x1.555556p+0f}},  // nothing is clamped
      {{-1, -2, -3}, 1, {30.0f, -2.0f, -1.0f}},
  };
  for (const auto& row : rows) {
    ColorRGB color = row.color;
    ColorHSV hsv;
    color.RgbToHsv(row.scale, &hsv);
    EXPECT_EQ(hsv.hue, row.expected.hue) << color;
    EXPECT_EQ(hsv.saturation, row.expected.saturation) << color;
    EXPECT_EQ(hsv.value, row.expected.value) << color;
  }
}

TEST(ColorRGB, PacksAndUnpacks) {
  ColorRGB color;
  color.Col24BitToRGBColor(static_cast<int>(0xFF030201));
  EXPECT_EQ(color, ColorRGB(1, 2, 3));
  color.RGB32BitToRGBColor(0x7FFFFE01);
  EXPECT_EQ(color, ColorRGB(1, 0xFE, 0xFF));
  color.BGR32BitToRGBColor(static_cast<int>(0x80010203));
  EXPECT_EQ(color, ColorRGB(1, 2, 3));
  EXPECT_EQ(color.RGBTo24BitColor(), 0x030201u);
  EXPECT_EQ(color.RGBToRGB32BitColor(), 0x030201u);
  EXPECT_EQ(color.RGBToBGR32BitColor(), 0x010203u);
  EXPECT_EQ(ColorRGB(0x100, 0x200, 3).RGBTo24BitColor(), 0x030100u);
  EXPECT_EQ(ColorRGB(1, 0, -1).RGBToRGB32BitColor(), 0xFFFF0001u);

  color.SetRGBColorFromColorValue(ColorValue(1, 2, 253, 254, 255));
  EXPECT_EQ(color, ColorRGB(253, 254, 255));
}

}  // namespace
