// Clips an open line to a view, and lets `zelvan_check_polygon_set` check the line, as a polygon,
// and the view. The coordinates are small whole numbers, which often coincide, or doubles of any
// bits. The output arrays have exactly the room that the header states, so the address sanitizer
// detects a point too many.

#include <zelvan/geometry/check_polygon_set.h>
#include <zelvan/geometry/clip_polyline_to_view.h>

#include "bytes.h"
#include "clip_judge.h"

namespace {

using fuzz::require;

double coordinate(fuzz::Bytes& bytes, bool any_bits) {
  return any_bits ? bytes.any<double>() : static_cast<std::int8_t>(bytes.byte()) / 16;
}

/// Requires that the pieces follow one another without a gap, and that each has two points or more.
void check_pieces(const std::vector<int>& begins, int n_pieces, int n_points) {
  require(n_pieces >= 0 && n_pieces < static_cast<int>(begins.size()));
  require(begins[0] == 0);
  for (int k = 0; k < n_pieces; ++k) {
    const auto piece = static_cast<std::size_t>(k);
    require(begins[piece + 1] - begins[piece] >= 2);
  }
  require(begins[static_cast<std::size_t>(n_pieces)] == n_points);
}

void check_is_in(const real_rect_t& view, const std::vector<real_pt_t>& points, int n_points) {
  const auto [left, right] =
      std::minmax({view.corners[0].x, view.corners[1].x, view.corners[2].x, view.corners[3].x});
  const auto [bottom, top] =
      std::minmax({view.corners[0].y, view.corners[1].y, view.corners[2].y, view.corners[3].y});
  for (int i = 0; i < n_points; ++i) {
    const real_pt_t p = points[static_cast<std::size_t>(i)];
    require(p.x >= left && p.x <= right && p.y >= bottom && p.y <= top);
  }
}

bool is_on_line_of(real_pt_t a, real_pt_t b, real_pt_t p) {
  return std::abs(area(a, b, p)) <= 1e-12 * length(a, b);
}

/// Requires that each part of a piece lies on an edge of the line. For coordinates on the grid.
void check_is_on_edges(const std::vector<real_pt_t>& points, const std::vector<real_pt_t>& out,
                       const std::vector<int>& begins, int n_pieces) {
  for (int k = 0; k < n_pieces; ++k) {
    const auto first = static_cast<std::size_t>(begins[static_cast<std::size_t>(k)]);
    const auto end = static_cast<std::size_t>(begins[static_cast<std::size_t>(k) + 1]);
    for (std::size_t i = first; i + 1 < end; ++i) {
      const real_pt_t p = out[i];
      const real_pt_t q = out[i + 1];
      bool is_on_edge = p.x == q.x && p.y == q.y;  // a repeated point
      for (std::size_t j = 0; j + 1 < points.size() && !is_on_edge; ++j) {
        const real_pt_t a = points[j];
        const real_pt_t b = points[j + 1];
        is_on_edge = length(a, b) > 0 && is_on_line_of(a, b, p) && is_on_line_of(a, b, q);
      }
      require(is_on_edge);
    }
  }
}

/// Lets `zelvan_check_polygon_set` write its reason into a buffer of `size` bytes. Requires that
/// the reason is one line. It must be empty if the check finds no fault; otherwise it may be empty
/// only if `size` is 1, which leaves room for the terminator alone.
void check_reason(std::vector<real_pt_t>& points, const real_rect_t& view, int size) {
  std::vector<int> flags(points.size(), 1);
  if (!flags.empty()) flags.back() = 3;
  const drw_pset_t set = {static_cast<int>(points.size()), points.data(), flags.data()};
  const std::unique_ptr<char[]> reason(new char[static_cast<std::size_t>(size)]);
  const int is_fine = zelvan_check_polygon_set(&set, &view, reason.get(), size);
  const std::string text = reason.get();
  require(text.find('\n') == std::string::npos);
  require(size == 1 || text.empty() == (is_fine != 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const bool any_bits = bytes.byte() % 4 == 0;
  const int room_for_reason = 1 + bytes.below(64);
  real_rect_t view;
  for (real_pt_t& corner : view.corners) {
    corner = {coordinate(bytes, any_bits), coordinate(bytes, any_bits)};
  }
  std::vector<real_pt_t> points;
  while (bytes.left() > 0) {
    points.push_back({coordinate(bytes, any_bits), coordinate(bytes, any_bits)});
  }
  const std::size_t n = points.size();
  std::vector<real_pt_t> out(n < 2 ? 0 : 2 * (n - 1));
  std::vector<int> begins(std::max<std::size_t>(n, 1));
  int n_pieces = -1;
  const int written = ClipPolylineToView(points.data(), static_cast<int>(n), &view, out.data(),
                                         begins.data(), &n_pieces);
  require(written >= 0 && written <= static_cast<int>(out.size()));
  check_pieces(begins, n_pieces, written);
  check_is_in(view, out, written);
  if (!any_bits && n < 200) check_is_on_edges(points, out, begins, n_pieces);
  check_reason(points, view, room_for_reason);
  return 0;
}
