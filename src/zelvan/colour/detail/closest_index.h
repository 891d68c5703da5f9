/// Many searches for the closest entry of one map.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/detail/closest_color.h>

#include <memory>

namespace zelvan {

/// Neighbours among the entries of a map when they are sorted by green, channel by channel.
struct ColorBlock {
  static constexpr unsigned int size = 8;
  float red[size], green[size], blue[size];
  unsigned int index[size];  ///< in the map
};

/// The same colour in `float`, which holds every distance between exact channels exactly.
struct FloatColor {
  float red, green, blue;
};

/// Goes from the block at `start` to higher and to lower greens by turns, so that what one side
/// finds soon ends the search on the other: each side ends where green alone is farther away than
/// the best entry so far. Blocks that are just as far are looked at: with a lower index an entry
/// there is the answer. Calls `look(block, best)`.
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

/// The entry closest to `target` among the blocks around `start`, or `best` if none is closer.
Closest closest_around(Plain, const ColorBlock* start, const FloatColor& target, Closest best);
Closest closest_around(Avx2, const ColorBlock* start, const FloatColor& target, Closest best);

/// The entries of a map sorted by their green, so that a search can end where green alone is
/// farther away than the best entry so far. Each search gives what one through the whole map
/// gives, ties included.
class ClosestIndex {
 public:
  /// For so many searches. Each goes through the whole map where sorting it doesn't pay, where the
  /// heap refuses, and where the scale or a channel is so large that a distance might be rounded.
  /// The map stays as it is for as long as this lives.
  ClosestIndex(const ColorMap& map, unsigned int searches);

  /// Entry 0 and unset ones are left out; `best` is what there is to beat.
  Closest find(const ColorRGB& target, Closest best) const;

 private:
  const ColorMap& map_;
  std::unique_ptr<unsigned int[]> first_;  ///< by green: the first place of it and larger ones
  std::unique_ptr<ColorBlock[]> blocks_;   ///< with one more at each end; null if not usable
};

}  // namespace zelvan
