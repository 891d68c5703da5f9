// Clipping of the shipped world at several views, beside the loop that a user would write by
// hand: the method of I. E. Sutherland and G. W. Hodgman, "Reentrant polygon clipping",
// Communications of the ACM 17 (1974), one side of the rectangle after the other. That one
// keeps no edge flags and leaves the pieces of a cut outline joined along the frame.

#include <zelvan/geometry/clip_polygon_set.h>

#include <cmath>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

namespace {

struct Set {
  std::vector<real_pt_t> points;
  std::vector<int> flags;
  int polygons = 0;

  void close_polygon() {
    flags.resize(points.size(), drw_edge_visible);
    flags.back() = drw_edge_close_visible;
    ++polygons;
  }
};

Set world() {
  std::ifstream file(ZELVAN_WORLD);
  Set set;
  const auto json = nlohmann::json::parse(file);
  for (const auto& feature : json["features"]) {
    for (const auto& polygon : feature["geometry"]["coordinates"]) {
      for (const auto& ring : polygon) {
        for (std::size_t i = 0; i + 1 < ring.size(); ++i) {  // the last repeats the first
          set.points.push_back({ring[i][0].get<double>(), ring[i][1].get<double>()});
        }
        set.close_polygon();
      }
    }
  }
  return set;
}

// The corners run counter-clockwise.
real_rect_t view(double lon, double lat, double width, double degrees) {
  const double c = std::cos(degrees * std::numbers::pi / 180.0) * width / 2.0;
  const double s = std::sin(degrees * std::numbers::pi / 180.0) * width / 2.0;
  real_rect_t rect;
  const double signs[4][2] = {{-1, -0.5}, {1, -0.5}, {1, 0.5}, {-1, 0.5}};
  for (int i = 0; i < 4; ++i) {
    const auto [x, y] = signs[i];
    rect.corners[i] = {lon + x * c - y * s, lat + x * s + y * c};
  }
  return rect;
}

const struct {
  const char* name;
  real_rect_t frame;
} views[] = {
    {"world, nothing cut", view(0.0, 0.0, 370.0, 0.0)},
    {"half the world", view(40.3, 20.7, 170.0, 0.0)},
    {"Europe", view(12.3, 46.7, 30.0, 0.0)},
    {"Europe, turned", view(12.3, 46.7, 30.0, 20.0)},
    {"inside one country", view(-52.7, -9.1, 2.0, 0.0)},
    {"open sea", view(-130.3, -20.7, 10.0, 0.0)},
};

void clip_by_library(const Set& in, const real_rect_t& frame, Set& out) {
  out.points.resize(5 * in.points.size() + 4 * static_cast<std::size_t>(in.polygons));
  out.flags.resize(out.points.size());
  drw_pset_t source = {static_cast<int>(in.points.size()), const_cast<real_pt_t*>(in.points.data()),
                       const_cast<int*>(in.flags.data())};
  drw_pset_t target = {0, out.points.data(), out.flags.data()};
  ClipPolygonSet(&source, &target, const_cast<real_rect_t*>(&frame));
  out.points.resize(static_cast<std::size_t>(target.n_points));
  out.flags.resize(out.points.size());
}

// Keeps what lies left of the line from a to b.
void keep_left(real_pt_t a, real_pt_t b, const std::vector<real_pt_t>& in,
               std::vector<real_pt_t>& out) {
  out.clear();
  if (in.empty()) return;
  const auto side = [&](real_pt_t p) {
    return (b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x);
  };
  real_pt_t from = in.back();
  double from_side = side(from);
  for (const real_pt_t to : in) {
    const double to_side = side(to);
    if ((from_side < 0.0) != (to_side < 0.0)) {
      const double t = from_side / (from_side - to_side);
      out.push_back({from.x + t * (to.x - from.x), from.y + t * (to.y - from.y)});
    }
    if (to_side >= 0.0) out.push_back(to);
    from = to;
    from_side = to_side;
  }
}

void clip_by_hand(const Set& in, const real_rect_t& frame, Set& out) {
  out = {};
  std::vector<real_pt_t> ring, next;
  for (std::size_t i = 0; i < in.points.size(); ++i) {
    ring.push_back(in.points[i]);
    if (in.flags[i] < drw_edge_close_invisible) continue;
    for (int side = 0; side < 4 && !ring.empty(); ++side) {
      keep_left(frame.corners[side], frame.corners[(side + 1) % 4], ring, next);
      ring.swap(next);
    }
    out.points.insert(out.points.end(), ring.begin(), ring.end());
    if (!ring.empty()) out.close_polygon();
    ring.clear();
  }
}

// The areas of all polygons together, each taken as positive.
double area(const Set& set) {
  double sum = 0.0, ring = 0.0;
  std::size_t first = 0;
  for (std::size_t i = 0; i < set.points.size(); ++i) {
    const bool is_last = set.flags[i] >= drw_edge_close_invisible;
    const real_pt_t a = set.points[i], b = set.points[is_last ? first : i + 1];
    ring += (a.x - b.x) * (a.y + b.y) / 2.0;
    if (!is_last) continue;
    sum += std::abs(ring);
    ring = 0.0;
    first = i + 1;
  }
  return sum;
}

using Clip = void (*)(const Set& in, const real_rect_t& frame, Set& out);

void clip_world(benchmark::State& state, Clip clip, Clip judge) {
  static const Set in = world();
  const auto& [name, frame] = views[state.range(0)];
  state.SetLabel(name);
  Set out, expected;
  clip(in, frame, out);
  judge(in, frame, expected);
  if (area(in) == 0.0) return state.SkipWithError("has no world to clip");
  if (std::abs(area(out) - area(expected)) > 1e-9 * area(in)) {
    return state.SkipWithError("leaves another area than the other form");
  }
  for (auto _ : state) {
    clip(in, frame, out);
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(in.points.size()));
}

void all_views(benchmark::internal::Benchmark* b) {
  b->ArgName("view")->DenseRange(0, std::size(views) - 1);
}

BENCHMARK_CAPTURE(clip_world, ClipPolygonSet, clip_by_library, clip_by_hand)->Apply(all_views);
BENCHMARK_CAPTURE(clip_world, plain_loop, clip_by_hand, clip_by_library)->Apply(all_views);

}  // namespace
