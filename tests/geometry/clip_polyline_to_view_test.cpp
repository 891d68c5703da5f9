#include <zelvan/geometry/clip_polyline_to_view.h>

#include "geometry/clip_model.h"
#include "support/guarded_array.h"

using Lines = std::vector<std::vector<real_pt_t>>;

// Clips in arrays of exactly the size that the header requires.
static Lines pieces_of(const std::vector<real_pt_t>& line, const real_rect_t& view) {
  const int n = static_cast<int>(line.size());
  support::GuardedArray<real_pt_t> points(line), out(n > 1 ? 2 * (n - 1) : 0);
  support::GuardedArray<int> begins(n > 1 ? n : 1);
  int count;
  const int end = zelvan_clip_polyline_to_view(  // calls ClipPolylineToView
      points.data(), n, &view, out.data(), begins.data(), &count);
  EXPECT_EQ(begins[count], end);
  Lines pieces;
  const auto start = [&](int k) { return out.data() + begins[k]; };
  for (int k = 0; k < count; ++k) pieces.emplace_back(start(k), start(k + 1));
  return pieces;
}

TEST(ClipPolylineToView, WritesThePiecesInside) {
  const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const auto expect = [&](const std::vector<real_pt_t>& line, const Lines& pieces,
                          const char* why) {
    EXPECT_EQ(pieces_of(line, view), pieces) << why << ": " << testing::PrintToString(line);
  };
  expect({}, {}, "no point");
  expect({{1, 1}, {1, 1}, {4, 4}}, {{{1, 1}, {1, 1}, {4, 4}}}, "inside, one repeated");
  expect({{-5, 2}, {15, 2}, {-5, 6}}, {{{0, 2}, {10, 2}}, {{10, 3}, {0, 5}}}, "fills the room");
  expect({{5, 5}, {10, 5}, {10, 5}, {5, 8}}, {{{5, 5}, {10, 5}, {5, 8}}}, "rests on a side");
  expect({{std::nextafter(10, 0), 20}, {std::nextafter(10, 11), -2}}, {}, "rounds onto a side");
  expect({{4, 16}, {16, std::nextafter(4, 0)}}, {}, "cuts off a corner that rounds away");
  expect({{1, 1}, {5, 5}, {3, NAN}}, {}, "holds a NaN");
  expect({{1, 1}, {20, 1}, {INFINITY, 1}}, {}, "ends at infinity, from outside");
  EXPECT_EQ(pieces_of({{1, 1}, {2, 1}}, {{{0, 0}, {5, 0}, {9, 0}, {5, 9}}}), Lines{}) << "no view";
  int begins, count = 7;
  EXPECT_EQ(zelvan_clip_polyline_to_view(nullptr, -1, &view, nullptr, &begins, &count), 0)
      << "count of -1";
  EXPECT_EQ(count, 0) << "count of -1";
}

TEST(ClipPolylineToView, KeepsWhatARingOfVisibleEdgesShows) {
  support::Random random(1);
  for (int i = 0; i < 4000 && !testing::Test::HasFailure(); ++i) {
    real_rect_t view = {{{-4, -3}, {4, -3}, {4, 5}, {-4, 5}}};
    if (i % 2 != 0) view = {{{1, -7}, {-7, -1}, {-1, 7}, {7, 1}}};  // turned, the other sense
    // A view a few units in the last place wide: there, cuts of several sides round to one point.
    const double origin = i % 5 == 0 ? 0x1p52 : 0;
    if (origin > 0) view = {{{0, 0}, {3, 2}, {4, 2}, {3, 1}}};
    for (real_pt_t& corner : view.corners) corner = {origin + corner.x, origin + corner.y};
    std::vector<real_pt_t> line(1 + random.below(40));
    const double step = i % 4 < 2 ? 1 : 0.7;  // in x; whole numbers are often on sides and corners
    for (real_pt_t& p : line) {
      p = {origin + (random.below(19) - 9) * step, origin + random.below(19) - 9.0};
    }
    Set ring;
    for (const real_pt_t& p : line) ring.push_back({p, drw_edge_visible});
    ring.back().flag = drw_edge_close_invisible;
    const Set rest = clipped(ClipPolygonSetToView, ring, view);
    Lines shown, pieces;
    for (std::size_t k = 0; k < rest.size(); ++k) {
      if (rest[k].flag % 2 != 0)
        shown.push_back({rest[k].point, rest[(k + 1) % rest.size()].point});
    }
    for (const auto& piece : pieces_of(line, view)) {
      for (std::size_t k = 1; k < piece.size(); ++k) pieces.push_back({piece[k - 1], piece[k]});
    }
    EXPECT_EQ(pieces, shown) << "set " << i << ": " << testing::PrintToString(line);
  }
}
