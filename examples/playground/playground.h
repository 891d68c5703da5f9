/// The glue between the library and a page: flat functions over one world, one view of it, and
/// three layers of what is drawn.
///
/// JavaScript calls them by name and reads arrays where they lie in memory: no call is made for a
/// vertex. Each array stays until the next call of the function that gave it, and points and pixels
/// come as x and y.
///
/// The map is in Mercator's projection, so that shapes are true wherever it is turned and however
/// far one looks into it: x is the longitude in degrees, y the latitude stretched likewise. It
/// repeats every 360 degrees. Device coordinates are pixels, y down.
#pragma once

#include <zelvan/transforms/records.h>

#include <cstdint>

#define PAGE extern "C" __attribute__((used, visibility("default")))

/// The vertices of one country.
struct Piece {
  int country;
  int first;
  int count;
};

/// What a layer shows, as JavaScript reads it: words of 32 bits, then doubles.
struct LayerReport {
  const int_pt_t* points;  ///< in units of the grid
  const int* edge_flags;
  const Piece* pieces;
  int n_pieces;
  int came_in;  ///< vertices
  int kept;     ///< vertices after clipping, those on the frame among them
  int drawn;    ///< vertices after mapping, fallen together where they did
  int rings;
  double clip_milliseconds;
  double map_milliseconds;
};

// ---- the world

/// Room for what is handed over: a text, an array, a picture. It stays until the next call.
PAGE void* room_for(int bytes);

/// Reads the world and gives the number of its countries. Call it first.
PAGE int open_world();

/// UTF-8, with a zero at its end.
PAGE const char* country_name(int country);

/// Which of seven colours a country has: another than its neighbours as far as they suffice.
PAGE int country_colour(int country);

/// The y on the map of a latitude in degrees.
PAGE double map_y(double latitude);

// ---- the view

/// Shows the place (x, y) of the map in the middle of `width` times `height` pixels, so many
/// pixels to a degree, turned counter-clockwise by so many degrees. Outlines will be rounded to
/// `units_per_pixel` parts of a pixel.
PAGE void set_view(double x, double y, double pixels_per_degree, double degrees, double width,
                   double height, double units_per_pixel);

/// The place on the map, x and y, that a pixel shows.
PAGE const double* place_at(double pixel_x, double pixel_y);

/// The pixel, x and y, at which a place on the map is shown.
PAGE const double* pixel_of(double x, double y);

// ---- what is drawn

/// All that the view shows. With `has_borders_once`, where neighbours meet only one of them has a
/// visible edge.
PAGE const LayerReport* draw_view(int has_borders_once);

/// What lies in a frame on the device, clipped by `ClipPolygonSetToView`, or else by
/// `ClipPolygonSet`. The frame is turned clockwise.
PAGE const LayerReport* draw_frame(double centre_x, double centre_y, double width, double height,
                                   double degrees, int cuts_into_rings, int has_borders_once);

/// One country alone.
PAGE const LayerReport* draw_country(int country);

// ---- picking

/// The country that a pixel shows, or -1.
PAGE int pick(double pixel_x, double pixel_y);

// ---- line types

/// The dashes of a built-in line type in pixels: first how many lengths, then dash, gap and so on.
/// None for a solid line, -1 if there is no such type.
PAGE const double* line_type(int index);

// ---- colours

/// The colour of the text handed over, such as `HSV 210 0.3 0.9`, as 0xRRGGBB; -1 if it is none.
PAGE int colour_of_text();

/// Chooses pens for the picture handed over, four bytes a pixel; gives their number.
PAGE int choose_pens(int n_pens);

/// The pens chosen, as pixels.
PAGE const std::uint32_t* chosen_pens();

/// How many colours the picture had for which they were chosen.
PAGE int colours_before();

/// Draws the picture handed over with the pens chosen last.
PAGE void apply_pens();

// ---- names

/// Places the names that have room in what the view shows, `largest` pixels high or somewhat
/// less. Handed over is the width of each country's name in letters of one pixel. Gives the number
/// of names placed.
PAGE int place_names(double largest);

/// Where the names are in the present view: for each its country, x and y of its middle, and the
/// size of its letters.
PAGE const double* placed_names_now();
