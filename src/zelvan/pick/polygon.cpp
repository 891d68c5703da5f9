#include <zelvan/pick/detail/point_array.h>
#include <zelvan/pick/detail/winding.h>
#include <zelvan/pick/polygon.h>

#include <new>

namespace {

// Two vertices enclose nothing.
unsigned int usable(unsigned int n) { return n < 3 ? 0 : n; }

}  // namespace

CPolygon::CPolygon() : n_points(0), points(nullptr) {}

CPolygon::CPolygon(unsigned int n) : n_points(usable(n)), points(zelvan::make_points(n_points)) {
  if (points == nullptr) n_points = 0;
}

CPolygon::CPolygon(unsigned int n, double* xs, double* ys)
    : n_points(usable(n)), points(zelvan::make_points(n_points, xs, ys)) {
  if (points == nullptr) n_points = 0;
}

CPolygon::CPolygon(unsigned int n, DblPt* pts)
    : n_points(usable(n)), points(zelvan::copy_points(n_points, pts)) {
  if (points == nullptr) n_points = 0;
}

CPolygon::CPolygon(const CPolygon& other)
    : CPickRegion(other),
      n_points(other.n_points),
      points(zelvan::copy_points(n_points, other.points)) {
  if (points == nullptr) n_points = 0;
}

CPolygon& CPolygon::operator=(const CPolygon& other) {
  if (this == &other) return *this;
  DblPt* copy = zelvan::copy_points(other.n_points, other.points);
  std::free(points);
  points = copy;
  n_points = copy != nullptr ? other.n_points : 0;
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
  if (points == nullptr || n_points == 0) return nullptr;
  auto* copy = new (std::nothrow) CPolygon(*this);
  if (copy == nullptr) return nullptr;
  if (copy->points == nullptr) {
    delete copy;
    return nullptr;
  }
  zelvan::map_points(matrix, copy->n_points, copy->points);
  return copy;
}
