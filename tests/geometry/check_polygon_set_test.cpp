#include <zelvan/geometry/check_polygon_set.h>

#include "support/polygon_set.h"

#include <cmath>
#include <string>

#include <gtest/gtest.h>

const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
const real_rect_t turned = {{{0, -10}, {10, 0}, {0, 10}, {-10, 0}}};

// Returns the reason, or "fine", from a buffer of `size` bytes.
static std::string check(const drw_pset_t* set, const real_rect_t* rect, int size = 64) {
  char reason[64] = "as before";
  const int is_fine = zelvan_check_polygon_set(set, rect, reason, size);
  return is_fine == 1 && *reason == '\0' ? "fine" : reason;
}

TEST(CheckPolygonSet, NamesTheFirstFault) {
  const auto expect = [](const support::Vertices<real_pt_t>& vertices, const real_rect_t& rect,
                         const char* reason) {
    support::SetArrays<real_pt_t> arrays(vertices);
    const int n = static_cast<int>(vertices.size());
    const drw_pset_t set = {n, arrays.points.data(), arrays.flags.data()};
    EXPECT_EQ(check(&set, &rect), reason);
  };
  expect({{{0, 0}, 0}, {{1, 0}, 1}, {{1, 1}, 2}, {{5, 5}, 3}}, turned, "fine");
  expect({{{0, 0}, 1}, {{1, 0}, 1}, {{1, 1}, 1}}, view, "no closing flag");
  expect({{{0, 0}, 1}, {{1, 0}, 2}, {{1, 1}, 0}}, view, "no closing flag after vertex 1");
  expect({{{0, 0}, 1}, {{HUGE_VAL, 0}, 7}, {{1, 1}, 3}}, view, "vertex 1 has edge flag 7");
  expect({{{0, 0}, 1}, {{1, -HUGE_VAL}, 1}, {{1, 1}, 1}}, view, "vertex 1 is not finite");
  expect({{{0, 0}, 1}, {{1, 0}, -1}, {{1, 1}, 3}}, view, "vertex 1 has edge flag -1");
  expect({{{0, 0}, 1}, {{1, 0}, 1}, {{std::nan(""), 1}, 3}}, view, "vertex 2 is not finite");
  expect({}, {{{0, 0}, {0, 10}, {10, std::nan("")}, {10, 0}}}, "corner 2 is not finite");
  expect({}, {{{1, 1}, {10, 10}, {0, 0}, {0, 0}}}, "corners 2 and 3 are the same");
  expect({}, {{{0, 0}, {0, 10}, {0, 5}, {10, 0}}}, "corners 0, 1 and 2 are in line");
  expect({}, {{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}, "corners 1 and 2 cross");
  expect({}, {{{0, 0}, {0, 10}, {10, 0}, {10, 10}}}, "corners 2 and 3 cross");
  expect({}, {{{0, 0}, {0, 10}, {10, 10}, {1, 8}}}, "corner 3 makes a dent");
}

TEST(CheckPolygonSet, ChecksTheSetFirstAndNoNullPointer) {
  const drw_pset_t empty = {0, nullptr, nullptr}, negative = {-1, nullptr, nullptr};
  real_pt_t point = {0, 0};
  const drw_pset_t no_points = {1, nullptr, nullptr}, no_flags = {1, &point, nullptr};
  const real_rect_t no_area = {};
  EXPECT_EQ(check(&negative, &no_area), "the count of vertices is -1");
  EXPECT_EQ(check(&no_points, nullptr), "the set has no points");
  EXPECT_EQ(check(&no_flags, nullptr), "the set has no edge flags");
  EXPECT_EQ(check(&empty, nullptr), "fine");
  EXPECT_EQ(check(nullptr, &view), "fine");
  EXPECT_EQ(check(nullptr, &no_area, 8), "corners") << "cut to 8 bytes";
  EXPECT_EQ(check(nullptr, &no_area, 0), "as before") << "no room";
  EXPECT_EQ(zelvan_check_polygon_set(nullptr, &no_area, nullptr, 64), 0) << "no buffer";
}
