// Lines of equal distance: the estimate and the true distance.

#include "gallery/contour.h"
#include "gallery/pages.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

using Distance = std::function<double(real_pt_t)>;

double length(double dx, double dy) { return std::sqrt(dx * dx + dy * dy); }

void draw_levels(Panel& panel, const Distance& distance, const Stroke& stroke) {
  for (const double level : {0.8, 1.6, 2.4}) {
    panel.stroke_all(contour(distance, level, panel.low(), panel.high()), stroke);
  }
}

void draw_element(Canvas& canvas, double left, const char* title, const char* caption,
                  const Distance& truth, const Distance& estimate, const Points& element) {
  Panel panel(canvas, left, 12.0, 280.0, 320.0, {0.0, 0.0}, 8.0, title, caption);
  draw_levels(panel, truth, {{0.62, 0.66, 0.71}, 3.2});
  draw_levels(panel, estimate, {blue, 1.2});
  panel.stroke(element, {ink, 2.6});
  panel.dot(element.front(), 3.0, ink);
  panel.dot(element.back(), 3.0, ink);
}

void draw(Canvas& canvas) {
  real_pt_t o = {0.0, 0.0}, arc_centre = {0.0, -0.9};
  draw_element(
      canvas, 12.0, "utl_point_point", "within 4 % of the truth",
      [&](real_pt_t p) { return length(p.x, p.y); },
      [&](real_pt_t p) { return utl_point_point(&p, &o); }, {o});

  real_pt_t a = {-1.3, -0.9}, b = {1.3, 0.9};
  const auto true_to_segment = [&](real_pt_t p) {
    const double dx = b.x - a.x, dy = b.y - a.y;
    const double t = ((p.x - a.x) * dx + (p.y - a.y) * dy) / (dx * dx + dy * dy);
    const double nearest = std::clamp(t, 0.0, 1.0);
    return length(p.x - a.x - nearest * dx, p.y - a.y - nearest * dy);
  };
  draw_element(canvas, 304.0, "utl_point_line", "the estimate to the nearest point",
               true_to_segment, [&](real_pt_t p) { return utl_point_line(&p, &a, &b); }, {a, b});

  constexpr double radius = 1.5, from = 0.5, to = 2.6;
  Points arc;
  for (int i = 0; i <= 60; ++i) {
    const double angle = from + (to - from) * i / 60;
    arc.push_back({radius * std::cos(angle), arc_centre.y + radius * std::sin(angle)});
  }
  const auto true_to_arc = [&](real_pt_t p) {
    const double angle = std::atan2(p.y - arc_centre.y, p.x);
    if (angle >= from && angle <= to) return std::fabs(length(p.x, p.y - arc_centre.y) - radius);
    return std::min(length(p.x - arc.front().x, p.y - arc.front().y),
                    length(p.x - arc.back().x, p.y - arc.back().y));
  };
  draw_element(
      canvas, 596.0, "utl_point_circarc", "true beside the arc, an estimate beyond it", true_to_arc,
      [&](real_pt_t p) {
        return utl_point_circarc(&p, &arc_centre, radius, &arc.front(), &arc.back(), 0);
      },
      arc);

  const double y = canvas.height() - 14.0;
  canvas.stroke({{14.0, y - 4.0}, {40.0, y - 4.0}}, {blue, 1.2});
  canvas.text({48.0, y}, "the library's answer 0.8, 1.6 and 2.4", grey);
  canvas.stroke({{306.0, y - 4.0}, {332.0, y - 4.0}}, {{0.62, 0.66, 0.71}, 3.2});
  canvas.text({340.0, y}, "the true distance", grey);
}

}  // namespace

const Page distances_page = {"distances", 888, 366, draw};

}  // namespace gallery
