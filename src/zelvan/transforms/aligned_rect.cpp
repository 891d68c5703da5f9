#include <zelvan/transforms/aligned_rect.h>

namespace {

// The order of the operands is interface: it decides between zeros of opposite sign, and what
// becomes of a NaN. std::min and std::max would answer differently.
double smaller(double p, double q) { return p < q ? p : q; }
double larger(double p, double q) { return q > p ? q : p; }

}  // namespace

CAlignedRect::CAlignedRect(DblPt& p, DblPt& q) { set(p, q); }

CAlignedRect::CAlignedRect(double x1, double y1, double x2, double y2) { set(x1, y1, x2, y2); }

void CAlignedRect::set(DblPt& p, DblPt& q) { set(p.x, p.y, q.x, q.y); }

void CAlignedRect::set(double x1, double y1, double x2, double y2) {
  left_ = smaller(x1, x2);
  bottom_ = smaller(y1, y2);
  right_ = larger(x1, x2);
  top_ = larger(y1, y2);
}

bool CAlignedRect::isInside(DblPt& p, double tol) { return isInside(p.x, p.y, tol); }

bool CAlignedRect::isInside(double x, double y, double tol) {
  return x + tol >= left_ && right_ >= x - tol && y + tol >= bottom_ && top_ >= y - tol;
}
