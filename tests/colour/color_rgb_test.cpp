#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/detail/named_color_table.h>

#include <cctype>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <support/printers.h>

const ColorRGB before(11, 12, 13);

TEST(ColorRGB, TakesATextualValue) {
  const auto expect = [](std::string text, ColorRGB expected, const char* why) {
    SCOPED_TRACE(text + ": " + why);
    const int status = expected == before ? 0 : 1;
    ColorRGB by_str_parse = before;
    ColorRGB by_itself = before;
    EXPECT_EQ(by_str_parse.SetValue(0, text.data()), status);
    EXPECT_EQ(by_itself.SetValue(text.c_str()), status);
    EXPECT_EQ(by_str_parse, expected);
    EXPECT_EQ(by_itself, expected);
  };
  expect("rgb 1 0.5 -0.0", {255, 128, 0}, "halves go up");
  expect("RGB 1.000001 0 0", before, "red above 1");
  expect("RGB 0 -0.1 0", before, "green below 0");
  expect("RGB 0 0 2", before, "blue above 1");
  expect("RGB x 1 \"1\"", {0, 255, 0}, "a word and a string count as 0");
  expect("RGB 1 0", before, "too few operands");
  expect("HSV 240 1 1 more", {0, 0, 255}, "what follows the last operand is ignored");
  expect("HSV 360 1 1", before, "the circle ends before 360");
  expect("HSV 0 1 1", {255, 0, 0}, "and begins at 0");
  expect("HSV -1 1 1", before, "a hue below 0");
  expect("HSV 0 1.5 1", before, "saturation above 1");
  expect("HSV 0 1 -1", before, "value below 0");
  expect("Name", before, "no name");
  expect("", before, "no model");
  expect("NAME \"dark BLUE\"", {0, 0, 128}, "in any case");
  expect("CMY 1 0 0", before, "an unknown model");
}

TEST(ColorRGB, ConvertsHueSaturationAndValueBothWays) {
  const auto expect = [](ColorHSV hsv, ColorRGB color, const char* why) {
    SCOPED_TRACE(testing::PrintToString(color) + ", " + why);
    ColorHSV found;
    color.RgbToHsv(4, &found);
    EXPECT_EQ(found.hue, hsv.hue);
    EXPECT_EQ(found.saturation, hsv.saturation);
    EXPECT_EQ(found.value, hsv.value);
    hsv.hue += hsv.hue > 180 ? 360 : -360;
    ColorRGB back;
    back.HsvToRgb(&hsv, 4);
    EXPECT_EQ(back, color) << "from a hue a turn away";
  };
  expect({0, 0, 0.5f}, {2, 2, 2}, "grey");
  expect({0, 1, 1}, {4, 0, 0}, "red");
  expect({30, 1, 1}, {4, 2, 0}, "green rises");
  expect({90, 1, 1}, {2, 4, 0}, "red falls");
  expect({150, 1, 1}, {0, 4, 2}, "blue rises");
  expect({210, 1, 1}, {0, 2, 4}, "green falls");
  expect({270, 1, 1}, {2, 0, 4}, "red rises");
  expect({330, 1, 1}, {4, 0, 2}, "blue falls: below 0, a turn is added");
  expect({240, 0.5f, 0.5f}, {1, 1, 2}, "pale and dark");
  ColorHSV below_red = {-1e-20f, 1, 1};
  ColorRGB color;
  color.HsvToRgb(&below_red, 4);
  EXPECT_EQ(color, ColorRGB(4, 0, 0)) << "a turn is added, and the sum is rounded to a whole turn";
}

TEST(ColorRGB, UnpacksRedFromTheLowBitsOrFromHighOnes) {
  ColorRGB color;
  for (const auto unpack : {&ColorRGB::Col24BitToRGBColor, &ColorRGB::RGB32BitToRGBColor}) {
    color = {};
    (color.*unpack)(0x44332211);
    EXPECT_EQ(color, ColorRGB(0x11, 0x22, 0x33));
  }
  color.BGR32BitToRGBColor(0x44332211);
  EXPECT_EQ(color, ColorRGB(0x33, 0x22, 0x11));
  EXPECT_EQ(color.RGBToBGR32BitColor(), 0x332211u) << "packed again";
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
