#include <zelvan/geometry/check_polygon_set.h>

#include "support/polygon_set.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
const real_rect_t turned = {{{0, -10}, {10, 0}, {0, 10}, {-10, 0}}};

TEST(CheckPolygonSet, NamesTheFirstFault) {
  const struct {
    support::Vertices<real_pt_t> set;
    real_rect_t rect;
    std::string reason;
  } rows[] = {
      {{{{0, 0}, 0}, {{1, 0}, 1}, {{1, 1}, 2}, {{5, 5}, 3}}, turned, ""},
      {{{{0, 0}, 1}, {{1, 0}, 1}, {{1, 1}, 1}}, view, "no closing flag"},
      {{{{0, 0}, 1}, {{1, 0}, 2}, {{1, 1}, 0}}, view, "no closing flag after vertex 1"},
      {{{{0, 0}, 1}, {{HUGE_VAL, 0}, 7}, {{1, 1}, 3}}, view, "vertex 1 has edge flag 7"},
      {{{{0, 0}, 1}, {{1, -HUGE_VAL}, 1}, {{1, 1}, 1}}, view, "vertex 1 is not finite"},
      {{{{0, 0}, 1}, {{1, 0}, -1}, {{1, 1}, 3}}, view, "vertex 1 has edge flag -1"},
      {{{{0, 0}, 1}, {{1, 0}, 1}, {{std::nan(""), 1}, 3}}, view, "vertex 2 is not finite"},
      {{}, {{{0, 0}, {0, 10}, {10, std::nan("")}, {10, 0}}}, "corner 2 is not finite"},
      {{}, {{{1, 1}, {10, 10}, {0, 0}, {0, 0}}}, "corners 2 and 3 are the same"},
      {{}, {{{0, 0}, {0, 10}, {0, 5}, {10, 0}}}, "corners 0, 1 and 2 are in line"},
      {{}, {{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}, "corners 1 and 2 cross"},
      {{}, {{{0, 0}, {0, 10}, {10, 0}, {10, 10}}}, "corners 2 and 3 cross"},
      {{}, {{{0, 0}, {0, 10}, {10, 10}, {1, 8}}}, "corner 3 makes a dent"},
  };
  for (const auto& row : rows) {
    support::SetArrays<real_pt_t> arrays(row.set);
    const int n = static_cast<int>(row.set.size());
    const drw_pset_t set = {n, arrays.points.data(), arrays.flags.data()};
    char reason[64] = "as before";
    const int is_fine = zelvan_check_polygon_set(&set, &row.rect, reason, sizeof reason);
    EXPECT_EQ(reason, row.reason);
    EXPECT_EQ(is_fine, row.reason.empty()) << "expected: " << row.reason;
  }
}

TEST(CheckPolygonSet, ChecksOneOfTheTwoAlone) {
  const drw_pset_t empty = {0, nullptr, nullptr};
  EXPECT_EQ(zelvan_check_polygon_set(nullptr, &view, nullptr, 0), 1) << "a view without a set";
  EXPECT_EQ(zelvan_check_polygon_set(&empty, nullptr, nullptr, 0), 1) << "a set without a view";
}

TEST(CheckPolygonSet, WritesNoMoreThanThereIsRoomFor) {
  const drw_pset_t negative = {-1, nullptr, nullptr}, no_points = {1, nullptr, nullptr};
  real_pt_t point = {0, 0};
  const drw_pset_t no_flags = {1, &point, nullptr};
  const real_rect_t no_area = {};
  char reason[16] = "as before";
  EXPECT_EQ(zelvan_check_polygon_set(&no_points, nullptr, nullptr, 16), 0);
  EXPECT_EQ(zelvan_check_polygon_set(&no_points, nullptr, reason, 0), 0);
  EXPECT_STREQ(reason, "as before");
  EXPECT_EQ(zelvan_check_polygon_set(&negative, &no_area, reason, 10), 0);
  EXPECT_STREQ(reason, "the count") << "cut to 10 bytes, and the set comes first";
  EXPECT_EQ(zelvan_check_polygon_set(&no_flags, nullptr, nullptr, 16), 0);
  EXPECT_EQ(zelvan_check_polygon_set(nullptr, &no_area, reason, 8), 0);
  EXPECT_STREQ(reason, "corners") << "no set";
}
