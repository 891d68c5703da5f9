/// Pictures of few colours.
#pragma once

#include "common/picture.h"

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

/// Reduces a PNG picture to `n_pens` of its colours, those that would be missed most: every other
/// becomes the closest of them. Requires: `n_pens` above 0.
Reduction reduce_to_pens(Picture& picture, int n_pens);

}  // namespace example
