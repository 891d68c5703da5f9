/// A world on paper: which colours, and what goes over what.
#pragma once

#include "common/countries.h"
#include "common/font.h"
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

/// Draws the countries over the sea, neighbours in different colours, into the picture at `path`
/// (see picture.h). Given a font, writes in it the name of each country that has room for its
/// name. Throws `Error` when the picture can't be written.
void draw_world(const World& world, const std::vector<DrawnCountry>& countries,
                const ViewSettings& view, const std::string& path,
                const Font* label_font = nullptr);

}  // namespace example
