/// Pictures of few colours.
#pragma once

#include <zelvan/colour/color_map.h>

#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

namespace example {

/// How well the pens stand for the colours: how many colours lie how far from theirs, by the
/// rounded mean difference of the channels.
struct Reduction {
  unsigned int colours = 0;  ///< that the picture had
  unsigned int exact = 0;
  unsigned int within_3 = 0;  ///< from 1 on; the others go on from there
  unsigned int within_7 = 0;
  unsigned int within_15 = 0;
  unsigned int within_31 = 0;
  unsigned int farther = 0;
};

/// A few of a picture's colours, those that would be missed most, and for every other colour the
/// closest of them.
///
/// Pixels hold three channels in their 24 low bits, in any order; the others play no part.
class Pens {
 public:
  /// Chooses at most `n_pens`. Requires: `n_pens` above 0, at least one pixel.
  Pens(std::span<const std::uint32_t> pixels, int n_pens);

  /// Puts the pens in the place of all colours, opaque, in the picture that they were chosen for
  /// or any other.
  void apply(std::span<std::uint32_t> pixels);

  /// The pens as pixels, the commonest first.
  const std::vector<std::uint32_t>& pixels() const { return pixels_; }

  /// How well they stand for the colours of the picture that they were chosen for.
  const Reduction& reduction() const { return reduction_; }

 private:
  Reduction look_up(const std::vector<std::uint32_t>& colours);

  std::vector<std::uint32_t> pixels_;
  ColorMap map_;
  std::unordered_map<std::uint32_t, std::uint32_t> pen_of_;  ///< for the colours met so far
  Reduction reduction_;
};

}  // namespace example
