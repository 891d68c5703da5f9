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

TEST(FlatForms, ReadLineTypes) {
  CLineTypeDefList* const list = zelvan_new_line_types();
  EXPECT_EQ(zelvan_count_fragments(list, 4), 4);
  EXPECT_EQ(zelvan_get_pattern_length(list, 4), 7.5);
  const double fragments[] = {-1, 80, 30, 20, 30, -1};
  for (int i = -1; i <= 4; ++i) {
    EXPECT_EQ(zelvan_get_fragment(list, 4, i), fragments[i + 1]) << "fragment " << i;
  }
  EXPECT_EQ(zelvan_count_fragments(list, 14), -1) << "no such line type";
  zelvan_delete_line_types(list);
}
