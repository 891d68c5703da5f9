/// A page of the gallery while it is drawn, and panels on it.
#pragma once

#include <zelvan/zelvan.h>

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

namespace gallery {

/// A colour: three channels and an opacity, each from 0 to 1.
struct Colour {
  double red, green, blue;
  double opacity = 1.0;
};

/// The colours of all pages: the subject in `blue`, what it is compared with in `orange`, the rest
/// in greys.
inline constexpr Colour ink = {0.13, 0.16, 0.20};
inline constexpr Colour grey = {0.45, 0.50, 0.56};
inline constexpr Colour hairline = {0.84, 0.86, 0.89};
inline constexpr Colour paper = {0.975, 0.98, 0.985};
inline constexpr Colour blue = {0.10, 0.36, 0.72};
inline constexpr Colour orange = {0.84, 0.36, 0.08};
inline constexpr Colour pale_blue = {0.82, 0.89, 0.97};
inline constexpr Colour pale_orange = {0.99, 0.89, 0.80};

struct Stroke {
  Colour colour = ink;
  double width = 1.0;  ///< in page points
  bool is_dashed = false;
};

using Points = std::vector<real_pt_t>;

/// Which part of a text lies at its point.
enum class Align { left, centre, right };

/// A white page. Coordinates are in points from the upper left corner, y down; two points are three
/// pixels.
class Canvas {
 public:
  Canvas(int width, int height);

  double width() const { return width_; }
  double height() const { return height_; }

  /// Draws a line through `points`; with `is_closed`, back to the first.
  void stroke(const Points& points, const Stroke& stroke, bool is_closed = false);

  /// Draws many lines as one path, so that a place where they meet is painted once.
  void stroke_all(const std::vector<Points>& lines, const Stroke& stroke);

  /// Fills the polygons by the even-odd rule.
  void fill(const std::vector<Points>& polygons, Colour colour);

  /// Draws a disc; with `is_hollow`, a white one with a rim.
  void dot(real_pt_t centre, double radius, Colour colour, bool is_hollow = false);

  /// Draws a text whose base line starts, is centred or ends at a point.
  void text(real_pt_t at, const std::string& what, Colour colour, double size = 11.0,
            Align align = Align::left, bool is_bold = false);

  /// Draws nothing outside the box, until `unclip`.
  void clip(real_pt_t corner, real_pt_t opposite);
  void unclip();

  /// Writes a PNG. Throws `example::Error` if that fails.
  void save(const std::string& path);

 private:
  void path_through(const Points& points, bool is_closed);
  void stroke_path(const Stroke& stroke);

  struct Release {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
  };

  double width_, height_;
  std::unique_ptr<cairo_surface_t, Release> surface_;
  std::unique_ptr<cairo_t, Release> context_;
};

/// A drawing in a box of the page, with a title above it and a caption below it. Coordinates are
/// in drawing units, y up; an `Mtx2D` maps them to the page.
class Panel {
 public:
  /// Draws the box, with its upper left corner at (`left`, `top`), its title and its caption. It
  /// will show the drawing around `centre`, `span` drawing units wide.
  Panel(Canvas& canvas, double left, double top, double width, double height, real_pt_t centre,
        double span, const std::string& title, const std::string& caption);
  ~Panel();
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// Return the corners with the smallest and the largest coordinates that the panel shows.
  real_pt_t low() const { return low_; }
  real_pt_t high() const { return high_; }

  void stroke(const Points& points, const Stroke& stroke, bool is_closed = false);
  void stroke_all(const std::vector<Points>& lines, const Stroke& stroke);
  void fill(const std::vector<Points>& polygons, Colour colour);
  void dot(real_pt_t centre, double radius, Colour colour, bool is_hollow = false);
  void text(real_pt_t at, const std::string& what, Colour colour, Align align = Align::left);

  /// Draws the outline of the box from `min` to `max`.
  void box(real_pt_t min, real_pt_t max, const Stroke& stroke);

  /// Draws the two axes through the origin.
  void axes();

 private:
  real_pt_t to_page(real_pt_t p);
  Points to_page(Points points);
  std::vector<Points> to_page(const std::vector<Points>& lines);

  Canvas& canvas_;
  Mtx2D mapping_;
  real_pt_t low_, high_;
};

/// Cells of equal size on a page, numbered from left to right and then down.
struct Grid {
  int columns;
  double cell_width, cell_height, gap, margin;

  double left(int i) const { return margin + i % columns * (cell_width + gap); }
  double top(int i) const { return margin + i / columns * (cell_height + gap); }
};

}  // namespace gallery
