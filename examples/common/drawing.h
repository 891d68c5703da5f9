/// A world on paper: which colours, and what goes over what.
#pragma once

#include <zelvan/colour/color_map.h>

#include "common/countries.h"
#include "common/font.h"
#include "common/pens.h"
#include "common/view.h"

#include <cstddef>
#include <string>
#include <vector>

namespace example {

/// A country of a world as it comes out on the device.
struct DrawnCountry {
  std::size_t index;  ///< in the world
  DevicePolygons outline;
};

/// How a world is drawn; colours are on the scale 255.
struct Style {
  ColorRGB sea;
  ColorRGB border;
  ColorMap fills;  ///< a palette for the countries; at least one
  int n_pens;      ///< to which the picture is reduced; 0 leaves it as it is
  std::vector<double> border_dashes = {};  ///< dash, gap and so on in pixels; empty for solid
};

/// Pale countries in seven colours, so that neighbours differ, in a pale blue sea.
Style default_style();

/// Draws the countries over the sea, neighbours in different colours as far as these suffice,
/// into the picture at `path` (see picture.h). Given a font, writes in it the name of each country
/// that has room for its name. Tells what became of the colours if they were reduced. Throws
/// `Error` when the picture can't be written, or reduced since it is an SVG.
Reduction draw_world(World& world, const std::vector<DrawnCountry>& countries,
                     const ViewSettings& view, const Style& style, const std::string& path,
                     const Font* label_font = nullptr);

}  // namespace example
