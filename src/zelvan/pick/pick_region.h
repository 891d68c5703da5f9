/// The abstract pick region: does this point hit this shape?
///
/// A region only reads itself when asked, so several threads may test one region while none
/// changes it. Callers may derive regions of their own.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>

/// Base of all pick regions. The order of the virtual operations is part of the interface.
class ZELVAN_API CPickRegion {
 public:
  /// A region has no data of its own, so there is nothing to make, copy or destroy. Regions are
  /// deleted through this class, as `xfm` hands them over.
  CPickRegion();
  CPickRegion(const CPickRegion&);
  CPickRegion& operator=(const CPickRegion&);
  virtual ~CPickRegion();

  /// True when the point hits the shape; what `tol` means is the shape's affair. It has the units
  /// of the coordinates.
  virtual bool isInside(DblPt& p, double tol) = 0;
  virtual bool isInside(double x, double y, double tol) = 0;

  /// A new region of the same concrete class, mapped through `matrix`. The caller deletes it.
  /// Null when there is nothing to map or the heap refuses.
  virtual CPickRegion* xfm(Mtx2D& matrix) = 0;

  /// For const regions, points and matrices: as the operation of that name, through virtual
  /// dispatch. Inline, and no symbols. They require that a derived class only reads itself, too.
  bool isInside(const DblPt& p, double tol) const {
    return const_cast<CPickRegion*>(this)->isInside(const_cast<DblPt&>(p), tol);
  }
  bool isInside(double x, double y, double tol) const {
    return const_cast<CPickRegion*>(this)->isInside(x, y, tol);
  }
  CPickRegion* xfm(const Mtx2D& matrix) const {
    return const_cast<CPickRegion*>(this)->xfm(const_cast<Mtx2D&>(matrix));
  }
};
