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

// Black and white are as far apart as a pen may be, and the last bit of a `float` decides if that
// is too far. The other maps have few colours, many equally close, so far from white that `float`
// rounds the sum of squares: that depends on the order of channels, and decides which is closest.
const Group far_colors("colour.far_colors", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    const bool is_black = i % 2 == 0;
    const int scale = is_black ? 2300 + i / 2 : 20'000;
    const auto channel = [&] { return is_black ? 0 : 1999 * random.below(10); };
    ColorMap map(2 + i % 19, scale);
    for (ColorRGB& pen : std::span(map.colors, map.map_size)) {
      pen = {channel(), channel(), channel()};
    }
    ColorRGB white(scale, scale, scale);
    int distance = -1;
    const int index = map.GetClosestColor(&white, &distance, 1);
    log("GetClosestColor", inputs(map.map_size, white), index, distance);
    log("GetSimilarColor", inputs(map.map_size, white), map.GetSimilarColor(&white));
  }
});

}  // namespace
