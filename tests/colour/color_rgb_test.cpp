#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include <cctype>
#include <cmath>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <support/printers.h>

const ColorRGB before(11, 12, 13);

TEST(ColorRGB, TakesATextualValue) {
  const struct {
    std::string text;
    ColorRGB expected;
    const char* why;
  } rows[] = {
      {"rgb 1 0.5 -0.0", {255, 128, 0}, "halves go up"},
      {"RGB 1.000001 0 0", before, "red above 1"},
      {"RGB 0 -0.1 0", before, "green below 0"},
      {"RGB 0 0 2", before, "blue above 1"},
      {"RGB x 1 \"1\"", {0, 255, 0}, "a word and a string count as 0"},
      {"RGB 1 0", before, "too few operands"},
      {"HSV 240 1 1 more", {0, 0, 255}, "what follows the last operand is ignored"},
      {"HSV 360 1 1", before, "the circle ends before 360"},
      {"HSV -1 1 1", before, "and begins at 0"},
      {"HSV 0 1.5 1", before, "saturation above 1"},
      {"HSV 0 1 -1", before, "value below 0"},
      {"Name", before, "no name"},
      {"", before, "no model"},
      {"NAME \"dark BLUE\"", {0, 0, 128}, "in any case"},
      {"Name dark blue", before, "there is no dark"},
  };
  for (auto row : rows) {
    SCOPED_TRACE(row.text + ": " + row.why);
    const int status = row.expected == before ? 0 : 1;
    ColorRGB by_str_parse = before;
    ColorRGB by_itself = before;
    EXPECT_EQ(by_str_parse.SetValue(0, row.text.data()), status);
    EXPECT_EQ(by_itself.SetValue(row.text.c_str()), status);
    EXPECT_EQ(by_str_parse, row.expected);
    EXPECT_EQ(by_itself, row.expected);
  }
}

TEST(ColorRGB, ConvertsHueSaturationAndValueBothWays) {
  const struct {
    ColorHSV hsv;
    ColorRGB color;
    const char* why;
  } rows[] = {
      {{0, 0, 0.5f}, {2, 2, 2}, "grey"},
      {{30, 1, 1}, {4, 2, 0}, "green rises"},
      {{90, 1, 1}, {2, 4, 0}, "red falls"},
      {{150, 1, 1}, {0, 4, 2}, "blue rises"},
      {{210, 1, 1}, {0, 2, 4}, "green falls"},
      {{270, 1, 1}, {2, 0, 4}, "red rises"},
      {{330, 1, 1}, {4, 0, 2}, "blue falls: below 0, a turn is added"},
      {{240, 0.5f, 0.5f}, {1, 1, 2}, "pale and dark"},
  };
  for (auto row : rows) {
    ColorRGB color;
    ColorHSV a_turn_back = {row.hsv.hue - 360, row.hsv.saturation, row.hsv.value};
    color.HsvToRgb(&a_turn_back, 4);
    EXPECT_EQ(color, row.color) << row.why << ", a turn back";
    ColorHSV hsv;
    row.color.RgbToHsv(4, &hsv);
    EXPECT_EQ(hsv.hue, row.hsv.hue) << row.why;
    EXPECT_EQ(hsv.saturation, row.hsv.saturation) << row.why;
    EXPECT_EQ(hsv.value, row.hsv.value) << row.why;
  }
}

TEST(NamedColors, AreFoundInAnyCaseAndCalledByTheirFirstName) {
  std::map<unsigned int, std::string> first_names;
  for (const zelvan::NamedColor& row : zelvan::named_colors) {
    std::string upper = row.name;
    for (char& c : upper) c = static_cast<char>(std::toupper(c));
    ColorRGB color;
    EXPECT_EQ(color.FindName(upper.data()), 1) << row.name;
    EXPECT_EQ(color, ColorRGB(row.red, row.green, row.blue)) << row.name;
    first_names.try_emplace(color.RGBTo24BitColor(), row.name);
    char* name = nullptr;
    EXPECT_EQ(color.FindNameForRgb(&name), 1) << row.name;
    EXPECT_EQ(name, first_names[color.RGBTo24BitColor()]) << row.name;
  }
}

TEST(NamedColors, AreNoOthers) {
  // The library's hash of the last one is that of azure: 31 * 'b' + '[' is 31 * 'a' + 'z'.
  for (std::string name : {"", "DarkBlue", "snow ", "gray101", "gray0\xA0", "@now", "b[ure"}) {
    EXPECT_EQ(ColorRGB().FindName(name.data()), 0) << name;
  }
  char* name = nullptr;
  for (ColorRGB color : {before, ColorRGB(256, 0, 0), ColorRGB(0, -1, 0), ColorRGB(0, 0, 511)}) {
    EXPECT_EQ(color.FindNameForRgb(&name), 0) << testing::PrintToString(color);
  }
}
