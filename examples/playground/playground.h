/// Flat functions between the library and a web page: one world, one view of it, and the layers
/// that are drawn.
///
/// JavaScript calls them by name and reads arrays where they lie in memory, so no call is made for
/// a single vertex. An array stays valid until the next call of the function that returned it.
///
/// The map is in Mercator's projection, so shapes are true in every direction and at every scale: x
/// is the longitude in degrees, y the latitude stretched accordingly. The map repeats every 360
/// degrees. Device coordinates are pixels, y down. One thread only.
#pragma once

#include <zelvan/transforms/records.h>

#include <cstdint>

#define PAGE extern "C" __attribute__((used, visibility("default")))

/// The vertices of one country in a layer.
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
  int came_in;  ///< vertices read, again for each further copy of the map in reach
  int kept;     ///< vertices after clipping, including those on the frame
  int drawn;    ///< vertices after mapping; those that fall together count once
  int rings;
  double clip_milliseconds;
  double map_milliseconds;
};

// ---- the world

/// Returns a buffer of `bytes` bytes for a text, an array or a picture. It stays valid until this
/// function is called again.
PAGE void* room_for(int bytes);

/// Reads the world and returns the number of countries. Call it first.
PAGE int open_world();

/// Returns the name of a country in UTF-8, with a zero at its end.
PAGE const char* country_name(int country);

/// Returns the number of a country's colour, 0 to 6, chosen by `colour_apart` (colouring.h).
PAGE int country_colour(int country);

/// Returns the y on the map of a latitude in degrees.
PAGE double map_y(double latitude);

/// Returns the latitude in degrees of a y on the map.
PAGE double latitude_at(double map_y);

// ---- the view

/// Shows the place (x, y) of the map in the middle of `width` times `height` pixels, at
/// `pixels_per_degree`, turned counter-clockwise by `degrees`. Outlines are rounded to
/// 1 / `units_per_pixel` of a pixel.
PAGE void set_view(double x, double y, double pixels_per_degree, double degrees, double width,
                   double height, double units_per_pixel);

/// Returns the place on the map, x and y, that a pixel shows.
PAGE const double* place_at(double pixel_x, double pixel_y);

/// Returns the pixel, x and y, that shows a place on the map.
PAGE const double* pixel_of(double x, double y);

// ---- what is drawn

/// Draws everything that the view shows. With `has_borders_once`, only one of two neighbours has a
/// visible edge where they meet.
PAGE const LayerReport* draw_view(int has_borders_once);

/// Draws what lies in a frame on the device, clipped by `ClipPolygonSet` if `cuts_into_rings`, else
/// by `ClipPolygonSetToView`. The frame is turned clockwise. Without `has_borders_once`, every edge
/// is visible before clipping, even where the map is cut along the antimeridian and the poles.
PAGE const LayerReport* draw_frame(double centre_x, double centre_y, double width, double height,
                                   double degrees, int cuts_into_rings, int has_borders_once);

/// Draws one country alone.
PAGE const LayerReport* draw_country(int country);

// ---- picking

/// Returns the country that a pixel shows, or -1 at sea.
PAGE int pick(double pixel_x, double pixel_y);

// ---- line types

/// Returns the dashes of a built-in line type in pixels: first the number of lengths, then dash,
/// gap and so on. The number is 0 for a solid line, and -1 if there is no such type.
PAGE const double* line_type(int index);

// ---- colours

/// Reads a colour such as `HSV 210 0.3 0.9` from the text in the buffer. Returns it as 0xRRGGBB, or
/// -1 if the text is no colour.
PAGE int colour_of_text();

/// Chooses pens for the picture in the buffer, four bytes a pixel. Returns their number.
PAGE int choose_pens(int n_pens);

/// Returns the chosen pens as pixels. They stay valid until the next call of `choose_pens`.
PAGE const std::uint32_t* chosen_pens();

/// Returns the number of colours in the picture for which the pens were chosen.
PAGE int colours_before();

/// Draws the picture in the buffer with the pens chosen last.
PAGE void apply_pens();

// ---- names

/// Places the names of countries inside an upright frame on the device, in a font of `largest`
/// pixels or down to 58 % of that. Returns how many names it has placed. The buffer holds, as a
/// double for each country, the width of its name in a font of one pixel.
PAGE int place_names(double left, double top, double width, double height, double largest);

/// Returns where the placed names are in the present view: for each its country, the x and y of its
/// middle, and the size of its font in pixels.
PAGE const double* placed_names_now();
