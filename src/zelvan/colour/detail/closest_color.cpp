#include <zelvan/colour/detail/closest_color.h>

namespace zelvan {
namespace {

/// Returns `a - b`, wrapped to 32 bits on overflow, as a `float`.
float difference(int a, int b) {
  return static_cast<float>(
      static_cast<int>(static_cast<unsigned int>(a) - static_cast<unsigned int>(b)));
}

}  // namespace

Closest find_closest(Plain, const ColorRGB* colors, unsigned int from, unsigned int to,
                     const ColorRGB& target, Closest best) {
  for (unsigned int i = from; i < to; ++i) {
    if (colors[i].red < 0) continue;
    const float dr = difference(colors[i].red, target.red);
    const float dg = difference(colors[i].green, target.green);
    const float db = difference(colors[i].blue, target.blue);
    const float distance = dg * dg + dr * dr + db * db;  // large sums are rounded: keep the order
    if (distance == 0.0f) return {0.0f, i};
    if (distance < best.distance) best = {distance, i};
  }
  return best;
}

}  // namespace zelvan
