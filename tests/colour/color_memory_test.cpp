#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "support/refusing_heap.h"

#include <gtest/gtest.h>

namespace {

using support::refuse_each_request;

// Where the heap refuses, a constructor leaves an empty object and a function gives null.
TEST(ColourMemory, EndsEmptyOrNullWhereTheHeapRefuses) {
  int rgb[] = {1, 2, 3, 4, 5, 6};
  const ColorMap two(2, 255, rgb);
  const auto expect_whole_or_empty = [&](ColorMap& map, bool refused) {
    EXPECT_EQ(map.map_size, refused ? 0u : 2u);
    EXPECT_EQ(map.map_count, map.map_size);
    EXPECT_EQ(map.colors == nullptr, refused);
    ColorRGB color(4, 5, 6);
    int distance;
    EXPECT_EQ(map.GetClosestColor(&color, &distance, 1), refused ? 0 : 1);
  };

  ColorMap map(0, 0);
  EXPECT_EQ(refuse_each_request([&] { map.~ColorMap(), new (&map) ColorMap(2, 255, rgb); },
                                [&](bool refused) { expect_whole_or_empty(map, refused); }),
            1);
  EXPECT_EQ(refuse_each_request([&] { map.~ColorMap(), new (&map) ColorMap(two); },
                                [&](bool refused) { expect_whole_or_empty(map, refused); }),
            1);
  ColorMap assigned(3, 255);
  EXPECT_EQ(refuse_each_request([&] { assigned = two; },
                                [&](bool refused) { expect_whole_or_empty(assigned, refused); }),
            1);

  ColorMap* opened = nullptr;
  const auto expect_null = [&](bool refused) {
    EXPECT_EQ(opened == nullptr, refused);
    ColDeleteColorMap(opened);
  };
  EXPECT_EQ(refuse_each_request([&] { opened = ColOpen(2, 255); }, expect_null), 2);
  EXPECT_EQ(refuse_each_request(
                [&] { opened = static_cast<ColorMap*>(ColNewColorMap(2, 255, rgb)); }, expect_null),
            2);

  ColorXfm* xfm = nullptr;
  EXPECT_EQ(refuse_each_request([&] { xfm = ColOpenXfm(2); },
                                [&](bool refused) {
                                  EXPECT_EQ(xfm == nullptr, refused);
                                  ColCloseXfm(&xfm);
                                }),
            2);
  ColorRWMap pens(0);
  EXPECT_EQ(refuse_each_request([&] { pens.~ColorRWMap(), new (&pens) ColorRWMap(2); },
                                [&](bool refused) {
                                  EXPECT_EQ(pens.rw_size, refused ? 0u : 2u);
                                  ColorRWMap(2).MakeRoList(&pens, 0);
                                  EXPECT_EQ(pens.rw_count, pens.rw_size);
                                }),
            1);
}

}  // namespace
