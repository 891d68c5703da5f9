// Searches per second for the closest of 16, 256 and 4096 pens, beside the integer loop that a
// user would write by hand. Every search is for another colour, so that no answer is remembered.

#include <zelvan/colour/color_map.h>

#include <climits>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

std::vector<int> channels(int n, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<int> values(static_cast<std::size_t>(3 * n));
  for (int& value : values) value = static_cast<int>(random() % 256);
  return values;
}

int by_library(ColorMap& map, ColorRGB& target) {
  int distance;
  return map.GetClosestColor(&target, &distance, 1);
}

// Sums that stay below 3 * 255 * 255 are exact in `float` too, so both find the same pen.
int by_hand(ColorMap& map, ColorRGB& target) {
  int best = INT_MAX;
  int found = 0;
  for (int i = 1; i < static_cast<int>(map.map_size); ++i) {
    const ColorRGB& pen = map.colors[i];
    const int red = pen.red - target.red;
    const int green = pen.green - target.green;
    const int blue = pen.blue - target.blue;
    const int sum = red * red + green * green + blue * blue;
    if (pen.red < 0 || sum >= best) continue;
    best = sum;
    found = i;
  }
  return found;
}

void closest_pen(benchmark::State& state, int (*search)(ColorMap&, ColorRGB&)) {
  const int size = static_cast<int>(state.range(0));
  ColorMap map(size, 255, channels(size, 1).data());
  std::vector<ColorRGB> targets;
  const std::vector<int> values = channels(1024, 2);
  for (std::size_t i = 0; i < values.size(); i += 3) {
    targets.emplace_back(values[i], values[i + 1], values[i + 2]);
  }
  for (ColorRGB& target : targets) {
    if (by_library(map, target) != by_hand(map, target)) {
      return state.SkipWithError("differs from the plain loop");
    }
  }
  std::size_t next = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(search(map, targets[next]));
    next = (next + 1) % targets.size();
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(closest_pen, GetClosestColor, by_library)
    ->ArgName("pens")
    ->Arg(16)
    ->Arg(256)
    ->Arg(4096);
BENCHMARK_CAPTURE(closest_pen, plain_loop, by_hand)->ArgName("pens")->Arg(16)->Arg(256)->Arg(4096);

}  // namespace
