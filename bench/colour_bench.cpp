// Measures three operations:
//
// - searching for the closest of 16, 256 and 4096 pens, compared with a plain loop over integers.
//   So many different colours are searched for that the branch predictor can't learn them. The
//   library's cache of the last search is not used.
// - finding the closest pen of one map for each pen of another, compared with a k-d tree.
// - finding the channels of a colour name, and the name for channels, compared with gperf and a
// hash
//   map.

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>
#include <zelvan/colour/detail/named_color_table.h>

#include "contest.h"

#include <climits>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include <benchmark/benchmark.h>

#ifdef ZELVAN_HAS_NANOFLANN
#include <nanoflann.hpp>
#endif
#ifdef ZELVAN_HAS_GPERF
#include "color_names.h"  // made by gperf
#endif

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

// Adds integers where the library adds in `float`. Both find the same pen, since all sums of
// squares are at most 3 * 255 * 255, which `float` holds exactly.
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
  const std::vector<int> values = channels(1 << 16, 2);
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
BENCHMARK_CAPTURE(closest_pen, zelvan, by_library)->ArgName("pens")->Arg(16)->Arg(256)->Arg(4096);
BENCHMARK_CAPTURE(closest_pen, plain loop, by_hand)->ArgName("pens")->Arg(16)->Arg(256)->Arg(4096);

// ---- a whole translation of one map into another

#ifdef ZELVAN_HAS_NANOFLANN
struct Pens {
  const ColorMap* map;
  std::size_t kdtree_get_point_count() const { return map->map_size - 1; }  // all but pen 0
  float kdtree_get_pt(std::size_t i, std::size_t channel) const {
    const ColorRGB& pen = map->colors[i + 1];
    return static_cast<float>(channel == 0 ? pen.red : channel == 1 ? pen.green : pen.blue);
  }
  template <class Box>
  bool kdtree_get_bbox(Box&) const {
    return false;
  }
};

// Of several equally close pens, it may find any.
void by_tree(const ColorMap& source, const ColorMap& target, std::vector<unsigned>* table) {
  using namespace nanoflann;
  const Pens pens{&target};
  KDTreeSingleIndexAdaptor<L2_Simple_Adaptor<float, Pens>, Pens, 3> tree(3, pens, {10});
  tree.buildIndex();
  for (unsigned i = 0; i < source.map_size; ++i) {
    const ColorRGB& pen = source.colors[i];
    const float wanted[] = {static_cast<float>(pen.red), static_cast<float>(pen.green),
                            static_cast<float>(pen.blue)};
    unsigned found;
    float distance;
    tree.knnSearch(wanted, 1, &found, &distance);
    (*table)[i] = found + 1;
  }
}

int squared_distance(const ColorRGB& a, const ColorRGB& b) {
  const int red = a.red - b.red, green = a.green - b.green, blue = a.blue - b.blue;
  return red * red + green * green + blue * blue;
}
#endif

void translations() {
  for (const int n : {16, 256, 4096}) {
    const auto source = std::make_shared<ColorMap>(n, 255, channels(n, 3).data());
    const auto target = std::make_shared<ColorMap>(n, 255, channels(n, 4).data());
    const auto xfm = std::make_shared<ColorXfm>(n);
    const auto ours = [=] { xfm->MapColors(source.get(), target.get()); };
    const std::string row = "a whole ColorXfm of " + std::to_string(n) + " pens";
#ifdef ZELVAN_HAS_NANOFLANN
    const auto table = std::make_shared<std::vector<unsigned>>(n);
    const auto theirs = [=] { by_tree(*source, *target, table.get()); };
    const auto agree = [=] {
      ours(), theirs();
      for (unsigned i = 1; i < source->map_size; ++i) {
        const ColorRGB& pen = source->colors[i];
        if (squared_distance(pen, target->colors[xfm->xfm_table[i]]) !=
            squared_distance(pen, target->colors[(*table)[i]])) {
          return false;
        }
      }
      return true;
    };
    bench::contest(row, agree, {{"zelvan", ours}, {"k-d tree, building included", theirs}}, n);
#else
    bench::contest(
        row, [] { return true; }, {{"zelvan", ours}}, n);
#endif
  }
}

// ---- names

void names() {
  static std::vector<std::string> all;
  static std::vector<ColorRGB> colors;
  static std::unordered_map<int, const char*> by_channels;
  for (const auto& row : zelvan::named_colors) {
    all.push_back(row.name);
    colors.emplace_back(row.red, row.green, row.blue);
    by_channels.emplace(colors.back().red << 16 | row.green << 8 | row.blue, row.name);
  }
  const long n = static_cast<long>(all.size());
  const auto ours = [] {
    ColorRGB color;
    for (std::string& name : all) benchmark::DoNotOptimize(color.FindName(name.data()));
  };
  const auto agree = [] {
    for (std::size_t i = 0; i < all.size(); ++i) {
      ColorRGB color(-1, -1, -1);
      if (!color.FindName(all[i].data()) || color.green != colors[i].green) return false;
      char* name = nullptr;
      const int key = colors[i].red << 16 | colors[i].green << 8 | colors[i].blue;
      if (!colors[i].FindNameForRgb(&name) || name != std::string(by_channels[key])) return false;
#ifdef ZELVAN_HAS_GPERF
      const GperfColor* found = ColorNames::find(all[i].c_str(), all[i].size());
      if (found == nullptr || found->rgb != key) return false;
#endif
    }
    return true;
  };
#ifdef ZELVAN_HAS_GPERF
  const auto by_gperf = [] {
    for (const std::string& name : all) {
      benchmark::DoNotOptimize(ColorNames::find(name.c_str(), std::strlen(name.c_str())));
    }
  };
  bench::contest("colour name to channels", agree, {{"zelvan", ours}, {"gperf", by_gperf}}, n);
#else
  bench::contest("colour name to channels", agree, {{"zelvan", ours}}, n);
#endif
  const auto name_of = [] {
    char* name;
    for (ColorRGB& color : colors) benchmark::DoNotOptimize(color.FindNameForRgb(&name));
  };
  const auto by_map = [] {
    for (const ColorRGB& c : colors) {
      benchmark::DoNotOptimize(by_channels.find(c.red << 16 | c.green << 8 | c.blue));
    }
  };
  bench::contest("channels to colour name", agree, {{"zelvan", name_of}, {"hash map", by_map}}, n);
}

const bench::Rows rows([] { translations(), names(); });

}  // namespace
