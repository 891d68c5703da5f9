#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/rounding.h>
#include <zelvan/transforms/mtx2d.h>

namespace {

bool same(const int_pt_t& a, const int_pt_t& b) { return a.x == b.x && a.y == b.y; }
bool same(const real_pt_t& a, const real_pt_t& b) { return a.x == b.x && a.y == b.y; }

int_pt_t rounded(real_pt_t p) { return zelvan::round_to_device(p); }
real_pt_t as_it_is(real_pt_t p) { return p; }

// Maps n vertices and drops repeats; gives the number kept. `carry_flag(i, k)` is told that
// the flag of input vertex i now belongs to output vertex k.
template <class Out, class Finish, class CarryFlag>
int map_polygon(const Mtx2D& m, int n, const real_pt_t* in, Out* out, Finish finish,
                CarryFlag carry_flag) {
  if (n <= 0) return 0;
  int kept = 1;
  zelvan::with_mapping_of(m, [&](auto map) {
    Out last = finish(map(in[0].x, in[0].y));
    out[0] = last;
    carry_flag(0, 0);
    for (int i = 1; i < n; ++i) {
      const Out next = finish(map(in[i].x, in[i].y));
      if (!same(next, last)) {
        out[kept] = next;
        ++kept;
        last = next;
      }
      carry_flag(i, kept - 1);
    }
  });
  // There and back is a line: only the count forgets the way back.
  if (kept == 3 && same(out[2], out[0])) kept = 2;
  return kept;
}

template <class OutSet, class Finish>
void map_set(const Mtx2D& m, const drw_pset_t* in, OutSet* out, Finish finish) {
  out->n_points =
      map_polygon(m, in->n_points, in->points, out->points, finish,
                  [from = in->edge_flags, to = out->edge_flags](int i, int k) { to[k] = from[i]; });
}

}  // namespace

void Mtx2D::XfmPolyPts(int n, int* n_out, real_pt_t* in, int_pt_t* out) {
  *n_out = map_polygon(*this, n, in, out, rounded, [](int, int) {});
}

void Mtx2D::XfmPolySetPts(drw_pset_t* in, drw_dpset_t* out) { map_set(*this, in, out, rounded); }

void Mtx2D::RealXfmPolyPtSet(drw_pset_t* in, drw_pset_t* out) { map_set(*this, in, out, as_it_is); }
