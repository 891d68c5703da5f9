#include "common/drawing.h"

#include "common/colour_text.h"
#include "common/colouring.h"
#include "common/error.h"
#include "common/labels.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace example {

namespace {

constexpr double border_width = 0.8;         // pixels
constexpr double dashed_border_width = 1.5;  // thinner dashes look like a solid line

// Hides all but the first copy of each edge, in either direction. Neighbours both have their common
// border in their outlines; dashes drawn twice would fill each other's gaps.
class BorderFilter {
 public:
  DevicePolygons first_copies(DevicePolygons outline) {
    for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
      for (std::size_t i = 0; i < count; ++i) {
        const int_pt_t a = outline.points[first + i];
        const int_pt_t b = outline.points[first + (i + 1) % count];
        const auto [low, high] = std::minmax({Corner(a.x, a.y), Corner(b.x, b.y)});
        int& flag = outline.edge_flags[first + i];
        const bool is_visible = flag % 2 == 1;
        if (is_visible && !seen_.insert({low, high}).second) --flag;
      }
    });
    return outline;
  }

 private:
  using Corner = std::pair<int, int>;
  std::set<std::pair<Corner, Corner>> seen_;
};

void write_names(const World& world, const std::vector<DrawnCountry>& countries,
                 const ViewSettings& view, const Font& font, Picture& picture) {
  const double largest = std::max(view.pixels_high / 50.0, 14.0) * units_per_pixel;
  const double picture_width = double(view.pixels_wide) * units_per_pixel;
  for (const DrawnCountry& country : countries) {
    const std::string& name = world.name(country.index);
    const auto label = place_label(country.outline, font.box_of(name), picture_width, largest);
    if (label) picture.write(name, *label, font);
  }
}

}  // namespace

Style default_style() {
  const char* const fills[] = {"RGB 0.96 0.87 0.70", "RGB 0.80 0.88 0.68", "RGB 0.95 0.77 0.70",
                               "RGB 0.85 0.79 0.90", "RGB 0.99 0.94 0.72", "RGB 0.74 0.86 0.80",
                               "RGB 0.93 0.82 0.84"};
  Style style = {read_colour("sea", "RGB 0.80 0.88 0.94"),
                 read_colour("border", "RGB 0.32 0.30 0.32"), ColorMap(std::size(fills), 255), 0};
  for (std::size_t i = 0; i < std::size(fills); ++i) {
    style.fills.colors[i] = read_colour("fill", fills[i]);
  }
  return style;
}

Picture begin_picture(const std::string& path, const ViewSettings& view, const Style& style) {
  return Picture(path, view.pixels_wide, view.pixels_high, style.sea);
}

Reduction draw_world(World& world, const std::vector<DrawnCountry>& countries,
                     const ViewSettings& view, const Style& style, Picture& picture,
                     const Font* label_font) {
  const std::vector<std::size_t> colours = colour_apart(world, style.fills.map_size);
  for (const DrawnCountry& country : countries) {
    picture.fill(country.outline, style.fills.colors[colours[country.index]]);
  }
  const bool is_dashed = !style.border_dashes.empty();
  const double width = is_dashed ? dashed_border_width : border_width;
  BorderFilter borders;
  for (const DrawnCountry& country : countries) {  // after all fills, so that none covers a border
    picture.stroke(is_dashed ? borders.first_copies(country.outline) : country.outline,
                   style.border, width, style.border_dashes);
  }
  if (label_font != nullptr) write_names(world, countries, view, *label_font, picture);
  Reduction reduction;
  if (style.n_pens > 0) {
    Pens pens(picture.pixels(), style.n_pens);
    pens.apply(picture.pixels());
    reduction = pens.reduction();
  }
  return reduction;
}

}  // namespace example
