#include <zelvan/geometry/detail/clip_ring.h>

#include <algorithm>
#include <bit>
#include <cmath>

namespace zelvan {

namespace {

/// Counts how often a chain of points winds about (px, py).
class Winding {
 public:
  Winding(double px, double py, const real_pt_t& first)
      : px_(px), py_(py), is_below_(py >= first.y) {}

  /// Adds an edge. Most lie wholly above or below the point; one comparison skips them.
  void go(const real_pt_t& a, const real_pt_t& b) {
    const bool is_below = py_ >= b.y;
    if (is_below != is_below_) number_ += of_edge(a, b);
    is_below_ = is_below;
  }
  /// Adds the edges between consecutive points.
  void go_along(const real_pt_t* first, const real_pt_t* last) {
    for (const real_pt_t* p = first; p < last; ++p) go(p[0], p[1]);
  }
  int number() const { return number_; }

 private:
  // Returns 1 if the edge passes upwards to the right of (px, py), -1 if downwards, else 0.
  // Requires: one end is above (px, py) or NaN, and the other is not.
  int of_edge(const real_pt_t& a, const real_pt_t& b) const {
    const double cross = (b.x - a.x) * (py_ - a.y) - (px_ - a.x) * (b.y - a.y);
    if (is_below_) return cross > 0.0 ? 1 : 0;
    return cross < 0.0 ? -1 : 0;
  }

  double px_, py_;
  bool is_below_;  // the last point is not above (px, py)
  int number_ = 0;
};

/// Orders the crossings on one edge of the clip ring as if each were inserted before the first that
/// is further along. Requires: they stand in the order in which they were found.
void order_turns(ClipHit** turns, int n) {
  // An outline that follows the rectangle has its crossings in rising or in falling order: they
  // need no sort.
  bool rises = true, falls = true;
  double furthest = 0.0, previous = 2.0;
  for (int i = 0; i < n; ++i) {
    double& param = turns[i]->param[of_clip];
    if (std::isnan(param)) param = furthest;  // a NaN goes to the end: nothing is further along
    furthest = std::max(furthest, param);
    rises = rises && param == furthest;
    falls = falls && param < previous;
    previous = param;
  }
  if (rises) return;
  if (falls) return std::reverse(turns, turns + n);
  std::sort(turns, turns + n, [](const ClipHit* a, const ClipHit* b) {
    const double a_param = a->param[of_clip], b_param = b->param[of_clip];
    return a_param != b_param ? a_param < b_param : a < b;
  });
}

}  // namespace

bool ClipHits::grow() {
  const auto n = static_cast<std::size_t>(count());
  ClipHit* const moved = records.make_room(4 * n, n);
  if (moved == nullptr) return false;
  begin = moved;
  end = moved + n;
  room_end = moved + 4 * n;
  return true;
}

void ClipInsertHit(ClipHit* first_of_edge, ClipHit* hit) {
  ClipHit* place = first_of_edge;
  while (place < hit && !(place->param[of_subject] > hit->param[of_subject])) ++place;
  std::rotate(place, hit, hit + 1);
}

bool ClipSpliceHits(ClipHits* hits, ClipRing* subject, ClipRing* corners) {
  ClipHit* const found = hits->begin;
  const int count = hits->count();
  ClipHit** const turns = hits->turns.make_room(2 * static_cast<std::size_t>(count));
  if (turns == nullptr) return false;
  subject->turns = turns;
  corners->turns = turns + count;
  subject->n_turns = corners->n_turns = count;
  unsigned edges = 0;  // the edges of the clip ring that have crossings
  for (int i = 0; i < count; ++i) {
    turns[i] = found + i;
    found[i].turn[of_subject] = i;
    edges |= 1u << found[i].edge[of_clip];
  }
  for (ClipHit** end = turns + count; edges != 0; edges &= edges - 1) {
    const int edge = std::countr_zero(edges);
    ClipHit** const first = end;
    for (int i = 0; i < count; ++i) {
      if (found[i].edge[of_clip] == edge) *end++ = found + i;
    }
    order_turns(first, static_cast<int>(end - first));
  }
  for (int i = 0; i < count; ++i) turns[count + i]->turn[of_clip] = i;
  return true;
}

bool ClipPointInRing(double px, double py, const ClipRing& ring) {
  Winding winding(px, py, ring.points[0]);
  const real_pt_t* last = ring.points;      // the vertex or crossing passed last
  const real_pt_t* next = ring.points + 1;  // the vertex to pass next
  const auto go_up_to = [&](const real_pt_t* vertex) {
    if (next > vertex) return;
    winding.go(*last, *next);
    winding.go_along(next, vertex);
    last = vertex;
    next = vertex + 1;
  };
  for (int turn = 0; turn < ring.n_turns; ++turn) {
    const ClipHit& hit = *ring.turns[turn];
    go_up_to(ring.points + hit.edge[ring.kind]);
    winding.go(*last, hit.at);
    last = &hit.at;
  }
  go_up_to(ring.points + ring.count - 1);
  winding.go(*last, ring.points[0]);
  return winding.number() != 0;
}

}  // namespace zelvan
