#include "common/labels.h"

#include <algorithm>
#include <vector>

namespace example {

namespace {

constexpr double sizes[] = {1.0, 0.88, 0.77, 0.67, 0.58};  // of the largest
constexpr double half_height = 0.36;                       // of capital letters, by size
constexpr double room = 1.08;                              // of the text's width, to breathe
constexpr int lines_tried = 16;

struct Span {
  double left;
  double right;

  double width() const { return right - left; }
};
using Spans = std::vector<Span>;  // from left to right, apart from each other

/// Where a level line lies inside, by the even-odd rule.
Spans spans_at(const DevicePolygons& outline, double y, double picture_width) {
  std::vector<double> crossings;
  for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const int_pt_t from = outline.points[first + i];
      const int_pt_t to = outline.points[first + (i + 1) % count];
      if ((from.y <= y) == (to.y <= y)) continue;
      crossings.push_back(from.x + (y - from.y) / (to.y - from.y) * (to.x - from.x));
    }
  });
  std::sort(crossings.begin(), crossings.end());
  Spans spans;
  for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
    spans.push_back({std::max(crossings[i], 0.0), std::min(crossings[i + 1], picture_width)});
  }
  return spans;
}

Spans common_spans(const Spans& a, const Spans& b) {
  Spans both;
  for (std::size_t i = 0, j = 0; i < a.size() && j < b.size();) {
    const Span span = {std::max(a[i].left, b[j].left), std::min(a[i].right, b[j].right)};
    if (span.width() > 0.0) both.push_back(span);
    a[i].right < b[j].right ? ++i : ++j;
  }
  return both;
}

}  // namespace

std::optional<Label> place_label(const DevicePolygons& outline, double text_width_per_size,
                                 double picture_width, double largest) {
  const auto [highest, lowest] =
      std::minmax_element(outline.points.begin(), outline.points.end(),
                          [](int_pt_t a, int_pt_t b) { return a.y < b.y; });
  if (highest == outline.points.end()) return std::nullopt;
  for (const double share : sizes) {
    const double size = largest * share;
    const double least_width = size * text_width_per_size * room;
    double best = 0.0;
    std::optional<Label> label;
    for (int line = 1; line < lines_tried; ++line) {
      const double off_middle = 2.0 * line / lines_tried - 1.0;  // -1 to 1
      const double y = highest->y + (lowest->y - highest->y) * double(line) / lines_tried;
      Spans spans = spans_at(outline, y, picture_width);
      for (const double edge : {y - half_height * size, y + half_height * size}) {
        spans = common_spans(spans, spans_at(outline, edge, picture_width));
      }
      for (const Span& span : spans) {
        const double merit = span.width() * (1.0 - off_middle * off_middle);
        if (span.width() < least_width || merit <= best) continue;
        best = merit;
        label = {(span.left + span.right) / 2.0, y, size};
      }
    }
    if (label) return label;
  }
  return std::nullopt;
}

}  // namespace example
