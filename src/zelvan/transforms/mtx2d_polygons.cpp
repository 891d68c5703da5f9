#include <zelvan/transforms/mtx2d.h>

#include <algorithm>

namespace {

bool same(const int_pt_t& a, const int_pt_t& b) { return a.x == b.x && a.y == b.y; }
bool same(const real_pt_t& a, const real_pt_t& b) { return a.x == b.x && a.y == b.y; }

// Maps n vertices and drops repeats; gives the number kept. `carry_flag(i, k)` is told that
// the flag of input vertex i now belongs to output vertex k. The vertices are mapped block by
// block through the array operation, whose vector forms thus serve here as well.
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
      if (kept == 0 || !same(mapped[i], out[kept - 1])) out[kept++] = mapped[i];
      carry_flag(done, kept - 1);
    }
  }
  // There and back is a line: only the count forgets the way back.
  if (kept == 3 && same(out[2], out[0])) kept = 2;
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
