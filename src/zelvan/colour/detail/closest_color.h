/// The search for the entry closest to a colour.
#pragma once

#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_rgb.h>
#include <zelvan/detail/vector_forms.h>

namespace zelvan {

/// The best entry so far. The alignment lets a function return each member in a register of its
/// own; to pack both into one would take longer than a search step.
struct Closest {
  float distance;                 ///< sum of the squared channel differences to the target
  alignas(8) unsigned int index;  ///< the entry
};

/// Replaces `best` by the entry if that is closer, or as close and earlier in the map.
inline void take_closer(float distance, unsigned int index, Closest& best) {
  const bool is_earlier_tie = distance == best.distance && index < best.index;
  if (distance < best.distance || is_earlier_tie) best = {distance, index};
}

/// Returns the entry closest to `target`, from `from` up to but not including `to`, or `best` if
/// none is closer. The first entry at distance 0 ends the search. Skips unset entries.
Closest find_closest(Plain, const ColorRGB* colors, unsigned int from, unsigned int to,
                     const ColorRGB& target, Closest best);
Closest find_closest(Avx2, const ColorRGB* colors, unsigned int from, unsigned int to,
                     const ColorRGB& target, Closest best);

/// Returns the entry of the map that is closest to `target`, or `best` if none is closer. Skips
/// entry 0 and unset ones.
Closest find_closest(const ColorMap& map, const ColorRGB& target, Closest best);

/// Returns the `best` with which a search begins: entry 0, with `distance` set to one more than the
/// squared distance from black to white on the map's scale. Only closer entries replace it.
Closest closest_to_beat(const ColorMap& map);

/// Returns the result of `ColorMap::GetClosestColor` for the entry found: its index, and in
/// `*distance` the reported distance. Stores both in the cache of `GetClosestColor`, but never
/// reads the cache.
int closest_answer(const ColorMap& map, const ColorRGB& target, const Closest& found,
                   int* distance);

}  // namespace zelvan
