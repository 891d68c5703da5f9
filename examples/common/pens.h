/// Reduces a picture to few colours.
#pragma once

#include <zelvan/colour/color_map.h>

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace example {

/// Counts of colours by their distance from their pens: the mean difference of the three channels,
/// rounded.
struct Reduction {
  unsigned int colours = 0;  ///< of the picture before
  unsigned int exact = 0;
  unsigned int within_3 = 0;  ///< 1 to 3; the next one starts at 4, and so on
  unsigned int within_7 = 0;
  unsigned int within_15 = 0;
  unsigned int within_31 = 0;
  unsigned int farther = 0;
};

/// A few colours chosen from a picture, and for every other colour the closest of them.
///
/// A pixel holds three channels in its low 24 bits, in any order; the upper bits are ignored.
class Pens {
 public:
  /// Chooses at most `n_pens`. Requires: `n_pens` above 0, at least one pixel.
  Pens(std::span<const std::uint32_t> pixels, int n_pens);

  /// Replaces each pixel by the closest pen, with the upper bits set (opaque). Works for any
  /// picture.
  void apply(std::span<std::uint32_t> pixels);

  /// Returns the pens as pixels. The first is the commonest colour.
  const std::vector<std::uint32_t>& pixels() const { return pixels_; }

  /// Returns the counts for the picture that the pens were chosen for.
  const Reduction& reduction() const { return reduction_; }

 private:
  Reduction look_up(const std::vector<std::uint32_t>& colours);

  std::vector<std::uint32_t> pixels_;
  ColorMap map_;
  std::unordered_map<std::uint32_t, std::uint32_t> pen_of_;  ///< for each colour so far
  Reduction reduction_;
};

}  // namespace example
