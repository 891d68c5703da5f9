/// The rings of polygon clipping: two outlines, each an array of vertices, and the crossings that
/// stand in both.
///
/// Only crossings become records; the vertices between them stay where they are. All records live
/// in a `ClipArena` and end with `ClipFreeRings`. Functions that make some give false when the
/// heap refuses.
#pragma once

#include <zelvan/geometry/detail/clip_arena.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

/// The two rings of a polygon's clipping, and what a crossing holds once for each.
enum clip_ring_kind { of_subject, of_clip };

/// A crossing of an edge of the subject with one of the clip ring.
struct ClipHit {
  real_pt_t at;
  double param[2];  ///< where on the edge, from 0 to 1
  int edge[2];      ///< the vertex at which the edge begins
  int turn[2];      ///< its number in the ring's order
  bool leaving[2];  ///< the ring comes out of the other outline here
  bool visited;
};

/// The crossings in the order in which they were found: by edge of the subject, and for each by
/// edge of the clip ring.
struct ClipHits {
  ClipHit* found = nullptr;
  int count = 0;
  int room = 0;  ///< of `found`

  /// Where the next one is written, which counts once `count` is raised; null when the heap
  /// refuses.
  ClipHit* next(ClipArena* arena) { return count < room || grow(arena) ? &found[count] : nullptr; }

 private:
  bool grow(ClipArena* arena);
};

/// An outline with its crossings.
struct ClipRing {
  clip_ring_kind kind;
  int count;  ///< of the vertices; the last edge leads back to the first
  const real_pt_t* points;
  const int* edge_flags;
  ClipHit** turns;  ///< the crossings in the order in which the ring comes by
  int n_turns;
};

/// Orders the crossings along the ring. Of two on one edge, the one found later comes right before
/// the first that is further along: so of crossings at the same place the earlier stays first.
bool ClipInsertHits(const ClipHits& hits, ClipRing* ring, ClipArena* arena);

/// True when the ring, its edges cut at the crossings, winds about the point; the boundary counts
/// as outside.
bool ClipPointInRing(double px, double py, const ClipRing& ring);

/// Ends the life of all records of a polygon.
void ClipFreeRings(ClipArena* arena);

}  // namespace zelvan
