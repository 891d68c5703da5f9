#include <zelvan/geometry/detail/clip_ring.h>

#include <algorithm>
#include <cmath>

namespace zelvan {

namespace {

/// What the edge from `a` to `b` adds to the winding number about (px, py).
int winding_of_edge(const real_pt_t& a, const real_pt_t& b, double px, double py) {
  const auto cross = [&] { return (b.x - a.x) * (py - a.y) - (px - a.x) * (b.y - a.y); };
  if (py >= a.y) return b.y > py && cross() > 0.0 ? 1 : 0;
  return py >= b.y && cross() < 0.0 ? -1 : 0;
}

/// The sum over the edges between `n` points. Most edges lie wholly above or below, and these are
/// passed over by one comparison each.
int winding_of_chain(const real_pt_t* points, int n, double px, double py) {
  int winding = 0;
  bool was_below = py >= points[0].y;
  for (int i = 1; i < n; ++i) {
    const bool is_below = py >= points[i].y;
    if (is_below != was_below) winding += winding_of_edge(points[i - 1], points[i], px, py);
    was_below = is_below;
  }
  return winding;
}

/// Puts `hit` into the `n` ordered turns of its edge.
void ClipInsertHit(ClipHit** turns, int n, ClipHit* hit, int kind) {
  int place = 0;
  while (place < n && !(turns[place]->param[kind] > hit->param[kind])) ++place;
  std::copy_backward(turns + place, turns + n, turns + n + 1);
  turns[place] = hit;
}

/// Orders the turns of one edge, which stand in the order in which they were found.
void order_turns(ClipHit** turns, int n, int kind) {
  if (n == 1) return;
  const auto param = [kind](const ClipHit* hit) { return hit->param[kind]; };
  const bool has_nan =
      std::any_of(turns, turns + n, [&](const ClipHit* hit) { return std::isnan(param(hit)); });
  if (has_nan) {  // whose place only the insertion defines
    for (int i = 1; i < n; ++i) ClipInsertHit(turns, i, turns[i], kind);
    return;
  }
  // Outlines often come by along the rectangle, or against it.
  if (std::is_sorted(turns, turns + n, [&](auto a, auto b) { return param(a) < param(b); })) return;
  std::reverse(turns, turns + n);
  if (std::is_sorted(turns, turns + n, [&](auto a, auto b) { return param(a) <= param(b); }))
    return;
  std::sort(turns, turns + n,
            [&](auto a, auto b) { return param(a) != param(b) ? param(a) < param(b) : a < b; });
}

}  // namespace

bool ClipHits::grow(ClipArena* arena) {
  const int larger = room == 0 ? 16 : 2 * room;
  auto* const moved = arena->make<ClipHit>(static_cast<std::size_t>(larger));
  if (moved == nullptr) return false;
  std::copy_n(found, count, moved);
  found = moved;
  room = larger;
  return true;
}

bool ClipInsertHits(const ClipHits& hits, ClipRing* ring, ClipArena* arena) {
  const int kind = ring->kind;
  ring->turns = arena->make<ClipHit*>(static_cast<std::size_t>(hits.count));
  if (ring->turns == nullptr) return false;
  ring->n_turns = hits.count;
  int place_of_edge[4] = {0, 0, 0, 0};
  if (kind == of_clip) {  // found again and again, with each edge of the subject
    for (int i = 0; i < hits.count; ++i) {
      for (int edge = hits.found[i].edge[kind] + 1; edge < 4; ++edge) ++place_of_edge[edge];
    }
  }
  for (int i = 0; i < hits.count; ++i) {
    const int place = kind == of_clip ? place_of_edge[hits.found[i].edge[kind]]++ : i;
    ring->turns[place] = &hits.found[i];
  }
  for (int first = 0, behind; first < hits.count; first = behind) {
    behind = first + 1;
    const int edge = ring->turns[first]->edge[kind];
    while (behind < hits.count && ring->turns[behind]->edge[kind] == edge) ++behind;
    order_turns(ring->turns + first, behind - first, kind);
  }
  for (int i = 0; i < hits.count; ++i) ring->turns[i]->turn[kind] = i;
  return true;
}

bool ClipPointInRing(double px, double py, const ClipRing& ring) {
  int winding = 0;
  int first = 0;  // of the chain of vertices up to the next edge with crossings
  for (int i = 0; i < ring.n_turns;) {
    const int edge = ring.turns[i]->edge[ring.kind];
    winding += winding_of_chain(ring.points + first, edge - first + 1, px, py);
    const real_pt_t* a = &ring.points[edge];
    for (; i < ring.n_turns && ring.turns[i]->edge[ring.kind] == edge; ++i) {
      winding += winding_of_edge(*a, ring.turns[i]->at, px, py);
      a = &ring.turns[i]->at;
    }
    first = edge + 1;
    winding += winding_of_edge(*a, ring.points[first == ring.count ? 0 : first], px, py);
  }
  if (first < ring.count) {
    winding += winding_of_chain(ring.points + first, ring.count - first, px, py);
    winding += winding_of_edge(ring.points[ring.count - 1], ring.points[0], px, py);
  }
  return winding != 0;
}

void ClipFreeRings(ClipArena* arena) { arena->give_back_all(); }

}  // namespace zelvan
