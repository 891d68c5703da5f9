#include <zelvan/colour/color_rgb.h>

#include <gtest/gtest.h>

// Converts all 16 777 216 colours to hue, saturation and value, and back to the same colour.
TEST(ColorRGB, GoesThroughHsvAndBack) {
  for (int packed = 0; packed < 1 << 24; ++packed) {
    ColorRGB color, back;
    color.RGB32BitToRGBColor(packed);
    ColorHSV hsv;
    color.RgbToHsv(255, &hsv);
    ASSERT_EQ(back.SetHSVColor(hsv.hue, hsv.saturation, hsv.value), 1) << packed;
    ASSERT_EQ(back.RGBToRGB32BitColor(), static_cast<unsigned>(packed));
  }
}
