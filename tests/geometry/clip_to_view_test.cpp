#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include <cmath>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct Vertex : real_pt_t {
  int flag;
  bool operator==(const Vertex& v) const { return x == v.x && y == v.y && flag == v.flag; }
};
using Set = std::vector<Vertex>;

Set clip(const Set& in, real_rect_t view) {
  std::vector<real_pt_t> points(in.begin(), in.end()), out_points(8 * in.size());
  std::vector<int> flags, out_flags(8 * in.size());
  for (const Vertex& v : in) flags.push_back(v.flag);
  drw_pset_t source = {static_cast<int>(in.size()), points.data(), flags.data()},
             target = {0, out_points.data(), out_flags.data()};
  ClipPolygonSetToView(&source, &target, &view);
  Set out;
  for (int i = 0; i < target.n_points; ++i) out.push_back({out_points[i], out_flags[i]});
  return out;
}

// Around the view, with a vertex on its side, to and fro, touching, in an L, and a corner so small
// that it rounds away; between a polygon of one vertex and one that isn't closed. What is not
// finite, and what has no area, gives nothing.
TEST(ClipPolygonSetToView, KeepsToItsRules) {
  const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const Set around = {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}};
  const Set inside = {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 4}, 3}};
  const struct {
    Set in, out;
  } rows[] = {
      {around, {{{0, 10}, 0}, {{0, 0}, 0}, {{10, 0}, 0}, {{10, 10}, 2}}},
      {{{{0, 5}, 1}, {{11, 1}, 1}, {{1, 9}, 3}},
       {{{0, 5}, 1}, {{10, 15 / 11.0}, 0}, {{10, 1.8}, 1}, {{1, 9}, 3}}},
      {{{{-5, 5}, 1}, {{15, 5}, 3}}, {{{0, 5}, 1}, {{10, 5}, 3}}},
      {{{{10, 5}, 1}, {{15, 3}, 1}, {{15, 7}, 3}}, {}},
      {{{{-5, -5}, 1}, {{20, -5}, 1}, {{20, 20}, 1}, {{15, 20}, 1}, {{15, -1}, 3}}, {}},
      {{{{4, 16}, 1}, {{16, std::nextafter(4, 0)}, 1}, {{17, 17}, 3}}, {}},
      {inside, inside},
  };
  for (const auto& row : rows) {
    Set in = {{{3, 3}, 3}};
    in.insert(in.end(), row.in.begin(), row.in.end());
    in.push_back({{1, 1}, 1});
    EXPECT_EQ(clip(in, view), row.out) << &row - rows;
  }
  const double huge = 1.7e308;
  EXPECT_EQ(clip(around, {{{-huge, -huge}, {huge, -huge}, {huge, huge}, {-huge, huge}}}), around);
  for (const double v : {0.0, -HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(clip(around, {{{0, 0}, {0, v}, {10, v}, {10, 0}}}), Set{}) << v;
    EXPECT_EQ(clip(around, {{{0, 0}, {10, 5}, {v, v}, {10, 10}}}), Set{}) << v;
  }
  EXPECT_EQ(clip(around, {{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}), Set{}) << "crossed";
}

}  // namespace
