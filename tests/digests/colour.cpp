#include "digests/group.h"

#include <climits>
#include <cmath>

namespace {

/// From 0 to 1 in steps of half a degree of a full turn, or any; often an edge case.
float channel(Random& random) {
  static constexpr float hard[] = {NAN,  INFINITY,      -INFINITY, -0x1p-149f,   -0.0f,
                                   1.0f, 0x1.000002p0f, 0.9f,      0x1.0101p-9f, 0x1.010102p-9f};
  const int kind = random.below(16);
  if (kind == 0) return hard[random.below(10)];
  if (kind < 9) return static_cast<float>(random.below(721)) / 720.0f;
  return static_cast<float>(random.unit());
}

// Small ranges make channels equal, which decides the third of the colour wheel.
const Group rgb_to_hsv("colour.rgb_to_hsv", [](Log& log) {
  constexpr int ranges[] = {4, 256, 100'000'000};
  constexpr int scales[] = {255, 1000, INT_MAX};
  Random random(1);
  for (int i = 0; i < 20'000; ++i) {
    const int range = ranges[i % 3];
    ColorRGB color{random.below(range), random.below(range), random.below(range)};
    const int scale = scales[random.below(3)];
    ColorHSV hsv;
    color.RgbToHsv(scale, &hsv);
    log("RgbToHsv", inputs(color, scale), hsv);
  }
});

const Group hsv_to_rgb("colour.hsv_to_rgb", [](Log& log) {
  constexpr int scales[] = {INT_MAX, 255, 1, 1000, -7};
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    const float turn = i % 4 > 0 ? 360.0f : 9000.0f;
    ColorHSV hsv = {channel(random) * turn, channel(random), channel(random)};
    const int scale = scales[random.below(5)];
    ColorRGB color;
    color.HsvToRgb(&hsv, scale);
    log("HsvToRgb", inputs(hsv, scale), color);
  }
});

// Halves on the scale, just below them, and numbers far beyond it.
const Group float_channels("colour.float_channels", [](Log& log) {
  Random random(3);
  for (int i = 0; i < 6000; ++i) {
    const float half = (static_cast<float>(random.below(256)) + 0.5f) / 255.0f;
    const float below = std::nextafter(half, 0.0f);
    const float far = std::ldexp(channel(random), i % 48 - 24);
    log("ColorValue", inputs(half, below, far), ColorValue(half, below, far));
    const float red = channel(random);
    ColorRGB color;
    color.SetRGBColor(red, half, below);
    log("SetRGBColor", inputs(red, half, below), color);
  }
});

// 0.9 as a `float` is 229 on the scale, as a `double` 230.
const Group set_value("colour.set_value", [](Log& log) {
  const char* const operands[] = {"1",         "0.5",        "0.9",   "\"1\"", "-0", "1.5", "240",
                                  "359.99999", "1.00000001", "-1e-9", "x",     "",   "\xe9"};
  Random random(4);
  for (int i = 0; i < 6000; ++i) {
    std::string text = i % 2 == 0 ? "RGB" : " \t\nhSv";
    for (int n = 0; n < 3; ++n) text += std::string(" ") + operands[random.below(13)];
    ColorRGB color(11, 12, 13);
    const int is_set = color.SetValue(0, text.data());
    log("SetValue", inputs(text), is_set, color);
  }
});

}  // namespace
