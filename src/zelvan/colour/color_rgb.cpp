#include <zelvan/colour/color_rgb.h>
#include <zelvan/detail/truncate.h>

#include <algorithm>
#include <cmath>

namespace {

bool is_in_unit_range(float channel) { return !(channel < 0.0f || channel > 1.0f); }

/// Converts a channel of 0 to 1 to the scale from 0 to `scale`. Halves are rounded up.
int quantise(double channel, int scale) { return zelvan::truncate_to_int(channel * scale + 0.5); }

/// Wraps a hue in degrees to the range from 0 up to but not including 360; 0 if it is not finite.
double wrapped_hue(double hue) {
  if (hue >= 0.0 && hue < 360.0) return hue;
  if (!std::isfinite(hue)) return 0.0;
  const double rest = std::fmod(hue, 360.0);
  const double wrapped = rest < 0.0 ? rest + 360.0 : rest;
  return wrapped < 360.0 ? wrapped : 0.0;  // a remainder just below 0 rounds up to 360
}

/// Packs three channels of 8 bits, the first into the low bits. A channel outside 0 to 255 also
/// sets bits above its own.
unsigned int packed(int low, int middle, int high) {
  return ((static_cast<unsigned int>(high) << 8 | static_cast<unsigned int>(middle)) << 8) |
         static_cast<unsigned int>(low);
}

}  // namespace

unsigned short ColorRGB::SetRGBColor(float r, float g, float b) {
  if (!is_in_unit_range(r) || !is_in_unit_range(g) || !is_in_unit_range(b)) return 0;
  red = quantise(r, 255);
  green = quantise(g, 255);
  blue = quantise(b, 255);
  return 1;
}

unsigned short ColorRGB::SetHSVColor(float hue, float saturation, float value) {
  if (hue < 0.0f || hue >= 360.0f) return 0;
  if (!is_in_unit_range(saturation) || !is_in_unit_range(value)) return 0;
  ColorHSV hsv = {hue, saturation, value};
  HsvToRgb(&hsv, 255);
  return 1;
}

void ColorRGB::Col24BitToRGBColor(int packed) {
  red = packed & 0xFF;
  green = packed >> 8 & 0xFF;
  blue = packed >> 16 & 0xFF;
}

void ColorRGB::RGB32BitToRGBColor(int packed) { Col24BitToRGBColor(packed); }

void ColorRGB::BGR32BitToRGBColor(int packed) {
  Col24BitToRGBColor(packed);
  std::swap(red, blue);
}

unsigned int ColorRGB::RGBTo24BitColor() { return packed(red, green, blue); }
unsigned int ColorRGB::RGBToRGB32BitColor() { return packed(red, green, blue); }
unsigned int ColorRGB::RGBToBGR32BitColor() { return packed(blue, green, red); }

void ColorRGB::HsvToRgb(ColorHSV* hsv, int scale) {
  const double s = hsv->saturation;
  const double v = hsv->value;
  const auto set = [this, scale](double r, double g, double b) {
    red = quantise(r, scale);
    green = quantise(g, scale);
    blue = quantise(b, scale);
  };
  if (!(s > 0.0)) return set(v, v, v);

  // The colour wheel has six sectors. In each, one channel is the value, one is the smallest, and
  // the third rises or falls with f, the position in the sector.
  const double x = wrapped_hue(hsv->hue) / 60.0;
  const int sector = static_cast<int>(x);
  const double f = x - sector;
  const double p = (1.0 - s) * v;
  const double q = (1.0 - s * f) * v;
  const double t = (1.0 - (1.0 - f) * s) * v;
  switch (sector) {
    case 0:
      return set(v, t, p);
    case 1:
      return set(q, v, p);
    case 2:
      return set(p, v, t);
    case 3:
      return set(p, q, v);
    case 4:
      return set(t, p, v);
    default:
      return set(v, p, q);
  }
}

void ColorRGB::RgbToHsv(int scale, ColorHSV* hsv) {
  const double r = static_cast<double>(red) / scale;
  const double g = static_cast<double>(green) / scale;
  const double b = static_cast<double>(blue) / scale;
  const double max = std::max({r, g, b});
  const double min = std::min({r, g, b});
  const double d = max - min;
  hsv->value = static_cast<float>(max);
  hsv->saturation = max == 0.0 ? 0.0f : static_cast<float>(d / max);
  hsv->hue = 0.0f;
  if (d == 0.0) return;

  float sector = 0.0f;  // `float`, not `double`: its rounding is part of the result
  if (max == r) {
    sector = static_cast<float>((g - b) / d);
  } else if (max == g) {
    sector = static_cast<float>((b - r) / d + 2.0);
  } else if (max == b) {
    sector = static_cast<float>((r - g) / d + 4.0);
  }
  hsv->hue = static_cast<float>(sector * 60.0);
  if (hsv->hue < 0.0f) hsv->hue = static_cast<float>(hsv->hue + 360.0);
}
