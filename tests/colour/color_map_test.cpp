#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "colour/closest_model.h"
#include "colour/printing.h"
#include "support/guarded_array.h"
#include "support/vector_forms.h"

#include <memory>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Found = std::pair<int, int>;

Found closest(ColorMap& map, ColorRGB target, unsigned short fresh = 1) {
  int distance = -1;
  const int index = map.GetClosestColor(&target, &distance, fresh);
  return {index, distance};
}

// Asked before any other search, since tests of one program share the memory of the last answer.
const Found black_at_load = closest(*std::make_unique<ColorMap>(2, 255), {0, 0, 0}, 0);

// Maps of every size that a vector may leave a rest of, and as many that a translation of many pens
// sorts, each flush against a page that can't be read; then one whose index needs 17 bits. With a
// `fresh` of 0 the last answer comes again, from whatever map.
TEST(ClosestColor, IsWhatAWalkFinds) {
  EXPECT_EQ(black_at_load, Found(0, 0));
  std::mt19937 random(4);
  ColorMap none(0, 255), source(40, 0);
  ColorRGB last(1, 2, 3);
  Found answer = closest(none, last);
  for (int round = 72 * 40; round >= 0; --round) {
    const int size = round % 72 + (round == 0 ? 70000 : round % 72 < 36 ? 0 : 28);
    ColorMap map = random_map(size, random);
    if (round == 0) std::fill_n(map.colors, 65537, ColorRGB(-1, 0, 0));
    support::GuardedArray<ColorRGB> flush(std::span(map.colors, map.map_size));
    ColorRGB* const colors = std::exchange(map.colors, flush.data());
    std::vector<unsigned int> pens;
    for (ColorRGB& target : std::span(source.colors, 40)) {
      const unsigned short fresh = random() % 2 << 8;
      target = random() % 4 == 0 ? last : random_target(map, random);
      const Found walked = closest_in(map, target);
      if (fresh != 0 || !(target == last)) answer = walked;
      ASSERT_EQ(closest(map, last = target, fresh), answer) << round << ": " << target;
      support::for_each_form(
          [&](const char* form) { EXPECT_EQ(closest(map, last), walked) << form; });
      answer = walked;
      pens.push_back(walked.first);
    }
    ColorXfm xfm(40);
    xfm.MapColors(&source, &map), answer = closest_in(map, last);
    ASSERT_EQ(std::vector(xfm.xfm_table, xfm.xfm_table + 40), pens) << round;
    map.colors = colors;
  }
}

__attribute__((noinline, no_sanitize("null"))) unsigned int value_of(ColorMap* map, int type,
                                                                     int order, int index) {
  return map->GetValue(static_cast<ImageType>(type), static_cast<RGBOrder>(order), index);
}

// All operations, on two maps that are often equal but for a channel or the count.
TEST(ColorMap, KeepsEveryResult) {
  ColorDigest add;
  std::mt19937 random(9);
  const auto add_map = [&](const ColorMap& map) {
    add(map.map_size, map.map_count, map.max_value, map.colors == nullptr);
    for (const ColorRGB& color : std::span(map.colors, map.map_size)) add(color);
  };
  ColorMap* volatile none = nullptr;  // so that no compiler warns of calls through it
  for (int i = 0; i < 20000; ++i) {
    const int size = static_cast<int>(random() % 9) - 1, n = static_cast<int>(random()) >> i % 32;
    const int index = i % 8 == 0 ? n : i % 11 - 1;
    ColorMap map = random_map(size, random), other = random_map(i % 9, random);
    if (i % 4 > 0) other = map, add_map(other);
    void* const made = ColNewColorMap(size, n, reinterpret_cast<int*>(map.colors));
    add_map(*static_cast<ColorMap*>(made)), ColDeleteColorMap(made);
    const unsigned int entries = other.map_size;
    if (i % 3 == 0 && entries > 0) (&other.colors->red)[random() % (3 * entries)] ^= 1;
    if (i % 5 == 0 && entries > 0) other.map_count -= 1;
    if (i % 10 == 0 && size > 0) map.map_count -= 1;
    add(map.Identical(&other), other.Identical(&map));

    ColorRGB color = random_target(map, random);
    int distance = 0;
    add(ColGetClosestColor(&color, &map, &distance), map.GetSimilarColor(&color)), add(distance);
    for (auto find : {&ColorValue::GetClosestColor, &ColorValue::SetColorValuePenFromRGB,
                      &ColorValue::SetExactColorValuePenFromRGB}) {
      ColorValue value(7, 8, color.red, color.green, color.blue);
      (value.*find)(map), add(value.pen, value.alpha);
    }
    ColorXfm *xfm = ColOpenXfm(i % 7), same(0);
    for (int use = i % 3; use > 0; --use) ColMapColors(use == 1 ? &map : &other, &other, xfm);
    same = *xfm, add(same.xfm_table == nullptr);
    add(same.hist_exact, same.hist_3, same.hist_7, same.hist_15, same.hist_31);
    for (unsigned int pen = 0; pen < 8; ++pen) add(same.DoColorXfm(pen));
    same.xfm_table = nullptr, ColCloseXfm(&xfm), add(xfm == nullptr);
    xfm = nullptr, ColCloseXfm(&xfm);

    ColorRWMap used(9), rest(i % 8), same_rest(0);
    for (unsigned int pen = 0; pen < 9; ++pen) {
      if (random() % 2 == 0) used.rw_list[used.rw_count++] = pen;
    }
    add(map.ColxGetReadOnlyColor(&used, color.red, color.green, color.blue, n));
    used.MakeRoList(&rest, i % 9 - 1), same_rest = rest;
    add(same_rest.rw_size, same_rest.rw_list == nullptr);
    for (unsigned int pen : std::span(same_rest.rw_list, same_rest.rw_count)) add(pen);
    same_rest.rw_list = nullptr;

    add(value_of(none, i % 33, i % 3, index));
    for (int type : {0, 1, 2, 8, 31, 32}) add(value_of(&map, type, i % 3, index));
    char text[] = "HSV 240 1 1";
    add(map.SetIndex(index, 0, text)), add_map(map);
    add(map.SetRGBIndex(index, 0.5f, 0.25f, static_cast<float>(i % 3))), add_map(map);
    map.CopyColorMap(&other), add_map(other), other = map, add_map(other);
    map = std::as_const(map), add_map(map);
  }
  ColDeleteColorMap(none);
  EXPECT_EQ(add.value(), 0xe3f99bc7c62e4c01u);
}

}  // namespace
