/// Speeds up many searches for the closest entry of one map.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/detail/closest_color.h>

#include <memory>

namespace zelvan {

/// Eight entries of a map that follow each other when sorted by green, stored channel by channel.
struct ColorBlock {
  static constexpr unsigned int size = 8;
  float red[size], green[size], blue[size];
  unsigned int index[size];  ///< in the map
};

/// A colour in `float`. With channels of 0 to 2047, squared distances are exact.
struct FloatColor {
  float red, green, blue;
};

/// Searches blocks from `start` outwards, alternating between higher and lower greens. Calls
/// `look(block, best)` for each, which updates `best`; returns `best`.
///
/// Each direction ends where green alone is farther away than the best entry so far. So a close
/// entry found in one direction ends the other direction early. Blocks at exactly the best distance
/// are searched too, since they may hold an equally close entry with a lower index.
template <class Look>
[[gnu::always_inline]] inline Closest walk_blocks(const ColorBlock* start, const FloatColor& target,
                                                  Closest best, const Look& look) {
  const ColorBlock* above = start;
  const ColorBlock* below = start - 1;
  look(*above++, best);
  for (bool goes_up = true, goes_down = true; goes_up || goes_down;) {
    const float to_above = above->green[0] - target.green;
    goes_up = to_above * to_above <= best.distance;
    if (goes_up) look(*above++, best);
    const float to_below = target.green - below->green[ColorBlock::size - 1];
    goes_down = to_below * to_below <= best.distance;
    if (goes_down) look(*below--, best);
  }
  return best;
}

/// Returns the entry closest to `target` in the blocks around `start`, or `best` if none is closer.
Closest closest_around(Plain, const ColorBlock* start, const FloatColor& target, Closest best);
Closest closest_around(Avx2, const ColorBlock* start, const FloatColor& target, Closest best);

/// The entries of a map sorted by green, so that a search can end early.
///
/// A search ends where green alone is farther away than the best entry so far. It returns what a
/// search through the whole map returns, ties included.
class ClosestIndex {
 public:
  /// Sorts a copy of the entries for the given number of searches. Each search goes through the
  /// whole map instead if sorting would cost more than it saves, if the heap refuses, or if a large
  /// scale or channel could make a distance inexact. Requires: the map outlives this object and
  /// does not change.
  ClosestIndex(const ColorMap& map, unsigned int searches);

  /// Returns the entry closest to `target`, or `best` if none is closer. Skips entry 0 and unset
  /// ones.
  Closest find(const ColorRGB& target, Closest best) const;

 private:
  const ColorMap& map_;
  std::unique_ptr<unsigned int[]> first_;  ///< by green: place of the first entry not below it
  std::unique_ptr<ColorBlock[]> blocks_;   ///< null if each search must go through the map
};

}  // namespace zelvan
