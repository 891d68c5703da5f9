#include <zelvan/detail/edge_flags.h>
#include <zelvan/detail/same_point.h>
#include <zelvan/transforms/mtx2d.h>

#include <algorithm>

using zelvan::is_closing;
using zelvan::is_same_point;

namespace {

// Maps n vertices of one polygon and drops those that repeat the one before; returns the number
// kept. Calls `carry_flag(i, k)` for each input vertex i, where k is the output vertex that stands
// for it: of equal vertices the last one's flag stays. Maps in blocks through the array operation,
// to use its vector forms.
template <class Out, class CarryFlag>
int map_polygon(Mtx2D& m, void (Mtx2D::*map_array)(int, real_pt_t*, Out*), int n, real_pt_t* in,
                Out* out, CarryFlag carry_flag) {
  constexpr int block = 128;
  Out mapped[block];
  int kept = 0;
  for (int done = 0; done < n;) {
    const int count = std::min(block, n - done);
    (m.*map_array)(count, in + done, mapped);
    for (int i = 0; i < count; ++i, ++done) {
      if (kept == 0 || !is_same_point(mapped[i], out[kept - 1])) out[kept++] = mapped[i];
      carry_flag(done, kept - 1);
    }
  }
  // Three vertices of which the last repeats the first are a line and count as two. The third stays
  // in the array.
  if (kept == 3 && is_same_point(out[2], out[0])) kept = 2;
  return kept;
}

template <class OutSet, class Out>
void map_set(Mtx2D& m, void (Mtx2D::*map_array)(int, real_pt_t*, Out*), const drw_pset_t* in,
             OutSet* out) {
  const auto carry_flag = [from = in->edge_flags, to = out->edge_flags](int i, int k) {
    to[k] = from[i];
  };
  out->n_points = map_polygon(m, map_array, in->n_points, in->points, out->points, carry_flag);
}

// Drops vertices that repeat the one before in the same polygon, and an unclosed last polygon. Maps
// each block straight into the output, and compacts it if some vertices repeat. Branch-free for
// each vertex: in a drawing seen from afar the processor could not predict which ones repeat.
template <class OutSet, class Out>
void map_each_polygon(const Mtx2D& m, void (Mtx2D::*map_array)(int, const real_pt_t*, Out*) const,
                      const drw_pset_t& in, OutSet* out) {
  constexpr int block = 128;
  bool is_kept[block];
  const int n = in.n_points;  // a copy, so the compiler knows that no write to `out` changes it
  int kept = 0;
  bool begins = true;  // the next vertex begins a polygon, so it is always kept
  Out before = {};
  for (int done = 0, count; done < n; done += count) {
    count = std::min(block, n - done);
    const int* const flags = in.edge_flags + done;
    Out* const mapped = out->points + kept;
    (m.*map_array)(count, in.points + done, mapped);
    is_kept[0] = begins || !is_same_point(mapped[0], before);
    int count_kept = is_kept[0];
    for (int i = 1; i < count; ++i) {
      is_kept[i] = is_closing(flags[i - 1]) | (mapped[i].x != mapped[i - 1].x) |
                   (mapped[i].y != mapped[i - 1].y);
      count_kept += is_kept[i];
    }
    begins = is_closing(flags[count - 1]);
    before = mapped[count - 1];
    if (count_kept == count) {
      std::copy_n(flags, count, out->edge_flags + kept);
      kept += count;
      continue;
    }
    for (int i = 0; i < count; ++i) {
      kept += is_kept[i];
      out->points[kept - 1] = mapped[i];
      out->edge_flags[kept - 1] = flags[i];
    }
  }
  while (kept > 0 && !is_closing(out->edge_flags[kept - 1])) --kept;
  out->n_points = kept;
}

}  // namespace

void Mtx2D::XfmPolyPts(int n, int* n_out, real_pt_t* in, int_pt_t* out) {
  *n_out = map_polygon(*this, &Mtx2D::XfmPts, n, in, out, [](int, int) {});
}

void Mtx2D::XfmPolySetPts(drw_pset_t* in, drw_dpset_t* out) {
  map_set(*this, &Mtx2D::XfmPts, in, out);
}

void Mtx2D::RealXfmPolyPtSet(drw_pset_t* in, drw_pset_t* out) {
  map_set(*this, &Mtx2D::RealXfmPts, in, out);
}

void Mtx2D::XfmPolygons(const drw_pset_t& in, drw_dpset_t* out) const {
  map_each_polygon(*this, &Mtx2D::XfmPts, in, out);
}

void Mtx2D::RealXfmPolygons(const drw_pset_t& in, drw_pset_t* out) const {
  map_each_polygon(*this, &Mtx2D::RealXfmPts, in, out);
}
