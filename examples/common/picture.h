/// A picture under construction, PNG or SVG.
#pragma once

#include "common/countries.h"
#include "common/labels.h"

#include <memory>
#include <string>

#include <cairo.h>

namespace example {

/// A colour of three channels from 0 to 1.
struct Colour {
  double red;
  double green;
  double blue;
};

/// Draws polygons given in device units (see view.h). Nothing is written before `save`.
class Picture {
 public:
  /// The ending of `path`, in any case, says what it will be: ".png" or ".svg". Throws `Error`
  /// for any other. Requires: sizes of 1 to 32767 pixels.
  Picture(const std::string& path, int pixels_wide, int pixels_high, Colour background);

  /// Fills the polygons by the even-odd rule.
  void fill(const DevicePolygons& polygons, Colour colour);

  /// Draws the visible edges; `width` is in pixels.
  void stroke(const DevicePolygons& polygons, Colour colour, double width);

  /// Writes a text in dark letters with a pale rim.
  void write(const std::string& text, const Label& label, const Font& font);

  /// Puts the picture into its file, whole or not at all. Throws `Error` when that fails.
  /// Nothing can be drawn afterwards.
  void save();

 private:
  struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };

  std::string path_;
  bool is_png_;
  std::string bytes_;  ///< the file, as far as Cairo has written it; outlives the surface
  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> context_;
};

}  // namespace example
