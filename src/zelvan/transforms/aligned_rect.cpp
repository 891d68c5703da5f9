#include <zelvan/detail/extremes.h>
#include <zelvan/transforms/aligned_rect.h>

using zelvan::larger_or_second;
using zelvan::smaller_or_second;

CAlignedRect::CAlignedRect(DblPt& p, DblPt& q) { set(p, q); }

CAlignedRect::CAlignedRect(double x1, double y1, double x2, double y2) { set(x1, y1, x2, y2); }

void CAlignedRect::set(DblPt& p, DblPt& q) { set(p.x, p.y, q.x, q.y); }

void CAlignedRect::set(double x1, double y1, double x2, double y2) {
  // The order of the operands is part of the interface: of two zeros, or with a NaN, the left side
  // is x2 and the right side x1.
  left_ = smaller_or_second(x1, x2);
  bottom_ = smaller_or_second(y1, y2);
  right_ = larger_or_second(x2, x1);
  top_ = larger_or_second(y2, y1);
}

bool CAlignedRect::isInside(DblPt& p, double tol) { return isInside(p.x, p.y, tol); }

bool CAlignedRect::isInside(double x, double y, double tol) {
  return x + tol >= left_ && right_ >= x - tol && y + tol >= bottom_ && top_ >= y - tol;
}
