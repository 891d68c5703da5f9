/// The rings of polygon clipping: two outlines, each an array of vertices, and the crossings that
/// both share.
///
/// Only crossings become records; the vertices between them stay in the arrays. All records live in
/// a `ClipHits`, which releases them. Functions that allocate records return false if the heap
/// refuses.
#pragma once

#include <zelvan/geometry/detail/scratch_array.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

/// The two rings of a polygon's clipping; also the index of a crossing's values for each ring.
enum clip_ring_kind { of_subject, of_clip };

/// A crossing of an edge of the subject with one of the clip ring.
struct ClipHit {
  real_pt_t at;
  double param[2];  ///< where on the ring's edge, from 0 to 1
  int edge[2];      ///< the ring's vertex at which the edge begins
  int turn[2];      ///< its place in the ring's `turns`; of_subject: -1 once visited

  bool is_visited() const { return turn[of_subject] < 0; }
  void set_visited() { turn[of_subject] = -1; }
};
// Size a multiple of 16, so that a paired store never straddles a cache line; reloading it would be
// slow.
static_assert(sizeof(ClipHit) % 16 == 0);

constexpr std::size_t few_hits = 64;

/// The crossings of a polygon, ordered along the subject. A few need no memory from the heap.
struct ClipHits {
  ScratchArray<ClipHit, few_hits> records;
  ScratchArray<ClipHit*, 2 * few_hits> turns;  ///< for `ClipSpliceHits`
  ClipHit* begin = records.begin();
  ClipHit* end = begin;
  ClipHit* room_end = begin + few_hits;

  int count() const { return static_cast<int>(end - begin); }
  /// Makes room for one more crossing; returns false if the heap refuses.
  bool make_room() { return end != room_end || grow(); }

 private:
  bool grow();
};

/// Moves `hit` to its place among the crossings before it on the same edge of the subject: before
/// the first that is further along. So of two at the same place the earlier stays first.
void ClipInsertHit(ClipHit* first_of_edge, ClipHit* hit);

/// An outline with its crossings.
struct ClipRing {
  clip_ring_kind kind;
  const real_pt_t* points;
  const int* edge_flags;
  int count;                  ///< number of vertices; the last edge returns to the first
  ClipHit** turns = nullptr;  ///< the crossings, ordered along this ring
  int n_turns = 0;
  bool begins_inside = false;  ///< the first vertex is inside the other outline

  /// True if this crossing counts as one where the ring leaves the other outline. Crossings count
  /// alternately as leaving and entering, wherever the ring really runs.
  bool is_leaving_at(int turn) const { return begins_inside != (turn % 2 != 0); }
};

/// Orders the crossings along both rings, as inserting them one by one would. Returns false if the
/// heap refuses.
bool ClipSpliceHits(ClipHits* hits, ClipRing* subject, ClipRing* corners);

/// Returns true if the ring, its edges cut at the crossings, winds about the point. On the
/// boundary, a point counts as inside if the interior is to its right, or above it on a horizontal
/// edge; else as outside.
bool ClipPointInRing(double px, double py, const ClipRing& ring);

/// Removes all records and keeps their memory, for a second search.
inline void ClipFreeRings(ClipHits* hits) { hits->end = hits->begin; }

}  // namespace zelvan
