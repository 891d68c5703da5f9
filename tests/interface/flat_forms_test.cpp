#include <zelvan/colour/color_map_functions.h>

#include <gtest/gtest.h>

TEST(FlatForms, MakeAndFillAColorMap) {
  const int rgb[] = {1, 2, 3};
  ColorMap* const map = zelvan_new_color_map(1, 31, rgb);
  EXPECT_EQ(map->max_value, 31u);
  EXPECT_EQ(zelvan_set_color(map, 1, "HSV 240 1 1"), 0) << "no such entry";
  EXPECT_EQ(zelvan_set_color(map, 0, "HSV 240 1 1"), 1);
  EXPECT_EQ(map->colors[0].blue, 255) << "on the scale 255";
  zelvan_delete_color_map(map);
}
