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
      {"RGB 1 0.5 0.001", {255, 128, 0}},  {"rgb x 0 \"1\"", {0, 0, 0}},  // any text counts as 0
      {"HSV 210 1 .5 more", {0, 64, 128}}, {"HSV 360 1 1", before},
      {"Name snow", {255, 250, 250}},      {"NAME \"dark BLUE\" more", {0, 0, 128}},
      {"Name dark blue", before},
  };
  for (auto [text, expected] : rows) {
    ColorRGB color = before;
    EXPECT_EQ(color.SetValue(0, text.data()), !(expected == before)) << text;
    EXPECT_EQ(color, expected) << text;
  }
  EXPECT_EQ(ColorRGB().SetValue(0, nullptr) + ColorRGB().FindName(nullptr), 0);

  // Keywords, or what is none, with all threes of operands, of which the last two are missing.
  const std::string words[] = {"RGB", " \t\nrGb", "RGB\x02x", "$hsv$",
                               "RG",  "\"\"",     "\x01",     "Name"};
  const std::string operands[] = {"1",   "0.5",       "x",          "\"1\"", "$$", "-0",  "1.5",
                                  "240", "359.99999", "1.00000001", "-1e-9", "",   "\x01"};
  ColorDigest digest;
  for (int i = 0; i < 8 * 13 * 13 * 13; ++i) {
    std::string text = words[i % 8];
    for (int rest = i / 8, read = 0; read < 3; ++read, rest /= 13) {
      text += (i % 2 == 0 ? " " : "  \t ") + operands[rest % 13];
    }
    ColorRGB color = before;
    digest(color.SetValue(77, text.data()), color);
  }
  EXPECT_EQ(digest.value(), 0x812f570a4ca37764u);
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
  EXPECT_EQ(digest.value(), 0xd12f2fc65839d21eu);
}

TEST(ColorRGB, GivesHueSaturationAndValue) {
  ColorHSV hsv;
  ColorRGB(255, 0, 255).RgbToHsv(255, &hsv);  // a tie is red's
  EXPECT_EQ((std::array{hsv.hue, hsv.saturation, hsv.value}), (std::array{300.0f, 1.0f, 1.0f}));
  ColorRGB(0, 0, 4).RgbToHsv(2, &hsv);  // nothing is clamped
  EXPECT_EQ((std::array{hsv.hue, hsv.saturation, hsv.value}), (std::array{240.0f, 1.0f, 2.0f}));
}

// All operations on hard numbers, half degrees, parts of a scale and any numbers. The first three
// show in a last digit how the products for falling and rising channels are grouped.
TEST(ColorRGB, KeepsEveryBit) {
  ColorDigest digest;
  support::Random random(5);
  const auto number = [&]() -> float {
    const float hard[] = {NAN,           INFINITY,      -INFINITY, -0x1p-149f,   -0.0f,
                          0x1.000002p0f, 0x1.67fffep8f, 360.0f,    0x1.0101p-9f, 0x1.010102p-9f};
    const int kind = random.below(16);
    return kind == 0  ? hard[random.below(10)]
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
  EXPECT_EQ(digest.value(), 0xf17e4b6b2d56070eu);
}

}  // namespace
