#include <zelvan/geometry/clip_polygon_set_to_view.h>
#include <zelvan/geometry/detail/clip_view.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace zelvan {

namespace {

bool is_visible(int edge_flag) {
  return edge_flag == drw_edge_visible || edge_flag == drw_edge_close_visible;
}

// Walks once around an outline and writes its image in the view.
//
// Parts outside are moved onto the border: a vertex beyond a side can move to any place on that
// side without passing through the view. So while the outline is outside, the walk keeps only the
// current side. It writes the corners that it passes on the way to another side. This leaves the
// winding numbers of all places inside unchanged.
class RingWalk {
 public:
  // Begins writing after the vertices that the target holds; the caller adds to its count.
  RingWalk(const ClipView& view, const drw_pset_t& target)
      : view_(view),
        points_(target.points + target.n_points),
        edge_flags_(target.edge_flags + target.n_points) {}

  // Writes the ring that clipping an outline leaves; returns its number of vertices.
  int clip(const Outline& outline);

 private:
  int pass_run(const Outline& outline, int i, PlacedPoint a, PlacedPoint b);
  void take_edge(PlacedPoint a, PlacedPoint b, bool visible);
  void go_to(Sides to, Sides through);
  void go_round(Sides to, bool counter_clockwise);
  void write_vertex(const real_pt_t& p, Sides on, bool visible);
  void write_border_point(const real_pt_t& p, Sides on, bool visible);
  bool repeats_last(const real_pt_t& p) const;
  void end_edge(Sides on, bool visible);
  void append(const real_pt_t& p, Sides on, bool is_vertex);
  int count_windings() const;
  int write_borders(int windings);

  const ClipView& view_;
  real_pt_t* const points_;
  int* const edge_flags_;  // a flag is set when the vertex after it is written
  int count_ = 0;
  bool first_is_vertex_ = false;  // the first point written is a vertex of the outline
  bool last_is_vertex_ = false;
  Sides last_on_ = 0;        // the sides on which the last point written lies
  int side_ = 0;             // while the outline is outside: the side it is at
  bool has_inside_ = false;  // some vertex or edge written lies inside the view
};

int RingWalk::clip(const Outline& outline) {
  const int n = outline.count;
  const PlacedPoint first = view_.place(outline.points[0]);
  if (first.beyond == 0) {
    write_vertex(*first.at, first.not_within, false);
  } else {
    side_ = std::countr_zero(first.beyond);
  }
  const Sides first_side = 1u << side_;
  PlacedPoint a = first;
  for (int i = 0; i < n;) {
    const PlacedPoint b = i + 1 < n ? view_.place(outline.points[i + 1]) : first;
    const int run = i + 1 < n ? pass_run(outline, i, a, b) : 0;
    if (run == 0) take_edge(a, b, is_visible(outline.edge_flags[i]));
    i += std::max(run, 1);
    a = run <= 1 ? b : view_.place(outline.points[i]);
  }
  if (first.beyond != 0) {
    go_to(first_side, first.not_within);
    if (count_ > 0 && first_is_vertex_) write_vertex(points_[0], 0, false);
    if (count_ > 0 && !first_is_vertex_) write_border_point(points_[0], 0, false);
  }
  // The walk has come back to its first vertex and written it again at the end, which is dropped
  // here. A border point at the place of the last point written is not written again; the last one
  // is dropped instead.
  count_ -= count_ > 0;
  if (!has_inside_) return write_borders(count_windings());
  if (count_ < 2) return 0;  // by rounding, the part inside became a single point
  edge_flags_[count_ - 1] += drw_edge_close_invisible;
  return count_;
}

// Handles a run of vertices that lie like their neighbours. Returns the length of the run after
// vertex `i`.
//
// Most vertices are in such a run. Vertices strictly inside are copied; those beyond the current
// side are left out.
int RingWalk::pass_run(const Outline& outline, int i, PlacedPoint a, PlacedPoint b) {
  const real_pt_t* const after_b = outline.points + i + 2;
  const int left = view_.is_upright() ? outline.count - i - 2 : 0;
  if ((a.not_within | b.not_within) == 0) {
    edge_flags_[count_ - 1] = is_visible(outline.edge_flags[i]);
    points_[count_] = *b.at;
    edge_flags_[count_] = outline.edge_flags[i + 1];
    const int more = count_inside(after_b, left, view_.box());
    if (more > 0) {
      std::copy_n(after_b, more, points_ + count_ + 1);
      std::copy_n(outline.edge_flags + i + 2, more, edge_flags_ + count_ + 1);
    }
    has_inside_ = true;
    count_ += 1 + more;
    return 1 + more;
  }
  if (holds(a.beyond & b.beyond, side_)) {
    return 1 + count_beyond(after_b, left, view_.box(), side_);
  }
  return 0;
}

// Writes the part of the edge from `a` to `b` that is in the view, or its way along the border. If
// `a` is in the view, it has been written. Otherwise the outline is at `side_`, and the last vertex
// written, if any, lies on that side.
void RingWalk::take_edge(PlacedPoint a, PlacedPoint b, bool visible) {
  const bool comes_in = a.beyond != 0, goes_out = b.beyond != 0;
  if (const Sides common = a.not_within & b.not_within; common != 0) {
    if (comes_in) {
      go_to(common, a.not_within);
    } else {
      side_ = std::countr_zero(common);
    }
    if (!goes_out) write_vertex(*b.at, b.not_within, false);
    return;
  }
  if (comes_in && goes_out) {
    const LineSide view_is = view_.side_of_line(*a.at, *b.at);
    if (view_is != LineSide::both) return go_round(b.not_within, view_is == LineSide::left);
  }
  has_inside_ = true;
  if (comes_in) {
    const BorderPoint entry = view_.crossing(a, b);
    go_to(1u << entry.side, a.not_within);
    write_border_point(entry.at, entry.on, false);
  }
  if (goes_out) {
    const BorderPoint exit = view_.crossing(b, a);
    write_border_point(exit.at, exit.on, visible);
    side_ = exit.side;
  } else {
    write_vertex(*b.at, b.not_within, visible);
  }
}

// Moves along the border from the current side to one of the sides `to`, and writes the corners on
// the way. The shorter way is taken; to the opposite side, the way over the neighbour in `through`.
// These are the sides whose lines the outline's last vertex lies beyond or on. They follow each
// other around the view, and the current side is one of them.
void RingWalk::go_to(Sides to, Sides through) {
  if (holds(to, side_)) return;
  const int next = next_side(side_);
  go_round(to, holds(to, next) || (!holds(to, previous_side(side_)) && holds(through, next)));
}

void RingWalk::go_round(Sides to, bool counter_clockwise) {
  while (!holds(to, side_)) {
    const int corner = counter_clockwise ? next_side(side_) : side_;
    write_border_point(view_.corner(corner), ClipView::sides_at(corner), false);
    side_ = counter_clockwise ? next_side(side_) : previous_side(side_);
  }
}

// Writes a vertex of the outline, and whether the edge that leads to it is visible. If the last
// point written is at the same place, a border point is replaced; a vertex stays, and so both are
// in the ring.
inline void RingWalk::write_vertex(const real_pt_t& p, Sides on, bool visible) {
  if (repeats_last(p) && !last_is_vertex_) {
    --count_;
  } else {
    end_edge(on, visible);
  }
  append(p, on, true);
}

// Writes a point of the border like `write_vertex`, unless the last point written is already at
// that place.
inline void RingWalk::write_border_point(const real_pt_t& p, Sides on, bool visible) {
  if (repeats_last(p)) {
    // Cuts of two sides may round to one point. It is written once, but the next edge starts at the
    // second cut, on its sides.
    last_on_ = on;
    return;
  }
  end_edge(on, visible);
  append(p, on, false);
}

inline bool RingWalk::repeats_last(const real_pt_t& p) const {
  return count_ > 0 && points_[count_ - 1].x == p.x && points_[count_ - 1].y == p.y;
}

// Writes the flag of the edge from the last vertex to a vertex on the sides `on`. An edge along a
// side is invisible.
inline void RingWalk::end_edge(Sides on, bool visible) {
  if (count_ > 0) edge_flags_[count_ - 1] = visible && (last_on_ & on) == 0;
}

inline void RingWalk::append(const real_pt_t& p, Sides on, bool is_vertex) {
  if (count_ == 0) first_is_vertex_ = is_vertex;
  points_[count_++] = p;
  last_on_ = on;
  last_is_vertex_ = is_vertex;
}

// Returns how often the vertices written wind about the view, counter-clockwise. Requires: no
// vertex written is inside. Each edge then runs along one side, so the result is the number of
// edges that leave corner 0 along side 0, minus those that return to it.
int RingWalk::count_windings() const {
  constexpr int side = 0;
  const Sides corner = ClipView::sides_at(side);
  int windings = 0;
  for (int i = 0; i < count_; ++i) {
    const Sides from = view_.place(points_[i]).not_within;
    const Sides to = view_.place(points_[i + 1 < count_ ? i + 1 : 0]).not_within;
    if (!holds(from & to, side)) continue;
    windings += (from == corner) - (to == corner);
  }
  return windings;
}

// Replaces the vertices written by the corners of the view, once for each winding. Returns their
// number.
int RingWalk::write_borders(int windings) {
  count_ = 4 * std::abs(windings);
  for (int i = 0; i < count_; ++i) {
    points_[i] = view_.corner(windings > 0 ? i % 4 : 3 - i % 4);
    edge_flags_[i] = drw_edge_invisible;
  }
  if (count_ > 0) edge_flags_[count_ - 1] = drw_edge_close_invisible;
  return count_;
}

}  // namespace

}  // namespace zelvan

void ClipPolygonSetToView(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect) {
  using namespace zelvan;
  ClipView view;
  if (!view.set(*rect)) return;
  for (int from = 0;;) {
    OutlineKind kind;
    const Outline outline = find_outline_within(*source, from, view.box(), &kind);
    if (outline.count == 0) return;
    from = static_cast<int>(outline.points - source->points) + outline.count;
    if (kind == OutlineKind::inside && view.is_upright()) {
      append(outline, target);
    } else if (kind != OutlineKind::not_finite) {
      target->n_points += RingWalk(view, *target).clip(outline);
    }
  }
}
