#include <zelvan/pick/detail/point_array.h>
#include <zelvan/pick/detail/winding.h>
#include <zelvan/pick/polygon.h>

#include <memory>
#include <new>

namespace {

// A polygon of one or two vertices encloses nothing and is stored as empty.
unsigned int usable(unsigned int n) { return n < 3 ? 0 : n; }

}  // namespace

CPolygon::CPolygon() : n_points(0), points(nullptr) {}

CPolygon::CPolygon(unsigned int n) : n_points(usable(n)), points(zelvan::make_points(&n_points)) {}

CPolygon::CPolygon(unsigned int n, double* xs, double* ys)
    : n_points(usable(n)), points(zelvan::make_points(&n_points, xs, ys)) {}

CPolygon::CPolygon(unsigned int n, DblPt* pts)
    : n_points(usable(n)), points(zelvan::copy_points(&n_points, pts)) {}

CPolygon::CPolygon(const CPolygon& other)
    : CPickRegion(other),
      n_points(other.n_points),
      points(zelvan::copy_points(&n_points, other.points)) {}

CPolygon& CPolygon::operator=(const CPolygon& other) {
  if (this != &other) zelvan::assign_points(&n_points, &points, other.n_points, other.points);
  return *this;
}

CPolygon::~CPolygon() { std::free(points); }

void CPolygon::set(int i, double x, double y) { points[i].set(x, y); }

DblPt* CPolygon::start() { return points; }

DblPt* CPolygon::end() { return points + n_points; }

bool CPolygon::isInside(DblPt& p, double tol) { return CPolygon::isInside(p.x, p.y, tol); }

bool CPolygon::isInside(double x, double y, double /*tol*/) {
  return n_points != 0 && zelvan::winding_of_ring(points, n_points, x, y) != 0;
}

CPickRegion* CPolygon::xfm(Mtx2D& matrix) {
  std::unique_ptr<CPolygon> copy(new (std::nothrow) CPolygon(*this));
  if (copy == nullptr || copy->points == nullptr) return nullptr;
  zelvan::map_points(matrix, copy->n_points, copy->points);
  return copy.release();
}
