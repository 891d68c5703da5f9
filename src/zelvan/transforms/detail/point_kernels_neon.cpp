// A vector holds one point. Multiplications and additions stay apart: the instructions that fuse
// them are never asked for, since they would skip a rounding that callers see.

#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>
#include <zelvan/transforms/detail/rounding.h>

#if defined(__aarch64__)

#include <climits>

#include <arm_neon.h>

namespace {

using zelvan::DiagonalMapping;
using zelvan::GeneralMapping;
using zelvan::QuadrantMapping;

float64x2_t vector_of(double x, double y) { return vcombine_f64(vdup_n_f64(x), vdup_n_f64(y)); }

// Each mapping once more, for a point in a vector.

struct DiagonalVector {
  float64x2_t factors, translation;

  explicit DiagonalVector(const DiagonalMapping& m)
      : factors(vector_of(m.m11, m.m22)), translation(vector_of(m.tx, m.ty)) {}
  float64x2_t operator()(float64x2_t p) const {
    return vaddq_f64(vmulq_f64(factors, p), translation);
  }
};

struct QuadrantVector {
  float64x2_t factors, translation;

  explicit QuadrantVector(const QuadrantMapping& m)
      : factors(vector_of(m.m21, m.m12)), translation(vector_of(m.tx, m.ty)) {}
  float64x2_t operator()(float64x2_t p) const {
    const float64x2_t yx = vextq_f64(p, p, 1);
    return vaddq_f64(vmulq_f64(factors, yx), translation);
  }
};

struct GeneralVector {
  float64x2_t of_x, of_y, translation;

  explicit GeneralVector(const GeneralMapping& m)
      : of_x(vector_of(m.m11, m.m12)),
        of_y(vector_of(m.m21, m.m22)),
        translation(vector_of(m.tx, m.ty)) {}
  float64x2_t operator()(float64x2_t p) const {
    const float64x2_t linear = vaddq_f64(vmulq_laneq_f64(of_x, p, 0), vmulq_laneq_f64(of_y, p, 1));
    return vaddq_f64(linear, translation);
  }
};

DiagonalVector vector_form(const DiagonalMapping& m) { return DiagonalVector(m); }
QuadrantVector vector_form(const QuadrantMapping& m) { return QuadrantVector(m); }
GeneralVector vector_form(const GeneralMapping& m) { return GeneralVector(m); }

// The conversion gives the nearest of 64 bits, and 0 for NaN. What it gives for less than 2^31
// either way fits 32 bits, and INT_MIN takes the place of all else; it is also what the numbers
// give that lie between -2^31 - 1 and -2^31. A comparison with a NaN is false.
int64x2_t round_wide(float64x2_t v) {
  const uint64x2_t sign = vreinterpretq_u64_f64(vdupq_n_f64(-0.0));
  const float64x2_t sum = vaddq_f64(v, vbslq_f64(sign, v, vdupq_n_f64(0.5)));
  const uint64x2_t fits = vcaltq_f64(sum, vdupq_n_f64(0x1p31));
  return vbslq_s64(fits, vcvtq_s64_f64(sum), vdupq_n_s64(INT_MIN));
}

/// The low halves of the coordinates: x, y, x, y.
int32x4_t round_pair(float64x2_t first, float64x2_t second) {
  return vuzp1q_s32(vreinterpretq_s32_s64(round_wide(first)),
                    vreinterpretq_s32_s64(round_wide(second)));
}

// What becomes of two mapped points, and of the odd one at the end.

struct Real {
  using Out = real_pt_t;
  static void store(Out* out, float64x2_t first, float64x2_t second) {
    vst1q_f64(&out[0].x, first);
    vst1q_f64(&out[1].x, second);
  }
  static Out one(real_pt_t p) { return p; }
};

struct Int {
  using Out = int_pt_t;
  static void store(Out* out, float64x2_t first, float64x2_t second) {
    vst1q_s32(&out->x, round_pair(first, second));
  }
  static Out one(real_pt_t p) { return zelvan::round_to_device(p); }
};

struct IntTimesEight {
  using Out = int_pt_t;
  static void store(Out* out, float64x2_t first, float64x2_t second) {
    vst1q_s32(&out->x, vshlq_n_s32(round_pair(first, second), 3));
  }
  static Out one(real_pt_t p) { return zelvan::round_to_device_times_eight(p); }
};

struct Short {
  using Out = short_pt_t;
  static void store(Out* out, float64x2_t first, float64x2_t second) {
    vst1_s16(&out->x, vmovn_s32(round_pair(first, second)));
  }
  static Out one(real_pt_t p) { return zelvan::round_to_device_short(p); }
};

template <class Finish>
void map_all(const Mtx2D& m, int n, const real_pt_t* in, typename Finish::Out* out) {
  zelvan::with_mapping_of(m, [=](const auto& map) {
    const auto map_vector = vector_form(map);
    int i = 0;
    for (; i + 1 < n; i += 2) {
      const float64x2_t first = vld1q_f64(&in[i].x), second = vld1q_f64(&in[i + 1].x);
      Finish::store(out + i, map_vector(first), map_vector(second));
    }
    if (i < n) out[i] = Finish::one(map(in[i].x, in[i].y));
  });
}

}  // namespace

namespace zelvan::neon {

void map_to_real(const Mtx2D& m, int n, const real_pt_t* in, real_pt_t* out) {
  map_all<Real>(m, n, in, out);
}

void map_to_int(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out) {
  map_all<Int>(m, n, in, out);
}

void map_to_int_times_eight(const Mtx2D& m, int n, const real_pt_t* in, int_pt_t* out) {
  map_all<IntTimesEight>(m, n, in, out);
}

void map_to_short(const Mtx2D& m, int n, const real_pt_t* in, short_pt_t* out) {
  map_all<Short>(m, n, in, out);
}

}  // namespace zelvan::neon

#endif
