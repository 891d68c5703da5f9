/// What the search for the closest colour has to give, said once more and plainly; and maps to
/// search in.
#pragma once

#include <zelvan/colour/color_map.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <random>
#include <utility>

/// The index found and the distance reported.
inline std::pair<int, int> closest_in(const ColorMap& map, const ColorRGB& target) {
  if (map.map_size == 0) return {0, INT_MAX};
  const auto mean = [&](const ColorRGB& c) {
    const int sum = std::abs(c.red - target.red) + std::abs(c.green - target.green) +
                    std::abs(c.blue - target.blue);
    return static_cast<int>(sum / 3.0 + 0.5);
  };
  float best = static_cast<float>(3u * map.max_value * map.max_value) + 1.0f;
  unsigned int found = 0;
  for (unsigned int i = 1; i < map.map_size; ++i) {
    const ColorRGB& c = map.colors[i];
    const float r = static_cast<float>(c.red - target.red);
    const float g = static_cast<float>(c.green - target.green);
    const float b = static_cast<float>(c.blue - target.blue);
    float sum = g * g;
    sum += r * r;
    sum += b * b;
    if (c.red < 0 || !(sum < best)) continue;
    best = sum;
    found = i;
  }
  return {static_cast<int>(found), mean(map.colors[found])};
}

/// A map of `size` entries on a scale of its own: some unset, some equal, all few enough apart
/// that ties come often.
inline ColorMap random_map(int size, std::mt19937& random) {
  const int scales[] = {255, 255, 1, 31, 1000, 40000, 65535, 100000000};
  const int scale = scales[random() % 8];
  ColorMap map(size, scale);
  const int steps = random() % 2 == 0 ? scale : std::min(scale, 7);  // few steps: many ties
  const auto channel = [&] {
    return static_cast<int>(random() % (static_cast<unsigned>(steps) + 1)) * (scale / steps);
  };
  for (int i = 0; i < size; ++i) {
    ColorRGB color(channel(), channel(), channel());
    if (random() % 8 == 0) color.red = -1;
    map.SetMap(i, &color);
  }
  return map;
}

/// A colour to look for: one of the map's, or one beside it, or any.
inline ColorRGB random_target(const ColorMap& map, std::mt19937& random) {
  const auto any = [&] { return static_cast<int>(random() % (map.max_value + 1)); };
  ColorRGB target(any(), any(), any());
  if (map.map_size > 0 && random() % 2 == 0) target = map.colors[random() % map.map_size];
  if (random() % 4 == 0) target.green += static_cast<int>(random() % 5) - 2;
  return target;
}
