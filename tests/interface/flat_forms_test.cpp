#include <zelvan/zelvan.h>

#include <gtest/gtest.h>

TEST(FlatForms, FillColorMapsAlike) {
  int rgb[] = {1, 2, 3, 4, 5, 6};
  ColorMap map(2, 31, rgb);
  ColorMap* const flat = zelvan_new_color_map(2, 31, rgb);
  EXPECT_EQ(flat->max_value, 31u);
  for (const int index : {-1, 0, 1, 2}) {
    EXPECT_EQ(zelvan_set_color(flat, index, "HSV 240 1 1"), map.SetIndex(index, "HSV 240 1 1"));
    EXPECT_TRUE(map.Identical(flat)) << "entry " << index;
  }
  zelvan_delete_color_map(flat);
}
