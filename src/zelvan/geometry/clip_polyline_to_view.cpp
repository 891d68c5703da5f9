#include <zelvan/detail/same_point.h>
#include <zelvan/geometry/clip_polyline_to_view.h>
#include <zelvan/geometry/detail/clip_view.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <bit>
#include <cstdint>

namespace zelvan {

namespace {

// Branch-free, so that compilers vectorise it: only the exponent of infinities and NaN, all ones,
// carries into the sign bit.
bool are_finite(const real_pt_t* points, int n) {
  constexpr std::uint64_t sign_bit = std::uint64_t{1} << 63;
  constexpr std::uint64_t lowest_of_exponent = std::uint64_t{1} << 52;
  std::uint64_t sums = 0;
  for (int i = 0; i < n; ++i) {
    sums |= (__builtin_bit_cast(std::uint64_t, points[i].x) & ~sign_bit) + lowest_of_exponent;
    sums |= (__builtin_bit_cast(std::uint64_t, points[i].y) & ~sign_bit) + lowest_of_exponent;
  }
  return (sums & sign_bit) == 0;
}

// Returns true if the whole line lies beyond one side of the box around the view. This is so for
// most lines of a drawing; for a short one, preparing the view would take most of the time.
bool is_beyond_a_side(const real_pt_t* points, int n, const real_rect_t& view) {
  const ClipBox box = box_around(view.corners, 4);
  for (int side = 0; side < 4; ++side) {
    if (count_beyond(points, n, box, side) == n) return true;
  }
  return false;
}

// Walks along a polyline and writes its pieces.
class LineWalk {
 public:
  LineWalk(const ClipView& view, real_pt_t* out, int* begins)
      : view_(view), out_(out), begins_(begins) {}

  void clip(const real_pt_t* points, int n);

  int n_points() const { return n_points_; }
  int n_pieces() const { return n_pieces_; }

 private:
  int pass_run(PlacedPoint last, const real_pt_t* next, int left);
  void take_edge(PlacedPoint a, PlacedPoint b);
  void begin_at(const real_pt_t& p);

  const ClipView& view_;
  real_pt_t* const out_;
  int* const begins_;
  int n_points_ = 0;
  int n_pieces_ = 0;
  bool is_open_ = false;  // a piece is unfinished: its last point is where the walk is now
};

void LineWalk::clip(const real_pt_t* points, int n) {
  PlacedPoint a = view_.place(points[0]);
  for (int i = 1; i < n;) {
    if (const int run = pass_run(a, points + i, n - i); run > 0) {
      i += run;
      a = view_.place(points[i - 1]);
      continue;
    }
    const PlacedPoint b = view_.place(points[i]);
    take_edge(a, b);
    a = b;
    ++i;
  }
}

// Handles a run of points that lie like the one before them. Returns its length, from `next` on.
//
// Most points are in such a run. Points strictly inside are copied; those beyond the same side of
// the box around the view are left out.
int LineWalk::pass_run(PlacedPoint last, const real_pt_t* next, int left) {
  const ClipBox& box = view_.box();
  if (last.beyond != 0) {
    const Sides beyond = view_.is_upright() ? last.beyond : sides_out(box, *last.at).beyond;
    if (beyond == 0) return 0;
    const int side = std::countr_zero(beyond);
    return is_beyond(box, side, *next) ? 1 + count_beyond(next + 1, left - 1, box, side) : 0;
  }
  if (last.not_within != 0 || !view_.is_upright() || !is_inside(box, *next)) return 0;
  const int run = 1 + count_inside(next + 1, left - 1, box);
  begin_at(*last.at);
  std::copy_n(next, run, out_ + n_points_);
  n_points_ += run;
  return run;
}

// Writes the part of an edge inside the view. An edge along a side has no such part and ends the
// piece, unless its ends are the same point.
void LineWalk::take_edge(PlacedPoint a, PlacedPoint b) {
  if ((a.not_within & b.not_within) != 0) {
    is_open_ = is_open_ && is_same_point(*a.at, *b.at);
    return;
  }
  const bool comes_in = a.beyond != 0, goes_out = b.beyond != 0;
  const bool may_miss = comes_in && goes_out;
  if (may_miss && view_.side_of_line(*a.at, *b.at) != LineSide::both) return;
  const BorderPoint from = comes_in ? view_.crossing(a, b) : BorderPoint{*a.at, a.not_within, 0};
  const BorderPoint to = goes_out ? view_.crossing(b, a) : BorderPoint{*b.at, b.not_within, 0};
  const bool is_cut = comes_in || goes_out;
  if (is_cut && ((from.on & to.on) != 0 || is_same_point(from.at, to.at))) {
    is_open_ = false;
    return;
  }
  begin_at(from.at);
  out_[n_points_++] = to.at;
  is_open_ = !goes_out;
}

// Begins a piece at `p`. Does nothing if a piece is open: its last point is `p` already.
void LineWalk::begin_at(const real_pt_t& p) {
  if (is_open_) return;
  begins_[n_pieces_++] = n_points_;
  out_[n_points_++] = p;
  is_open_ = true;
}

}  // namespace

}  // namespace zelvan

int ClipPolylineToView(const real_pt_t* points, int n_points, const real_rect_t* view,
                       real_pt_t* out, int* begins, int* n_pieces) {
  using namespace zelvan;
  *n_pieces = 0;
  begins[0] = 0;
  if (n_points < 2 || is_beyond_a_side(points, n_points, *view)) return 0;
  ClipView clip_view;
  if (!clip_view.set(*view) || !are_finite(points, n_points)) return 0;
  LineWalk walk(clip_view, out, begins);
  walk.clip(points, n_points);
  *n_pieces = walk.n_pieces();
  begins[walk.n_pieces()] = walk.n_points();
  return walk.n_points();
}
