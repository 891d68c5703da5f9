/// The fonts of this system, by name.
#pragma once

#include "common/labels.h"

#include <memory>
#include <string>

#include <cairo.h>

namespace example {

/// A TrueType font for drawing and measuring.
class Font {
 public:
  /// Loads a font. `name` is that of its file without the extension; case is ignored.
  ///
  /// Throws `Error` if there is no such file, with some names that exist, or if it is no font.
  explicit Font(const std::string& name);

  cairo_font_face_t* face() const { return face_.get(); }

  /// Returns how far the pen advances over a text, for a font of size 1.
  double width_of(const std::string& text) const;

  /// Returns the box of a text, for a font of size 1.
  TextBox box_of(const std::string& text) const;

 private:
  cairo_text_extents_t extents_of(const std::string& text) const;

  struct Release {
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
  };

  std::unique_ptr<cairo_font_face_t, Release> face_;
  std::unique_ptr<cairo_scaled_font_t, Release> measure_;
};

}  // namespace example
