// The eight orientations: a letter before and after each, and the mirror and turn of its matrix.

#include "gallery/pages.h"

namespace gallery {

namespace {

constexpr const char* names[] = {"None",     "Rot90",    "Rot180",        "Rot270",
                                 "ReflectX", "ReflectY", "Rot90ReflectY", "Rot90ReflectX"};

// An F, which every turn and every mirror changes.
const Points letter = {{1.0, 1.0}, {1.9, 1.0}, {1.9, 2.9}, {3.2, 2.9}, {3.2, 3.7},
                       {1.9, 3.7}, {1.9, 4.8}, {3.8, 4.8}, {3.8, 5.6}, {1.0, 5.6}};

void draw_orientation(Canvas& canvas, double left, double top, double size, int code) {
  Mtx2D m;
  m.Orient(static_cast<Mtx2DOrient>(code));
  Points before = letter, after(letter.size());
  m.RealXfmPts(static_cast<int>(before.size()), before.data(), after.data());
  unsigned short is_mirrored;
  double degrees;
  m.GetXMirrorAndRotation(&is_mirrored, &degrees);

  std::string caption = is_mirrored ? "mirrored in x" : "as it is";
  if (degrees != 0.0) {
    const std::string turn = "turned " + std::to_string(static_cast<int>(degrees)) + "\u00b0";
    caption = is_mirrored ? caption + ", then " + turn : turn;
  }
  Panel panel(canvas, left, top, size, size + 20.0, {0.0, 0.0}, 15.0,
              std::to_string(code) + "  " + names[code], caption);
  panel.axes();
  panel.fill({before}, hairline);
  panel.fill({after}, is_mirrored ? orange : blue);
  panel.dot({0.0, 0.0}, 2.5, ink);
}

void draw(Canvas& canvas) {
  const Grid grid = {4, 205.0, 225.0, 12.0, 12.0};
  for (int code = 0; code < 8; ++code) {
    draw_orientation(canvas, grid.left(code), grid.top(code), grid.cell_width, code);
  }
}

}  // namespace

const Page orientations_page = {"orientations", 880, 486, draw};

}  // namespace gallery
