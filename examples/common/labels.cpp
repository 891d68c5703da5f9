#include "common/labels.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace example {

namespace {

constexpr double sizes[] = {1.0, 0.88, 0.77, 0.67, 0.58};  // times the largest size
constexpr double room = 1.08;                              // times the text's width, for a margin
constexpr int lines_tried = 16;

struct Span {
  double left;
  double right;

  double width() const { return right - left; }
};

// The part of a horizontal band that an edge covers, from its leftmost to its rightmost x.
struct Block {
  Span span;
  bool crosses_middle;  // of the band
};

Block block_of(int_pt_t from, int_pt_t to, double top, double bottom) {
  const auto x_at = [&](double y, int_pt_t end) {
    if (from.y == to.y) return static_cast<double>(end.x);
    return from.x + (y - from.y) / (to.y - from.y) * (to.x - from.x);
  };
  const double x = x_at(std::clamp<double>(from.y, top, bottom), from);
  const double other_x = x_at(std::clamp<double>(to.y, top, bottom), to);
  const double middle = (top + bottom) / 2.0;
  return {{std::min(x, other_x), std::max(x, other_x)}, (from.y <= middle) != (to.y <= middle)};
}

// Returns the spans in which the whole band is inside, from left to right.
//
// Between the blocks of two edges nothing changes from top to bottom, so the crossings of the
// middle line tell inside from outside.
std::vector<Span> spans_inside(const DevicePolygons& outline, double top, double bottom,
                               double picture_width) {
  std::vector<Block> blocks;
  for_each_polygon(outline, [&](std::size_t first, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
      const int_pt_t from = outline.points[first + i];
      const int_pt_t to = outline.points[first + (i + 1) % count];
      if (std::max(from.y, to.y) <= top || std::min(from.y, to.y) >= bottom) continue;
      blocks.push_back(block_of(from, to, top, bottom));
    }
  });
  std::sort(blocks.begin(), blocks.end(),
            [](const Block& a, const Block& b) { return a.span.left < b.span.left; });
  std::vector<Span> spans;
  bool is_inside = false;
  double last_right = -std::numeric_limits<double>::infinity();
  for (const Block& block : blocks) {
    if (is_inside && block.span.left > last_right) {
      spans.push_back({std::max(last_right, 0.0), std::min(block.span.left, picture_width)});
    }
    last_right = std::max(last_right, block.span.right);
    is_inside = is_inside != block.crosses_middle;
  }
  return spans;
}

}  // namespace

std::optional<Label> place_label(const DevicePolygons& outline, const TextBox& text,
                                 double picture_width, double largest) {
  const auto [highest, lowest] =
      std::minmax_element(outline.points.begin(), outline.points.end(),
                          [](int_pt_t a, int_pt_t b) { return a.y < b.y; });
  if (highest == outline.points.end()) return std::nullopt;
  for (const double share : sizes) {
    const double size = largest * share;
    const double least_width = size * text.width * room;
    double best = 0.0;
    std::optional<Label> label;
    for (int line = 1; line < lines_tried; ++line) {
      const double off_middle = 2.0 * line / lines_tried - 1.0;  // -1 to 1
      const double y = highest->y + (lowest->y - highest->y) * double(line) / lines_tried;
      for (const Span& span :
           spans_inside(outline, y - text.above * size, y + text.below * size, picture_width)) {
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
