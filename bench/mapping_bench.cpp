// Points mapped per second: each array operation on each mapping path, inside and outside the
// cache, compared with the loop that a user would write.

#include <zelvan/transforms/mtx2d.h>

#include "contest.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

constexpr int small = 1'000;
constexpr int large = 4'000'000;

Mtx2D matrix_of_type(int type) {
  Mtx2D m;
  m.Rotate(type == Mtx2DTypeQuadrant  ? 90.0
           : type == Mtx2DTypeGeneral ? 30.0
                                      : 0.0,
           Mtx2DRotateLast);
  m.Scale(4.5, -4.5);
  m.Translate(800.0, 450.0);
  return m;
}

std::vector<real_pt_t> points_in_a_view(std::size_t n) {
  std::mt19937_64 engine(1);
  std::uniform_real_distribution<double> lon(-180.0, 180.0), lat(-90.0, 90.0);
  std::vector<real_pt_t> points(n);
  for (real_pt_t& p : points) p = {lon(engine), lat(engine)};
  return points;
}

// Plain loops to compare the library with. They compute all terms of the transform for each point,
// also those that are zero.

void by_hand(const Mtx2D& m, int n, const real_pt_t* in, real_pt_t* out) {
  for (int i = 0; i < n; ++i) {
    out[i].x = m.m11 * in[i].x + m.m21 * in[i].y + m.tx;
    out[i].y = m.m12 * in[i].x + m.m22 * in[i].y + m.ty;
  }
}

int rounded(double v) { return static_cast<int>(v < 0.0 ? v - 0.5 : v + 0.5); }

bool are_same(const std::vector<int_pt_t>& a, const std::vector<int_pt_t>& b) {
  return std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0;
}

template <class Out>
void by_hand_rounded(const Mtx2D& m, int n, const real_pt_t* in, Out* out, int factor) {
  for (int i = 0; i < n; ++i) {
    const double x = m.m11 * in[i].x + m.m21 * in[i].y + m.tx;
    const double y = m.m12 * in[i].x + m.m22 * in[i].y + m.ty;
    using Coordinate = decltype(out[i].x);
    out[i].x = static_cast<Coordinate>(rounded(x) * factor);
    out[i].y = static_cast<Coordinate>(rounded(y) * factor);
  }
}

void real_by_hand(Mtx2D& m, int n, real_pt_t* in, real_pt_t* out) { by_hand(m, n, in, out); }
void int_by_hand(Mtx2D& m, int n, real_pt_t* in, int_pt_t* out) {
  by_hand_rounded(m, n, in, out, 1);
}
void fixed_by_hand(Mtx2D& m, int n, real_pt_t* in, int_pt_t* out) {
  by_hand_rounded(m, n, in, out, 8);
}
void short_by_hand(Mtx2D& m, int n, real_pt_t* in, short_pt_t* out) {
  by_hand_rounded(m, n, in, out, 1);
}

void real_by_library(Mtx2D& m, int n, real_pt_t* in, real_pt_t* out) { m.RealXfmPts(n, in, out); }
void int_by_library(Mtx2D& m, int n, real_pt_t* in, int_pt_t* out) { m.XfmPts(n, in, out); }
void fixed_by_library(Mtx2D& m, int n, real_pt_t* in, int_pt_t* out) { m.XfmFPts(n, in, out); }
void short_by_library(Mtx2D& m, int n, real_pt_t* in, short_pt_t* out) { m.XfmSPts(n, in, out); }

template <class Out>
using Map = void (*)(Mtx2D& m, int n, real_pt_t* in, Out* out);

// Times `map`, after it has produced the same results as `judge`. The sign of a zero may differ,
// since the fast paths leave out terms.
template <class Out>
void map_points(benchmark::State& state, Map<Out> map, Map<Out> judge) {
  Mtx2D m = matrix_of_type(static_cast<int>(state.range(0)));
  const int n = static_cast<int>(state.range(1));
  std::vector<real_pt_t> in = points_in_a_view(static_cast<std::size_t>(n));
  std::vector<Out> out(in.size()), expected(in.size());
  map(m, n, in.data(), out.data());
  judge(m, n, in.data(), expected.data());
  for (std::size_t i = 0; i < in.size(); ++i) {
    if (out[i].x != expected[i].x || out[i].y != expected[i].y) {
      return state.SkipWithError("differs from the other form");
    }
  }
  for (auto _ : state) {
    map(m, n, in.data(), out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * n);
}

void types_and_sizes(benchmark::internal::Benchmark* b) {
  b->ArgNames({"type", "n"})->ArgsProduct({{0, 1, 2}, {small, large}});
}

void map_real(benchmark::State& s, Map<real_pt_t> map, Map<real_pt_t> judge) {
  map_points(s, map, judge);
}
void map_int(benchmark::State& s, Map<int_pt_t> map, Map<int_pt_t> judge) {
  map_points(s, map, judge);
}
void map_fixed(benchmark::State& s, Map<int_pt_t> map, Map<int_pt_t> judge) {
  map_points(s, map, judge);
}
void map_short(benchmark::State& s, Map<short_pt_t> map, Map<short_pt_t> judge) {
  map_points(s, map, judge);
}

BENCHMARK_CAPTURE(map_real, zelvan, real_by_library, real_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_real, plain loop, real_by_hand, real_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, zelvan, int_by_library, int_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, plain loop, int_by_hand, int_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_fixed, zelvan, fixed_by_library, fixed_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_fixed, plain loop, fixed_by_hand, fixed_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_short, zelvan, short_by_library, short_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_short, plain loop, short_by_hand, short_by_library)->Apply(types_and_sizes);

// Polygon sets of 50 vertices a polygon. The plain loop has less to do than the library: it copies
// no flags, and keeps vertices that are rounded to the same pixel as the one before.
using MapSet = void (*)(Mtx2D& m, drw_pset_t& in, drw_dpset_t& out);

void set_by_library(Mtx2D& m, drw_pset_t& in, drw_dpset_t& out) { m.XfmPolySetPts(&in, &out); }
void polygons_by_library(Mtx2D& m, drw_pset_t& in, drw_dpset_t& out) { m.XfmPolygons(in, &out); }
void set_by_hand(Mtx2D& m, drw_pset_t& in, drw_dpset_t& out) {
  by_hand_rounded(m, in.n_points, in.points, out.points, 1);
}

void map_polygon_set(benchmark::State& state, MapSet map) {
  Mtx2D m = matrix_of_type(static_cast<int>(state.range(0)));
  const int n = static_cast<int>(state.range(1));
  std::vector<real_pt_t> in = points_in_a_view(static_cast<std::size_t>(n));
  std::vector<int> flags(in.size(), drw_edge_visible), out_flags(in.size());
  for (std::size_t i = 49; i < flags.size(); i += 50) flags[i] = drw_edge_close_visible;
  std::vector<int_pt_t> out(in.size());
  drw_pset_t source = {n, in.data(), flags.data()};
  drw_dpset_t target = {0, out.data(), out_flags.data()};
  for (auto _ : state) {
    map(m, source, target);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * n);
}

BENCHMARK_CAPTURE(map_polygon_set, zelvan, set_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_polygon_set, zelvan by polygon, polygons_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_polygon_set, plain loop that keeps all, set_by_hand)->Apply(types_and_sizes);

// ---- one at a time: here the call costs about as much as the work

void single() {
  static Mtx2D m = matrix_of_type(Mtx2DTypeGeneral);
  static std::vector<real_pt_t> in = points_in_a_view(small);
  static std::vector<int_pt_t> out(small), expected(small);
  const auto ours = [] {
    for (int i = 0; i < small; ++i) m.XfmPt(&in[i], &out[i]);
  };
  const auto rounded_by_hand = [] { by_hand_rounded(m, small, in.data(), expected.data(), 1); };
  bench::contest(
      "one point a call", [=] { return ours(), rounded_by_hand(), are_same(out, expected); },
      {{"zelvan", ours}, {"plain loop, inline", rounded_by_hand}}, small);

  static std::vector<real_rect_t> rects(small / 4);
  std::memcpy(rects.data(), in.data(), rects.size() * sizeof rects[0]);
  static std::vector<int_rect_t> boxes(rects.size()), boxes_by_hand(rects.size());
  const auto box = [] {
    for (std::size_t i = 0; i < rects.size(); ++i) m.XfmRect(&rects[i], &boxes[i]);
  };
  const auto box_by_hand = [] {
    for (std::size_t i = 0; i < rects.size(); ++i) {
      real_pt_t c[4];
      by_hand(m, 4, rects[i].corners, c);
      const auto [x0, x1] = std::minmax({c[0].x, c[1].x, c[2].x, c[3].x});
      const auto [y0, y1] = std::minmax({c[0].y, c[1].y, c[2].y, c[3].y});
      const int left = rounded(x0), right = rounded(x1), low = rounded(y0), high = rounded(y1);
      boxes_by_hand[i] = {{{left, low}, {left, high}, {right, high}, {right, low}}};
    }
  };
  bench::contest(
      "rectangles to pixels",
      [=] {
        box(), box_by_hand();
        return std::memcmp(boxes.data(), boxes_by_hand.data(), boxes.size() * sizeof boxes[0]) == 0;
      },
      {{"zelvan", box}, {"plain loop, inline", box_by_hand}}, small / 4);
}
const bench::Rows rows(single);

}  // namespace
