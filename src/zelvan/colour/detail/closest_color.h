/// The search for the entry closest to a colour.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_rgb.h>

namespace zelvan {

/// The best entry so far.
struct Closest {
  float distance;      ///< sum of the squared differences of its channels
  unsigned int index;  ///< the entry
};

/// Takes the entry for `best` if it is closer, or as close and before it in the map.
inline void take_closer(float distance, unsigned int index, Closest& best) {
  const bool is_ahead = distance == best.distance && index < best.index;
  if (distance < best.distance || is_ahead) best = {distance, index};
}

/// Looks through the entries from `from` up to but not including `to`, one by one. An entry at
/// distance 0 ends the search; any other takes the place of `best` if it is closer.
Closest closest_one_by_one(const ColorRGB* colors, unsigned int from, unsigned int to,
                           const ColorRGB& target, Closest best);

/// Returns what `closest_one_by_one` does, and looks at four entries at a time where the processor
/// can.
Closest closest_by_fours(const ColorRGB* colors, unsigned int from, unsigned int to,
                         const ColorRGB& target, Closest best);

namespace avx2 {

/// Returns what `closest_one_by_one` does, eight entries at a time. Requires: `has_avx2`, and 8
/// entries or more.
Closest closest_by_eights(const ColorRGB* colors, unsigned int from, unsigned int to,
                          const ColorRGB& target, Closest best);

}  // namespace avx2

/// Returns what `closest_one_by_one` does, by the widest form that this processor has.
Closest closest_in_vectors(const ColorRGB* colors, unsigned int from, unsigned int to,
                           const ColorRGB& target, Closest best);

/// Returns what a search has to beat when it begins: one more than entries of the map can be apart.
Closest closest_to_beat(const ColorMap& map);

/// Returns the answer of `ColorMap::GetClosestColor` once the entry is found: its index, and in
/// `*distance` the distance that is reported. Stores both as the last answer, which it never reads.
int closest_answer(const ColorMap& map, const ColorRGB& target, const Closest& found,
                   int* distance);

}  // namespace zelvan
