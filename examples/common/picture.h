/// A picture under construction, PNG or SVG.
#pragma once

#include <zelvan/colour/color_rgb.h>

#include "common/countries.h"
#include "common/font.h"
#include "common/labels.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include <cairo.h>

namespace example {

/// Draws polygons given in device units (see view.h), in colours on the scale 255. Nothing is
/// written before `save`.
class Picture {
 public:
  /// The ending of `path`, in any case, says what it will be: ".png" or ".svg". Throws `Error`
  /// for any other. Requires: sizes of 1 to 32767 pixels.
  Picture(const std::string& path, int pixels_wide, int pixels_high, ColorRGB background);

  /// Fills the polygons by the even-odd rule.
  void fill(const DevicePolygons& polygons, ColorRGB colour);

  /// Draws the visible edges; `width` is in pixels, and so are the lengths of `dashes`: dash, gap
  /// and so on. None for a solid line.
  void stroke(const DevicePolygons& polygons, ColorRGB colour, double width,
              std::span<const double> dashes = {});

  /// The pixels of a PNG so far, to be read and changed, row by row from the top: red, green and
  /// blue in the bits 16-23, 8-15 and 0-7. None of an SVG. Valid until the next operation.
  std::span<std::uint32_t> pixels();

  bool is_png() const { return is_png_; }

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
