#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_rgb.h>
#include <zelvan/colour/color_value.h>

#include <cstdint>
#include <cstdlib>

namespace {

/// Colours whose channel differences add up to less than this look alike on a screen.
constexpr int distinct_from = 15;

/// Returns the low 8 bits of the channel on the scale 255. Returns 0 if 64 bits can't hold the
/// number: such a number is a multiple of 256, infinite or NaN.
unsigned char wrapped_channel(float channel) {
  const double scaled = 255.0 * channel + 0.5;
  const bool fits = scaled > -0x1p63 && scaled < 0x1p63;  // false for NaN as well
  return fits ? static_cast<unsigned char>(static_cast<std::int64_t>(scaled)) : 0;
}

unsigned char byte(unsigned int packed, int position) {
  return static_cast<unsigned char>(packed >> (8 * position));
}

}  // namespace

ColorValue::ColorValue(int packed, int pen0) {
  const unsigned int bits = static_cast<unsigned int>(packed);
  SetColorValue(byte(bits, 3) != 0 ? short{-1} : static_cast<short>(pen0), 0, byte(bits, 0),
                byte(bits, 1), byte(bits, 2));
}

ColorValue::ColorValue(float r, float g, float b)
    : ColorValue(wrapped_channel(r), wrapped_channel(g), wrapped_channel(b)) {}

void ColorValue::SetColorValueFromRGB(ColorRGB& color) {
  alpha = 255;
  red = static_cast<unsigned char>(color.red);
  green = static_cast<unsigned char>(color.green);
  blue = static_cast<unsigned char>(color.blue);
}

void ColorValue::SetBackgroundColorValueFromRGB(ColorRGB& color) {
  SetColorValueFromRGB(color);
  alpha = 0;
}

void ColorValue::SetColorValueFromPackedColor(unsigned int packed) {
  if (byte(packed, 3) != 0) {
    SetColorValue(-1, 255, byte(packed, 0), byte(packed, 1), byte(packed, 2));
  } else {
    SetColorValue(byte(packed, 0), 0, 0, 0, 0);
  }
}

void ColorValue::SetXorValue(ColorValue& a, ColorValue& b) {
  pen = a.pen;
  red = a.red ^ b.red;
  green = a.green ^ b.green;
  blue = a.blue ^ b.blue;
}

void ColorValue::AdjustForeground(ColorValue& background, ColAdjT mode) {
  const int difference = std::abs(red - background.red) + std::abs(green - background.green) +
                         std::abs(blue - background.blue);
  if (difference >= distinct_from) return;
  if (mode == ColAdjNudge) {
    red = red < 255 ? red + 1 : 254;
  } else if (mode == ColAdjInvert) {
    red = 255 - red;
    green = 255 - green;
    blue = 255 - blue;
  }
}

void ColorValue::UndoAdjustForeground(ColorValue& saved) {
  if (std::abs(red - saved.red) == 1 && green == saved.green && blue == saved.blue) *this = saved;
}

void ColorValue::GetClosestColor(ColorMap& map) {
  ColorRGB color(red, green, blue);
  int distance;
  pen = static_cast<short>(map.GetClosestColor(&color, &distance, 1));
}

void ColorValue::SetColorValuePenFromRGB(ColorMap& map) { GetClosestColor(map); }

void ColorValue::SetExactColorValuePenFromRGB(ColorMap& map) {
  ColorRGB color(red, green, blue);
  int distance;
  const int closest = map.GetClosestColor(&color, &distance, 1);
  if (distance == 0) pen = static_cast<short>(closest);
}
