#include "common/drawing.h"

#include "common/colouring.h"
#include "common/labels.h"
#include "common/picture.h"

#include <algorithm>
#include <iterator>

namespace example {

namespace {

constexpr Colour sea = {0.80, 0.88, 0.94};
constexpr Colour border = {0.32, 0.30, 0.32};
constexpr Colour fills[] = {{0.96, 0.87, 0.70}, {0.80, 0.88, 0.68}, {0.95, 0.77, 0.70},
                            {0.85, 0.79, 0.90}, {0.99, 0.94, 0.72}, {0.74, 0.86, 0.80},
                            {0.93, 0.82, 0.84}};
constexpr double border_width = 0.8;  // pixels

void write_names(const World& world, const std::vector<DrawnCountry>& countries,
                 const ViewSettings& view, const Font& font, Picture& picture) {
  const double largest = std::max(view.pixels_high / 50.0, 14.0) * units_per_pixel;
  const double picture_width = double(view.pixels_wide) * units_per_pixel;
  for (const DrawnCountry& country : countries) {
    const std::string& name = world[country.index].name;
    const auto label = place_label(country.outline, font.width_of(name), picture_width, largest);
    if (label) picture.write(name, *label, font);
  }
}

}  // namespace

void draw_world(const World& world, const std::vector<DrawnCountry>& countries,
                const ViewSettings& view, const std::string& path, const Font* label_font) {
  const std::vector<std::size_t> colours = colour_apart(world, std::size(fills));
  Picture picture(path, view.pixels_wide, view.pixels_high, sea);
  for (const DrawnCountry& country : countries) {
    picture.fill(country.outline, fills[colours[country.index]]);
  }
  for (const DrawnCountry& country : countries) {  // over all fills, so that none hides a border
    picture.stroke(country.outline, border, border_width);
  }
  if (label_font != nullptr) write_names(world, countries, view, *label_font, picture);
  picture.save();
}

}  // namespace example
