/// The rings of polygon clipping: circular lists of vertices, with the crossings on them.
///
/// All records live in a `ClipArena` and end with `ClipFreeRings`; none is owned singly.
/// Functions that make records give false when the heap refuses.
#pragma once

#include <zelvan/geometry/detail/clip_arena.h>

namespace zelvan {

struct ClipHit;

/// A vertex of a ring: one of the input, or a crossing with the other outline. A crossing
/// stands in both rings, as a pair of twins.
struct ClipVertex {
  double x;
  double y;
  int edge_flag;  ///< visibility of the edge to `next`: 0 or 1, no closing values in a ring
  ClipVertex* next;
  ClipVertex* prev;
  ClipVertex* twin;  ///< the crossing's vertex in the other ring; null for the input's own
  int leaving;       ///< of a crossing: 1 where the ring comes out of the other outline, else 0
  int state;         ///< 0: the input's own; 1: a crossing not yet visited; -1: a visited one
  ClipHit* hits;     ///< the crossings on the edge to `next`, sorted, until they are spliced in
};

/// A crossing on an edge.
struct ClipHit {
  ClipVertex* vertex;
  double param;  ///< where on the edge, from 0 to 1
  ClipHit* next;
};

/// The crossings of one edge in the order in which they were found.
struct ClipFoundHits {
  ClipFoundHits() = default;
  ClipFoundHits(const ClipFoundHits&) = delete;  // `end` points into the object
  ClipFoundHits& operator=(const ClipFoundHits&) = delete;

  void add(ClipHit* hit) {
    *end = hit;
    end = &hit->next;
    ++count;
  }

  ClipHit* first = nullptr;
  ClipHit** end = &first;
  int count = 0;
};

struct ClipRing {
  int count;
  ClipVertex* first;
  ClipVertex* cursor;   ///< the vertex appended last
  ClipRing* next_ring;  ///< the next result ring of a chain, else null
};

/// Adds a vertex behind `cursor` and closes the circle. Of a closing flag the closing is dropped.
bool ClipAppendVertex(ClipRing* ring, double x, double y, int edge_flag, ClipArena* arena);

/// Adds a crossing to the edge that begins at `edge`, before the first one further along it:
/// of crossings at the same place the earlier stays first.
void ClipInsertHit(ClipVertex* edge, ClipHit* hit);

/// Gives `edge`, which has none, the order of hits that `ClipInsertHit` would give it one by
/// one, but takes n log n steps for n hits where that takes n squared.
bool ClipInsertHits(ClipVertex* edge, const ClipFoundHits& found, ClipArena* arena);

/// Moves all crossings of the ring's edges into the ring itself.
void ClipSpliceHits(ClipRing* ring);

/// True when the ring winds about the point, the boundary counting as outside.
bool ClipPointInRing(double px, double py, const ClipRing& ring);

/// Ends the life of all rings of a polygon, their vertices and hits.
void ClipFreeRings(ClipArena* arena);

}  // namespace zelvan
