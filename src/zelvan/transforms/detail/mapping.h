/// The three ways to map a point: for matrices of the types diagonal, quadrant and general.
///
/// Each keeps its own copy of the elements that it needs, so the compiler knows that a loop's
/// output doesn't overwrite the matrix. The products are added first and the translation last, here
/// and in the vector forms. So through one matrix, a point has the same result to the bit in every
/// form; only the payload of a NaN can differ.
#pragma once

#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/records.h>

namespace zelvan {

struct DiagonalMapping {
  double m11, m22, tx, ty;

  explicit DiagonalMapping(const Mtx2D& m) : m11(m.m11), m22(m.m22), tx(m.tx), ty(m.ty) {}
  real_pt_t operator()(double x, double y) const { return {m11 * x + tx, m22 * y + ty}; }
};

struct QuadrantMapping {
  double m12, m21, tx, ty;

  explicit QuadrantMapping(const Mtx2D& m) : m12(m.m12), m21(m.m21), tx(m.tx), ty(m.ty) {}
  real_pt_t operator()(double x, double y) const { return {m21 * y + tx, m12 * x + ty}; }
};

struct GeneralMapping {
  double m11, m12, m21, m22, tx, ty;

  explicit GeneralMapping(const Mtx2D& m)
      : m11(m.m11), m12(m.m12), m21(m.m21), m22(m.m22), tx(m.tx), ty(m.ty) {}
  real_pt_t operator()(double x, double y) const {
    return {(m11 * x + m21 * y) + tx, (m12 * x + m22 * y) + ty};
  }
};

/// Calls `use` with the mapping for the matrix's type, and returns its result; an unknown type is
/// general. Put loops inside `use`, so that the type is tested once per call and not once per
/// point.
template <class Use>
[[gnu::always_inline]] inline auto with_mapping_of(const Mtx2D& m, const Use& use) {
  switch (m.type) {
    case Mtx2DTypeDiagonal:
      return use(DiagonalMapping(m));
    case Mtx2DTypeQuadrant:
      return use(QuadrantMapping(m));
    default:
      return use(GeneralMapping(m));
  }
}

}  // namespace zelvan
