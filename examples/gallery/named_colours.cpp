// The 658 named colours: single names, families of four shades, greys in percent, names with a
// blank.

#include <zelvan/colour/detail/named_color_table.h>  // private, and has all names in order

#include "gallery/pages.h"

#include <span>

namespace gallery {

namespace {

using zelvan::NamedColor;

constexpr std::span<const NamedColor> all_rows = zelvan::named_colors;
constexpr std::size_t first_family = 136, first_grey = 454;
constexpr double margin = 24.0, text_size = 8.0;

Colour colour_of(const NamedColor& row) {
  return {row.red / 255.0, row.green / 255.0, row.blue / 255.0};
}

bool has_blank(const NamedColor& row) {
  return std::string(row.name).find(' ') != std::string::npos;
}

void swatch(Canvas& canvas, double left, double top, double width, double height,
            const NamedColor& row) {
  const Points box = {
      {left, top}, {left + width, top}, {left + width, top + height}, {left, top + height}};
  canvas.fill({box}, colour_of(row));
  canvas.stroke(box, {hairline, 0.5}, true);
}

void heading(Canvas& canvas, double y, const std::string& text) {
  canvas.text({margin, y}, text, ink, 12.0, Align::left, true);
}

// Draws swatches with their names in columns, each from top to bottom.
void draw_list(Canvas& canvas, double top, std::span<const NamedColor* const> rows, int columns) {
  const int per_column = (static_cast<int>(rows.size()) + columns - 1) / columns;
  const double column_width = (canvas.width() - 2.0 * margin) / columns;
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const double left = margin + i / per_column * column_width;
    const double y = top + i % per_column * 13.0;
    swatch(canvas, left, y, 26.0, 10.5, *rows[i]);
    canvas.text({left + 31.0, y + 8.5}, rows[i]->name, ink, text_size);
  }
}

// Draws the four shades of each family side by side, followed by its name without the number.
void draw_families(Canvas& canvas, double top, std::span<const NamedColor* const> rows) {
  const int families = static_cast<int>(rows.size()) / 4, columns = 6;
  const int per_column = (families + columns - 1) / columns;
  const double column_width = (canvas.width() - 2.0 * margin) / columns;
  for (int family = 0; family < families; ++family) {
    const double left = margin + family / per_column * column_width;
    const double y = top + family % per_column * 13.0;
    for (int shade = 0; shade < 4; ++shade) {
      swatch(canvas, left + shade * 17.0, y, 17.0, 10.5, *rows[4 * family + shade]);
    }
    std::string name = rows[4 * family]->name;
    name.pop_back();
    canvas.text({left + 73.0, y + 8.5}, name + " 1\u20134", ink, text_size);
  }
}

// Draws the greys. The rows are gray0, grey0, gray1 and so on: each pair is one shade.
void draw_greys(Canvas& canvas, double top, std::span<const NamedColor* const> rows) {
  const int shades = static_cast<int>(rows.size()) / 2;
  const double width = (canvas.width() - 2.0 * margin) / shades;
  for (int n = 0; n < shades; ++n) {
    swatch(canvas, margin + n * width, top, width, 22.0, *rows[2 * n]);
    if (n % 10 != 0) continue;
    canvas.text({margin + (n + 0.5) * width, top + 33.0}, rows[2 * n]->name, ink, text_size,
                Align::centre);
  }
}

void draw(Canvas& canvas) {
  std::vector<const NamedColor*> single, families, greys, blank;
  for (std::size_t i = 0; i < all_rows.size(); ++i) {
    const NamedColor& row = all_rows[i];
    auto& section = i < first_family ? single
                    : has_blank(row) ? blank
                    : i < first_grey ? families
                                     : greys;
    section.push_back(&row);
  }
  heading(canvas, 28.0, "136 single names");
  draw_list(canvas, 38.0, single, 8);
  heading(canvas, 286.0, "78 families of four shades: snow1, snow2, snow3, snow4 and so on");
  draw_families(canvas, 296.0, families);
  heading(canvas, 492.0, "101 greys in percent, gray or grey");
  draw_greys(canvas, 502.0, greys);
  heading(canvas, 564.0, "8 names with a blank");
  draw_list(canvas, 574.0, blank, 8);
}

}  // namespace

const Page named_colours_page = {"named_colours", 1040, 604, draw};

}  // namespace gallery
