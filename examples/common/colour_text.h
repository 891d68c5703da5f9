/// Colours as users write them.
#pragma once

#include <zelvan/colour/color_rgb.h>

#include <string>

namespace example {

/// Returns the colour that `text` describes, with channels from 0 to 255.
///
/// The text is one that `ColorRGB::SetValue` accepts, such as `RGB 1 0.5 0`, `HSV 240 1 1` and
/// `Name "dark blue"`, or `#` and six hexadecimal digits, as on web pages. Throws `Error` for any
/// other; it names the option and says what to write, such as the closest of the names.
ColorRGB read_colour(const std::string& option, std::string text);

}  // namespace example
