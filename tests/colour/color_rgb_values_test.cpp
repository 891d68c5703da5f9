#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include <cctype>
#include <climits>
#include <cmath>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <support/printers.h>

namespace {

const ColorRGB before(11, 12, 13);

TEST(ColorRGB, TakesChannelsAndHuesWithinTheirRange) {
  const struct {
    float a, b, c;
    bool is_hsv;
    ColorRGB expected;
    const char* why;
  } rows[] = {
      {1.0f, 0.5f, -0.0f, false, {255, 128, 0}, "halves up"},
      {0x1.000002p0f, 0, 0, false, before, "just above 1"},
      {0, -0x1p-149f, 0, false, before, "just below 0"},
      {0, 0, 2, false, before, "blue above 1"},
      {NAN, 0, 0, false, {INT_MIN, 0, 0}, "what is not a number passes"},
      {0, 1, 1, true, {255, 0, 0}, "red"},
      {30, 1, 1, true, {255, 128, 0}, "halfway to yellow"},
      {90, 1, 1, true, {128, 255, 0}, "halfway to green"},
      {150, 1, 1, true, {0, 255, 128}, "halfway to cyan"},
      {210, 1, 1, true, {0, 128, 255}, "halfway to blue"},
      {270, 1, 1, true, {128, 0, 255}, "halfway to magenta"},
      {330, 1, 1, true, {255, 0, 128}, "halfway to red"},
      {60, 0.5f, 1, true, {255, 255, 128}, "pale yellow"},
      {60, 1, 0.5f, true, {128, 128, 0}, "dark yellow"},
      {200, 0, 1, true, {255, 255, 255}, "no saturation, no hue"},
      {360, 1, 1, true, before, "the circle ends before 360"},
      {-1, 1, 1, true, before, "below 0"},
      {0, 1.5f, 1, true, before, "saturation above 1"},
      {0, 1, -0.5f, true, before, "value below 0"},
  };
  for (const auto& row : rows) {
    ColorRGB color = before;
    const int status = row.is_hsv ? color.SetHSVColor(row.a, row.b, row.c)
                                  : color.SetRGBColor(row.a, row.b, row.c);
    EXPECT_EQ(color, row.expected) << row.why;
    EXPECT_EQ(status, row.expected == before ? 0 : 1) << row.why;
  }
}

TEST(HsvToRgb, WrapsTheHue) {
  const float inf = HUGE_VALF;
  for (const float hue : {240.0f, 600.0f, -120.0f, -480.0f}) {
    ColorHSV hsv = {hue, 1, 1};
    ColorRGB color;
    color.HsvToRgb(&hsv, 31);
    EXPECT_EQ(color, ColorRGB(0, 0, 31)) << hue;
  }
  for (const float hue : {360.0f, -0x1p-149f, inf, -inf, float{NAN}}) {
    ColorHSV hsv = {hue, 1, 1};
    ColorRGB color;
    color.HsvToRgb(&hsv, 31);
    EXPECT_EQ(color, ColorRGB(31, 0, 0)) << hue;
  }
}

TEST(RgbToHsv, MeasuresHueSaturationAndValue) {
  const struct {
    ColorRGB color;
    float hue, saturation, value;
    const char* why;
  } rows[] = {
      {{0, 0, 0}, 0, 0, 0, "black"},
      {{2, 2, 2}, 0, 0, 0.5f, "grey"},
      {{4, 0, 0}, 0, 1, 1, "red"},
      {{4, 2, 0}, 30, 1, 1, "orange"},
      {{4, 4, 0}, 60, 1, 1, "red before green"},
      {{2, 4, 0}, 90, 1, 1, "red falls"},
      {{0, 4, 4}, 180, 1, 1, "green before blue"},
      {{2, 0, 4}, 270, 1, 1, "red rises"},
      {{4, 0, 4}, 300, 1, 1, "red before blue"},
      {{4, 0, 2}, 330, 1, 1, "below 0, a turn is added"},
      {{1, 1, 2}, 240, 0.5f, 0.5f, "pale and dark blue"},
  };
  for (auto row : rows) {
    ColorHSV hsv;
    row.color.RgbToHsv(4, &hsv);
    EXPECT_EQ(hsv.hue, row.hue) << row.why;
    EXPECT_EQ(hsv.saturation, row.saturation) << row.why;
    EXPECT_EQ(hsv.value, row.value) << row.why;
  }
}

TEST(ColorRGB, PacksAndUnpacksItsChannels) {
  ColorRGB color;
  color.Col24BitToRGBColor(static_cast<int>(0xFF332211));
  EXPECT_EQ(color, ColorRGB(0x11, 0x22, 0x33)) << "the upper bits are ignored";
  EXPECT_EQ(color.RGBTo24BitColor(), 0x332211U);
  EXPECT_EQ(color.RGBToRGB32BitColor(), 0x332211U);
  EXPECT_EQ(color.RGBToBGR32BitColor(), 0x112233U);
  EXPECT_EQ(ColorRGB(0x100, 1, 0).RGBTo24BitColor(), 0x100U) << "not masked: 100 and 100 merge";
  ColorRGB reversed;
  reversed.BGR32BitToRGBColor(0x7F112233);
  EXPECT_EQ(reversed, color);
  reversed.RGB32BitToRGBColor(0x332211);
  EXPECT_EQ(reversed, color);
  reversed.SetRGBColorFromColorValue(ColorValue(short{1}, 2, 3, 4, 5));
  EXPECT_EQ(reversed, ColorRGB(3, 4, 5));
}

TEST(NamedColors, AreFoundByNameInAnyCaseAndByTheirFirstName) {
  std::map<unsigned int, std::string> first_names;
  for (const zelvan::NamedColor& row : zelvan::named_colors) {
    const ColorRGB expected(row.red, row.green, row.blue);
    std::string name = row.name;
    for (int turn = 0; turn < 3; ++turn) {
      ColorRGB color = before;
      EXPECT_EQ(turn == 0 ? color.SetNamedColor(name.data()) : color.FindName(name.data()), 1)
          << name;
      EXPECT_EQ(color, expected) << name;
      for (char& c : name) {
        c = static_cast<char>(turn == 0 ? std::toupper(c) : std::tolower(c));
      }
    }
    for (const std::string& other :
         {name + 's', name.substr(1), name.substr(0, 2), "\xE4" + name}) {
      ColorRGB color = before;
      std::string text = other;
      if (color.FindName(text.data()) == 1) continue;
      EXPECT_EQ(color, before) << other;
    }
    ColorRGB color = expected;
    const std::string& first =
        first_names.try_emplace(color.RGBTo24BitColor(), row.name).first->second;
    char* found = nullptr;
    EXPECT_EQ(color.FindNameForRgb(&found), 1) << row.name;
    EXPECT_EQ(found, first) << row.name;
  }
  EXPECT_EQ(std::size(zelvan::named_colors), 658U);
}

TEST(NamedColors, AreNoOthers) {
  for (const char* name : {"", "DarkBlue", "dark  blue", "snow ", "gray101", "gray0\xA0", "@now"}) {
    ColorRGB color = before;
    std::string text = name;
    EXPECT_EQ(color.FindName(text.data()), 0) << name;
    EXPECT_EQ(color, before) << name;
  }
  for (ColorRGB color : {before, ColorRGB(256, 0, 0), ColorRGB(0, -1, 0), ColorRGB(0, 0, 511)}) {
    char* name = nullptr;
    EXPECT_EQ(color.FindNameForRgb(&name), 0) << testing::PrintToString(color);
    EXPECT_EQ(name, nullptr);
  }
  EXPECT_EQ(ColorRGB().FindName(nullptr), 0);
}

}  // namespace
