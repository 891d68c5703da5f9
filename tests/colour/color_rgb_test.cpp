#include <zelvan/colour/color_rgb.h>

#include "colour/printing.h"
#include "support/bits.h"
#include "support/random.h"

#include <array>
#include <climits>

#include <gtest/gtest.h>

namespace {

const float below_zero = -0x1p-149f, above_one = 0x1.000002p0f, below_360 = 0x1.67fffep8f;
const ColorRGB before(11, 12, 13);  // what a refused setter leaves

using Setter = unsigned short (ColorRGB::*)(float, float, float);
constexpr Setter rgb = &ColorRGB::SetRGBColor, hsv = &ColorRGB::SetHSVColor;

TEST(ColorRGB, SetsWhatIsInRange) {
  const auto set = [](Setter setter, float a, float b, float c) {
    ColorRGB color = before;
    const bool is_set = (color.*setter)(a, b, c) == 1;
    EXPECT_EQ(is_set, !(color == before));
    return color;
  };
  EXPECT_EQ(set(rgb, 1.0f, 0.5f, 0.001f), ColorRGB(255, 128, 0));
  EXPECT_EQ(set(rgb, -0.0f, 0x1.0101p-9f, 0x1.010102p-9f), ColorRGB(0, 0, 1));  // beside 0.5 / 255
  EXPECT_EQ(set(rgb, NAN, 0.0f, 1.0f), ColorRGB(INT_MIN, 0, 255));
  EXPECT_EQ(set(rgb, 0.0f, 0.0f, below_zero), before);
  EXPECT_EQ(set(hsv, 90.0f, 1.0f, 1.0f), ColorRGB(128, 255, 0));
  EXPECT_EQ(set(hsv, 210.0f, 1.0f, 0.5f), ColorRGB(0, 64, 128));
  EXPECT_EQ(set(hsv, 360.0f, 1.0f, 1.0f), before);
}

TEST(ColorRGB, GivesHueSaturationAndValue) {
  using Numbers = std::array<float, 3>;
  const auto hsv_of = [](ColorRGB color, int scale) -> Numbers {
    ColorHSV got;
    color.RgbToHsv(scale, &got);
    return {got.hue, got.saturation, got.value};
  };
  EXPECT_EQ(hsv_of({51, 51, 51}, 255), (Numbers{0.0f, 0.0f, 0.2f}));
  EXPECT_EQ(hsv_of({255, 0, 255}, 255), (Numbers{300.0f, 1.0f, 1.0f}));       // a tie is red's
  EXPECT_EQ(hsv_of({255, 0, 1}, 255), (Numbers{0x1.67c3c4p8f, 1.0f, 1.0f}));  // rounded twice
  EXPECT_EQ(hsv_of({87804012, 38043720, 88375368}, 100000000),  // not (r - g + 4 * d) / d
            (Numbers{0x1.2b51a4p8f, 0x1.23984ap-1f, 0x1.c47b5cp-1f}));
  EXPECT_EQ(hsv_of({1, 1, 4}, 3), (Numbers{240.0f, 0.75f, 0x1.555556p+0f}));  // nothing is clamped
}

// All operations on hard numbers, half degrees, parts of a scale and any numbers. The first three
// show in a last digit how the products for falling and rising channels are grouped.
TEST(ColorRGB, KeepsEveryBit) {
  support::Digest digest;
  support::Random random(5);
  const auto number = [&]() -> float {
    const float hard[] = {NAN,  INFINITY,  -INFINITY, below_zero, -0.0f, above_one,
                          1.0f, below_360, 360.0f,    -1.0f,      25.0f, 0x1.010100p-9f};
    const int kind = random.below(16);
    return kind == 0  ? hard[random.below(12)]
           : kind < 9 ? static_cast<float>(random.below(721)) / 720.0f
                      : static_cast<float>(random.unit());
  };
  const auto add = [&](auto... values) { (digest.add(values), ...); };
  const auto add_color = [&](const ColorRGB& c) { add(c.red, c.green, c.blue); };
  for (int i = 0; i < 300000; ++i) {
    const int scales[] = {255, 255, 1, 1000, -7, INT_MAX},
              scale = i < 3 ? INT_MAX : scales[random.below(6)];
    const int range = i % 3 == 0 ? 4 : i % 3 == 1 ? 256 : 100000000;  // few values: many ties
    const float a = number(), b = number(), c = number();
    ColorHSV hsv = {a * (i % 4 > 0 ? 360.0f : i % 8 == 0 ? 9000.0f : -9000.0f), b, c};
    if (i == 0) hsv = {0x1.0415p6f, 0x1.6dd8a2p-1f, 0x1.693508p-1f};
    if (i == 1) hsv = {0x1.d9078p7f, 0x1.908118p-3f, 0x1.3b2d8p-1f};
    if (i == 2) hsv = {0x1.f1d87p6f, 0x1.9134dep-1f, 0x1.95807ap-1f};
    ColorRGB color, set;
    color.HsvToRgb(&hsv, scale), add_color(color);
    add(set.SetRGBColor(b, c, a)), add_color(set);
    add(set.SetHSVColor(hsv.hue, c, b)), add_color(set);
    for (int* channel : {&color.red, &color.green, &color.blue}) *channel = random.below(range);
    color.green -= i % 16 == 0 ? range : 0;
    color.RgbToHsv(scale, &hsv);
    for (float v : {hsv.hue, hsv.saturation, hsv.value}) add(support::bits(v));
    add(color.RGBTo24BitColor(), color.RGBToRGB32BitColor(), color.RGBToBGR32BitColor());
    const int packed = random.below(INT_MAX) * (i % 2 == 0 ? 1 : -1);
    set.Col24BitToRGBColor(packed), add_color(set);
    set.RGB32BitToRGBColor(packed), add_color(set);
    set.BGR32BitToRGBColor(packed), add_color(set);
    set.SetRGBColorFromColorValue(ColorValue(packed, 0)), add_color(set);
  }
  EXPECT_EQ(digest.value(), 0x4c8d301a56125dd1u);
}

}  // namespace
