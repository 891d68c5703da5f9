// Pick tests per second on rings of 8 to 100 000 vertices, beside the even-odd loop that most
// programs carry and beside the library's own rule written plainly.

#include <zelvan/pick/polygon.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

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

// So many that no processor learns the answers, though fewer of a ring that takes long.
std::vector<DblPt> questions(long vertices) {
  std::mt19937_64 engine(3);
  std::uniform_real_distribution<double> place(-1.5, 1.5);
  std::vector<DblPt> points(static_cast<std::size_t>(std::min(1L << 16, (1L << 23) / vertices)));
  for (DblPt& p : points) p.set(place(engine), place(engine));
  return points;
}

// The crossing count of the ray to the right, by division, as it stands in countless programs.
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

}  // namespace
