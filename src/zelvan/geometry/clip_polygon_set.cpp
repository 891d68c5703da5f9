#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/detail/clip_arena.h>
#include <zelvan/geometry/detail/clip_ring.h>

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

bool is_closing(int edge_flag) {
  return edge_flag == drw_edge_close_invisible || edge_flag == drw_edge_close_visible;
}

// A polygon of the source, from its first vertex to its closing one.
struct Outline {
  const real_pt_t* points;
  const int* edge_flags;
  int count;
};

void append(drw_pset_t* target, double x, double y, int edge_flag) {
  target->points[target->n_points] = {x, y};
  target->edge_flags[target->n_points] = edge_flag;
  ++target->n_points;
}

// True when the whole outline lies strictly to one side of all four corners. Its edges would
// then all be rejected and both containment tests fail, so it can be left out at the cost of
// a few comparisons a vertex.
bool lies_apart(const Outline& outline, const real_rect_t& rect) {
  for (const real_pt_t& c : rect.corners) {
    if (std::isnan(c.x) || std::isnan(c.y)) return false;
  }
  const auto [low_x, high_x] =
      std::minmax({rect.corners[0].x, rect.corners[1].x, rect.corners[2].x, rect.corners[3].x});
  const auto [low_y, high_y] =
      std::minmax({rect.corners[0].y, rect.corners[1].y, rect.corners[2].y, rect.corners[3].y});
  int sides = left_of | right_of | below | above;
  for (int i = 0; i < outline.count && sides != 0; ++i) {
    const real_pt_t& p = outline.points[i];
    sides &= (p.x < low_x ? left_of : 0) | (p.x > high_x ? right_of : 0) |
             (p.y < low_y ? below : 0) | (p.y > high_y ? above : 0);
  }
  return sides != 0;
}

// Runs of the same point shrink to one vertex, with the flag of the first.
bool build_subject(const Outline& outline, ClipRing* ring, ClipArena* arena) {
  for (int i = 0; i < outline.count; ++i) {
    const real_pt_t& p = outline.points[i];
    const ClipVertex* last = ring->cursor;
    if (last != nullptr && last->x == p.x && last->y == p.y) continue;
    if (!ClipAppendVertex(ring, p.x, p.y, outline.edge_flags[i], arena)) return false;
  }
  return true;
}

bool build_clip(const real_rect_t& rect, ClipRing* ring, ClipArena* arena) {
  for (const real_pt_t& c : rect.corners) {
    if (!ClipAppendVertex(ring, c.x, c.y, drw_edge_invisible, arena)) return false;
  }
  return true;
}

bool both_above(double a0, double a1, double b0, double b1) {
  return a0 > b0 && a0 > b1 && a1 > b0 && a1 > b1;
}

// The side of the clip edge on which the whole subject edge lies, or 0.
int side_of_edge(const ClipVertex& s0, const ClipVertex& s1, const ClipVertex& c0,
                 const ClipVertex& c1) {
  if (both_above(c0.x, c1.x, s0.x, s1.x)) return left_of;
  if (both_above(s0.x, s1.x, c0.x, c1.x)) return right_of;
  if (both_above(c0.y, c1.y, s0.y, s1.y)) return below;
  if (both_above(s0.y, s1.y, c0.y, c1.y)) return above;
  return 0;
}

struct Crossing {
  double on_subject;  // from 0 to 1 along the edge
  double on_clip;
};

// True when the edges cross, both ends of each included. A NaN gets past the comparisons: the
// crossing then has a NaN place, as the arithmetic gives it.
bool find_crossing(const ClipVertex& s0, const ClipVertex& s1, const ClipVertex& c0,
                   const ClipVertex& c1, Crossing* crossing) {
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
  crossing->on_subject = a == 0.0 ? epsilon : a;
  crossing->on_clip = b == 0.0 ? epsilon : b;
  return true;
}

struct Crossings {
  int count = 0;
  int side_mask = 0;
  ClipFoundHits on_clip_edge[4];
};

// Puts a pair of twins onto the two edges: sorted at once on the subject's, which never has
// more than four; to be sorted later on the clip edge, which may have as many as there are
// subject edges.
bool add_crossing(ClipVertex* s0, const ClipVertex& s1, ClipVertex* c0, const Crossing& crossing,
                  ClipFoundHits* on_clip_edge, ClipArena* arena) {
  ClipVertex* twins = arena->make<ClipVertex>(2);
  ClipHit* hits = twins != nullptr ? arena->make<ClipHit>(2) : nullptr;
  if (hits == nullptr) return false;
  const double dxs = s1.x - s0->x;
  const double dys = s1.y - s0->y;
  for (int i = 0; i < 2; ++i) {
    twins[i].x = dxs * crossing.on_subject + s0->x;
    twins[i].y = dys * crossing.on_subject + s0->y;
    twins[i].edge_flag = i == 0 ? s0->edge_flag : c0->edge_flag;
    twins[i].twin = &twins[1 - i];
    twins[i].state = 1;
    hits[i].vertex = &twins[i];
  }
  hits[0].param = crossing.on_subject;
  hits[1].param = crossing.on_clip;
  ClipInsertHit(s0, &hits[0]);
  on_clip_edge->add(&hits[1]);
  return true;
}

bool find_crossings(const ClipRing& subject, const ClipRing& clip, Crossings* found,
                    ClipArena* arena) {
  ClipVertex* s0 = subject.first;
  do {
    ClipVertex* c0 = clip.first;
    for (ClipFoundHits& on_clip_edge : found->on_clip_edge) {
      const int side = side_of_edge(*s0, *s0->next, *c0, *c0->next);
      Crossing crossing;
      if (side != 0) {
        found->side_mask |= side;
      } else if (find_crossing(*s0, *s0->next, *c0, *c0->next, &crossing)) {
        if (!add_crossing(s0, *s0->next, c0, crossing, &on_clip_edge, arena)) return false;
        ++found->count;
      }
      c0 = c0->next;
    }
    s0 = s0->next;
  } while (s0 != subject.first);
  return true;
}

void append_uncrossed(const Outline& outline, const real_rect_t& rect, const ClipRing& subject,
                      const ClipRing& clip, int side_mask, drw_pset_t* target) {
  const bool on_both_x = (side_mask & left_of) != 0 && (side_mask & right_of) != 0;
  const bool on_both_y = (side_mask & below) != 0 && (side_mask & above) != 0;
  if (!on_both_x && !on_both_y) return;
  if (ClipPointInRing(subject.first->x, subject.first->y, clip)) {
    for (int i = 0; i < outline.count; ++i) {
      append(target, outline.points[i].x, outline.points[i].y, outline.edge_flags[i]);
    }
  } else if (ClipPointInRing(clip.first->x, clip.first->y, subject)) {
    for (const real_pt_t& c : rect.corners) append(target, c.x, c.y, drw_edge_invisible);
    target->edge_flags[target->n_points - 1] = drw_edge_close_invisible;
  }
}

// Going round a ring, its crossings lead in and out of the other outline by turns.
void mark(const ClipRing& ring, const ClipRing& other) {
  int inside = ClipPointInRing(ring.first->x, ring.first->y, other) ? 1 : 0;
  ClipVertex* vertex = ring.first;
  do {
    if (vertex->state == 1) {
      vertex->leaving = inside;
      inside = 1 - inside;
    }
    vertex = vertex->next;
  } while (vertex != ring.first);
}

// Walks one result ring from a crossing: along whichever outline leads inwards, changing over
// at each crossing. An edge through a corner counts as two crossings and can break the
// alternation; the walk then comes to a crossing already visited that is not its start, and
// the ring is closed there. So no crossing is passed twice, and every walk ends.
bool walk_from(ClipVertex* start, ClipRing* result, ClipArena* arena) {
  ClipVertex* c = start;
  do {
    c->state = -1;
    c = c->twin;
    c->state = -1;
    const bool forward = c->leaving == 0;
    do {
      if (!ClipAppendVertex(result, c->x, c->y, c->edge_flag, arena)) return false;
      c = forward ? c->next : c->prev;
    } while (c->state == 0);
  } while (c->state == 1);
  return true;
}

// Gives the chain of result rings in `*chain`.
bool walk_all(const ClipRing& subject, ClipRing** chain, ClipArena* arena) {
  ClipVertex* vertex = subject.first->next;
  while (vertex != subject.first) {
    if (vertex->state == 1) {
      ClipRing* ring = arena->make<ClipRing>();
      if (ring == nullptr || !walk_from(vertex, ring, arena)) return false;
      *chain = ring;
      chain = &ring->next_ring;
    }
    vertex = vertex->next;
  }
  return true;
}

void append_rings(const ClipRing* chain, drw_pset_t* target) {
  for (const ClipRing* ring = chain; ring != nullptr; ring = ring->next_ring) {
    const ClipVertex* vertex = ring->first;
    do {
      append(target, vertex->x, vertex->y, vertex->edge_flag);
      vertex = vertex->next;
    } while (vertex != ring->first);
    int& last_flag = target->edge_flags[target->n_points - 1];
    last_flag = last_flag == drw_edge_visible ? drw_edge_close_visible : drw_edge_close_invisible;
  }
}

// Clips one polygon. Nothing is appended before all memory for it has been had, so where the
// heap refuses the polygon leaves no trace.
void ClipOnePolygon(const Outline& outline, drw_pset_t* target, const real_rect_t& rect,
                    ClipArena* arena) {
  if (lies_apart(outline, rect)) return;
  ClipRing subject{};
  ClipRing clip{};
  if (!build_subject(outline, &subject, arena) || !build_clip(rect, &clip, arena)) return;
  if (subject.count < 2) return;

  Crossings found;
  if (!find_crossings(subject, clip, &found, arena)) return;
  if (found.count == 0) {
    append_uncrossed(outline, rect, subject, clip, found.side_mask, target);
    return;
  }
  ClipVertex* edge = clip.first;
  for (const ClipFoundHits& on_clip_edge : found.on_clip_edge) {
    if (!ClipInsertHits(edge, on_clip_edge, arena)) return;
    edge = edge->next;
  }
  ClipSpliceHits(&subject);
  ClipSpliceHits(&clip);
  mark(subject, clip);
  mark(clip, subject);
  ClipRing* chain = nullptr;
  if (walk_all(subject, &chain, arena)) append_rings(chain, target);
}

}  // namespace

}  // namespace zelvan

void ClipPolygonSet(drw_pset_t* source, drw_pset_t* target, real_rect_t* rect) {
  using namespace zelvan;
  ClipArena arena;
  int scan = 0;
  while (true) {
    while (scan < source->n_points && is_closing(source->edge_flags[scan])) ++scan;
    int last = scan;
    while (last < source->n_points && !is_closing(source->edge_flags[last])) ++last;
    if (last >= source->n_points) return;
    const Outline outline = {source->points + scan, source->edge_flags + scan, last - scan + 1};
    ClipOnePolygon(outline, target, *rect, &arena);
    ClipFreeRings(&arena);
    scan = last + 1;
  }
}
