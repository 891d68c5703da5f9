#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>

namespace zelvan {

template <class Result>
void map_points(Plain, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out) {
  with_mapping_of(m, [=](const auto& map) {
    for (int i = 0; i < n; ++i) out[i] = Result{}(map(in[i].x, in[i].y));
  });
}

template void map_points<ToReal>(Plain, const Mtx2D&, int, const real_pt_t*, real_pt_t*);
template void map_points<ToInt>(Plain, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToIntTimesEight>(Plain, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToShort>(Plain, const Mtx2D&, int, const real_pt_t*, short_pt_t*);

}  // namespace zelvan
