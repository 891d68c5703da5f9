// Points mapped per second: each array operation, each mapping path, in and out of the cache,
// beside the loop that a user would write by hand.

#include <zelvan/transforms/mtx2d.h>

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

// The rivals: the full form of the transform, point by point.

void by_hand(const Mtx2D& m, int n, const real_pt_t* in, real_pt_t* out) {
  for (int i = 0; i < n; ++i) {
    out[i].x = m.m11 * in[i].x + m.m21 * in[i].y + m.tx;
    out[i].y = m.m12 * in[i].x + m.m22 * in[i].y + m.ty;
  }
}

template <class Out>
void by_hand_rounded(const Mtx2D& m, int n, const real_pt_t* in, Out* out, int factor) {
  for (int i = 0; i < n; ++i) {
    const double x = m.m11 * in[i].x + m.m21 * in[i].y + m.tx;
    const double y = m.m12 * in[i].x + m.m22 * in[i].y + m.ty;
    using Coordinate = decltype(out[i].x);
    out[i].x = static_cast<Coordinate>(static_cast<int>(x < 0.0 ? x - 0.5 : x + 0.5) * factor);
    out[i].y = static_cast<Coordinate>(static_cast<int>(y < 0.0 ? y - 0.5 : y + 0.5) * factor);
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

// `map` is timed; `judge` must give the same results first, up to the sign of a zero, which
// the terms that the type leaves out can change.
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
void map_short(benchmark::State& s, Map<short_pt_t> map, Map<short_pt_t> judge) {
  map_points(s, map, judge);
}

BENCHMARK_CAPTURE(map_real, RealXfmPts, real_by_library, real_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_real, plain_loop, real_by_hand, real_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, XfmPts, int_by_library, int_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, plain_loop, int_by_hand, int_by_library)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, XfmFPts, fixed_by_library, fixed_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_int, plain_loop_times_8, fixed_by_hand, fixed_by_library)
    ->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_short, XfmSPts, short_by_library, short_by_hand)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_short, plain_loop, short_by_hand, short_by_library)->Apply(types_and_sizes);

// Polygon sets: the rival keeps no flags and drops no repeats, so it has less to do.
void map_polygon_set(benchmark::State& state, bool by_library) {
  Mtx2D m = matrix_of_type(static_cast<int>(state.range(0)));
  const int n = static_cast<int>(state.range(1));
  std::vector<real_pt_t> in = points_in_a_view(static_cast<std::size_t>(n));
  std::vector<int> flags(in.size(), 1), out_flags(in.size());
  std::vector<int_pt_t> out(in.size());
  drw_pset_t source = {n, in.data(), flags.data()};
  drw_dpset_t target = {0, out.data(), out_flags.data()};
  for (auto _ : state) {
    if (by_library) {
      m.XfmPolySetPts(&source, &target);
    } else {
      by_hand_rounded(m, n, in.data(), out.data(), 1);
    }
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * n);
}

BENCHMARK_CAPTURE(map_polygon_set, XfmPolySetPts, true)->Apply(types_and_sizes);
BENCHMARK_CAPTURE(map_polygon_set, plain_loop_that_keeps_all, false)->Apply(types_and_sizes);

}  // namespace
