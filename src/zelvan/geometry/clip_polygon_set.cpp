#include <zelvan/detail/same_point.h>
#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/detail/clip_ring.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

namespace zelvan {

namespace {

// Two edges whose vectors (end minus start) differ by less than this, in x and in y, count as
// parallel. It catches only nearly equal vectors; other parallel edges are found by `tiny`. A
// crossing at the very start of an edge is moved along it by this share of its length.
constexpr double epsilon = 1.1920928955078125e-07;

// Two edges count as parallel, too, if the determinant of their vectors is at most this large.
constexpr double tiny = 1.1754943508222875e-38;

// A set of edges of the clip ring: bit k stands for the edge from corner k.
using ClipEdges = unsigned;

// The rectangle, and boxes that reject most edges of a subject early.
struct ClipRect {
  real_pt_t corners[5];  // the first one again at the end
  ClipBox edge_boxes[4];
  bool is_upright;
  ClipBox outer, inner;    // no edge of the rectangle is outside `outer` or inside `inner`
  ClipEdges edges_on[16];  // used if upright: by set of sides of `outer`, the edges there

  explicit ClipRect(const real_rect_t& rect)
      : is_upright(zelvan::is_upright(rect)),
        outer(box_around(rect.corners, 4)),
        inner(is_upright ? outer : nowhere),
        edges_on{} {
    std::copy_n(rect.corners, 4, corners);
    corners[4] = corners[0];
    for (int k = 0; k < 4; ++k) {
      edge_boxes[k] = box_around(corners + k, 2);
      const int side = is_upright_from(rect, k % 2)
                           ? (corners[k].y == outer.bottom ? bottom_side : top_side)
                           : (corners[k].x == outer.left ? left_side : right_side);
      for (Sides sides = 0; sides < 16; ++sides) edges_on[sides] |= (sides >> side & 1) << k;
    }
  }
};

// Appends a vertex to the target. Replaces a closing flag by the plain one of the same visibility:
// the ring is closed only when it is complete.
void ClipAppendVertex(const real_pt_t& p, int edge_flag, drw_pset_t* target) {
  target->points[target->n_points] = p;
  target->edge_flags[target->n_points] =
      is_closing(edge_flag) ? edge_flag - drw_edge_close_invisible : edge_flag;
  ++target->n_points;
}

// Returns the side of the box around a clip edge beyond which the whole subject edge lies, or 0. If
// it lies beyond two sides, returns the left or right one, not the other.
Sides side_of_edge(const real_pt_t& s0, const real_pt_t& s1, const ClipBox& edge_box) {
  const Sides sides = sides_out(edge_box, s0).beyond & sides_out(edge_box, s1).beyond;
  const Sides left_or_right = sides & (1u << left_side | 1u << right_side);
  return left_or_right != 0 ? left_or_right : sides;
}

// Returns the edges of the clip ring that a subject edge may cross. Leaves a clip edge out if the
// subject edge lies wholly beyond one side of that clip edge's box. Requires: the subject edge
// doesn't lie wholly beyond one side of the outer box.
ClipEdges edges_near(const real_pt_t& s0, const real_pt_t& s1, const ClipRect& clip) {
  if (clip.is_upright) {
    const SidesOut out0 = sides_out(clip.outer, s0), out1 = sides_out(clip.outer, s1);
    return clip.edges_on[out0.not_within | out1.not_within];
  }
  ClipEdges near = 0;
  for (int k = 0; k < 4; ++k) {
    near |= ClipEdges{!are_beyond_a_side(clip.edge_boxes[k], s0, s1)} << k;
  }
  return near;
}

// Returns true if the edges cross, and stores the crossing in `hit`. A crossing at an end of either
// edge counts. A NaN passes the comparisons; the crossing is then NaN as well.
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
  double a = (ey * dxc - ex * dyc) / det;
  double b = (ey * dxs - ex * dys) / det;
  if (a > 1.0 || a < 0.0 || b > 1.0 || b < 0.0) return false;
  if (a == 0.0 || b == 0.0) [[unlikely]] {
    a = a == 0.0 ? epsilon : a;
    b = b == 0.0 ? epsilon : b;
  }
  hit->param[of_subject] = a;
  hit->param[of_clip] = b;
  hit->at = {dxs * a + s0.x, dys * a + s0.y};
  return true;
}

// Appends the crossings of the subject's edge that begins at vertex `i`. Returns false if the heap
// refuses.
bool find_hits_of_edge(Outline outline, int i, const ClipRect& clip, ClipHits* hits) {
  const real_pt_t& s0 = outline.points[i];
  const real_pt_t& s1 = outline.points[i + 1 == outline.count ? 0 : i + 1];
  int n = 0;  // crossings of this edge so far
  for (ClipEdges near = edges_near(s0, s1, clip); near != 0; near &= near - 1) {
    const int k = std::countr_zero(near);
    if (!hits->make_room()) return false;
    ClipHit* const hit = hits->end;
    if (!find_crossing(s0, s1, clip.corners[k], clip.corners[k + 1], hit)) continue;
    hit->edge[of_subject] = i;
    hit->edge[of_clip] = k;
    if (n > 0) ClipInsertHit(hit - n, hit);
    ++n;
    ++hits->end;
  }
  return true;
}

// Stores all crossings in `hits`; returns false if the heap refuses. Tries only the edges of the
// subject that come near edges of the rectangle.
bool find_hits(Outline outline, const ClipRect& clip, ClipHits* hits) {
  const bool closing_edge_is_near =
      !are_beyond_a_side(clip.outer, outline.points[0], outline.points[outline.count - 1]);
  for (int first = 0; first + 1 < outline.count; first += most_in_edge_set - 1) {
    const int n = std::min(outline.count - first, most_in_edge_set);
    EdgeSet near = near_edges(outline.points + first, n, clip.outer, clip.inner);
    const bool has_closing_edge = first + n == outline.count;
    if (has_closing_edge && closing_edge_is_near) near |= EdgeSet{1} << (n - 1);
    for (; near != 0; near &= near - 1) {
      const int i = first + std::countr_zero(near);
      if (!find_hits_of_edge(outline, i, clip, hits)) return false;
    }
  }
  return true;
}

// Returns true if some edge of the outline lies left of a clip edge and some edge right of a clip
// edge, the same one or another; or likewise below and above. `side_of_edge` decides where an edge
// lies.
bool spans_the_rectangle(const Outline& outline, const ClipRect& clip) {
  constexpr Sides left_and_right = 1u << left_side | 1u << right_side;
  constexpr Sides bottom_and_top = 1u << bottom_side | 1u << top_side;
  Sides sides = 0;
  for (int i = 0; i < outline.count; ++i) {
    const real_pt_t& s0 = outline.points[i];
    const bool is_last = i + 1 == outline.count;
    const real_pt_t& s1 = outline.points[is_last ? 0 : i + 1];
    // A vertex that repeats the one before is not part of the ring; a last one that repeats the
    // first is.
    if (!is_last && is_same_point(s0, s1)) continue;
    for (const ClipBox& box : clip.edge_boxes) sides |= side_of_edge(s0, s1, box);
    if ((sides & left_and_right) == left_and_right || (sides & bottom_and_top) == bottom_and_top) {
      return true;
    }
  }
  return false;
}

// Returns true if some vertex differs from the first.
bool has_two_vertices(const Outline& outline) {
  return std::any_of(outline.points + 1, outline.points + outline.count,
                     [&](const real_pt_t& p) { return !is_same_point(p, outline.points[0]); });
}

constexpr int corner_flags[4] = {drw_edge_invisible, drw_edge_invisible, drw_edge_invisible,
                                 drw_edge_invisible};

// Appends what is left of a polygon without crossings: all of it, or the rectangle, or nothing.
void append_uncrossed(const Outline& outline, const ClipRect& clip, drw_pset_t* target) {
  if (!has_two_vertices(outline)) return;
  const ClipRing subject = {of_subject, outline.points, outline.edge_flags, outline.count};
  const ClipRing corners = {of_clip, clip.corners, corner_flags, 4};
  if (ClipPointInRing(subject.points[0].x, subject.points[0].y, corners)) {
    append(outline, target);
  } else if (ClipPointInRing(corners.points[0].x, corners.points[0].y, subject)) {
    for (int k = 0; k < 4; ++k) ClipAppendVertex(corners.points[k], drw_edge_invisible, target);
    target->edge_flags[target->n_points - 1] = drw_edge_close_invisible;
  }
}

// The memory for one polygon.
struct ClipScratch {
  ClipHits hits;
  ScratchArray<real_pt_t, 64> points;  // of a copy without repeats
  ScratchArray<int, 64> edge_flags;    // likewise
};

// Returns the outline with each run of equal points reduced to one vertex, which keeps the flag of
// the first. Returns an outline without vertices if the heap refuses.
Outline without_repeats(const Outline& outline, ClipScratch* scratch) {
  real_pt_t* const points = scratch->points.make_room(static_cast<std::size_t>(outline.count));
  int* const flags = scratch->edge_flags.make_room(static_cast<std::size_t>(outline.count));
  if (points == nullptr || flags == nullptr) return {};
  int count = 0;
  for (int i = 0; i < outline.count; ++i) {
    if (i > 0 && is_same_point(outline.points[i - 1], outline.points[i])) continue;
    points[count] = outline.points[i];
    flags[count++] = outline.edge_flags[i];
  }
  return {points, flags, count};
}

// Appends the vertices of a ring from `first` up to but not including `end`.
inline void append_vertices(const ClipRing& ring, int first, int end, drw_pset_t* target) {
  for (int i = first; i < end; ++i) {
    ClipAppendVertex(ring.points[i], ring.edge_flags[i], target);
  }
}

// Appends the vertices of a ring in reverse, from `last` down to but not including `above`.
inline void append_vertices_back(const ClipRing& ring, int last, int above, drw_pset_t* target) {
  for (int i = last; i > above; --i) {
    ClipAppendVertex(ring.points[i], ring.edge_flags[i], target);
  }
}

// Marks a crossing as visited, appends it and the ring's vertices up to the next crossing, and
// returns the next crossing. Walks forward if the crossing counts as entering the other outline,
// else backward.
template <clip_ring_kind kind>
ClipHit* visit(ClipHit* hit, const ClipRing& ring, drw_pset_t* target) {
  const int edge = hit->edge[kind], turn = hit->turn[kind];
  hit->set_visited();
  ClipAppendVertex(hit->at, ring.edge_flags[edge], target);
  if (ring.is_leaving_at(turn)) {
    const bool passes_the_first = turn == 0;
    ClipHit* const next = ring.turns[passes_the_first ? ring.n_turns - 1 : turn - 1];
    if (passes_the_first) append_vertices_back(ring, edge, -1, target);
    append_vertices_back(ring, passes_the_first ? ring.count - 1 : edge, next->edge[kind], target);
    return next;
  }
  const bool passes_the_last = turn + 1 == ring.n_turns;
  ClipHit* const next = ring.turns[passes_the_last ? 0 : turn + 1];
  if (passes_the_last) append_vertices(ring, edge + 1, ring.count, target);
  append_vertices(ring, passes_the_last ? 0 : edge + 1, next->edge[kind] + 1, target);
  return next;
}

// Traces one result ring from a crossing: follows the outline that leads inwards, and changes to
// the other outline at each crossing.
//
// An edge through a corner of the rectangle has two crossings there. They are marked alternately as
// entering and leaving, although the edge may do only one of these. The ring can then reach a
// visited crossing that is not its start, and is closed there. So no crossing is passed twice, and
// every ring ends.
void walk_from(ClipHit* hit, const ClipRing& subject, const ClipRing& corners, drw_pset_t* target) {
  do {
    hit = visit<of_clip>(hit, corners, target);
    if (!hit->is_visited()) hit = visit<of_subject>(hit, subject, target);
  } while (!hit->is_visited());
  int& last_flag = target->edge_flags[target->n_points - 1];
  last_flag = last_flag == drw_edge_visible ? drw_edge_close_visible : drw_edge_close_invisible;
}

// Clips a polygon that may cross the rectangle. Allocates all memory before it appends anything, so
// if the heap refuses, nothing of the polygon is written.
void clip_across(const Outline& outline, drw_pset_t* target, const ClipRect& clip) {
  ClipScratch scratch;
  Outline ring = outline;
  ClipHits& hits = scratch.hits;
  if (!find_hits(outline, clip, &hits)) return;
  if (hits.count() > 0 && has_repeats(outline.points, outline.count)) {
    // At repeated vertices there are edges of length 0, which are not edges of the ring. Some of
    // the crossings found may lie on these: search again in a copy without repeats. If there is
    // no crossing, repeats make no difference.
    ring = without_repeats(outline, &scratch);
    if (ring.count < 2) return;
    ClipFreeRings(&hits);
    // The room suffices: fewer edges have no more crossings.
    [[maybe_unused]] const bool fits = find_hits(ring, clip, &hits);
    assert(fits);
  }
  if (hits.count() == 0) {
    if (spans_the_rectangle(outline, clip)) append_uncrossed(outline, clip, target);
    return;
  }
  ClipRing subject = {of_subject, ring.points, ring.edge_flags, ring.count};
  ClipRing corners = {of_clip, clip.corners, corner_flags, 4};
  if (!ClipSpliceHits(&hits, &subject, &corners)) return;
  subject.begins_inside = ClipPointInRing(subject.points[0].x, subject.points[0].y, corners);
  corners.begins_inside = ClipPointInRing(corners.points[0].x, corners.points[0].y, subject);
  drw_pset_t result = *target;  // a copy, so the compiler knows that no write changes its count
  for (ClipHit* hit = hits.begin; hit != hits.end; ++hit) {
    if (!hit->is_visited()) walk_from(hit, subject, corners, &result);
  }
  target->n_points = result.n_points;
}

// Clips one polygon and appends the result.
void ClipOnePolygon(const Outline& outline, drw_pset_t* target, const ClipRect& clip) {
  const bool is_inside = zelvan::is_inside(clip.inner, outline.points[outline.count / 2]) &&
                         count_inside(outline.points, outline.count, clip.inner) == outline.count;
  if (is_inside) {
    append_uncrossed(outline, clip, target);
  } else {
    clip_across(outline, target, clip);
  }
}

}  // namespace

}  // namespace zelvan

void ClipPolygonSet(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect) {
  using namespace zelvan;
  const ClipRect clip(*rect);
  // Outlines beyond a side are skipped: all their edges would be rejected, and both containment
  // tests would fail.
  for (int from = 0;;) {
    const Outline outline = find_near_outline(*source, from, clip.outer);
    if (outline.count == 0) return;
    from = static_cast<int>(outline.points - source->points) + outline.count;
    ClipOnePolygon(outline, target, clip);
  }
}
