/// Many searches for the closest entry of one map.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/detail/closest_color.h>

#include <memory>

namespace zelvan {

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
  struct Entry {
    short red, green, blue;
    unsigned int index;
  };

  const ColorMap& map_;
  std::unique_ptr<unsigned int[]> first_;  ///< by green: where in `entries_` it and larger ones are
  std::unique_ptr<Entry[]> entries_;       ///< with one more at each end; null if not usable
};

}  // namespace zelvan
