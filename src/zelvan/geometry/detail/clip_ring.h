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
  int turn[2];      ///< its number in the ring's order; in the subject's -1 once it was visited

  bool is_visited() const { return turn[of_subject] < 0; }
  void set_visited() { turn[of_subject] = -1; }
};
// So in an array no two numbers that are stored at once lie across two lines of the cache: to read
// them again soon would take long.
static_assert(sizeof(ClipHit) % 16 == 0);

/// The crossings in the order in which the subject comes by.
struct ClipHits {
  ClipHit* begin;
  ClipHit* end;
  ClipHit* room_end;

  int count() const { return static_cast<int>(end - begin); }
  /// Makes room for one more; false when the heap refuses.
  bool make_room(ClipArena* arena) { return end != room_end || grow(arena); }

 private:
  bool grow(ClipArena* arena);
};

/// Puts `hit` to its place among those before it on the same edge of the subject: before the first
/// that is further along, so that of two at the same place the earlier stays first.
void ClipInsertHit(ClipHit* first_of_edge, ClipHit* hit);

/// An outline with its crossings.
struct ClipRing {
  clip_ring_kind kind;
  const real_pt_t* points;
  const int* edge_flags;
  int count;                  ///< of the vertices; the last edge leads back to the first
  ClipHit** turns = nullptr;  ///< the crossings in the order in which the ring comes by
  int n_turns = 0;
  bool begins_inside = false;  ///< of the other outline

  /// The crossings lead in and out of the other outline by turns.
  bool is_leaving_at(int turn) const { return begins_inside != (turn % 2 != 0); }
};

/// Gives both rings the crossings, in the clip ring's order as inserting them one by one would
/// give. False when the heap refuses.
bool ClipSpliceHits(const ClipHits& hits, ClipRing* subject, ClipRing* corners, ClipArena* arena);

/// True when the ring, its edges cut at the crossings, winds about the point; the boundary counts
/// as outside.
bool ClipPointInRing(double px, double py, const ClipRing& ring);

/// Ends the life of all records of a polygon.
inline void ClipFreeRings(ClipArena* arena) { arena->give_back_all(); }

}  // namespace zelvan
