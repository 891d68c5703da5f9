#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include <cstdlib>
#include <memory>

#include <gtest/gtest.h>
#include <support/heap.h>
#include <support/printers.h>
#include <support/random.h>
#include <support/vector_forms.h>

namespace {

float squared(int v) { return static_cast<float>(v) * static_cast<float>(v); }

/// The index by a plain loop over the sums of squares, in float, green first.
int closest_pen(const ColorMap& map, const ColorRGB& target) {
  float least = static_cast<float>(3 * map.max_value * map.max_value) + 1.0f;
  int found = 0;
  for (int i = 1; i < static_cast<int>(map.map_size); ++i) {
    const ColorRGB& color = map.colors[i];
    const float sum = squared(color.green - target.green) + squared(color.red - target.red) +
                      squared(color.blue - target.blue);
    if (color.red < 0 || sum >= least) continue;
    least = sum;
    found = i;
  }
  return found;
}

int mean_difference(const ColorRGB& a, const ColorRGB& b) {
  const int sum = std::abs(a.red - b.red) + std::abs(a.green - b.green) + std::abs(a.blue - b.blue);
  return static_cast<int>(sum / 3.0 + 0.5);
}

/// Channels are near the ends of the scale, so that there are ties, or anywhere on it.
ColorRGB random_color(int scale, support::Random& random) {
  int channels[3];
  for (int& channel : channels) {
    const int place = random.below(4) == 0 ? random.below(scale) : random.below(8);
    channel = random.below(2) == 0 ? place : scale - place;
  }
  const bool is_unset = random.below(20) == 0;
  return {is_unset ? -1 : channels[0], channels[1], channels[2]};
}

// A translation sorts the entries first from 32 pens and 64 entries on, unless the heap refuses.
TEST(GetClosestColor, AnswersAsALoopDoesInEveryForm) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    support::Random random(seed);
    const int scales[] = {8, 255, 2047, 2048, 65535, 100'000'000};
    const int scale = scales[seed % 6];
    ColorMap map(1 + random.below(seed % 2 == 0 ? 150 : 8), scale);
    ColorMap targets(50, scale);
    for (unsigned int i = 0; i < map.map_size; ++i) map.colors[i] = random_color(scale, random);
    for (unsigned int i = 0; i < 50; ++i) targets.colors[i] = random_color(scale, random);
    support::for_each_form([&](const char* form) {
      ColorXfm xfm(50);
      heap::refuse(static_cast<int>(seed % 3), false);
      xfm.MapColors(&targets, &map);
      heap::grant_all();
      EXPECT_EQ(heap::blocks_left(), 0);
      for (int pen = 0; pen < 50; ++pen) {
        SCOPED_TRACE(testing::Message() << form << ", seed " << seed << ", pen " << pen);
        ColorRGB target = targets.colors[pen];
        const int expected = closest_pen(map, target);
        int distance = -1;
        EXPECT_EQ(map.GetClosestColor(&target, &distance, 1), expected);
        EXPECT_EQ(distance, mean_difference(map.colors[expected], target));
        EXPECT_EQ(static_cast<int>(xfm.xfm_table[pen]), expected) << "MapColors";
      }
    });
  }
}

/// Calls `make`, which returns true if all is made, with each of its requests refused.
template <class Make>
void expect_refusals(const char* name, int requests, Make make) {
  bool is_made = false;
  const auto check = [&] {
    EXPECT_FALSE(is_made) << name;
    EXPECT_EQ(heap::blocks_left(), 0) << name << " leaks nothing";
  };
  EXPECT_EQ(heap::refuse_each([&] { is_made = make(); }, check), 2 * requests) << name;
  EXPECT_TRUE(is_made) << name;
}

TEST(Colour, ReportsWhatTheHeapRefuses) {
  int rgb[] = {1, 2, 3};
  const ColorMap full(1, 255, rgb);
  using Map = std::unique_ptr<void, void (*)(void*)>;
  expect_refusals("ColorMap", 1, [] { return ColorMap(1, 255).map_size == 1; });
  expect_refusals("a copy", 1, [&] { return ColorMap(full).map_size == 1; });
  expect_refusals("ColorRWMap", 1, [] { return ColorRWMap(1).rw_size == 1; });
  expect_refusals("ColorXfm", 1, [] { return ColorXfm(1).xfm_size == 1; });
  expect_refusals("ColOpen", 2, [] { return Map(ColOpen(1, 255), ColDeleteColorMap) != nullptr; });
  expect_refusals("ColNewColorMap", 2,
                  [&] { return Map(ColNewColorMap(1, 255, rgb), ColDeleteColorMap) != nullptr; });
  expect_refusals("ColOpenXfm", 2, [] {
    ColorXfm* xfm = ColOpenXfm(1);
    const bool is_made = xfm != nullptr;
    ColCloseXfm(&xfm);
    return is_made;
  });
  ColorMap target(2, 255);
  heap::refuse(1, false);
  target = full;
  heap::grant_all();
  EXPECT_EQ(target.map_size, 0U) << "assignment";
}

}  // namespace
