/// A page of the gallery under construction, and panels of drawings on it.
#pragma once

#include <zelvan/zelvan.h>

#include <memory>
#include <string>
#include <vector>

#include <cairo.h>

namespace gallery {

/// A colour of three channels from 0 to 1, and how much it covers.
struct Colour {
  double red, green, blue;
  double cover = 1.0;
};

/// The colours of all pages: what a page shows in `blue`, and what it sets against that in
/// `orange`, the rest in greys.
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

/// Where a text stands to its point.
enum class Align { left, centre, right };

/// A white page in points from the upper left corner, y down, drawn with three pixels to two
/// points.
class Canvas {
 public:
  Canvas(int width, int height);

  double width() const { return width_; }
  double height() const { return height_; }

  /// Draws the outline through `points`, closed if asked.
  void stroke(const Points& points, const Stroke& stroke, bool is_closed = false);

  /// The same for many lines, as one path: where they meet nothing is painted twice.
  void stroke_all(const std::vector<Points>& lines, const Stroke& stroke);

  /// Fills the polygons by the even-odd rule.
  void fill(const std::vector<Points>& polygons, Colour colour);

  /// A disc; with `is_hollow`, only its rim.
  void dot(real_pt_t centre, double radius, Colour colour, bool is_hollow = false);

  void text(real_pt_t at, const std::string& what, Colour colour, double size = 11.0,
            Align align = Align::left, bool is_bold = false);

  /// Keeps everything that follows inside the box, until `unclip`.
  void clip(real_pt_t corner, real_pt_t opposite);
  void unclip();

  /// Writes a PNG. Throws `example::Error` when that fails.
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

/// A drawing in a box of the page, with a title over it and a caption below it. Everything is
/// given in drawing units, y up, and mapped to the page by an `Mtx2D`.
class Panel {
 public:
  /// The box with its upper left corner at (`left`, `top`) shows drawing units around `centre`,
  /// `span` of them across its width. Title and caption take room within the box; an empty caption
  /// takes little.
  Panel(Canvas& canvas, double left, double top, double width, double height, real_pt_t centre,
        double span, const std::string& title, const std::string& caption);
  ~Panel();
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;

  /// The drawing units that the panel shows.
  real_pt_t low() const { return low_; }
  real_pt_t high() const { return high_; }

  void stroke(const Points& points, const Stroke& stroke, bool is_closed = false);
  void stroke_all(const std::vector<Points>& lines, const Stroke& stroke);
  void fill(const std::vector<Points>& polygons, Colour colour);
  void dot(real_pt_t centre, double radius, Colour colour, bool is_hollow = false);
  void text(real_pt_t at, const std::string& what, Colour colour, Align align = Align::left);

  /// The box from `min` to `max`.
  void box(real_pt_t min, real_pt_t max, const Stroke& stroke);

  /// The two axes through the origin.
  void axes();

 private:
  real_pt_t to_page(real_pt_t p);
  Points to_page(Points points);
  std::vector<Points> to_page(const std::vector<Points>& lines);

  Canvas& canvas_;
  Mtx2D mapping_;
  real_pt_t low_, high_;
};

/// Cells of equal size, counted in reading order.
struct Grid {
  int columns;
  double cell_width, cell_height, gap, margin;

  double left(int i) const { return margin + i % columns * (cell_width + gap); }
  double top(int i) const { return margin + i / columns * (cell_height + gap); }
};

}  // namespace gallery
