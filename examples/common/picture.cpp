#include "common/picture.h"

#include "common/error.h"
#include "common/view.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <new>
#include <string_view>

#include <cairo-svg.h>
#include <unistd.h>

namespace example {

namespace {

bool ends_with_any_case(std::string path, std::string_view ending) {
  std::transform(path.begin(), path.end(), path.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return path.ends_with(ending);
}

// Cairo calls this. Cairo is C, so no exception may leave.
cairo_status_t append_bytes(void* bytes, const unsigned char* data, unsigned length) {
  try {
    static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), length);
    return CAIRO_STATUS_SUCCESS;
  } catch (const std::bad_alloc&) {
    return CAIRO_STATUS_NO_MEMORY;
  }
}

constexpr const char* no_type = ": the name of a picture ends in .png or .svg";

bool is_picture(const std::string& path) {
  return ends_with_any_case(path, ".png") || is_svg(path);
}

void set_colour(cairo_t* context, const ColorRGB& colour) {
  cairo_set_source_rgb(context, colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0);
}

}  // namespace

bool is_svg(const std::string& path) { return ends_with_any_case(path, ".svg"); }

void check_picture_path(const std::string& path) {
  if (!is_picture(path)) throw Error(path + no_type);
  if (std::filesystem::is_directory(path)) {
    throw Error(path + ": can't be written: a folder has this name");
  }
  std::filesystem::path folder = std::filesystem::path(path).parent_path();
  if (folder.empty()) folder = ".";
  if (access(folder.c_str(), W_OK | X_OK) == 0) return;
  const std::string reason = std::strerror(errno);
  throw Error(path + ": can't be written: folder " + folder.string() + ": " + reason);
}

Picture::Picture(const std::string& path, int pixels_wide, int pixels_high, ColorRGB background)
    : path_(path), is_png_(ends_with_any_case(path, ".png")) {
  if (!is_picture(path)) throw Error(path + no_type);
  surface_.reset(is_png_ ? cairo_image_surface_create(CAIRO_FORMAT_RGB24, pixels_wide, pixels_high)
                         : cairo_svg_surface_create_for_stream(append_bytes, &bytes_, pixels_wide,
                                                               pixels_high));
  context_.reset(cairo_create(surface_.get()));
  set_colour(context_.get(), background);
  cairo_paint(context_.get());
  cairo_scale(context_.get(), 1.0 / units_per_pixel, 1.0 / units_per_pixel);
  cairo_set_fill_rule(context_.get(), CAIRO_FILL_RULE_EVEN_ODD);
  cairo_set_line_join(context_.get(), CAIRO_LINE_JOIN_ROUND);
}

void Picture::fill(const DevicePolygons& polygons, ColorRGB colour) {
  cairo_t* const context = context_.get();
  for_each_polygon(polygons, [&](std::size_t first, std::size_t count) {
    for (std::size_t i = first; i < first + count; ++i) {
      cairo_line_to(context, polygons.points[i].x, polygons.points[i].y);
    }
    cairo_close_path(context);
    cairo_new_sub_path(context);
  });
  set_colour(context, colour);
  cairo_fill(context);
}

void Picture::stroke(const DevicePolygons& polygons, ColorRGB colour, double width,
                     std::span<const double> dashes) {
  cairo_t* const context = context_.get();
  for_each_polygon(polygons, [&](std::size_t first, std::size_t count) {
    const auto is_visible = [&](std::size_t i) {
      return polygons.edge_flags[first + i % count] % 2 == 1;  // 1 and 3
    };
    // Starts at an invisible edge, if there is one, so that no line is cut at the first vertex.
    std::size_t start = 0;
    while (start < count && is_visible(start)) ++start;
    bool pen_is_down = false;
    for (std::size_t i = start % count; i < start % count + count; ++i) {
      const int_pt_t from = polygons.points[first + i % count];
      const int_pt_t to = polygons.points[first + (i + 1) % count];
      if (is_visible(i) && !pen_is_down) cairo_move_to(context, from.x, from.y);
      if (is_visible(i)) cairo_line_to(context, to.x, to.y);
      pen_is_down = is_visible(i);
    }
  });
  set_colour(context, colour);
  cairo_set_line_width(context, width * units_per_pixel);
  std::vector<double> lengths(dashes.begin(), dashes.end());
  for (double& length : lengths) length *= units_per_pixel;
  cairo_set_dash(context, lengths.data(), static_cast<int>(lengths.size()), 0.0);
  // Round ends would lengthen each dash by the width of the line.
  cairo_set_line_cap(context, lengths.empty() ? CAIRO_LINE_CAP_ROUND : CAIRO_LINE_CAP_BUTT);
  cairo_stroke(context);
}

void Picture::write(const std::string& text, const Label& label, const Font& font) {
  constexpr double rim = 0.22;  // of the size
  cairo_t* const context = context_.get();
  cairo_set_font_face(context, font.face());
  cairo_set_font_size(context, label.size);
  cairo_move_to(context, label.x - font.width_of(text) * label.size / 2.0,
                label.y + capital_height * label.size / 2.0);
  cairo_text_path(context, text.c_str());
  cairo_set_source_rgba(context, 1.0, 1.0, 1.0, 0.6);
  cairo_set_line_width(context, rim * label.size);
  cairo_stroke_preserve(context);
  cairo_set_source_rgb(context, 0.15, 0.15, 0.2);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_WINDING);  // letters may overlap
  cairo_fill(context);
  cairo_set_fill_rule(context, CAIRO_FILL_RULE_EVEN_ODD);
}

std::span<std::uint32_t> Picture::pixels() {
  if (!is_png_ || cairo_surface_status(surface_.get()) != CAIRO_STATUS_SUCCESS) return {};
  cairo_surface_flush(surface_.get());
  unsigned char* const data = cairo_image_surface_get_data(surface_.get());
  const int rows = cairo_image_surface_get_height(surface_.get());
  const int bytes = cairo_image_surface_get_stride(surface_.get()) * rows;  // rows have no padding
  cairo_surface_mark_dirty(surface_.get());
  return {reinterpret_cast<std::uint32_t*>(data), static_cast<std::size_t>(bytes) / 4};
}

const std::string& Picture::finish() {
  const cairo_status_t drawn = cairo_status(context_.get());
  context_.reset();
  cairo_status_t written = CAIRO_STATUS_SUCCESS;
  if (is_png_) {
    written = cairo_surface_write_to_png_stream(surface_.get(), append_bytes, &bytes_);
  } else {
    cairo_surface_finish(surface_.get());
    written = cairo_surface_status(surface_.get());
  }
  for (const cairo_status_t status : {drawn, written}) {
    if (status == CAIRO_STATUS_SUCCESS) continue;
    throw Error(path_ + ": can't be drawn: " + cairo_status_to_string(status));
  }
  return bytes_;
}

}  // namespace example
