/// Matrices written down as what they do to the axes and the origin.
#pragma once

#include "support/printers.h"

/// The matrix that takes the origin to `origin`, and a step along x or y to the step `x` or `y`.
inline Mtx2D matrix(real_pt_t x, real_pt_t y, real_pt_t origin, int type, int mirror = 0) {
  Mtx2D m;
  m.m11 = x.x;
  m.m12 = x.y;
  m.m21 = y.x;
  m.m22 = y.y;
  m.tx = origin.x;
  m.ty = origin.y;
  m.type = type;
  m.mirror = mirror;
  return m;
}
