#include <zelvan/colour/color_rw_map.h>
#include <zelvan/colour/color_xfm.h>

#include "closest_pen.h"

#include <functional>

#include <gtest/gtest.h>
#include <support/heap.h>
#include <support/printers.h>
#include <support/vector_forms.h>

namespace {

TEST(GetClosestColor, AnswersAsALoopDoesInEveryForm) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    support::Random random(seed);
    ColorMap map = random_map(random.below(80), random);
    const int scale = static_cast<int>(map.max_value);
    for (int i = 0; i < 20; ++i) {
      ColorRGB target = random_color(scale, random);
      const Pen expected = closest_pen(map, target);
      support::for_each_form([&](const char* form) {
        int distance = -1;
        EXPECT_EQ(map.GetClosestColor(&target, &distance, 1), expected.index)
            << form << ", seed " << seed << ", " << testing::PrintToString(target);
        EXPECT_EQ(distance, expected.distance) << form << ", seed " << seed;
      });
    }
  }
}

// From 32 searches and 64 entries on, entries are sorted first.
TEST(MapColors, TranslatesEachPenAsALoopDoesInEveryForm) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    support::Random random(seed);
    ColorMap target = random_map(random.below(150), random);
    ColorMap source = random_map(random.below(70), random);
    for (unsigned int i = 0; i < source.map_size; ++i) {
      source.colors[i] = random_color(static_cast<int>(target.max_value), random);
    }
    support::for_each_form([&](const char* form) {
      ColorXfm xfm(40);
      xfm.MapColors(&source, &target);
      for (unsigned int pen = 0; pen < source.map_size; ++pen) {
        if (pen == xfm.xfm_size) break;
        const Pen expected = closest_pen(target, source.colors[pen]);
        EXPECT_EQ(static_cast<int>(xfm.xfm_table[pen]), expected.index)
            << form << ", pen " << pen << ", seed " << seed;
      }
    });
  }
}

TEST(MapColors, AnswersTheSameWhereTheHeapRefusesToSort) {
  support::Random random(1);
  ColorMap target(100, 255);
  ColorMap source(100, 255);
  for (int i = 0; i < 100; ++i) {
    target.colors[i] = {random.below(256), random.below(256), random.below(256)};
    source.colors[i] = {random.below(256), random.below(256), random.below(256)};
  }
  ColorXfm xfm(100);
  const auto expect_all = [&] {
    for (int pen = 0; pen < 100; ++pen) {
      const Pen expected = closest_pen(target, source.colors[pen]);
      EXPECT_EQ(static_cast<int>(xfm.xfm_table[pen]), expected.index) << pen;
    }
    EXPECT_EQ(heap::blocks_left(), 0);
  };
  EXPECT_GE(heap::refuse_each([&] { xfm.MapColors(&source, &target); }, expect_all), 2);
}

TEST(Colour, ReportsWhatTheHeapRefuses) {
  int rgb[] = {1, 2, 3};
  ColorMap full(1, 255, rgb);
  ColorMap target(2, 255);
  bool is_made = false;
  const struct {
    const char* name;
    std::function<void()> make;
    int requests;
  } rows[] = {
      {"ColorMap", [&] { is_made = ColorMap(1, 255).map_size == 1; }, 1},
      {"copy", [&] { is_made = ColorMap(full).map_size == 1; }, 1},
      {"ColorRWMap", [&] { is_made = ColorRWMap(1).rw_size == 1; }, 1},
      {"ColorXfm", [&] { is_made = ColorXfm(1).xfm_size == 1; }, 1},
      {"ColNewColorMap",
       [&] {
         void* const map = ColNewColorMap(1, 255, rgb);
         is_made = map != nullptr;
         ColDeleteColorMap(map);
       },
       2},
      {"ColOpen",
       [&] {
         ColorMap* const map = ColOpen(1, 255);
         is_made = map != nullptr;
         ColDeleteColorMap(map);
       },
       2},
      {"ColOpenXfm",
       [&] {
         ColorXfm* xfm = ColOpenXfm(1);
         is_made = xfm != nullptr;
         ColCloseXfm(&xfm);
       },
       2},
  };
  for (const auto& row : rows) {
    const auto check = [&] {
      EXPECT_FALSE(is_made) << row.name;
      EXPECT_EQ(heap::blocks_left(), 0) << row.name << " leaks nothing";
    };
    EXPECT_EQ(heap::refuse_each(row.make, check), 2 * row.requests) << row.name;
    EXPECT_TRUE(is_made) << row.name;
  }
  heap::refuse(1, false);
  target = full;
  heap::grant_all();
  EXPECT_EQ(target.map_size, 0U) << "assignment";
  EXPECT_EQ(target.colors, nullptr) << "assignment";
}

}  // namespace
