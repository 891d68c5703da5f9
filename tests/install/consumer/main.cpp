// A program outside the tree: it derives a region of its own, passes it by base pointer and
// casts it back, and maps a point whose last bit tells whether a product and a sum were fused.

#include <zelvan/zelvan.h>

#include <cstdio>

namespace {

class Disc : public CPickRegion {
 public:
  explicit Disc(double radius) : radius_(radius) {}
  bool isInside(DblPt& p, double tol) override { return isInside(p.x, p.y, tol); }
  bool isInside(double x, double y, double tol) override {
    return x * x + y * y <= (radius_ + tol) * (radius_ + tol);
  }
  CPickRegion* xfm(Mtx2D&) override { return new Disc(*this); }

 private:
  double radius_;
};

}  // namespace

int main() {
  Disc disc(2.0);
  CPickRegion* region = &disc;
  DblPt p(1.0, 1.0);
  const bool mine = dynamic_cast<Disc*>(region) != nullptr &&
                    dynamic_cast<CPolygon*>(region) == nullptr && region->isInside(p, 0.0);

  Mtx2D m;
  m.m11 = 1.0 + 0x1p-27;
  m.m21 = -(1.0 + 0x1p-26);
  m.SetType();
  m.type = Mtx2DTypeGeneral;
  double x = 0.0, y = 0.0;
  m.XfmPt(1.0 + 0x1p-27, 1.0, &x, &y);  // 0 by two roundings, 0x1p-54 by one
  std::printf("%s; %a\n", mine ? "a region of my own, hit" : "not found", x);
}
