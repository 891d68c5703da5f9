#include "digests/group.h"

#include <span>

namespace {

constexpr int scales[] = {255, 255, 20'000};

/// By kind: few colours, so that many are equally close; any; or so far apart that a `float` rounds
/// their distances, which decides between colours with the same channels in another order.
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

// Maps of every size that leaves a vector a rest of its own.
const Group closest_color("colour.closest_color", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 3 * 72; ++i) {
    ColorMap map(i / 3, scales[i % 3]);
    fill(map, random, i % 3);
    for (int k = 0; k < 30; ++k) log_closest(log, map, some_color(random, i % 3));
  }
});

// Black is a full scale away: the last digit of a `float` tells whether that is too far.
const Group far_colors("colour.far_colors", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 20'000; ++i) {
    const bool is_black = i % 2 == 0;
    const int scale = is_black ? 2300 + i / 2 : scales[2];
    ColorMap map(2 + i % 19, scale);
    if (!is_black) fill(map, random, 2);
    log_closest(log, map, {scale, scale, scale});
  }
});

// So many pens that the target is sorted first, and so few that it is not.
const Group map_colors("colour.map_colors", [](Log& log) {
  Random random(3);
  for (int i = 0; i < 150; ++i) {
    const int kind = i % 3;
    ColorMap source(i % 2 == 0 ? 40 : 3, scales[kind]);
    ColorMap target(random.below(100), scales[kind]);
    fill(source, random, kind);
    fill(target, random, kind);
    ColorXfm xfm(source.map_size);
    xfm.MapColors(&source, &target);
    log("MapColors", inputs(source.map_size, target.map_size),
        std::span(xfm.xfm_table, xfm.xfm_size), xfm.hist_exact, xfm.hist_3, xfm.hist_7, xfm.hist_15,
        xfm.hist_31);
  }
});

}  // namespace
