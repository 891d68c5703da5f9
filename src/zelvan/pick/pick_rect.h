/// The axis-aligned rectangle as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>
#include <zelvan/transforms/aligned_rect.h>

/// A filled axis-aligned rectangle. It may be made from any two opposite corners, as
/// `CAlignedRect`.
class ZELVAN_API CPickRect : public CPickRegion {
 public:
  /// Makes the rectangle of two opposite corners, in any order.
  CPickRect(DblPt& p, DblPt& q);
  CPickRect(double x1, double y1, double x2, double y2);

  /// Copies the four coordinates. Nothing is allocated.
  CPickRect(const CPickRect&);
  CPickRect& operator=(const CPickRect&);
  ~CPickRect() override;

  /// Replaces the rectangle by that of two opposite corners, in any order.
  void setPoints(double x1, double y1, double x2, double y2);

  /// Writes (left, bottom) to `*low` and (right, top) to `*high`. Requires: no null pointer.
  void getPoints(DblPt* low, DblPt* high);

  /// Returns true if the point lies in the rectangle inflated by `tol` on all sides, edges
  /// included.
  ///
  /// A negative tolerance deflates. With a NaN anywhere the result is false.
  bool isInside(DblPt& p, double tol) override;
  bool isInside(double x, double y, double tol) override;

  /// Returns the rectangle of the images of (left, bottom) and (right, top), sorted; null if the
  /// heap refuses.
  ///
  /// It stays axis-aligned under every matrix, so after a turn it is not the box of the four mapped
  /// corners. The caller deletes it.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The overloads for const regions, which the overrides above would hide.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// Makes the point (0, 0), for derived classes that then call `setPoints`.
  CPickRect();

 private:
  CAlignedRect box_;
};

static_assert(sizeof(CPickRect) == alignof(CPickRect) + sizeof(CAlignedRect),
              "layout is interface");
