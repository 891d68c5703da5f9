// Pick tests per second on rings of 8 to 100 000 vertices, compared with the usual even-odd loop.
// Then the index of a ring and of the countries of the world, compared with regions without an
// index and, where it is installed, with the prepared polygons of GEOS.

#include <zelvan/pick/pick_index.h>
#include <zelvan/pick/polygon.h>
#include <zelvan/pick/polygon_of.h>

#include "common/compact_outlines.h"
#include "contest.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <memory>
#include <numbers>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ZELVAN_BENCH_GEOS
#include <geos/algorithm/locate/IndexedPointInAreaLocator.h>
#include <geos/geom/CoordinateArraySequence.h>
#include <geos/geom/GeometryFactory.h>
#include <geos/geom/LinearRing.h>
#include <geos/geom/Location.h>
#include <geos/geom/Polygon.h>
#include <geos/index/strtree/TemplateSTRtree.h>
#endif

namespace {

// A wiggly ring about the origin, like a coast.
std::vector<DblPt> coast(int n) {
  std::mt19937_64 engine(2);
  std::uniform_real_distribution<double> radius(0.7, 1.3);
  std::vector<DblPt> ring;
  for (int i = 0; i < n; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / n;
    const double r = radius(engine);
    ring.emplace_back(r * std::cos(angle), r * std::sin(angle));
  }
  return ring;
}

// Returns so many points that no branch predictor learns the outcomes; fewer for large rings, which
// take long.
std::vector<DblPt> questions(long vertices) {
  std::mt19937_64 engine(3);
  std::uniform_real_distribution<double> place(-1.5, 1.5);
  std::vector<DblPt> points(static_cast<std::size_t>(std::min(1L << 16, (1L << 23) / vertices)));
  for (DblPt& p : points) p.set(place(engine), place(engine));
  return points;
}

// The usual even-odd loop: counts crossings of the ray to the right, with a division for each.
bool even_odd(const std::vector<DblPt>& ring, double x, double y) {
  bool inside = false;
  for (std::size_t i = 0, j = ring.size() - 1; i < ring.size(); j = i++) {
    if ((ring[i].y > y) != (ring[j].y > y) &&
        x < (ring[j].x - ring[i].x) * (y - ring[i].y) / (ring[j].y - ring[i].y) + ring[i].x) {
      inside = !inside;
    }
  }
  return inside;
}

void ring_sizes(benchmark::internal::Benchmark* b) {
  b->ArgName("vertices")->Arg(8)->Arg(64)->Arg(1'000)->Arg(100'000);
}

void pick(benchmark::State& state, bool by_library) {
  std::vector<DblPt> ring = coast(static_cast<int>(state.range(0)));
  std::vector<DblPt> points = questions(state.range(0));
  CPolygon polygon(static_cast<unsigned>(ring.size()), ring.data());
  for (DblPt& p : points) {
    if (polygon.isInside(p, 0.0) != even_odd(ring, p.x, p.y)) {
      return state.SkipWithError("differs from the other form");
    }
  }
  std::size_t i = 0;
  for (auto _ : state) {
    DblPt& p = points[i++ % points.size()];
    benchmark::DoNotOptimize(by_library ? polygon.isInside(p, 0.0) : even_odd(ring, p.x, p.y));
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["edges/s"] = benchmark::Counter(
      static_cast<double>(state.iterations() * state.range(0)), benchmark::Counter::kIsRate);
}

BENCHMARK_CAPTURE(pick, zelvan, true)->Apply(ring_sizes);
BENCHMARK_CAPTURE(pick, even odd loop, false)->Apply(ring_sizes);

// ---- prepared rings

DblPt at_angle(int i, int n, double radius) {
  const double angle = 2.0 * std::numbers::pi * i / n;
  return {radius * std::cos(angle), radius * std::sin(angle)};
}

std::vector<DblPt> circle(int n) {
  std::vector<DblPt> ring;
  for (int i = 0; i < n; ++i) ring.push_back(at_angle(i, n, 1.0));
  return ring;
}

std::vector<DblPt> star(int n) {
  std::vector<DblPt> ring;
  for (int i = 0; i < n; ++i) ring.push_back(at_angle(i, n, i % 2 == 0 ? 1.0 : 0.5));
  return ring;
}

// Returns a comb: teeth that point up, and a back below them.
std::vector<DblPt> comb(int n) {
  std::vector<DblPt> ring = {{-1.2, -1.0}, {1.2, -1.0}};
  for (int i = 2; i < n; ++i) ring.emplace_back(1.2 - 2.4 * (i - 2) / (n - 3), i % 2 ? 1.0 : -0.8);
  return ring;
}

std::vector<DblPt> random_places(double width, double height) {
  std::mt19937_64 engine(3);
  std::uniform_real_distribution<double> x(-width, width), y(-height, height);
  std::vector<DblPt> places(1 << 16);  // so many that no branch predictor learns the outcomes
  for (DblPt& p : places) p.set(x(engine), y(engine));
  return places;
}

constexpr long places_a_call = 64;

// Calls `ask(p)` for the next 64 places, and starts again after the last place of all.
template <class Ask>
bench::Work asking(const std::vector<DblPt>& places, Ask ask) {
  return [&places, ask, next = std::size_t{0}]() mutable {
    for (long i = 0; i < places_a_call; ++i) benchmark::DoNotOptimize(ask(places[next + i]));
    next = (next + places_a_call) % places.size();
  };
}

// Returns true if both agree about the first places; tests fewer for large rings, which take long.
template <class Ask, class OtherAsk>
bool agree(const std::vector<DblPt>& places, std::size_t vertices, Ask ask, OtherAsk other) {
  const auto n = static_cast<std::ptrdiff_t>(std::min(places.size(), (1 << 24) / vertices));
  return std::all_of(places.begin(), places.begin() + n,
                     [&](const DblPt& p) { return ask(p) == other(p); });
}

#ifdef ZELVAN_BENCH_GEOS
std::unique_ptr<geos::geom::Polygon> geos_polygon(const CPolygon& ring) {
  const auto* factory = geos::geom::GeometryFactory::getDefaultInstance();
  std::vector<geos::geom::Coordinate> points;
  for (const DblPt* p = ring.start(); p != ring.end(); ++p) points.emplace_back(p->x, p->y);
  points.push_back(points.front());
  auto sequence = std::make_unique<geos::geom::CoordinateArraySequence>(std::move(points));
  return factory->createPolygon(factory->createLinearRing(std::move(sequence)));
}

struct GeosRing {
  explicit GeosRing(const CPolygon& ring) : polygon(geos_polygon(ring)), locator(*polygon) {
    holds({0.0, 0.0});  // GEOS builds its index at the first query: this one, which isn't measured
  }
  bool holds(const DblPt& p) {
    const geos::geom::Coordinate place(p.x, p.y);
    return locator.locate(&place) != geos::geom::Location::EXTERIOR;
  }
  std::unique_ptr<geos::geom::Polygon> polygon;
  geos::algorithm::locate::IndexedPointInAreaLocator locator;
};
#endif

void add_ring(const std::string& shape, std::vector<DblPt> points) {
  static const std::vector<DblPt> places = random_places(1.5, 1.5);
  const auto n = static_cast<unsigned int>(points.size());
  const auto polygon = std::make_shared<CPolygon>(n, points.data());
  const auto index = std::make_shared<CPickIndex>(*polygon);
  const auto by_index = [index](const DblPt& p) { return index->isInside(p); };
  const auto by_polygon = [polygon](const DblPt& p) {
    return polygon->CPolygon::isInside(p.x, p.y, 0.0);  // no virtual dispatch
  };
  const std::string row = "prepared " + shape + " of " + std::to_string(n);
  const auto same = [=] { return agree(places, n, by_index, by_polygon); };
  bench::contest(row, same, {{"zelvan", asking(places, by_index)}}, places_a_call);
  bench::contest(row, same, {{"CPolygon", asking(places, by_polygon)}}, places_a_call);
#ifdef ZELVAN_BENCH_GEOS
  const auto geos = std::make_shared<GeosRing>(*polygon);
  const auto by_geos = [geos](const DblPt& p) { return geos->holds(p); };
  const auto same_as_geos = [=] { return agree(places, n, by_geos, by_polygon); };
  bench::contest(row, same_as_geos, {{"GEOS", asking(places, by_geos)}}, places_a_call);
#endif
}

// Times the building of an index, compared with the preparation of a GEOS polygon.
void add_making(std::vector<DblPt> points) {
  const auto n = static_cast<unsigned int>(points.size());
  const auto polygon = std::make_shared<CPolygon>(n, points.data());
  const std::string row = "preparing a circle of " + std::to_string(n);
  const auto is_made = [] { return true; };
  bench::contest(row, is_made, {{"zelvan", [=] { CPickIndex index(*polygon); }}});
#ifdef ZELVAN_BENCH_GEOS
  bench::contest(row, is_made, {{"GEOS", [=] { GeosRing ring(*polygon); }}});
#endif
}

// ---- the world: in which polygons is a place?

struct World {
  World() {
    std::ifstream file(ZELVAN_FINE_WORLD, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    for (const example::Feature& feature : example::find_compact_features("the world", text)) {
      const std::string_view part = std::string_view(text).substr(feature.start, feature.size);
      const auto outline = example::read_compact_feature("the world", feature, part).outline;
      points.insert(points.end(), outline.points.begin(), outline.points.end());
      flags.insert(flags.end(), outline.edge_flags.begin(), outline.edge_flags.end());
    }
    set = {static_cast<int>(points.size()), points.data(), flags.data()};
    for (int k = 0; k < zelvan::count_polygons(set); ++k) {
      polygons.push_back(zelvan::polygon_of(set, k));
    }
  }
  std::vector<real_pt_t> points;
  std::vector<int> flags;
  drw_pset_t set;
  std::vector<CPolygon> polygons;
};

using Numbers = std::vector<int>;

void find_by_index(const CPickIndex& index, const DblPt& p, Numbers& found) {
  found.resize(64);
  found.resize(static_cast<std::size_t>(index.findPolygons(p.x, p.y, found.data(), 64)));
}

void find_by_polygons(const std::vector<CPolygon>& polygons, const DblPt& p, Numbers& found) {
  found.clear();
  for (std::size_t k = 0; k < polygons.size(); ++k) {
    if (polygons[k].isInside(p, 0.0)) found.push_back(static_cast<int>(k));
  }
}

#ifdef ZELVAN_BENCH_GEOS
// A GEOS tree over the boxes of its prepared polygons, as its manual recommends.
struct GeosWorld {
  explicit GeosWorld(const std::vector<CPolygon>& polygons) : tree(polygons.size()) {
    for (const CPolygon& polygon : polygons) {
      rings.push_back(std::make_unique<GeosRing>(polygon));
      tree.insert(*rings.back()->polygon->getEnvelopeInternal(), rings.size() - 1);
    }
  }
  void find(const DblPt& p, Numbers& found) {
    found.clear();
    const geos::geom::Envelope place(p.x, p.x, p.y, p.y);
    tree.query(place, [&](std::size_t k) {
      if (rings[k]->holds(p)) found.push_back(static_cast<int>(k));
    });
  }
  std::vector<std::unique_ptr<GeosRing>> rings;
  geos::index::strtree::TemplateSTRtree<std::size_t> tree;
};
#endif

// Calls `find(p, found)`, the search that is timed, for one place after the other.
template <class Find>
bench::Work finding(const std::vector<DblPt>& places, Find find) {
  return asking(places, [find, found = Numbers()](const DblPt& p) mutable {
    find(p, found);
    return found.size();
  });
}

template <class Find, class OtherFind>
bool find_the_same(const std::vector<DblPt>& places, Find find, OtherFind other) {
  return std::all_of(places.begin(), places.begin() + 500, [&](const DblPt& p) {
    Numbers found, others;
    find(p, found);
    other(p, others);
    std::sort(others.begin(), others.end());
    return found == others;
  });
}

void add_world() {
  static const World world;
  static const std::vector<DblPt> places = random_places(180.0, 90.0);
  const auto index = std::make_shared<CPickIndex>(world.set);
  const auto by_index = [index](const DblPt& p, Numbers& found) {
    find_by_index(*index, p, found);
  };
  const auto by_polygons = [](const DblPt& p, Numbers& found) {
    find_by_polygons(world.polygons, p, found);
  };
  const std::string row = "which countries";
  const auto same = [=] { return find_the_same(places, by_index, by_polygons); };
  bench::contest(row, same, {{"zelvan", finding(places, by_index)}}, places_a_call);
  bench::contest(row, same, {{"CPolygon", finding(places, by_polygons)}}, places_a_call);
  bench::contest("preparing the countries", same, {{"zelvan", [] { CPickIndex made(world.set); }}});
#ifdef ZELVAN_BENCH_GEOS
  const auto geos = std::make_shared<GeosWorld>(world.polygons);
  const auto by_geos = [geos](const DblPt& p, Numbers& found) { geos->find(p, found); };
  const auto same_as_geos = [=] { return find_the_same(places, by_index, by_geos); };
  bench::contest(row, same_as_geos, {{"GEOS", finding(places, by_geos)}}, places_a_call);
  bench::contest("preparing the countries", same_as_geos,
                 {{"GEOS", [] { GeosWorld made(world.polygons); }}});
#endif
}

const bench::Rows rows([] {
  for (const int n : {8, 64, 1'000, 10'000, 100'000}) {
    add_ring("circle", circle(n));
    add_ring("star", star(n));
    add_ring("comb", comb(n));
    add_ring("coast", coast(n));
    add_making(circle(n));
  }
  add_world();
});

}  // namespace
