/// The axis-aligned rectangle as a pick region.
#pragma once

#include <zelvan/export.h>
#include <zelvan/pick/pick_region.h>
#include <zelvan/transforms/aligned_rect.h>

/// An axis-aligned rectangle; filled and sorted as `CAlignedRect` is.
class ZELVAN_API CPickRect : public CPickRegion {
 public:
  /// The rectangle of two opposite corners, in any order.
  CPickRect(DblPt& p, DblPt& q);
  CPickRect(double x1, double y1, double x2, double y2);

  /// Copies the four coordinates. Nothing is allocated.
  CPickRect(const CPickRect&);
  CPickRect& operator=(const CPickRect&);
  ~CPickRect() override;

  /// Refills as the constructors do.
  void setPoints(double x1, double y1, double x2, double y2);

  /// Writes (left, bottom) to `*low` and (right, top) to `*high`. Requires: no null pointer.
  void getPoints(DblPt* low, DblPt* high);

  /// True when the point lies in the rectangle inflated by `tol` on all sides, edges included;
  /// a negative tolerance deflates. With a NaN anywhere in the test the answer is false.
  bool isInside(DblPt& p, double tol) override;
  bool isInside(double x, double y, double tol) override;

  /// The rectangle of the images of (left, bottom) and (right, top), sorted like any other.
  /// It stays axis-aligned under every matrix, so under a turn it is not the box of the four
  /// mapped corners. The caller deletes it; null when the heap refuses.
  CPickRegion* xfm(Mtx2D& matrix) override;

  // The forms for const, see CPickRegion.
  using CPickRegion::isInside;
  using CPickRegion::xfm;

 protected:
  /// All four coordinates 0.0, for derived classes that fill it with `setPoints`.
  CPickRect();

 private:
  CAlignedRect box_;
};

static_assert(sizeof(CPickRect) == alignof(CPickRect) + sizeof(CAlignedRect),
              "layout is interface");
