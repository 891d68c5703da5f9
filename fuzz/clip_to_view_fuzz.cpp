// Clips a polygon set to a view; both are read from the input, either as small whole numbers, which
// often coincide, or as doubles of any bits. The output arrays have exactly the room that the
// header states, so the address sanitizer detects a vertex too many.
//
// The result must be closed rings inside the box of the view. In an upright view each vertex must
// be one of the source or lie exactly on the border; for whole numbers, `ClipJudge` also checks
// winding numbers about points off the grid, and the length of visible edges.

#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "bytes.h"
#include "clip_judge.h"

namespace {

using fuzz::require;

double coordinate(fuzz::Bytes& bytes, bool any_bits) {
  return any_bits ? bytes.any<double>() : static_cast<std::int8_t>(bytes.byte()) / 16;
}

struct Box {
  explicit Box(const real_rect_t& rect) {
    for (const real_pt_t& c : rect.corners) {
      left = std::min(left, c.x), right = std::max(right, c.x);
      bottom = std::min(bottom, c.y), top = std::max(top, c.y);
    }
  }
  bool holds(real_pt_t p) const {
    return p.x >= left && p.x <= right && p.y >= bottom && p.y <= top;
  }
  bool has_on_border(real_pt_t p) const {
    return holds(p) && (p.x == left || p.x == right || p.y == bottom || p.y == top);
  }
  double left = INFINITY, bottom = INFINITY, right = -INFINITY, top = -INFINITY;
};

// Checks one result. An upright view is the box of two opposite corners, a turned one has any four.
void check(const PolygonSet& in, const PolygonSet& out, const real_rect_t& rect, bool is_upright,
           bool on_grid) {
  require(out.flags.empty() || out.flags.back() >= 2);
  const Box box(rect);
  for (std::size_t i = 0; i < out.points.size(); ++i) {
    const real_pt_t p = out.points[i];
    require(box.holds(p) && out.flags[i] >= 0 && out.flags[i] <= 3);
    const auto is_p = [=](real_pt_t q) { return q.x == p.x && q.y == p.y; };
    const bool is_own = std::any_of(in.points.begin(), in.points.end(), is_p);
    require(!is_upright || is_own || box.has_on_border(p));
  }
  if (!is_upright || !on_grid || box.left == box.right || box.bottom == box.top) return;
  std::vector<real_pt_t> places;
  for (double y = -8.0 + 0.4131; y < 8.0; ++y) {
    for (double x = -8.0 + 0.3717; x < 8.0; ++x) places.push_back({x, y});
  }
  PolygonSet closed = in;  // without what follows the last closing flag
  while (!closed.flags.empty() && closed.flags.back() < 2) {
    closed.flags.pop_back();
    closed.points.pop_back();
  }
  require(ClipJudge(rect, 0).approves(closed, out, places));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const int kind = bytes.byte();
  const bool any_bits = kind % 4 == 0, is_upright = kind % 4 != 1;
  real_rect_t rect;
  for (real_pt_t& corner : rect.corners) {
    corner = {coordinate(bytes, any_bits), coordinate(bytes, any_bits)};
  }
  if (is_upright) {
    rect.corners[1] = {rect.corners[0].x, rect.corners[2].y};
    rect.corners[3] = {rect.corners[2].x, rect.corners[0].y};
  }
  PolygonSet in, out;
  std::size_t room = 0;
  while (bytes.left() > 0) {
    const int flag = bytes.byte();
    in.points.push_back({coordinate(bytes, any_bits), coordinate(bytes, any_bits)});
    in.flags.push_back(flag % 8 == 0 ? 2 + flag / 128 : flag % 2);
    room += in.flags.back() >= 2 ? 8 : 4;
  }
  out.points.resize(room);
  out.flags.resize(room);
  drw_pset_t source = {static_cast<int>(in.points.size()), in.points.data(), in.flags.data()};
  drw_pset_t target = {0, out.points.data(), out.flags.data()};
  ClipPolygonSetToView(&source, &target, &rect);
  out.points.resize(static_cast<std::size_t>(target.n_points));
  out.flags.resize(out.points.size());
  check(in, out, rect, is_upright, !any_bits);
  return 0;
}
