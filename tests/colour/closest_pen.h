/// The search for the closest pen, said plainly, and maps to search in.
#pragma once

#include <zelvan/colour/color_map.h>

#include <climits>
#include <cmath>

#include <support/random.h>

struct Pen {
  int index;
  int distance;
};

/// The float sum of squares decides, green first. Differences wrap where 32 bits don't hold them.
inline Pen closest_pen(const ColorMap& map, const ColorRGB& target) {
  if (map.map_size == 0) return {0, INT_MAX};
  const auto difference = [](unsigned int a, unsigned int b) { return static_cast<int>(a - b); };
  float least = static_cast<float>(3 * map.max_value * map.max_value) + 1.0f;
  int found = 0;
  for (int i = 1; i < static_cast<int>(map.map_size); ++i) {
    const ColorRGB& color = map.colors[i];
    const auto dg = static_cast<float>(difference(color.green, target.green));
    const auto dr = static_cast<float>(difference(color.red, target.red));
    const auto db = static_cast<float>(difference(color.blue, target.blue));
    const float sum = dg * dg + dr * dr + db * db;
    if (color.red < 0 || sum >= least) continue;
    least = sum;
    found = i;
  }
  const ColorRGB& color = map.colors[found];
  const double sum = std::fabs(difference(color.red, target.red)) +
                     std::fabs(difference(color.green, target.green)) +
                     std::fabs(difference(color.blue, target.blue));
  const double mean = sum / 3.0 + 0.5;
  return {found, mean < 0x1p31 ? static_cast<int>(mean) : INT_MIN};
}

/// Returns a channel: anywhere on the scale, at either end of it, or now and then anything.
inline int random_channel(int scale, support::Random& random) {
  const int kind = random.below(200);
  if (kind == 0) return random.below(2) == 0 ? INT_MIN : INT_MAX;
  if (kind < 60) return random.below(8);
  if (kind < 120) return scale - random.below(8);
  return random.below(scale);
}

inline ColorRGB random_color(int scale, support::Random& random) {
  const int red = random_channel(scale, random);
  const int green = random_channel(scale, random);
  const int blue = random_channel(scale, random);
  return {red, green, blue};
}

/// A map with many equal channels, so with ties, and some unset entries.
inline ColorMap random_map(int size, support::Random& random) {
  const int scales[] = {8, 255, 2047, 4096, 65535, 100'000'000};
  const int scale = scales[random.below(6)];
  ColorMap map(size, scale);
  for (int i = 0; i < size; ++i) {
    map.colors[i] = random_color(scale, random);
    if (random.below(10) == 0) map.colors[i].red = -1;
  }
  return map;
}
