#include <zelvan/colour/color_rgb.h>

#include "support/digest.h"

#include <gtest/gtest.h>

// Hue, saturation and value of all 16 777 216 colours give the colour back, and have the same
// bits on every machine. 508 of the colours have a name.
TEST(ColorRGB, GoesThroughHsvAndBack) {
  std::uint64_t digest = 0;
  int named = 0;
  for (int packed = 0; packed < 1 << 24; ++packed) {
    ColorRGB color, back;
    color.RGB32BitToRGBColor(packed);
    ColorHSV hsv;
    color.RgbToHsv(255, &hsv);
    ASSERT_EQ(back.SetHSVColor(hsv.hue, hsv.saturation, hsv.value), 1) << packed;
    ASSERT_EQ(back.RGBToRGB32BitColor(), static_cast<unsigned>(packed));
    for (const float number : {hsv.hue, hsv.saturation, hsv.value}) {
      support::add_to_digest(digest, number);
    }
    char* name;
    named += color.FindNameForRgb(&name);
  }
  EXPECT_EQ(digest, 0xb470e9ae0615ce2bu);
  EXPECT_EQ(named, 508);
}
