// Measures the two operations that clip polygons to a view, `ClipPolygonSet` and
// `ClipPolygonSetToView`. They are compared with:
//
// - the polygon clipper of Anti-Grain Geometry (AGG), if it is installed;
// - the rectangle clipper of GEOS, if it is installed;
// - a plain loop that clips to one side of the rectangle after the other, with and without a test
//   of the polygon's box first. The method: I. E. Sutherland and G. W. Hodgman, "Reentrant polygon
//   clipping", Communications of the ACM 17 (1974).
//
// None of these keeps edge flags. AGG and GEOS clip only to upright rectangles.
//
// Also measures `ClipPolylineToView` on the same outlines, as open lines. It is compared with a
// plain loop by the method of M. Cyrus and J. Beck, "Generalized two- and three-dimensional
// clipping", Computers & Graphics 3 (1978).

#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/clip_polygon_set_to_view.h>
#include <zelvan/geometry/clip_polyline_to_view.h>

#include "contest.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <simdjson.h>

#ifdef ZELVAN_BENCH_AGG
#include <agg2/agg_vpgen_clip_polygon.h>
#endif
#ifdef ZELVAN_BENCH_GEOS
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Polygon.h>
#include <geos/operation/intersection/Rectangle.h>
#include <geos/operation/intersection/RectangleIntersection.h>
#endif

namespace {

struct Set {
  std::vector<real_pt_t> points;
  std::vector<int> flags;
  std::size_t polygons = 0;

  void close_polygon() {
    flags.resize(points.size(), drw_edge_visible);
    flags.back() = drw_edge_close_visible;
    ++polygons;
  }
};

Set world() {
  simdjson::dom::parser parser;
  Set set;
  for (const auto feature : parser.load(ZELVAN_WORLD)["features"].get_array()) {
    for (const auto polygon : feature["geometry"]["coordinates"].get_array()) {
      for (const auto ring : polygon.get_array()) {
        std::vector<real_pt_t> points;
        for (const auto position : ring.get_array()) {
          points.push_back({position.at(0).get_double(), position.at(1).get_double()});
        }
        points.pop_back();  // the last point repeats the first
        set.points.insert(set.points.end(), points.begin(), points.end());
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

// Adds a simple ring about `centre`: the distance of each vertex from it is random, from `least` to
// `most`.
void add_ring(Set& set, real_pt_t centre, int n, double least, double most) {
  static std::mt19937_64 engine(1);
  for (int i = 0; i < n; ++i) {
    const double r = least + (most - least) * static_cast<double>(engine() >> 11) * 0x1p-53;
    const double angle = 2.0 * std::numbers::pi * i / n;
    set.points.push_back({centre.x + r * std::cos(angle), centre.y + r * std::sin(angle)});
  }
  set.close_polygon();
}

Set rings(int count, int n, real_pt_t centre, double least, double most) {
  Set set;
  for (int i = 0; i < count; ++i) add_ring(set, centre, n, least, most);
  return set;
}

// Returns a comb whose back is in the view and whose teeth cross its top.
Set comb(int teeth) {
  Set set;
  set.points = {{-3.9, -1.0}, {3.9, -1.0}};
  for (int i = teeth - 1; i >= 0; --i) {
    const double x = -3.9 + 7.8 * i / teeth, width = 7.8 / teeth;
    set.points.insert(set.points.end(), {{x + 0.75 * width, 1.0},
                                         {x + 0.7 * width, 3.0},
                                         {x + 0.3 * width, 3.0},
                                         {x + 0.25 * width, 1.0}});
  }
  set.close_polygon();
  return set;
}

struct Row {
  const char* name;
  Set set;
  real_rect_t frame;
};

const std::vector<Row>& rows() {
  const real_rect_t frame = view(0.0, 0.0, 8.0, 0.0);  // 8 by 4
  static const std::vector<Row> all = {
      {"100 rings of 100 vertices crossing", rings(100, 100, {3.1, 0.3}, 1.0, 2.0), frame},
      {"10 rings of 1000 vertices crossing", rings(10, 1'000, {3.1, 0.3}, 1.9, 2.0), frame},
      {"a ring of 10 000 vertices crossing", rings(1, 10'000, {3.1, 0.3}, 1.99, 2.0), frame},
      {"1000 stars of 8 vertices crossing", rings(1'000, 8, {3.9, 0.3}, 0.2, 1.0), frame},
      {"1000 stars of 8 vertices outside", rings(1'000, 8, {5.9, 0.3}, 0.2, 1.0), frame},
      {"a comb of 100 teeth", comb(100), frame},
      {"a comb of 10 000 teeth", comb(10'000), frame},
      {"10 rings of 1000 vertices inside", rings(10, 1'000, {0.3, 0.1}, 1.0, 1.5), frame},
      {"100 rings of 100 vertices outside", rings(100, 100, {9.1, 0.3}, 1.0, 2.0), frame},
      {"10 rings of 1000 vertices outside", rings(10, 1'000, {9.1, 0.3}, 1.0, 2.0), frame},
      {"a ring of a million vertices crossing", rings(1, 1'000'000, {3.1, 0.3}, 1.999, 2.0), frame},
      {"world, nothing cut", world(), view(0.0, 0.0, 370.0, 0.0)},
      {"half the world", world(), view(40.3, 20.7, 170.0, 0.0)},
      {"Europe", world(), view(12.3, 46.7, 30.0, 0.0)},
      {"Europe, turned", world(), view(12.3, 46.7, 30.0, 20.0)},
      {"inside one country", world(), view(-52.7, -9.1, 2.0, 0.0)},
      {"open sea", world(), view(-130.3, -20.7, 10.0, 0.0)},
  };
  return all;
}

// Returns the sum of the areas of all polygons, each taken as positive.
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

// The contestants: each row constructs one of each type. `clip_all` is what is timed. `kept_area`
// returns the area of its result; the areas are compared before anything is timed.

template <void (*clip)(drw_pset_t*, drw_pset_t*, real_rect_t*), std::size_t per_vertex,
          std::size_t per_polygon>
struct ByLibrary {
  explicit ByLibrary(const Row& row) : in(row.set), frame(row.frame) {
    out.points.resize(per_vertex * in.points.size() + per_polygon * in.polygons);
    out.flags.resize(out.points.size());
  }
  void clip_all() {
    drw_pset_t source = {static_cast<int>(in.points.size()), in.points.data(), in.flags.data()};
    drw_pset_t target = {0, out.points.data(), out.flags.data()};
    clip(&source, &target, &frame);
    kept = static_cast<std::size_t>(target.n_points);
  }
  double kept_area() {
    out.points.resize(kept);
    out.flags.resize(kept);
    const double sum = area(out);
    out.points.resize(per_vertex * in.points.size() + per_polygon * in.polygons);
    out.flags.resize(out.points.size());
    return sum;
  }
  Set in, out;
  real_rect_t frame;
  std::size_t kept = 0;
};
using RingByRing = ByLibrary<ClipPolygonSet, 5, 4>;
using ToView = ByLibrary<ClipPolygonSetToView, 4, 4>;

// Writes to `out` the part of polygon `in` to the left of the line from `a` to `b`.
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

// Returns true if the box lies wholly beyond one side of the frame. Requires: an upright frame.
bool is_apart(const real_pt_t& low, const real_pt_t& high, const real_rect_t& frame) {
  const real_pt_t from = frame.corners[0], to = frame.corners[2];
  return high.x < from.x || low.x > to.x || high.y < from.y || low.y > to.y;
}

void clip_by_hand(const Set& in, const real_rect_t& frame, bool box_first, Set& out) {
  out.points.clear();
  out.flags.clear();
  out.polygons = 0;
  std::vector<real_pt_t> ring, next;
  for (std::size_t first = 0, last; first < in.points.size(); first = last + 1) {
    last = first;
    real_pt_t low = in.points[first], high = low;
    while (in.flags[last] < drw_edge_close_invisible) {
      const real_pt_t p = in.points[++last];
      if (!box_first) continue;
      low = {std::min(low.x, p.x), std::min(low.y, p.y)};
      high = {std::max(high.x, p.x), std::max(high.y, p.y)};
    }
    if (box_first && is_apart(low, high, frame)) continue;
    ring.assign(in.points.data() + first, in.points.data() + last + 1);
    for (int side = 0; side < 4 && !ring.empty(); ++side) {
      keep_left(frame.corners[side], frame.corners[(side + 1) % 4], ring, next);
      ring.swap(next);
    }
    out.points.insert(out.points.end(), ring.begin(), ring.end());
    if (!ring.empty()) out.close_polygon();
  }
}

template <bool box_first>
struct ByHand {
  explicit ByHand(const Row& row) : in(row.set), frame(row.frame) {}
  void clip_all() { clip_by_hand(in, frame, box_first, out); }
  double kept_area() const { return area(out); }
  Set in, out;
  real_rect_t frame;
};
using PlainLoop = ByHand<false>;
using BoxFirst = ByHand<true>;

bool is_upright(const real_rect_t& frame) { return frame.corners[0].y == frame.corners[1].y; }

#ifdef ZELVAN_BENCH_AGG
// Calls AGG's generator of clipped vertices directly, without its usual adaptors.
struct Agg {
  explicit Agg(const Row& row) : in(row.set) {
    const real_pt_t low = row.frame.corners[0], high = row.frame.corners[2];
    clipper.clip_box(low.x, low.y, high.x, high.y);
    out.points.reserve(4 * in.points.size());
    out.flags.reserve(4 * in.points.size());
  }
  void take() {
    real_pt_t p;
    while (!agg::is_stop(clipper.vertex(&p.x, &p.y))) out.points.push_back(p);
  }
  void clip_all() {
    out.points.clear();
    out.flags.clear();
    for (std::size_t i = 0, first = 0; i < in.points.size(); ++i) {
      if (i == first) {
        clipper.reset();
        clipper.move_to(in.points[i].x, in.points[i].y);
      } else {
        clipper.line_to(in.points[i].x, in.points[i].y);
      }
      take();
      if (in.flags[i] < drw_edge_close_invisible) continue;
      clipper.line_to(in.points[first].x, in.points[first].y);
      take();
      if (out.points.size() > out.flags.size()) out.close_polygon();
      first = i + 1;
    }
  }
  double kept_area() const { return area(out); }
  Set in, out;
  agg::vpgen_clip_polygon clipper;
};
#endif

#ifdef ZELVAN_BENCH_GEOS
struct Geos {
  explicit Geos(const Row& row)
      : frame(row.frame.corners[0].x, row.frame.corners[0].y, row.frame.corners[2].x,
              row.frame.corners[2].y) {
    const auto* factory = geos::geom::GeometryFactory::getDefaultInstance();
    std::vector<geos::geom::Coordinate> ring;
    for (std::size_t i = 0; i < row.set.points.size(); ++i) {
      ring.emplace_back(row.set.points[i].x, row.set.points[i].y);
      if (row.set.flags[i] < drw_edge_close_invisible) continue;
      ring.push_back(ring.front());
      auto points = std::make_unique<geos::geom::CoordinateArraySequence>(std::move(ring));
      in.push_back(factory->createPolygon(factory->createLinearRing(std::move(points))));
      ring.clear();
    }
  }
  void clip_all() {
    using geos::operation::intersection::RectangleIntersection;
    out.clear();
    for (const auto& polygon : in) out.push_back(RectangleIntersection::clip(*polygon, frame));
  }
  double kept_area() const {
    double sum = 0.0;
    for (const auto& piece : out) sum += piece ? piece->getArea() : 0.0;
    return sum;
  }
  geos::operation::intersection::Rectangle frame;
  std::vector<std::unique_ptr<geos::geom::Geometry>> in, out;
};
#endif

template <class Contestant>
void clip(benchmark::State& state, const Row& row) {
  Contestant contestant(row);
  contestant.clip_all();
  PlainLoop judge(row);
  judge.clip_all();
  if (area(row.set) == 0.0) return state.SkipWithError("has nothing to clip");
  if (std::abs(contestant.kept_area() - judge.kept_area()) > 1e-9 * area(row.set)) {
    return state.SkipWithError("leaves another area than the plain loop");
  }
  for (auto _ : state) {
    contestant.clip_all();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(row.set.points.size()));
}

template <class Contestant>
void add(const Row& row, const char* contestant) {
  const std::string name = std::string("clip ") + row.name + '/' + contestant;
  benchmark::RegisterBenchmark(name.c_str(), [&row](auto& state) { clip<Contestant>(state, row); });
}

// The outlines as open lines: pieces end to end, and where each begins.
struct Lines {
  std::vector<real_pt_t> points;
  std::vector<int> begins;
  double length() const {
    double sum = 0.0;
    for (std::size_t k = 0; k + 1 < begins.size(); ++k) {
      for (int i = begins[k] + 1; i < begins[k + 1]; ++i) {
        sum += std::hypot(points[i].x - points[i - 1].x, points[i].y - points[i - 1].y);
      }
    }
    return sum;
  }
};

Lines lines_of(const Set& set) {
  Lines lines = {set.points, {0}};
  for (std::size_t i = 0; i < set.flags.size(); ++i) {
    if (set.flags[i] >= drw_edge_close_invisible) lines.begins.push_back(static_cast<int>(i) + 1);
  }
  return lines;
}

struct LinesToView {
  explicit LinesToView(const Row& row) : in(lines_of(row.set)), frame(row.frame) {
    out.points.resize(2 * in.points.size());
    out.begins.resize(in.points.size() + 1);
  }
  void clip_all() {
    n_points = 0;
    n_pieces = 0;
    for (std::size_t k = 0; k + 1 < in.begins.size(); ++k) {
      const int first = in.begins[k];
      int pieces = 0;
      int* const begins = out.begins.data() + n_pieces;
      const int points = ClipPolylineToView(in.points.data() + first, in.begins[k + 1] - first,
                                            &frame, out.points.data() + n_points, begins, &pieces);
      for (int i = 0; i <= pieces; ++i) begins[i] += n_points;
      n_points += points;
      n_pieces += pieces;
    }
  }
  double kept_length() const {
    const auto end = out.begins.begin() + n_pieces + 1;
    return Lines{out.points, {out.begins.begin(), end}}.length();
  }
  Lines in, out;
  real_rect_t frame;
  int n_points = 0, n_pieces = 0;
};

struct LineLoop {
  explicit LineLoop(const Row& row) : in(lines_of(row.set)), frame(row.frame) {}
  void clip_edge(real_pt_t a, real_pt_t b, bool is_first) {
    double enter = 0.0, leave = 1.0;
    for (int side = 0; side < 4; ++side) {
      const real_pt_t from = frame.corners[side], to = frame.corners[(side + 1) % 4];
      const double of_a = (to.x - from.x) * (a.y - from.y) - (to.y - from.y) * (a.x - from.x);
      const double of_b = (to.x - from.x) * (b.y - from.y) - (to.y - from.y) * (b.x - from.x);
      if (of_a < 0.0 && of_b < 0.0) return;
      if (of_a < 0.0) enter = std::max(enter, of_a / (of_a - of_b));
      if (of_b < 0.0) leave = std::min(leave, of_a / (of_a - of_b));
    }
    if (enter >= leave) return;
    const auto at = [=](double t) {
      return real_pt_t{a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    };
    if (is_first || enter > 0.0 || !is_open) {
      out.begins.push_back(static_cast<int>(out.points.size()));
      out.points.push_back(at(enter));
    }
    out.points.push_back(leave < 1.0 ? at(leave) : b);
    is_open = leave == 1.0;
  }
  void clip_all() {
    out.points.clear();
    out.begins.clear();
    for (std::size_t k = 0; k + 1 < in.begins.size(); ++k) {
      for (int i = in.begins[k] + 1; i < in.begins[k + 1]; ++i) {
        clip_edge(in.points[i - 1], in.points[i], i == in.begins[k] + 1);
      }
    }
    out.begins.push_back(static_cast<int>(out.points.size()));
  }
  double kept_length() const { return out.length(); }
  Lines in, out;
  real_rect_t frame;
  bool is_open = false;
};

template <class Contestant>
void clip_lines(benchmark::State& state, const Row& row) {
  Contestant contestant(row);
  contestant.clip_all();
  LineLoop judge(row);
  judge.clip_all();
  if (std::abs(contestant.kept_length() - judge.kept_length()) > 1e-9 * judge.in.length()) {
    return state.SkipWithError("leaves another length than the plain loop");
  }
  for (auto _ : state) {
    contestant.clip_all();
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<long>(row.set.points.size()));
}

template <class Contestant>
void add_lines(const Row& row, const char* contestant) {
  const std::string name = std::string("clip as lines: ") + row.name + '/' + contestant;
  benchmark::RegisterBenchmark(name.c_str(),
                               [&row](auto& state) { clip_lines<Contestant>(state, row); });
}

const bench::Rows all_rows([] {
  for (const Row& row : rows()) {
    add<ToView>(row, "zelvan");
    add<RingByRing>(row, "zelvan, into rings");
    add<PlainLoop>(row, "plain loop");
    if (!is_upright(row.frame)) continue;
    add<BoxFirst>(row, "plain loop, box first");
#ifdef ZELVAN_BENCH_AGG
    add<Agg>(row, "AGG");
#endif
#ifdef ZELVAN_BENCH_GEOS
    add<Geos>(row, "GEOS");
#endif
  }
  for (const Row& row : rows()) {
    add_lines<LinesToView>(row, "zelvan");
    add_lines<LineLoop>(row, "plain loop");
  }
});

}  // namespace
