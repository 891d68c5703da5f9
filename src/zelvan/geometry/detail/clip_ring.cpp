#include <zelvan/geometry/detail/clip_ring.h>
#include <zelvan/transforms/records.h>

#include <algorithm>
#include <cmath>

namespace zelvan {

namespace {

void link_behind(ClipVertex* before, ClipVertex* vertex) {
  vertex->prev = before;
  vertex->next = before->next;
  before->next->prev = vertex;
  before->next = vertex;
}

int without_closing(int edge_flag) {
  if (edge_flag == drw_edge_close_invisible) return drw_edge_invisible;
  if (edge_flag == drw_edge_close_visible) return drw_edge_visible;
  return edge_flag;
}

}  // namespace

bool ClipAppendVertex(ClipRing* ring, double x, double y, int edge_flag, ClipArena* arena) {
  ClipVertex* vertex = arena->make<ClipVertex>();
  if (vertex == nullptr) return false;
  vertex->x = x;
  vertex->y = y;
  vertex->edge_flag = without_closing(edge_flag);
  if (ring->first == nullptr) {
    vertex->next = vertex->prev = vertex;
    ring->first = vertex;
  } else {
    link_behind(ring->cursor, vertex);
  }
  ring->cursor = vertex;
  ++ring->count;
  return true;
}

void ClipInsertHit(ClipVertex* edge, ClipHit* hit) {
  ClipHit** place = &edge->hits;
  while (*place != nullptr && !((*place)->param > hit->param)) place = &(*place)->next;
  hit->next = *place;
  *place = hit;
}

bool ClipInsertHits(ClipVertex* edge, const ClipFoundHits& found, ClipArena* arena) {
  constexpr int short_list = 32;  // not worth an array
  bool has_nan = false;           // whose place only the insertion defines
  for (const ClipHit* hit = found.first; hit != nullptr; hit = hit->next) {
    has_nan = has_nan || std::isnan(hit->param);
  }
  if (found.count <= short_list || has_nan) {
    for (ClipHit *hit = found.first, *next; hit != nullptr; hit = next) {
      next = hit->next;
      ClipInsertHit(edge, hit);
    }
    return true;
  }
  ClipHit** const sorted = arena->make<ClipHit*>(static_cast<std::size_t>(found.count));
  if (sorted == nullptr) return false;
  ClipHit** end = sorted;
  for (ClipHit* hit = found.first; hit != nullptr; hit = hit->next) *end++ = hit;
  std::stable_sort(sorted, end,
                   [](const ClipHit* a, const ClipHit* b) { return a->param < b->param; });
  ClipHit** link = &edge->hits;
  for (ClipHit** hit = sorted; hit != end; ++hit) {
    *link = *hit;
    link = &(*hit)->next;
  }
  *link = nullptr;
  return true;
}

void ClipSpliceHits(ClipRing* ring) {
  ClipVertex* vertex = ring->first;
  do {
    ClipVertex* behind = vertex;
    for (ClipHit* hit = vertex->hits; hit != nullptr; hit = hit->next) {
      link_behind(behind, hit->vertex);
      behind = hit->vertex;
      ++ring->count;
    }
    vertex->hits = nullptr;
    vertex = behind->next;
  } while (vertex != ring->first);
}

bool ClipPointInRing(double px, double py, const ClipRing& ring) {
  int winding = 0;
  const ClipVertex* a = ring.first;
  do {
    const ClipVertex* b = a->next;
    const auto cross = [&] { return (b->x - a->x) * (py - a->y) - (px - a->x) * (b->y - a->y); };
    if (py >= a->y) {
      if (b->y > py && cross() > 0.0) ++winding;
    } else {
      if (py >= b->y && cross() < 0.0) --winding;
    }
    a = b;
  } while (a != ring.first);
  return winding != 0;
}

void ClipFreeRings(ClipArena* arena) { arena->give_back_all(); }

}  // namespace zelvan
