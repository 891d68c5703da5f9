#include <zelvan/colour/color_rgb.h>

#include "colour/closest_model.h"
#include "colour/printing.h"
#include "support/bits.h"

#include <gtest/gtest.h>

// Hue, saturation and value of all 16 777 216 colours give the colour back, and have the same
// bits on every machine. 508 of the colours have a name.
TEST(ColorRGB, GoesThroughHsvAndBack) {
  support::FnvDigest digest;
  int named = 0;
  for (int packed = 0; packed < 1 << 24; ++packed) {
    ColorRGB color, back;
    color.RGB32BitToRGBColor(packed);
    ColorHSV hsv;
    color.RgbToHsv(255, &hsv);
    ASSERT_TRUE(hsv.hue >= 0.0f && hsv.hue < 360.0f && hsv.saturation >= 0.0f &&
                hsv.saturation <= 1.0f && hsv.value >= 0.0f && hsv.value <= 1.0f)
        << color;
    ASSERT_EQ(back.SetHSVColor(hsv.hue, hsv.saturation, hsv.value), 1) << color;
    ASSERT_EQ(back, color);
    for (float v : {hsv.hue, hsv.saturation, hsv.value}) digest.add(support::bits(v));
    char* name;
    named += color.FindNameForRgb(&name);
  }
  EXPECT_EQ(digest.value(), 0x36c28f211f7622a3u);
  EXPECT_EQ(named, 508);
}

// A million searches over maps with unset and equal entries, on scales of many sizes.
TEST(ColorMap, FindsTheClosestColourOfAWalk) {
  std::mt19937 random(11);
  for (int round = 0; round < 2000; ++round) {
    ColorMap map = random_map(static_cast<int>(random() % 300), random);
    for (int search = 0; search < 500; ++search) {
      ColorRGB target = random_target(map, random);
      std::pair<int, int> found;
      found.first = map.GetClosestColor(&target, &found.second, 1);
      ASSERT_EQ(found, closest_in(map, target)) << "round " << round << ": " << target;
    }
  }
}
