#include <zelvan/pick/detail/point_array.h>
#include <zelvan/pick/pick_polyline.h>

#include <algorithm>
#include <memory>
#include <new>

namespace {

// A polyline of one point has no segment and is stored as empty.
unsigned int usable(unsigned int n) { return n < 2 ? 0 : n; }

// Returns true if the point lies in the box of the segment, enlarged by the tolerance.
bool box_holds(const DblPt& a, const DblPt& b, const DblPt& p, double tol) {
  return std::max(a.x, b.x) + tol >= p.x && p.x >= std::min(a.x, b.x) - tol &&
         std::max(a.y, b.y) + tol >= p.y && p.y >= std::min(a.y, b.y) - tol;
}

}  // namespace

CPickPolyline::CPickPolyline() : n_points(0), points(nullptr) {}

CPickPolyline::CPickPolyline(unsigned int n)
    : n_points(usable(n)), points(zelvan::make_points(&n_points)) {}

CPickPolyline::CPickPolyline(unsigned int n, double* xs, double* ys)
    : n_points(usable(n)), points(zelvan::make_points(&n_points, xs, ys)) {}

CPickPolyline::CPickPolyline(unsigned int n, DblPt* pts)
    : n_points(usable(n)), points(zelvan::copy_points(&n_points, pts)) {}

CPickPolyline::CPickPolyline(const CPickPolyline& other)
    : CPickRegion(other),
      n_points(other.n_points),
      points(zelvan::copy_points(&n_points, other.points)) {}

CPickPolyline& CPickPolyline::operator=(const CPickPolyline& other) {
  if (this != &other) zelvan::assign_points(&n_points, &points, other.n_points, other.points);
  return *this;
}

CPickPolyline::~CPickPolyline() { std::free(points); }

void CPickPolyline::set(int i, double x, double y) { points[i].set(x, y); }

DblPt* CPickPolyline::start() { return points; }

DblPt* CPickPolyline::end() { return points + n_points; }

bool CPickPolyline::isInside(DblPt& p, double tol) {
  for (unsigned int i = 1; i < n_points; ++i) {
    if (box_holds(points[i - 1], points[i], p, tol)) return true;
  }
  return false;
}

bool CPickPolyline::isInside(double x, double y, double tol) {
  DblPt p(x, y);
  return isInside(p, tol);
}

CPickRegion* CPickPolyline::xfm(Mtx2D& matrix) {
  std::unique_ptr<CPickPolyline> copy(new (std::nothrow) CPickPolyline(*this));
  if (copy == nullptr || copy->points == nullptr) return nullptr;
  zelvan::map_points(matrix, copy->n_points, copy->points);
  return copy.release();
}
