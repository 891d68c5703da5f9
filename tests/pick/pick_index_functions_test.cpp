#include <zelvan/pick/pick_index_functions.h>

#include "support/heap.h"

#include <vector>

#include <gtest/gtest.h>

// The ring is the square from 0, 0 to 4, 4; the set has it twice, the second time in reverse.
static real_pt_t points[] = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}, {0, 4}, {4, 4}, {4, 0}};
static int edge_flags[] = {1, 1, 1, 3, 1, 1, 1, 3};
const drw_pset_t set = {8, points, edge_flags};

TEST(PickIndexFunctions, AskAnIndex) {
  CPickIndex* const index = zelvan_new_pick_index(&set);
  std::vector<unsigned char> hits(5, 9);
  EXPECT_EQ(zelvan_hit_pick_index_with_points(index, 4, points, nullptr), 1) << "no room for hits";
  EXPECT_EQ(zelvan_hit_pick_index_with_points(index, 4, points, hits.data()), 1) << "4, 0 alone";
  EXPECT_EQ(hits, (std::vector<unsigned char>{0, 1, 0, 0, 9}));
  int numbers[] = {-1, -1};
  EXPECT_EQ(zelvan_find_polygons(index, 1, 2, numbers, 1), 2);
  EXPECT_EQ(numbers[0] * 10 + numbers[1], -1) << "polygon 0, and room for no more";
  EXPECT_EQ(zelvan_winding_number(index, 1, 1, 1, 2), -1) << "clockwise";
  EXPECT_EQ(zelvan_winding_number(index, -5, 6, 1, 2), 1) << "numbers below 0 add nothing";
  EXPECT_EQ(zelvan_winding_number(index, 1, -1, 1, 2), 0) << "no polygons";
  zelvan_delete_pick_index(index);
}

TEST(PickIndexFunctions, MakeNothingWithoutMemoryOrVertices) {
  EXPECT_EQ(zelvan_new_pick_index_of_ring(2, nullptr), nullptr) << "two enclose nothing";
  zelvan_delete_pick_index(nullptr);
  CPickIndex* made = nullptr;
  const auto expect_null = [&] {
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(heap::blocks_left(), 0) << "leaked";
  };
  int each_closes[] = {3, 3, 3, 3, 3, 3, 3, 3};
  const drw_pset_t many = {8, points, each_closes};
  for (const drw_pset_t* from : {&set, &many}) {
    const auto of_set = [&] { zelvan_delete_pick_index(made = zelvan_new_pick_index(from)); };
    EXPECT_GT(heap::refuse_each(of_set, expect_null), 0);
  }
}
