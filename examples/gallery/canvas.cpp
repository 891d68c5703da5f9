#include "gallery/canvas.h"

#include "common/error.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <numbers>

namespace gallery {

namespace {

constexpr double pixels_per_point = 1.5;
constexpr double title_height = 30.0;
constexpr double caption_height = 26.0;
constexpr double no_caption_height = 10.0;
constexpr double text_inset = 12.0;

void set_colour(cairo_t* context, Colour c) {
  cairo_set_source_rgba(context, c.red, c.green, c.blue, c.opacity);
}

}  // namespace

Canvas::Canvas(int width, int height)
    : width_(width),
      height_(height),
      surface_(cairo_image_surface_create(CAIRO_FORMAT_RGB24,
                                          static_cast<int>(width * pixels_per_point),
                                          static_cast<int>(height * pixels_per_point))),
      context_(cairo_create(surface_.get())) {
  cairo_set_source_rgb(context_.get(), 1.0, 1.0, 1.0);
  cairo_paint(context_.get());
  cairo_scale(context_.get(), pixels_per_point, pixels_per_point);
  cairo_set_fill_rule(context_.get(), CAIRO_FILL_RULE_EVEN_ODD);
  cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
}

void Canvas::path_through(const Points& points, bool is_closed) {
  cairo_new_sub_path(context_.get());
  for (const real_pt_t& p : points) cairo_line_to(context_.get(), p.x, p.y);
  if (is_closed) cairo_close_path(context_.get());
}

void Canvas::stroke(const Points& points, const Stroke& stroke, bool is_closed) {
  path_through(points, is_closed);
  stroke_path(stroke);
}

void Canvas::stroke_all(const std::vector<Points>& lines, const Stroke& stroke) {
  for (const Points& line : lines) path_through(line, false);
  stroke_path(stroke);
}

void Canvas::stroke_path(const Stroke& stroke) {
  const double dashes[] = {4.0, 3.0};
  cairo_set_dash(context_.get(), dashes, stroke.is_dashed ? 2 : 0, 0.0);
  cairo_set_line_cap(context_.get(), stroke.is_dashed ? CAIRO_LINE_CAP_BUTT : CAIRO_LINE_CAP_ROUND);
  cairo_set_line_width(context_.get(), stroke.width);
  set_colour(context_.get(), stroke.colour);
  cairo_stroke(context_.get());
}

void Canvas::fill(const std::vector<Points>& polygons, Colour colour) {
  for (const Points& polygon : polygons) path_through(polygon, true);
  set_colour(context_.get(), colour);
  cairo_fill(context_.get());
}

void Canvas::dot(real_pt_t centre, double radius, Colour colour, bool is_hollow) {
  cairo_new_sub_path(context_.get());
  cairo_arc(context_.get(), centre.x, centre.y, radius, 0.0, 2.0 * std::numbers::pi);
  set_colour(context_.get(), is_hollow ? Colour{1.0, 1.0, 1.0} : colour);
  cairo_fill_preserve(context_.get());
  set_colour(context_.get(), colour);
  cairo_set_dash(context_.get(), nullptr, 0, 0.0);
  cairo_set_line_width(context_.get(), is_hollow ? 1.6 : 0.0);
  cairo_stroke(context_.get());
}

void Canvas::text(real_pt_t at, const std::string& what, Colour colour, double size, Align align,
                  bool is_bold) {
  cairo_select_font_face(context_.get(), "DejaVu Sans", CAIRO_FONT_SLANT_NORMAL,
                         is_bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(context_.get(), size);
  cairo_text_extents_t extents;
  cairo_text_extents(context_.get(), what.c_str(), &extents);
  if (align == Align::centre) at.x -= extents.x_advance / 2;
  if (align == Align::right) at.x -= extents.x_advance;
  set_colour(context_.get(), colour);
  cairo_move_to(context_.get(), at.x, at.y);
  cairo_show_text(context_.get(), what.c_str());
}

void Canvas::clip(real_pt_t corner, real_pt_t opposite) {
  cairo_save(context_.get());
  cairo_rectangle(context_.get(), corner.x, corner.y, opposite.x - corner.x, opposite.y - corner.y);
  cairo_clip(context_.get());
}

void Canvas::unclip() { cairo_restore(context_.get()); }

void Canvas::save(const std::string& path) {
  cairo_status_t status = cairo_status(context_.get());
  errno = 0;
  if (status == CAIRO_STATUS_SUCCESS) {
    status = cairo_surface_write_to_png(surface_.get(), path.c_str());
  }
  if (status == CAIRO_STATUS_SUCCESS) return;
  const std::string reason = errno != 0 ? std::strerror(errno) : cairo_status_to_string(status);
  // A full disk may have cut the file short.
  if (status == CAIRO_STATUS_WRITE_ERROR) std::remove(path.c_str());
  throw example::Error(path + ": can't be written: " + reason);
}

Panel::Panel(Canvas& canvas, double left, double top, double width, double height, real_pt_t centre,
             double span, const std::string& title, const std::string& caption)
    : canvas_(canvas) {
  const Points frame = {
      {left, top}, {left + width, top}, {left + width, top + height}, {left, top + height}};
  canvas_.fill({frame}, paper);
  canvas_.stroke(frame, {hairline, 1.0}, true);
  canvas_.text({left + text_inset, top + 20.0}, title, ink, 12.0, Align::left, true);
  canvas_.text({left + text_inset, top + height - 11.0}, caption, grey, 10.5);
  const double scale = width / span;
  const double bottom = top + height - (caption.empty() ? no_caption_height : caption_height);
  const double middle_y = (top + title_height + bottom) / 2.0;
  mapping_.SetXfm(centre.x, centre.y, Mtx2DOrientNone, scale, -scale, left + width / 2.0, middle_y);

  Mtx2D back = mapping_.Invert();
  real_pt_t low_on_page = {left, bottom};
  real_pt_t high_on_page = {left + width, top + title_height};
  back.RealXfmPt(&low_on_page, &low_);
  back.RealXfmPt(&high_on_page, &high_);
  canvas_.clip({left + 1.0, top + title_height}, {left + width - 1.0, bottom});
}

Panel::~Panel() { canvas_.unclip(); }

real_pt_t Panel::to_page(real_pt_t p) {
  real_pt_t on_page;
  mapping_.RealXfmPt(&p, &on_page);
  return on_page;
}

Points Panel::to_page(Points points) {
  Points on_page(points.size());
  mapping_.RealXfmPts(static_cast<int>(points.size()), points.data(), on_page.data());
  return on_page;
}

std::vector<Points> Panel::to_page(const std::vector<Points>& lines) {
  std::vector<Points> on_page;
  for (const Points& line : lines) on_page.push_back(to_page(line));
  return on_page;
}

void Panel::stroke(const Points& points, const Stroke& stroke, bool is_closed) {
  canvas_.stroke(to_page(points), stroke, is_closed);
}

void Panel::stroke_all(const std::vector<Points>& lines, const Stroke& stroke) {
  canvas_.stroke_all(to_page(lines), stroke);
}

void Panel::fill(const std::vector<Points>& polygons, Colour colour) {
  canvas_.fill(to_page(polygons), colour);
}

void Panel::dot(real_pt_t centre, double radius, Colour colour, bool is_hollow) {
  canvas_.dot(to_page(centre), radius, colour, is_hollow);
}

void Panel::text(real_pt_t at, const std::string& what, Colour colour, Align align) {
  canvas_.text(to_page(at), what, colour, 10.5, align);
}

void Panel::box(real_pt_t min, real_pt_t max, const Stroke& line) {
  stroke({min, {max.x, min.y}, max, {min.x, max.y}}, line, true);
}

void Panel::axes() {
  stroke({{low_.x, 0.0}, {high_.x, 0.0}}, {hairline, 1.0});
  stroke({{0.0, low_.y}, {0.0, high_.y}}, {hairline, 1.0});
}

}  // namespace gallery
