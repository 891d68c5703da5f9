/// How a world is drawn: its colours, and what lies on top of what.
#pragma once

#include <zelvan/colour/color_map.h>

#include "common/countries.h"
#include "common/font.h"
#include "common/pens.h"
#include "common/picture.h"
#include "common/view.h"

#include <cstddef>
#include <string>
#include <vector>

namespace example {

/// A country of a world, in device units.
struct DrawnCountry {
  std::size_t index;  ///< in the world
  DevicePolygons outline;
};

/// Colours, with channels from 0 to 255, and lines.
struct Style {
  ColorRGB sea;
  ColorRGB border;
  ColorMap fills;  ///< a palette for the countries; at least one colour
  int n_pens;      ///< to how many colours the picture is reduced; 0: not at all
  std::vector<double> border_dashes = {};  ///< dash, gap and so on, in pixels; empty: solid
};

/// Returns seven pale colours for countries and a pale blue sea.
Style default_style();

/// Begins a picture of the style's sea in the size of the view; see `Picture`.
Picture begin_picture(const std::string& path, const ViewSettings& view, const Style& style);

/// Draws the countries into the picture. `colour_apart` chooses their colours.
///
/// With a font, writes the name of each country that has room for it. Returns how the picture's
/// colours were reduced, if they were. Requires: a PNG if the style has pens.
Reduction draw_world(World& world, const std::vector<DrawnCountry>& countries,
                     const ViewSettings& view, const Style& style, Picture& picture,
                     const Font* label_font = nullptr);

}  // namespace example
