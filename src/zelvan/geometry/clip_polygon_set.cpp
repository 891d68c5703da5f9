#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/detail/clip_arena.h>
#include <zelvan/geometry/detail/clip_ring.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <cmath>

namespace zelvan {

namespace {

// Edges whose vectors differ by less than this on both axes count as parallel, and a crossing
// at the very start of an edge is moved this far along it.
constexpr double epsilon = 1.1920928955078125e-07;

// A determinant within this of zero belongs to parallel edges.
constexpr double tiny = 1.1754943508222875e-38;

// On which sides of clip edges whole edges of the subject were found.
enum side { left_of = 1, right_of = 2, below = 4, above = 8 };

// A polygon of the source, from its first vertex to its closing one.
struct Outline {
  const real_pt_t* points;
  const int* edge_flags;
  int count;
};

// An edge of the rectangle, and the box around it.
struct ClipEdge {
  real_pt_t from, to;
  ClipBox box;
};

ClipBox box_of(const real_pt_t& a, const real_pt_t& b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

bool are_apart(const ClipBox& a, const ClipBox& b) {
  return a.left > b.right || b.left > a.right || a.bottom > b.top || b.bottom > a.top;
}

// The rectangle, its edges, and the box around it.
struct ClipRect {
  const real_rect_t& rect;
  ClipEdge edges[4];
  ClipBox box;
  bool has_box;     // no corner holds a NaN
  bool is_upright;  // each side runs along an axis

  explicit ClipRect(const real_rect_t& r)
      : rect(r), edges{}, box{}, has_box(true), is_upright(true) {
    const real_pt_t* c = r.corners;
    for (int i = 0; i < 4; ++i) {
      const real_pt_t& next = c[(i + 1) % 4];
      edges[i] = {c[i], next, box_of(c[i], next)};
      has_box = has_box && !std::isnan(c[i].x) && !std::isnan(c[i].y);
      is_upright = is_upright && (c[i].x == next.x || c[i].y == next.y);
    }
    if (!has_box) return;
    const auto [left, right] = std::minmax({c[0].x, c[1].x, c[2].x, c[3].x});
    const auto [bottom, top] = std::minmax({c[0].y, c[1].y, c[2].y, c[3].y});
    box = {left, bottom, right, top};
  }
};

void append(drw_pset_t* target, const real_pt_t& p, int edge_flag) {
  target->points[target->n_points] = p;
  target->edge_flags[target->n_points] = edge_flag;
  ++target->n_points;
}

int without_closing(int edge_flag) {
  if (edge_flag == drw_edge_close_invisible) return drw_edge_invisible;
  if (edge_flag == drw_edge_close_visible) return drw_edge_visible;
  return edge_flag;
}

bool is_same(const real_pt_t& a, const real_pt_t& b) { return a.x == b.x && a.y == b.y; }

// True when the whole outline lies strictly to one side of all four corners. Its edges would
// then all be rejected and both containment tests fail.
bool lies_apart(const Outline& outline, const ClipRect& clip) {
  if (!clip.has_box) return false;
  for (int side = left_side; side <= top_side; ++side) {
    const real_pt_t& last = outline.points[outline.count - 1];  // tells soonest that it does not
    if (!is_beyond(clip.box, side, last)) continue;
    if (count_beyond(outline.points, outline.count, clip.box, side) == outline.count) return true;
  }
  return false;
}

// How many vertices from the first on lie alike: strictly beyond one side of the box, or strictly
// inside of an upright rectangle. No edge between them comes near any side: it would be rejected
// by all four. At least 1, for a vertex that lies in no such way.
int count_alike(const real_pt_t* points, int n, const ClipRect& clip) {
  constexpr int few = 4;  // that are looked at sooner than vectors are set up
  const auto count = [=](auto is_alike, auto count_in_vectors) {
    int i = 1;
    while (i < n && i < few && is_alike(points[i])) ++i;
    return i < few ? i : i + count_in_vectors(points + i, n - i);
  };
  if (!clip.has_box) return 1;
  const ClipBox& box = clip.box;
  if (clip.is_upright && is_inside(box, points[0])) {
    return count([&](const real_pt_t& p) { return is_inside(box, p); },
                 [&](const real_pt_t* from, int left) { return count_inside(from, left, box); });
  }
  for (int side = left_side; side <= top_side; ++side) {
    if (!is_beyond(box, side, points[0])) continue;
    return count(
        [&](const real_pt_t& p) { return is_beyond(box, side, p); },
        [&](const real_pt_t* from, int left) { return count_beyond(from, left, box, side); });
  }
  return 1;
}

bool both_above(double a0, double a1, double b0, double b1) {
  return a0 > b0 && a0 > b1 && a1 > b0 && a1 > b1;
}

// The side of the clip edge on which the whole subject edge lies, or 0.
int side_of_edge(const real_pt_t& s0, const real_pt_t& s1, const real_pt_t& c0,
                 const real_pt_t& c1) {
  if (both_above(c0.x, c1.x, s0.x, s1.x)) return left_of;
  if (both_above(s0.x, s1.x, c0.x, c1.x)) return right_of;
  if (both_above(c0.y, c1.y, s0.y, s1.y)) return below;
  if (both_above(s0.y, s1.y, c0.y, c1.y)) return above;
  return 0;
}

// True when the edges cross, both ends of each included, with the place in `hit`. A NaN gets past
// the comparisons: the crossing then has a NaN place, as the arithmetic gives it.
bool find_crossing(const real_pt_t& s0, const real_pt_t& s1, const real_pt_t& c0,
                   const real_pt_t& c1, ClipHit* hit) {
  const double dxs = s1.x - s0.x;
  const double dys = s1.y - s0.y;
  const double dxc = c1.x - c0.x;
  const double dyc = c1.y - c0.y;
  if (std::fabs(dxs - dxc) < epsilon && std::fabs(dys - dyc) < epsilon) return false;
  const double det = dyc * dxs - dxc * dys;
  if (det >= -tiny && det <= tiny) return false;
  const double ex = s0.x - c0.x;
  const double ey = s0.y - c0.y;
  const double a = (ey * dxc - ex * dyc) / det;
  if (a > 1.0 || a < 0.0) return false;
  const double b = (ey * dxs - ex * dys) / det;
  if (b > 1.0 || b < 0.0) return false;
  hit->param[of_subject] = a == 0.0 ? epsilon : a;
  hit->param[of_clip] = b == 0.0 ? epsilon : b;
  hit->at = {dxs * hit->param[of_subject] + s0.x, dys * hit->param[of_subject] + s0.y};
  return true;
}

// Tries the subject's edge from vertex `i` on against the four of the clip ring.
bool find_hits_of_edge(const Outline& outline, int i, const ClipRect& clip, ClipHits* hits,
                       ClipArena* arena) {
  const real_pt_t& s0 = outline.points[i];
  const real_pt_t& s1 = outline.points[i + 1 == outline.count ? 0 : i + 1];
  const ClipBox box = box_of(s0, s1);
  // Boxes tell the same as the sides, but not of what is not a number.
  const bool has_boxes = clip.has_box && !std::isnan(s0.x + s1.x) && !std::isnan(s0.y + s1.y);
  for (int k = 0; k < 4; ++k) {
    const auto& [c0, c1, clip_box] = clip.edges[k];
    if (has_boxes ? are_apart(box, clip_box) : side_of_edge(s0, s1, c0, c1) != 0) continue;
    ClipHit* const hit = hits->next(arena);
    if (hit == nullptr) return false;
    if (!find_crossing(s0, s1, c0, c1, hit)) continue;
    hit->edge[of_subject] = i;
    hit->edge[of_clip] = k;
    hit->visited = false;
    ++hits->count;
  }
  return true;
}

bool find_hits(const Outline& outline, const ClipRect& clip, ClipHits* hits, ClipArena* arena) {
  for (int i = 0; i < outline.count; ++i) {
    const int alike = count_alike(outline.points + i, outline.count - i, clip);
    if (alike == outline.count) return true;  // so is the edge back to the first
    i += alike - 1;
    if (!find_hits_of_edge(outline, i, clip, hits, arena)) return false;
  }
  return true;
}

// True when edges of the outline lie on opposite sides of clip edges.
bool spans_the_rectangle(const Outline& outline, const ClipRect& clip) {
  int side_mask = 0;
  for (int i = 0; i < outline.count; ++i) {
    const real_pt_t& s0 = outline.points[i];
    const bool is_last = i + 1 == outline.count;
    const real_pt_t& s1 = outline.points[is_last ? 0 : i + 1];
    if (!is_last && is_same(s0, s1)) continue;  // a repeat, and no vertex of the ring
    for (int k = 0; k < 4; ++k) {
      side_mask |= side_of_edge(s0, s1, clip.edges[k].from, clip.edges[k].to);
    }
    const bool on_both_x = (side_mask & left_of) != 0 && (side_mask & right_of) != 0;
    const bool on_both_y = (side_mask & below) != 0 && (side_mask & above) != 0;
    if (on_both_x || on_both_y) return true;
  }
  return false;
}

// Is there a vertex that differs from the first?
bool has_two_vertices(const Outline& outline) {
  return std::any_of(outline.points + 1, outline.points + outline.count,
                     [&](const real_pt_t& p) { return !is_same(p, outline.points[0]); });
}

void append_uncrossed(const Outline& outline, const ClipRing& subject, const ClipRing& corners,
                      drw_pset_t* target) {
  const real_pt_t& first = outline.points[0];
  if (ClipPointInRing(first.x, first.y, corners)) {
    std::copy_n(outline.points, outline.count, target->points + target->n_points);
    std::copy_n(outline.edge_flags, outline.count, target->edge_flags + target->n_points);
    target->n_points += outline.count;
  } else if (ClipPointInRing(corners.points[0].x, corners.points[0].y, subject)) {
    for (int k = 0; k < 4; ++k) append(target, corners.points[k], drw_edge_invisible);
    target->edge_flags[target->n_points - 1] = drw_edge_close_invisible;
  }
}

// The outline with runs of the same point shrunk to one vertex, with the flag of the first; the
// outline itself where there are none. False when the heap refuses.
bool drop_repeats(Outline* outline, ClipArena* arena) {
  const real_pt_t* const points = outline->points;
  const int n = outline->count;
  int repeats = 0;
  for (int i = 1; i < n; ++i) repeats += is_same(points[i - 1], points[i]);
  if (repeats == 0) return true;
  auto* const kept = arena->make<real_pt_t>(static_cast<std::size_t>(n - repeats));
  auto* const flags = arena->make<int>(static_cast<std::size_t>(n - repeats));
  if (kept == nullptr || flags == nullptr) return false;
  int count = 0;
  for (int i = 0; i < n; ++i) {
    if (i > 0 && is_same(points[i - 1], points[i])) continue;
    kept[count] = points[i];
    flags[count++] = outline->edge_flags[i];
  }
  *outline = {kept, flags, count};
  return true;
}

// Going round a ring, its crossings lead in and out of the other outline by turns.
void mark(const ClipRing& ring, const ClipRing& other) {
  bool inside = ClipPointInRing(ring.points[0].x, ring.points[0].y, other);
  for (int i = 0; i < ring.n_turns; ++i) {
    ring.turns[i]->leaving[ring.kind] = inside;
    inside = !inside;
  }
}

void append_vertex(const ClipRing& ring, int i, drw_pset_t* target) {
  append(target, ring.points[i], without_closing(ring.edge_flags[i]));
}

void append_vertices(const ClipRing& ring, int first, int behind, drw_pset_t* target) {
  if (first == behind) return;
  const int all_but_last = behind - 1 - first;  // only the last vertex of a polygon closes
  std::copy_n(ring.points + first, all_but_last, target->points + target->n_points);
  std::copy_n(ring.edge_flags + first, all_but_last, target->edge_flags + target->n_points);
  target->n_points += all_but_last;
  append_vertex(ring, behind - 1, target);
}

// The vertices behind a crossing up to the next one, which is given.
ClipHit* append_forward(const ClipRing& ring, const ClipHit& from, drw_pset_t* target) {
  const int turn = from.turn[ring.kind];
  const int first = from.edge[ring.kind] + 1;
  if (turn + 1 < ring.n_turns) {
    ClipHit* const next = ring.turns[turn + 1];
    append_vertices(ring, first, next->edge[ring.kind] + 1, target);
    return next;
  }
  ClipHit* const next = ring.turns[0];
  append_vertices(ring, first, ring.count, target);
  append_vertices(ring, 0, next->edge[ring.kind] + 1, target);
  return next;
}

// The same backward.
ClipHit* append_backward(const ClipRing& ring, const ClipHit& from, drw_pset_t* target) {
  const int turn = from.turn[ring.kind];
  ClipHit* const next = ring.turns[turn > 0 ? turn - 1 : ring.n_turns - 1];
  const int last = next->edge[ring.kind] + 1;
  int i = from.edge[ring.kind];
  if (turn == 0) {
    for (; i >= 0; --i) append_vertex(ring, i, target);
    i = ring.count - 1;
  }
  for (; i >= last; --i) append_vertex(ring, i, target);
  return next;
}

// Walks one result ring from a crossing: along whichever outline leads inwards, changing over
// at each crossing. An edge through a corner counts as two crossings and can break the
// alternation; the walk then comes to a crossing already visited that is not its start, and
// the ring is closed there. So no crossing is passed twice, and every walk ends.
void walk_from(ClipHit* start, const ClipRing& subject, const ClipRing& corners,
               drw_pset_t* target) {
  ClipHit* hit = start;
  const ClipRing* ring = &subject;
  do {
    hit->visited = true;
    ring = ring == &subject ? &corners : &subject;
    append(target, hit->at, without_closing(ring->edge_flags[hit->edge[ring->kind]]));
    hit = hit->leaving[ring->kind] ? append_backward(*ring, *hit, target)
                                   : append_forward(*ring, *hit, target);
  } while (!hit->visited);
  int& last_flag = target->edge_flags[target->n_points - 1];
  last_flag = last_flag == drw_edge_visible ? drw_edge_close_visible : drw_edge_close_invisible;
}

constexpr int corner_flags[4] = {drw_edge_invisible, drw_edge_invisible, drw_edge_invisible,
                                 drw_edge_invisible};

// Clips one polygon. Nothing is appended before all memory for it has been had, so where the
// heap refuses the polygon leaves no trace.
void ClipOnePolygon(Outline outline, drw_pset_t* target, const ClipRect& clip, ClipArena* arena) {
  if (lies_apart(outline, clip) || !has_two_vertices(outline)) return;
  ClipHits hits;
  if (!find_hits(outline, clip, &hits, arena)) return;
  ClipRing corners = {of_clip, 4, clip.rect.corners, corner_flags, nullptr, 0};
  if (hits.count > 0) {
    // Repeats matter only now: crossings of the edges between them are none of the ring's.
    const Outline found_on = outline;
    if (!drop_repeats(&outline, arena)) return;
    if (outline.points != found_on.points) {
      hits.count = 0;
      if (!find_hits(outline, clip, &hits, arena)) return;
    }
  }
  ClipRing subject = {of_subject, outline.count, outline.points, outline.edge_flags, nullptr, 0};
  if (hits.count == 0) {
    if (spans_the_rectangle(outline, clip)) append_uncrossed(outline, subject, corners, target);
    return;
  }
  if (!ClipInsertHits(hits, &subject, arena) || !ClipInsertHits(hits, &corners, arena)) return;
  mark(subject, corners);
  mark(corners, subject);
  for (int i = 0; i < hits.count; ++i) {
    if (!subject.turns[i]->visited) walk_from(subject.turns[i], subject, corners, target);
  }
}

}  // namespace

}  // namespace zelvan

void ClipPolygonSet(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect) {
  using namespace zelvan;
  const ClipRect clip(*rect);
  ClipArena arena;
  int scan = 0;
  while (true) {
    while (scan < source->n_points && is_closing(source->edge_flags[scan])) ++scan;
    int last = scan;
    while (last < source->n_points && !is_closing(source->edge_flags[last])) ++last;
    if (last >= source->n_points) return;
    const Outline outline = {source->points + scan, source->edge_flags + scan, last - scan + 1};
    ClipOnePolygon(outline, target, clip, &arena);
    ClipFreeRings(&arena);
    scan = last + 1;
  }
}
