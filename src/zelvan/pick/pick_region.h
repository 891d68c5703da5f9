/// The abstract pick region: does this point hit this shape?
///
/// A test only reads the region, so several threads may test one region while none changes it.
/// Callers may derive regions of their own.
#pragma once

#include <zelvan/export.h>
#include <zelvan/transforms/mtx2d.h>
#include <zelvan/transforms/points.h>

/// The base of all pick regions. The order of its virtual operations is part of the binary
/// interface.
class ZELVAN_API CPickRegion {
 public:
  /// Makes a region without data. Regions from `xfm` are deleted through this class.
  CPickRegion();
  CPickRegion(const CPickRegion&);
  CPickRegion& operator=(const CPickRegion&);
  virtual ~CPickRegion();

  /// Returns true if the point hits the shape. Each shape says what `tol` means; its unit is that
  /// of the coordinates.
  virtual bool isInside(DblPt& p, double tol) = 0;
  virtual bool isInside(double x, double y, double tol) = 0;

  /// Returns a new region of the same class, mapped through `matrix`; null if there is nothing to
  /// map or the heap refuses. The caller deletes it.
  virtual CPickRegion* xfm(Mtx2D& matrix) = 0;

  /// Calls the operation of that name through virtual dispatch, for const regions, points and
  /// matrices.
  ///
  /// These overloads are inline and export no symbols. Requires: the operation of a derived class
  /// changes nothing.
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
