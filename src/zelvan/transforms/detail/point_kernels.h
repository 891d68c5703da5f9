/// The kernels of `Mtx2D`: `map_points` maps arrays to each kind of result, `map_rect` a rectangle.
#pragma once

#include <zelvan/detail/vector_forms.h>
#include <zelvan/transforms/detail/rounding.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

// The kinds of results.

struct ToReal {
  using Out = real_pt_t;
  Out operator()(real_pt_t p) const { return p; }
};

struct ToInt {
  using Out = int_pt_t;
  Out operator()(real_pt_t p) const { return round_to_device(p); }
};

/// Multiplies the rounded point by 8, modulo 2^32.
struct ToIntTimesEight {
  using Out = int_pt_t;
  Out operator()(real_pt_t p) const {
    const auto shift = [](int v) { return static_cast<int>(static_cast<unsigned>(v) << 3); };
    const int_pt_t r = round_to_device(p);
    return {shift(r.x), shift(r.y)};
  }
};

/// Returns the low 16 bits of the rounded coordinates.
struct ToShort {
  using Out = short_pt_t;
  Out operator()(real_pt_t p) const {
    const int_pt_t r = round_to_device(p);
    return {static_cast<short>(r.x), static_cast<short>(r.y)};
  }
};

/// Maps `n` points. A count of 0 or less does nothing.
template <class Result>
void map_points(Plain, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out);
template <class Result>
void map_points(Avx2, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out);
template <class Result>
void map_points(Neon, const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out);

/// Maps the four corners and writes their box, rounded.
void map_rect(Plain, const Mtx2D& m, const real_rect_t& in, int_rect_t* out);
void map_rect(Avx2, const Mtx2D& m, const real_rect_t& in, int_rect_t* out);

}  // namespace zelvan
