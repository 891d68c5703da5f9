#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include "support/refusing_heap.h"

#include <functional>

#include <gtest/gtest.h>

namespace {

using support::refuse_each_request;

// Where the heap refuses, an object is empty and safe to use, and a function gives null.
TEST(ColourMemory, EndsEmptyOrNullWhereTheHeapRefuses) {
  int rgb[] = {1, 2, 3, 4, 5, 6};
  const ColorMap two(2, 255, rgb);
  ColorMap map(3, 255);
  const auto remade = [&](auto... arguments) {
    map.~ColorMap(), new (&map) ColorMap(arguments...);
  };
  const std::function<void()> makers[] = {[&] { map = two; }, [&] { remade(2, 255, rgb); },
                                          [&] { map.~ColorMap(), new (&map) ColorMap(two); }};
  for (const auto& make : makers) {
    map = ColorMap(3, 255);
    EXPECT_EQ(refuse_each_request(make,
                                  [&](bool refused) {
                                    EXPECT_EQ(map.map_size, refused ? 0u : 2u);
                                    EXPECT_EQ(map.map_count, map.map_size);
                                    ColorRGB color(4, 5, 6);
                                    int distance;
                                    EXPECT_EQ(ColGetClosestColor(&color, &map, &distance),
                                              !refused);
                                  }),
              1);
  }
  ColorMap* opened = nullptr;
  const std::function<void()> openers[] = {
      [&] { opened = ColOpen(2, 255); },
      [&] { opened = static_cast<ColorMap*>(ColNewColorMap(2, 255, rgb)); }};
  for (const auto& open : openers) {
    EXPECT_EQ(refuse_each_request(open,
                                  [&](bool refused) {
                                    EXPECT_EQ(opened == nullptr, refused);
                                    ColDeleteColorMap(opened);
                                  }),
              2);
  }
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
                                  ColorRWMap(2).MakeRoList(&pens, 0);
                                  EXPECT_EQ(pens.rw_count, refused ? 0u : 2u);
                                }),
            1);
}

}  // namespace
