/// The fonts of this system, by name.
#pragma once

#include <memory>
#include <string>

#include <cairo.h>

namespace example {

/// A TrueType font, ready to be drawn with.
class Font {
 public:
  /// `name` is that of the font's file without its extension, in any case. Throws `Error` if
  /// there is none of that name, telling some that there are, or if the file holds no font.
  explicit Font(const std::string& name);

  cairo_font_face_t* face() const { return face_.get(); }

  /// How wide a text comes out for each unit of the font's size.
  double width_of(const std::string& text) const;

 private:
  struct Release {
    void operator()(cairo_font_face_t* face) const { cairo_font_face_destroy(face); }
    void operator()(cairo_scaled_font_t* font) const { cairo_scaled_font_destroy(font); }
  };

  std::unique_ptr<cairo_font_face_t, Release> face_;
  std::unique_ptr<cairo_scaled_font_t, Release> measure_;
};

}  // namespace example
