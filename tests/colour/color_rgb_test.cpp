#include <zelvan/colour/color_rgb.h>

#include <array>
#include <string>

#include <gtest/gtest.h>

TEST(ColorRGB, TakesATextualValue) {
  using Channels = std::array<int, 3>;
  const Channels before = {11, 12, 13};
  const std::pair<std::string, Channels> rows[] = {
      {"RGB 1 0.5 0.001", {255, 128, 0}},  {"rgb x 0 \"1\"", {0, 0, 0}},  // any text counts as 0
      {"HSV 210 1 .5 more", {0, 64, 128}}, {"HSV 360 1 1", before},
      {"Name snow", {255, 250, 250}},      {"NAME \"dark BLUE\" more", {0, 0, 128}},
      {"Name dark blue", before},
  };
  for (auto [text, expected] : rows) {
    ColorRGB color(11, 12, 13);
    EXPECT_EQ(color.SetValue(0, text.data()), expected != before) << text;
    EXPECT_EQ((Channels{color.red, color.green, color.blue}), expected) << text;
  }
}
