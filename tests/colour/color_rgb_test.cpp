#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_rgb.h>
#include <zelvan/text/str_field.h>

#include <array>
#include <string>
#include <utility>

#include <gtest/gtest.h>

TEST(ColorRGB, TakesATextualValue) {
  using Channels = std::array<int, 3>;
  const Channels before = {11, 12, 13};
  const std::pair<std::string, Channels> rows[] = {
      {"RGB 1 0.5 0.001", {255, 128, 0}},
      {"rgb x 0 \"1\"", {0, 0, 0}},  // any text counts as 0
      {"HSV 210 1 .5 more", {0, 64, 128}},
      {"HSV 360 1 1", before},
      {"Name snow", {255, 250, 250}},
      {"NAME \"dark BLUE\" more", {0, 0, 128}},
      {"Name dark blue", before},
      {"Name", before},
      {"RGB 1 0", before},
      {"", before},
  };
  for (auto [text, expected] : rows) {
    ColorRGB by_str_parse(11, 12, 13), by_itself(11, 12, 13);
    ColorMap map(2, 255);
    map.colors[0] = map.colors[1] = {11, 12, 13};
    EXPECT_EQ(by_str_parse.SetValue(0, text.data()), expected != before) << text;
    EXPECT_EQ(by_itself.SetValue(text.c_str()), expected != before) << text;
    EXPECT_EQ(map.SetIndex(0, 0, text.data()), expected != before) << text;
    EXPECT_EQ(map.SetIndex(1, text.c_str()), expected != before) << text;
    for (const ColorRGB& color : {by_str_parse, by_itself, map.colors[0], map.colors[1]}) {
      EXPECT_EQ((Channels{color.red, color.green, color.blue}), expected) << text;
    }
  }
}

TEST(ColorRGB, RefusesWhatIsNoTextAndNoEntry) {
  ColorMap map(1, 255);
  EXPECT_EQ(map.colors[0].SetValue(nullptr), 0);
  EXPECT_EQ(map.SetIndex(0, nullptr), 0);
  EXPECT_EQ(map.SetIndex(1, "Name snow"), 0);
  EXPECT_EQ(map.SetIndex(-1, "Name snow"), 0);
}

// As in a program that walks a line by `str_parse` and sets a colour on the way.
TEST(ColorRGB, TakesATextWithoutTouchingTheFieldInHand) {
  char line[] = "\"RGB 1 0 0\" end";
  const str_field* const field = str_parse(line);
  ColorMap map(1, 255);
  EXPECT_EQ(map.colors[0].SetValue(field->text), 1);
  EXPECT_EQ(map.SetIndex(0, field->text), 1);
  EXPECT_STREQ(field->text, "RGB 1 0 0");
  EXPECT_STREQ(str_parse(field->next)->text, "end");
}
