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

using Setter = unsigned short (ColorRGB::*)(float, float, float);
constexpr Setter by_rgb = &ColorRGB::SetRGBColor, by_hsv = &ColorRGB::SetHSVColor;

TEST(ColorRGB, SetsWhatIsInRange) {
  const struct {
    Setter set;
    float a, b, c;
    ColorRGB expected;
  } rows[] = {
      {by_rgb, 1.0f, 0.5f, 0.001f, {255, 128, 0}},
      {by_rgb, -0.0f, 0x1.010100p-9f, 0x1.010102p-9f, {0, 0, 1}},  // on both sides of 0.5 / 255
      {by_rgb, nan, 0.0f, 1.0f, {INT_MIN, 0, 255}},
      {by_hsv, 0.0f, 1.0f, 1.0f, {255, 0, 0}},
      {by_hsv, 359.0f, 1.0f, 1.0f, {255, 0, 4}},
      {by_hsv, std::nextafter(360.0f, 0.0f), 1.0f, 1.0f, {255, 0, 0}},
      {by_hsv, 90.0f, 1.0f, 1.0f, {128, 255, 0}},
      {by_hsv, 150.0f, 0.5f, 1.0f, {128, 255, 191}},
      {by_hsv, 210.0f, 1.0f, 0.5f, {0, 64, 128}},
      {by_hsv, 270.0f, 1.0f, 1.0f, {128, 0, 255}},
      {by_hsv, 123.0f, 0.0f, 0.2f, {51, 51, 51}},
      {by_hsv, 5.0f, nan, 1.0f, {255, 255, 255}},
      {by_hsv, nan, 1.0f, 1.0f, {255, 0, 0}},
      {by_hsv, 360.0f, 1.0f, 1.0f, before},
  };
  for (const auto& row : rows) {
    ColorRGB color = before;
    EXPECT_EQ((color.*row.set)(row.a, row.b, row.c), !(row.expected == before));
    EXPECT_EQ(color, row.expected) << row.a << ' ' << row.b << ' ' << row.c;
  }
  for (Setter set : {by_rgb, by_hsv}) {
    for (int place = 0; place < 3; ++place) {
      for (float wrong : {below_zero, above_one}) {
        if (set == by_hsv && place == 0 && wrong > 0.0f) continue;
        float v[3] = {};
        v[place] = wrong;
        ColorRGB color = before;
        EXPECT_EQ((color.*set)(v[0], v[1], v[2]), 0) << place;
        EXPECT_EQ(color, before);
      }
    }
  }
}

TEST(ColorRGB, WrapsAHueOutsideTheCircle) {
  const auto color_of = [](float hue, float saturation, int scale) {
    ColorHSV hsv = {hue, saturation, 0.9f};
    ColorRGB color;
    color.HsvToRgb(&hsv, scale);
    return color;
  };
  for (int scale : {255, 1, 1000, -255}) {
    for (float hue = 0.0f; hue < 360.0f; hue += 0.25f) {
      for (float turns : {-720.0f, -360.0f, 360.0f, 3600.0f}) {
        ASSERT_EQ(color_of(hue + turns, 0.75f, scale), color_of(hue, 0.75f, scale)) << hue + turns;
      }
    }
  }
  for (float hue : {below_zero, std::numeric_limits<float>::infinity(), nan}) {
    EXPECT_EQ(color_of(hue, 1.0f, 10), ColorRGB(9, 0, 0));
    EXPECT_EQ(color_of(hue, -1.0f, 10), ColorRGB(9, 9, 9));
  }
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
      {{255, 255, 0}, 255, {60.0f, 1.0f, 1.0f}},
      {{255, 0, 255}, 255, {300.0f, 1.0f, 1.0f}},
      {{0, 7, 7}, 7, {180.0f, 1.0f, 1.0f}},
      {{3, 0, 1}, 4, {340.0f, 1.0f, 0.75f}},
      {{255, 0, 1}, 255, {0x1.67c3c4p+8f, 1.0f, 1.0f}},  // just below 360, rounded twice
      {{1, 1, 4}, 3, {240.0f, 0.75f, 0x1.555556p+0f}},   // nothing is clamped
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
