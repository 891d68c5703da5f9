#include "common/drawing.h"

#include "common/colouring.h"
#include "common/picture.h"

#include <iterator>

namespace example {

namespace {

constexpr Colour sea = {0.80, 0.88, 0.94};
constexpr Colour border = {0.32, 0.30, 0.32};
constexpr Colour fills[] = {{0.96, 0.87, 0.70}, {0.80, 0.88, 0.68}, {0.95, 0.77, 0.70},
                            {0.85, 0.79, 0.90}, {0.99, 0.94, 0.72}, {0.74, 0.86, 0.80},
                            {0.93, 0.82, 0.84}};
constexpr double border_width = 0.8;  // pixels

}  // namespace

void draw_world(const World& world, const std::vector<DrawnCountry>& countries,
                const ViewSettings& view, const std::string& path) {
  const std::vector<std::size_t> colours = colour_apart(world, std::size(fills));
  Picture picture(path, view.pixels_wide, view.pixels_high, sea);
  for (const DrawnCountry& country : countries) {
    picture.fill(country.outline, fills[colours[country.index]]);
  }
  for (const DrawnCountry& country : countries) {  // over all fills, so that none hides a border
    picture.stroke(country.outline, border, border_width);
  }
  picture.save();
}

}  // namespace example
