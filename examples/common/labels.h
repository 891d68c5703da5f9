/// Where the names of countries go.
#pragma once

#include "common/countries.h"

#include <optional>
#include <string>

namespace example {

/// A text in device units: the middle of its line, and the size of its letters.
struct Label {
  double x;
  double y;
  double size;
};

/// The place in an outline where a text can stand largest: on a level line that lies inside
/// along all of the text and all of its height, within a picture of that width. Of several such
/// lines a long one near the middle is taken. The size is one of a few from `largest` down to
/// somewhat more than half of it; nothing if none of them fits.
std::optional<Label> place_label(const DevicePolygons& outline, double text_width_per_size,
                                 double picture_width, double largest);

}  // namespace example
