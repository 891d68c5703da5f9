#include "digests/group.h"

#include <climits>
#include <span>

namespace {

// In a small range, channels are often equal; ties decide the sector of the colour wheel.
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

constexpr int map_scales[] = {255, 255, 20'000};

/// Returns a random colour. Kind 0 has few colours, so that many are equally close. Kind 1 has all
/// colours of a scale of 255. Kind 2 has few that are so far apart that `float` rounds the sum of
/// squares: the rounding then depends on the order of the channels, and decides which is closest.
ColorRGB some_color(Random& random, int kind) {
  constexpr int ranges[] = {9, 256, 10};
  const auto channel = [&] { return random.below(ranges[kind]) * (kind == 2 ? 1999 : 1); };
  return {channel(), channel(), channel()};
}

void fill(ColorMap& map, Random& random, int kind) {
  for (ColorRGB& entry : std::span(map.colors, map.map_size)) entry = some_color(random, kind);
}

void log_closest(Log& log, ColorMap& map, ColorRGB target) {
  int distance = -1;
  const int index = map.GetClosestColor(&target, &distance, 1);
  log("GetClosestColor", inputs(map.map_size, target), index, distance);
  log("GetSimilarColor", inputs(map.map_size, target), map.GetSimilarColor(&target));
}

// Maps of 0 to 71 colours: every remainder modulo the length of a vector.
const Group closest_color("colour.closest_color", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 3 * 72; ++i) {
    ColorMap map(i / 3, map_scales[i % 3]);
    fill(map, random, i % 3);
    for (int k = 0; k < 30; ++k) log_closest(log, map, some_color(random, i % 3));
  }
});

// Half of the maps are black: for white, the last bit of a `float` decides if a pen is near enough.
const Group far_colors("colour.far_colors", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    const bool is_black = i % 2 == 0;
    const int scale = is_black ? 2300 + i / 2 : map_scales[2];
    ColorMap map(2 + i % 19, scale);
    if (!is_black) fill(map, random, 2);
    log_closest(log, map, {scale, scale, scale});
  }
});

}  // namespace
