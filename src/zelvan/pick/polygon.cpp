#include <zelvan/pick/detail/point_array.h>
#include <zelvan/pick/polygon.h>

#include <new>

namespace {

// Two vertices enclose nothing.
unsigned int usable(unsigned int n) { return n < 3 ? 0 : n; }

// What the edge from a to b adds to the winding number about (x, y). An edge counts when it
// crosses the horizontal through the point, lower end included and upper excluded, at the
// point or on its side of greater x. The products come last: most edges end at a comparison.
int winding_of_edge(const DblPt& a, const DblPt& b, double x, double y) {
  const auto cross = [&] { return (b.x - a.x) * (y - a.y) - (x - a.x) * (b.y - a.y); };
  if (y >= a.y) return b.y > y && cross() >= 0.0 ? 1 : 0;
  return y >= b.y && cross() <= 0.0 ? -1 : 0;
}

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
  if (n_points == 0) return false;
  int winding = 0;
  for (unsigned int i = 1; i < n_points; ++i) {
    winding += winding_of_edge(points[i - 1], points[i], x, y);
  }
  winding += winding_of_edge(points[n_points - 1], points[0], x, y);
  return winding != 0;
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
