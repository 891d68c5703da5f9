#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include "colour/printing.h"
#include "support/random.h"

#include <array>
#include <cctype>
#include <climits>
#include <string>

#include <gtest/gtest.h>

namespace {

const ColorRGB before(11, 12, 13);  // what a refused setter leaves

TEST(ColorRGB, TakesATextualValue) {
  const std::pair<std::string, ColorRGB> rows[] = {
      {"RGB 1 0.5 0.001", {255, 128, 0}},
      {"rgb x 0 \"1\"", {0, 0, 0}},  // any text counts as 0
      {"HSV 90 1 1", {128, 255, 0}},
      {"HSV 210 1 .5 more", {0, 64, 128}},
      {"HSV 360 1 1", before},
      {"RGB 0 0 1.001", before},
      {"RGB 1 1", before},
      {"Name snow", {255, 250, 250}},
      {"NAME GRAY50 more", {127, 127, 127}},
      {"name \"dark blue\"", {0, 0, 128}},
      {"Name dark blue", before},
      {"snow", before}};
  for (auto [text, expected] : rows) {
    ColorRGB color = before;
    EXPECT_EQ(color.SetValue(0, text.data()), !(expected == before)) << text;
    EXPECT_EQ(color, expected) << text;
  }
  EXPECT_EQ(ColorRGB().SetValue(0, nullptr) + ColorRGB().FindName(nullptr), 0);
}

// Keywords of all three forms, and what is none, with all threes of operands, of which the last two
// are missing.
TEST(ColorRGB, KeepsEveryTextualValue) {
  const std::string words[] = {"RGB", " \t\nrGb", "\"RGB\"", "RGB\x02x", "$hsv$", "HSV", "HSVA",
                               "RG",  "\"\"",     "0",       "\x01",     "Name",  "snow"};
  const std::string operands[] = {"1",          "0.5",   "x",     "\"1\"", "$$",
                                  "-0",         "1.5",   "240",   "359",   "359.99999",
                                  "1.00000001", "-1e-9", "1e400", "",      "\x01"};
  ColorDigest digest;
  for (int i = 0; i < 13 * 15 * 15 * 15; ++i) {
    std::string text = words[i % 13];
    for (int rest = i / 13, read = 0; read < 3; ++read, rest /= 15) {
      text += (i % 2 == 0 ? " " : "  \t ") + operands[rest % 15];
    }
    ColorRGB color = before;
    digest(color.SetValue(77, text.data()), color);
  }
  EXPECT_EQ(digest.value(), 0x7ba538a244847e6fu);
}

// The rows in their order. Each name with each of its bits turned, the terminator's too, while its
// letters change case; each colour with others beside it, and a good part of all that there are.
TEST(NamedColors, KeepEveryResult) {
  ColorDigest digest;
  const auto name_of = [&](ColorRGB color) {
    char none[] = "none", *name = none;
    digest(color.FindNameForRgb(&name));
    for (; *name != '\0'; ++name) digest(*name);
  };
  for (const auto& [red, green, blue, row_name] : zelvan::named_colors) {
    std::string name = row_name;
    for (std::size_t i = 0; i <= name.size(); ++i) {
      for (const int bits : {0, 1, 2, 4, 8, 16, 32, 64, 128, int{name[i]}}) {
        std::string text = name + '\0';
        text[i] = static_cast<char>(text[i] ^ bits);
        ColorRGB color = before;
        digest((color.*(i % 2 == 0 ? &ColorRGB::FindName : &ColorRGB::SetNamedColor))(text.data()));
        digest(color);
      }
      if (i < name.size() && std::isalpha(name[i])) name[i] = static_cast<char>(name[i] ^ 32);
    }
    for (const int step : {0, 1, -1, 256, -256, 65536, -65536, 1 << 24, INT_MIN}) {
      name_of({red + step, green, blue}), name_of({red, green + step, blue});
      name_of({red, green, blue + step});
    }
  }
  for (int i = 0; i < 1 << 24; i += 13) name_of({i >> 16, i >> 8 & 0xFF, i & 0xFF});
  digest(ColorRGB().FindName(std::string(2000, 'z').data()));
  EXPECT_EQ(digest.value(), 0xb62cd3506c32c1deu);
}

TEST(ColorRGB, GivesHueSaturationAndValue) {
  const std::tuple<ColorRGB, int, std::array<float, 3>> rows[] = {
      {{51, 51, 51}, 255, {0.0f, 0.0f, 0.2f}},
      {{255, 0, 255}, 255, {300.0f, 1.0f, 1.0f}},        // a tie is red's
      {{1, 1, 4}, 3, {240.0f, 0.75f, 0x1.555556p+0f}}};  // nothing is clamped
  for (auto [color, scale, expected] : rows) {
    ColorHSV hsv;
    color.RgbToHsv(scale, &hsv);
    EXPECT_EQ((std::array{hsv.hue, hsv.saturation, hsv.value}), expected) << color;
  }
}

// All operations on hard numbers, half degrees, parts of a scale and any numbers. The first three
// show in a last digit how the products for falling and rising channels are grouped.
TEST(ColorRGB, KeepsEveryBit) {
  ColorDigest digest;
  support::Random random(5);
  const auto number = [&]() -> float {
    const float hard[] = {NAN,    INFINITY,      -INFINITY,      -0x1p-149f,
                          -0.0f,  0x1.000002p0f, 1.0f,           0x1.67fffep8f,
                          360.0f, -1.0f,         0x1.010100p-9f, 0x1.010102p-9f};
    const int kind = random.below(16);
    return kind == 0  ? hard[random.below(12)]
           : kind < 9 ? static_cast<float>(random.below(721)) / 720.0f
                      : static_cast<float>(random.unit());
  };
  ColorHSV grouped[] = {{0x1.0415p6f, 0x1.6dd8a2p-1f, 0x1.693508p-1f},
                        {0x1.d9078p7f, 0x1.908118p-3f, 0x1.3b2d8p-1f},
                        {0x1.f1d87p6f, 0x1.9134dep-1f, 0x1.95807ap-1f}};
  for (int i = 0; i < 300000; ++i) {
    const int scales[] = {255, 255, 1, 1000, -7, INT_MAX};
    const int scale = scales[i < 3 ? 5 : random.below(6)];
    const int range = i % 3 == 0 ? 4 : i % 3 == 1 ? 256 : 100000000;  // few values: many ties
    const float a = number(), b = number(), c = number();
    ColorHSV hsv = {a * (i % 4 > 0 ? 360.0f : i % 8 == 0 ? 9000.0f : -9000.0f), b, c};
    ColorRGB color, set;
    color.HsvToRgb(i < 3 ? &grouped[i] : &hsv, scale), digest(color);
    digest(set.SetRGBColor(b, c, a), set), digest(set.SetHSVColor(hsv.hue, c, b), set);
    for (int* channel : {&color.red, &color.green, &color.blue}) *channel = random.below(range);
    color.green -= i % 16 == 0 ? range : 0;
    color.RgbToHsv(scale, &hsv);
    for (float v : {hsv.hue, hsv.saturation, hsv.value}) digest(support::bits(v));
    digest(color.RGBTo24BitColor(), color.RGBToRGB32BitColor(), color.RGBToBGR32BitColor());
    const int packed = random.below(INT_MAX) * (i % 2 == 0 ? 1 : -1);
    set.Col24BitToRGBColor(packed), digest(set), set.RGB32BitToRGBColor(packed), digest(set);
    set.BGR32BitToRGBColor(packed), digest(set);
    set.SetRGBColorFromColorValue(ColorValue(packed, 0)), digest(set);
  }
  EXPECT_EQ(digest.value(), 0x32209b6efc947bb6u);
}

}  // namespace
