#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include <memory>

#include <gtest/gtest.h>
#include <support/heap.h>
#include <support/random.h>
#include <support/vector_forms.h>

using Map = std::unique_ptr<void, void (*)(void*)>;

static float squared(int v) { return static_cast<float>(v) * static_cast<float>(v); }

/// Returns the closest pen, by a plain loop over sums of squares in float, green first.
static int closest_pen(const ColorMap& map, const ColorRGB& target) {
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

/// Most channels are near an end of the scale, for ties; a few are beyond it. Some pens are unset.
/// On a large scale `float` rounds the sums, so ties depend on the order in which they are added.
static void fill(ColorMap* map, support::Random* random) {
  const int scale = static_cast<int>(map->max_value);
  const auto channel = [&] {
    if (random->below(500) == 0) return random->below(2) == 0 ? -1 : 2048;
    const int step = scale >= 65535 ? 1999 : 1;
    const int place = random->below(4) == 0 ? random->below(scale) : step * random->below(8);
    return random->below(2) == 0 ? place : scale - place;
  };
  for (unsigned int i = 0; i < map->map_size; ++i) {
    map->colors[i] = {random->below(20) == 0 ? -1 : channel(), channel(), channel()};
  }
}

// From 32 pens and 64 entries on, a translation sorts the entries first, unless the heap refuses.
TEST(GetClosestColor, AnswersAsALoopDoesInEveryForm) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    support::Random random(seed);
    const int scales[] = {8, 255, 2047, 2048, 65535, 100'000'000};
    const int scale = scales[random.below(6)];
    ColorMap map(1 + random.below(seed % 2 == 0 ? 150 : 8), scale);
    ColorMap targets(50, scale);
    fill(&map, &random);
    fill(&targets, &random);
    support::for_each_form([&](const char* form) {
      ColorXfm xfm(50);
      heap::refuse(random.below(3), false);
      xfm.MapColors(&targets, &map);
      heap::grant_all();
      EXPECT_EQ(heap::blocks_left(), 0);
      for (int pen = 0; pen < 50; ++pen) {
        SCOPED_TRACE(testing::Message() << form << ", seed " << seed << ", pen " << pen);
        ColorRGB target = targets.colors[pen];
        const int expected = closest_pen(map, target);
        int distance = -1;
        EXPECT_EQ(ColGetClosestColor(&target, &map, &distance), expected);
        EXPECT_EQ(static_cast<int>(xfm.xfm_table[pen]), expected) << "MapColors";
      }
    });
  }
}

TEST(Colour, IsEmptyOrNullWhereTheHeapRefuses) {
  const auto expect_refusals = [](const char* name, int requests, auto is_made) {
    bool result = false;
    const auto check = [&] {
      EXPECT_FALSE(result) << name;
      EXPECT_EQ(heap::blocks_left(), 0) << name << " leaks";
    };
    EXPECT_EQ(heap::refuse_each([&] { result = is_made(); }, check), 2 * requests) << name;
    EXPECT_TRUE(result) << name << " where the heap grants";
  };
  int rgb[] = {1, 2, 3};
  const ColorMap full(1, 255, rgb);
  expect_refusals("a copy", 1, [&] { return ColorMap(full).map_size == 1; });
  expect_refusals("ColorRWMap", 1, [] { return ColorRWMap(1).rw_size == 1; });
  expect_refusals("ColorXfm", 1, [] { return ColorXfm(1).xfm_size == 1; });
  expect_refusals("ColOpen", 2, [] { return Map(ColOpen(1, 9), ColDeleteColorMap) != nullptr; });
  expect_refusals("ColNewColorMap", 2,
                  [&] { return Map(ColNewColorMap(1, 9, rgb), ColDeleteColorMap) != nullptr; });
  for (const int size : {0, 1}) {  // a table of size 0 needs no heap block
    expect_refusals("ColOpenXfm", 1 + size, [&] {
      ColorXfm* xfm = ColOpenXfm(size);
      ColCloseXfm(&xfm);
      return xfm != nullptr;
    });
  }
}
