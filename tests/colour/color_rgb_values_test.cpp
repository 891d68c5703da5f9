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
      {1, 0.5f, -0.0f, false, {255, 128, 0}, "halves go up"},
      {0x1.000002p0f, 0, 0, false, before, "red just above 1"},
      {0, -0x1p-149f, 0, false, before, "green just below 0"},
      {0, 0, 2, false, before, "blue above 1"},
      {NAN, 0, 0, false, {INT_MIN, 0, 0}, "what is not a number passes"},
      {30, 1, 1, true, {255, 128, 0}, "orange"},
      {360, 1, 1, true, before, "the circle ends before 360"},
      {-1, 1, 1, true, before, "hue below 0"},
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

TEST(ColorRGB, ConvertsHueSaturationAndValueBothWays) {
  const struct {
    ColorHSV hsv;
    ColorRGB color;
    const char* why;
  } rows[] = {
      {{0, 0, 0}, {0, 0, 0}, "black"},
      {{0, 0, 0.5f}, {2, 2, 2}, "grey"},
      {{30, 1, 1}, {4, 2, 0}, "green rises"},
      {{60, 1, 1}, {4, 4, 0}, "red counts before green"},
      {{90, 1, 1}, {2, 4, 0}, "red falls"},
      {{150, 1, 1}, {0, 4, 2}, "blue rises"},
      {{180, 1, 1}, {0, 4, 4}, "green counts before blue"},
      {{210, 1, 1}, {0, 2, 4}, "green falls"},
      {{270, 1, 1}, {2, 0, 4}, "red rises"},
      {{330, 1, 1}, {4, 0, 2}, "blue falls: below 0, a turn is added"},
      {{240, 0.5f, 0.5f}, {1, 1, 2}, "pale and dark"},
  };
  for (auto row : rows) {
    ColorRGB color;
    color.HsvToRgb(&row.hsv, 4);
    EXPECT_EQ(color, row.color) << row.why;
    ColorHSV hsv;
    row.color.RgbToHsv(4, &hsv);
    EXPECT_EQ(hsv.hue, row.hsv.hue) << row.why;
    EXPECT_EQ(hsv.saturation, row.hsv.saturation) << row.why;
    EXPECT_EQ(hsv.value, row.hsv.value) << row.why;
  }
  for (const float hue : {360.0f, -720.0f, -0x1p-149f, HUGE_VALF, float{NAN}}) {
    ColorHSV hsv = {hue, 1, 1};
    ColorRGB color;
    color.HsvToRgb(&hsv, 4);
    EXPECT_EQ(color, ColorRGB(4, 0, 0)) << "hue " << hue << " counts as 0";
  }
}

TEST(ColorRGB, PacksAndUnpacksItsChannels) {
  ColorRGB color;
  ColorRGB reversed;
  color.RGB32BitToRGBColor(static_cast<int>(0xFF332211));
  reversed.BGR32BitToRGBColor(0x7F112233);
  EXPECT_EQ(color, ColorRGB(0x11, 0x22, 0x33)) << "the upper bits are ignored";
  EXPECT_EQ(color, reversed);
  EXPECT_EQ(color.RGBTo24BitColor(), 0x332211U);
  EXPECT_EQ(color.RGBToRGB32BitColor(), 0x332211U);
  EXPECT_EQ(color.RGBToBGR32BitColor(), 0x112233U);
}

TEST(NamedColors, AreFoundByNameInAnyCaseAndCalledByTheirFirstName) {
  std::map<unsigned int, std::string> first_names;
  for (const zelvan::NamedColor& row : zelvan::named_colors) {
    ColorRGB expected(row.red, row.green, row.blue);
    std::string upper = row.name;
    for (char& c : upper) c = static_cast<char>(std::toupper(c));
    for (std::string name : {std::string(row.name), upper}) {
      ColorRGB color;
      EXPECT_EQ(color.FindName(name.data()), 1) << name;
      EXPECT_EQ(color, expected) << name;
    }
    first_names.try_emplace(expected.RGBTo24BitColor(), row.name);
    char* found = nullptr;
    EXPECT_EQ(expected.FindNameForRgb(&found), 1) << row.name;
    EXPECT_EQ(found, first_names[expected.RGBTo24BitColor()]) << row.name;
  }
  EXPECT_EQ(std::size(zelvan::named_colors), 658U);
}

TEST(NamedColors, AreNoOthers) {
  for (std::string name : {"", "DarkBlue", "snow ", "gray101", "gray0\xA0", "@now", "blu"}) {
    ColorRGB color = before;
    EXPECT_EQ(color.FindName(name.data()), 0) << name;
    EXPECT_EQ(color, before) << name;
  }
  EXPECT_EQ(ColorRGB().FindName(nullptr), 0);
  for (ColorRGB color : {before, ColorRGB(256, 0, 0), ColorRGB(0, -1, 0), ColorRGB(0, 0, 511)}) {
    char* name = nullptr;
    EXPECT_EQ(color.FindNameForRgb(&name), 0) << testing::PrintToString(color);
    EXPECT_EQ(name, nullptr);
  }
}

}  // namespace
