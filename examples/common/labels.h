/// Where the names of countries go.
#pragma once

#include "common/countries.h"

#include <optional>

namespace example {

/// The height of capital letters in a font of size 1.
inline constexpr double capital_height = 0.72;

/// The box of a text in a font of size 1. The default heights suit any Latin text.
struct TextBox {
  double width;
  double above;  ///< from the middle of the capitals up to the highest letter
  double below;  ///< from there down to the lowest one

  TextBox(double text_width, double height_above = 0.4, double height_below = 0.6)
      : width(text_width), above(height_above), below(height_below) {}
};

/// A text in device units: the middle of its capitals, and the size of its font.
struct Label {
  double x;
  double y;
  double size;
};

/// Finds the place in an outline where a text can be written largest.
///
/// The box of the text lies wholly inside the outline, by the even-odd rule, and within the
/// picture's width. The size is one of a few from `largest` down to 58 % of it. Of the places for
/// a size, one with much room near the middle is taken. Returns nothing if no size fits.
std::optional<Label> place_label(const DevicePolygons& outline, const TextBox& text,
                                 double picture_width, double largest);

}  // namespace example
