/// What the search for the closest colour has to give, said plainly; and maps to search in.
#pragma once

#include <zelvan/colour/color_map.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <random>
#include <span>
#include <utility>

/// The index found and the distance reported. Differences wrap where 32 bits don't hold them.
inline std::pair<int, int> closest_in(const ColorMap& map, const ColorRGB& target) {
  if (map.map_size == 0) return {0, INT_MAX};
  const auto wrapped = [](unsigned m, unsigned n) { return static_cast<int>(m - n); };
  const auto sum_of = [&](int i, auto term) {  // green first
    const ColorRGB& c = map.colors[i];
    return term(wrapped(c.green, target.green)) + term(wrapped(c.red, target.red)) +
           term(wrapped(c.blue, target.blue));
  };
  float best = static_cast<float>(3 * map.max_value * map.max_value) + 1.0f;
  int found = 0;
  for (int i = 1; i < static_cast<int>(map.map_size); ++i) {
    const float sum = sum_of(i, [](int d) { return float(d) * float(d); });
    if (map.colors[i].red >= 0 && sum < best) best = sum, found = i;
  }
  const double mean = sum_of(found, [](double d) { return std::abs(d); }) / 3.0 + 0.5;
  return {found, mean < 0x1p31 ? static_cast<int>(mean) : INT_MIN};
}

/// A map of `size` entries on a scale of its own, some unset and many equal; in every other map
/// any channel may be negative, even so that differences wrap. 4096 squared leaves no room for a 1
/// beside it, and steps at the top of a scale may be none as `float`.
inline ColorMap random_map(int size, std::mt19937& random) {
  const int scales[] = {255, 1, 31, 2047, 4000, 40000, 65535, 100000000};
  const int scale = scales[random() % 8], steps = random() % 3 == 0 ? scale : std::min(scale, 7);
  const unsigned int kind = random() % 8;
  ColorMap map(size, scale);
  for (ColorRGB& color : std::span(map.colors, map.map_size)) {
    for (int* c : {&color.red, &color.green, &color.blue}) {
      const int step = static_cast<int>(random() % (static_cast<unsigned>(steps) + 1));
      *c = kind == 0   ? step % 4 == 0 ? 4096 : 1
           : kind < 3  ? scale - step % 8
           : kind == 3 ? step % 8
                       : step * (scale / steps);
      const bool is_negative = random() % 24 == 0 && (kind % 2 == 0 || c == &color.red);
      if (is_negative) *c = random() % 2 == 0 ? -1 : INT_MIN;
    }
  }
  return map;
}

/// A colour to look for: any, or one of the map's; perhaps beside it, a full scale away or so far
/// that differences wrap.
inline ColorRGB random_target(const ColorMap& map, std::mt19937& random) {
  ColorRGB target;
  int* const channels[] = {&target.red, &target.green, &target.blue};
  for (int* c : channels) *c = static_cast<int>(random() % (map.max_value + 1));
  if (map.map_size > 0 && random() % 2 == 0) target = map.colors[random() % map.map_size];
  int& one = *channels[random() % 3];
  const unsigned int kind = random() % 8;
  if (kind < 2) one ^= random() % 4;
  if (kind == 2) one = static_cast<int>(random() % 2 == 0 ? random() : 0x7FFFFFFF);
  if (kind == 3) target = {one % 2, 0, 0};
  for (int* c : channels) *c += kind == 4 ? static_cast<int>(map.max_value) : 0;
  return target;
}
