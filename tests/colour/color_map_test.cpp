#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "colour/closest_model.h"
#include "colour/printing.h"
#include "support/bits.h"
#include "support/guarded_array.h"

#include <span>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found = std::pair<int, int>;

Found closest(ColorMap& map, ColorRGB target, unsigned short fresh = 1) {
  int distance = -1;
  const int index = map.GetClosestColor(&target, &distance, fresh);
  return {index, distance};
}

/// A map of greys.
ColorMap greys(const std::vector<int>& levels) {
  std::vector<int> rgb;
  for (int level : levels) rgb.insert(rgb.end(), 3, level);
  return ColorMap(static_cast<int>(levels.size()), 255, rgb.data());
}

// Asked before any other search, since tests of one program share the memory of the last answer.
const Found black_at_load = [] {
  ColorMap map = greys({0, 200});
  return closest(map, {0, 0, 0}, 0);
}();

// Maps of every size that a vector may leave a rest of, each flush against a page that can't be
// read; then large ones. With a `fresh` of 0 the last answer comes again, from whatever map.
TEST(ClosestColor, IsWhatAWalkFinds) {
  EXPECT_EQ(black_at_load, Found(0, 0));
  std::mt19937 random(4);
  ColorMap none(0, 255);
  ColorRGB last(1, 2, 3);
  Found answer = closest(none, last);
  for (int round = 0; round < 71 * 40 + 5; ++round) {
    const int large[] = {255, 256, 257, 4099, 70000};
    ColorMap map = random_map(round < 71 * 40 ? round % 71 : large[round % 5], random);
    support::GuardedArray<ColorRGB> flush(std::span(map.colors, map.map_size));
    ColorRGB* const colors = std::exchange(map.colors, flush.data());
    for (int search = 0; search < 10; ++search) {
      const unsigned short fresh = random() % 2 << 8;
      const ColorRGB target = random() % 4 == 0 ? last : random_target(map, random);
      if (fresh != 0 || !(target == last)) answer = closest_in(map, target);
      ASSERT_EQ(closest(map, last = target, fresh), answer)
          << map.map_size << " entries on a scale of " << map.max_value << ": " << target;
    }
    map.colors = colors;
  }
}

TEST(ColorXfm, CountsHowCloseItsPensCame) {
  ColorMap target = greys({5, 0, 0}), *source = ColOpen(41, 255);
  source->colors[0] = {77, 77, 77};  // pen 0 is in no count
  for (int pen = 1; pen < 41; ++pen) source->colors[pen] = {pen - 1, pen - 1, pen - 1};
  ColorXfm* xfm = ColOpenXfm(41);
  ColMapColors(source, source, xfm), ColMapColors(source, &target, xfm);
  EXPECT_EQ((std::vector{xfm->hist_exact, xfm->hist_3, xfm->hist_7, xfm->hist_15, xfm->hist_31}),
            (std::vector{1u, 3u, 4u, 8u, 16u}));
  ColDeleteColorMap(source), ColDeleteColorMap(nullptr), ColCloseXfm(&xfm);
  EXPECT_NE(xfm, nullptr);
  ColCloseXfm(&(xfm = nullptr));
}

__attribute__((noinline, no_sanitize("null"))) unsigned int value_of(ColorMap* map, int type,
                                                                     int order, int index) {
  return map->GetValue(static_cast<ImageType>(type), static_cast<RGBOrder>(order), index);
}

// All operations, on two maps that are often equal but for a channel or the count.
TEST(ColorMap, KeepsEveryResult) {
  support::Digest digest;
  std::mt19937 random(9);
  const auto add = [&](const ColorMap& map) {
    digest.add(map.map_size), digest.add(map.map_count), digest.add(map.max_value);
    for (const ColorRGB& c : std::span(map.colors, map.map_size)) {
      digest.add(c.red), digest.add(c.green), digest.add(c.blue);
    }
  };
  for (int i = 0; i < 20000; ++i) {
    const int size = static_cast<int>(random() % 9) - 1, n = static_cast<int>(random()) >> i % 32;
    const int index = i % 8 == 0 ? n : i % 11 - 1;
    ColorMap map = random_map(size, random), other = random_map(i % 9, random);
    if (i % 4 > 0) other = map, add(other);
    const unsigned int entries = other.map_size;
    if (i % 3 == 0 && entries > 0) (&other.colors->red)[random() % (3 * entries)] ^= 1;
    if (i % 5 == 0 && entries > 0) other.map_count -= 1;
    digest.add(map.Identical(&other)), digest.add(other.Identical(&map));
    ColorRGB color = random_target(map, random);
    digest.add(map.GetSimilarColor(&color));
    for (auto find : {&ColorValue::GetClosestColor, &ColorValue::SetColorValuePenFromRGB,
                      &ColorValue::SetExactColorValuePenFromRGB}) {
      ColorValue value(7, 8, color.red, color.green, color.blue);
      (value.*find)(map), digest.add(value.pen), digest.add(value.alpha);
    }
    ColorRWMap used(9), rest(i % 8), same_rest(0);
    used.rw_count = i % 10;
    digest.add(map.ColxGetReadOnlyColor(&used, color.red, color.green, color.blue, n));
    used.rw_count = 0;
    for (unsigned int pen = 0; pen < 9; ++pen) {
      if (random() % 2 == 0) used.rw_list[used.rw_count++] = pen;
    }
    used.MakeRoList(&rest, i % 9 - 1), same_rest = rest;
    digest.add(same_rest.rw_size);
    for (unsigned int pen : std::span(same_rest.rw_list, same_rest.rw_count)) digest.add(pen);
    same_rest.rw_list = nullptr;
    digest.add(value_of(nullptr, i % 33, i % 3, index));
    for (int type : {0, 1, 2, 8, 31, 32}) digest.add(value_of(&map, type, i % 3, index));
    ColorXfm xfm(i % 7), same_xfm(0);
    if (i % 16 > 0) xfm.MapColors(&map, &other);
    same_xfm = xfm;
    for (unsigned int pen = 0; pen < 8; ++pen) digest.add(same_xfm.DoColorXfm(pen));
    digest.add(same_xfm.hist_exact), digest.add(same_xfm.hist_3), digest.add(same_xfm.hist_7);
    digest.add(same_xfm.hist_15), digest.add(same_xfm.hist_31), same_xfm.xfm_table = nullptr;
    char text[] = "HSV 240 1 1";
    digest.add(map.SetIndex(index, 0, text)), add(map);
    digest.add(map.SetRGBIndex(index, 0.5f, 0.25f, static_cast<float>(i % 3))), add(map);
    map.CopyColorMap(&other), add(other), other = map, add(other);
    const ColorMap& itself = map;
    map = itself, add(map);
  }
  EXPECT_EQ(digest.value(), 0x1426e446a95adf35u);
}

}  // namespace
