/// Colours as users write them.
#pragma once

#include <zelvan/colour/color_rgb.h>

#include <string>

namespace example {

/// The colour that `text` gives: `RGB 1 0.5 0`, `HSV 240 1 1`, `Name "dark blue"`; see
/// `ColorRGB::SetValue`. Throws `Error`, which names the option, for anything else, with the
/// closest name as a suggestion where a name may be meant.
ColorRGB read_colour(const std::string& option, std::string text);

}  // namespace example
