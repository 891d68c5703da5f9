// A vector holds one point. Multiplication and addition stay separate instructions: fusing them
// would skip a rounding, which changes results.

#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>

#include <climits>

#include <arm_neon.h>

namespace zelvan {
namespace {

// The mappings for a point in a vector.

auto for_vectors(const DiagonalMapping& m) {
  const float64x2_t factors = {m.m11, m.m22};
  const float64x2_t translation = {m.tx, m.ty};
  return [=](float64x2_t p) { return factors * p + translation; };
}

auto for_vectors(const QuadrantMapping& m) {
  const float64x2_t factors = {m.m21, m.m12};
  const float64x2_t translation = {m.tx, m.ty};
  return [=](float64x2_t p) { return factors * vextq_f64(p, p, 1) + translation; };  // y, x
}

auto for_vectors(const GeneralMapping& m) {
  const float64x2_t of_x = {m.m11, m.m12};
  const float64x2_t of_y = {m.m21, m.m22};
  const float64x2_t translation = {m.tx, m.ty};
  return [=](float64x2_t p) { return (of_x * p[0] + of_y * p[1]) + translation; };
}

// The conversion truncates and saturates at 64 bits; a NaN becomes 0. Results below 2^31 in
// magnitude fit 32 bits. All others are replaced by INT_MIN, which is right as well for numbers
// between -2^31 - 1 and -2^31. With a NaN the comparison is false.
int64x2_t round_wide(float64x2_t v) {
  const uint64x2_t sign = vreinterpretq_u64_f64(vdupq_n_f64(-0.0));
  const float64x2_t sum = vaddq_f64(v, vbslq_f64(sign, v, vdupq_n_f64(0.5)));
  const uint64x2_t fits = vcaltq_f64(sum, vdupq_n_f64(0x1p31));
  return vbslq_s64(fits, vcvtq_s64_f64(sum), vdupq_n_s64(INT_MIN));
}

/// Rounds two points, and returns the low 32 bits of their coordinates as x, y, x, y.
int32x4_t round_pair(float64x2_t first, float64x2_t second) {
  return vuzp1q_s32(vreinterpretq_s32_s64(round_wide(first)),
                    vreinterpretq_s32_s64(round_wide(second)));
}

// Each stores two points: the narrow results of one would not fill a vector.

void store(ToReal, real_pt_t* out, float64x2_t first, float64x2_t second) {
  vst1q_f64(&out[0].x, first);
  vst1q_f64(&out[1].x, second);
}

void store(ToInt, int_pt_t* out, float64x2_t first, float64x2_t second) {
  vst1q_s32(&out->x, round_pair(first, second));
}

void store(ToIntTimesEight, int_pt_t* out, float64x2_t first, float64x2_t second) {
  vst1q_s32(&out->x, vshlq_n_s32(round_pair(first, second), 3));
}

void store(ToShort, short_pt_t* out, float64x2_t first, float64x2_t second) {
  vst1_s16(&out->x, vmovn_s32(round_pair(first, second)));
}

}  // namespace

template <class Result>
void map_points(Neon, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out) {
  with_mapping_of(m, [=](const auto& map) {
    const auto map_vector = for_vectors(map);
    int i = 0;
    for (; i + 1 < n; i += 2) {
      const float64x2_t first = vld1q_f64(&in[i].x);
      const float64x2_t second = vld1q_f64(&in[i + 1].x);
      store(Result{}, out + i, map_vector(first), map_vector(second));
    }
    if (i < n) out[i] = Result{}(map(in[i].x, in[i].y));
  });
}

template void map_points<ToReal>(Neon, const Mtx2D&, int, const real_pt_t*, real_pt_t*);
template void map_points<ToInt>(Neon, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToIntTimesEight>(Neon, const Mtx2D&, int, const real_pt_t*, int_pt_t*);
template void map_points<ToShort>(Neon, const Mtx2D&, int, const real_pt_t*, short_pt_t*);

}  // namespace zelvan
