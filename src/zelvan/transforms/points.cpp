#include <zelvan/transforms/points.h>

#include <cmath>

bool DblPt::isEqualTo(const DblPt& other, double tol) const {
  return tol > std::fabs(x - other.x) && tol > std::fabs(y - other.y);
}
