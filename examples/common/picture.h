/// A picture while it is drawn, to become a PNG or an SVG.
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

/// Throws `Error` unless a picture can be made at `path`, before any work is done for it.
///
/// The name must end in .png or .svg, in any case, and its folder must exist and be writable.
void check_picture_path(const std::string& path);

/// True if a picture at `path` would be an SVG.
bool is_svg(const std::string& path);

/// Draws polygons in device units (see view.h), in colours with channels from 0 to 255. No file is
/// written.
class Picture {
 public:
  /// Begins a picture. `path` is where it will be stored; its ending, in any case, selects the
  /// type. Throws `Error` unless that is .png or .svg. Requires: sizes of 1 to 32767 pixels.
  Picture(const std::string& path, int pixels_wide, int pixels_high, ColorRGB background);

  Picture(const Picture&) = delete;  // Cairo has the address of `bytes_`
  Picture& operator=(const Picture&) = delete;

  /// Fills the polygons by the even-odd rule.
  void fill(const DevicePolygons& polygons, ColorRGB colour);

  /// Draws the visible edges. `width` is in pixels, and so are the lengths of `dashes`: dash, gap
  /// and so on. Without dashes the line is solid.
  void stroke(const DevicePolygons& polygons, ColorRGB colour, double width,
              std::span<const double> dashes = {});

  /// Returns the pixels of a PNG, row by row from the top, to be read and changed: red, green and
  /// blue in the bits 16-23, 8-15 and 0-7. Empty for an SVG. Valid until the next operation.
  std::span<std::uint32_t> pixels();

  /// Draws a text in dark letters with a pale rim.
  void write(const std::string& text, const Label& label, const Font& font);

  /// Ends the drawing and returns the bytes of the file. Throws `Error` if that fails. Nothing can
  /// be drawn afterwards.
  const std::string& finish();

 private:
  struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };

  std::string path_;
  bool is_png_;
  std::string bytes_;  ///< of the file, so far; outlives the surface, which appends to it
  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> context_;
};

}  // namespace example
