#include <zelvan/pick/pick_rect.h>

#include <new>

CPickRect::CPickRect() = default;

CPickRect::CPickRect(DblPt& p, DblPt& q) : box_(p, q) {}

CPickRect::CPickRect(double x1, double y1, double x2, double y2) : box_(x1, y1, x2, y2) {}

CPickRect::CPickRect(const CPickRect&) = default;
CPickRect& CPickRect::operator=(const CPickRect&) = default;
CPickRect::~CPickRect() = default;

void CPickRect::setPoints(double x1, double y1, double x2, double y2) { box_.set(x1, y1, x2, y2); }

void CPickRect::getPoints(DblPt* low, DblPt* high) {
  low->set(box_.left(), box_.bottom());
  high->set(box_.right(), box_.top());
}

bool CPickRect::isInside(DblPt& p, double tol) { return box_.isInside(p, tol); }

bool CPickRect::isInside(double x, double y, double tol) { return box_.isInside(x, y, tol); }

CPickRegion* CPickRect::xfm(Mtx2D& matrix) {
  DblPt low, high;
  matrix.XfmPt(box_.left(), box_.bottom(), &low.x, &low.y);
  matrix.XfmPt(box_.right(), box_.top(), &high.x, &high.y);
  return new (std::nothrow) CPickRect(low, high);
}
