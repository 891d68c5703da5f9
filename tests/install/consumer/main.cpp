// A program outside the tree. It derives a region, passes it as a pointer to the base and casts it
// back. It makes a matrix whose last bit shows whether a product and a sum were fused. It calls
// functions that take strings of its standard library.

#include <zelvan/zelvan.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

/// A disc of radius 2 around the origin.
class Disc : public CPickRegion {
 public:
  bool isInside(DblPt& p, double tol) override { return isInside(p.x, p.y, tol); }
  bool isInside(double x, double y, double tol) override {
    return x * x + y * y <= (2.0 + tol) * (2.0 + tol);
  }
  CPickRegion* xfm(Mtx2D&) override { return new Disc(*this); }
};

bool tokens_are_as_expected() {
  using zelvan::wide_string;
  const wide_string text = {' ', 'a', ',', 'b', ' '}, comma = {','}, a = {'a'}, b = {'b'};
  const wide_string a_comma = {'a', ','}, trimmed = {'a', ',', 'b'};
  const unsigned short blank[] = {' ', 0};
  return tokenize("a,b", ",") == std::vector<std::string>{"a", "b"} && trim(" a ", " ") == "a" &&
         wtokenize(text, comma) == std::vector<wide_string>{a, b} &&
         wtokenize2(text, comma) == std::vector<wide_string>{a_comma, b} &&
         wtrim(text, blank) == trimmed &&
         GlyphTokenize(trimmed) == std::vector<wide_string>{a_comma, b};
}

}  // namespace

int main() {
  Disc disc;
  CPickRegion* region = &disc;
  DblPt p(1.0, 1.0);
  const bool mine = dynamic_cast<Disc*>(region) != nullptr &&
                    dynamic_cast<CPolygon*>(region) == nullptr && region->isInside(p, 0.0);

  const double s = 1.0 + 0x1p-27;
  const Mtx2D m(s, 0.0, Mtx2DOrientNone, s, 1.0, 1.0 + 0x1p-26, 0.0);
  // m.tx is 1 + 2^-26 less the rounded s * s, so 0; -0x1p-54 if product and sum were fused.
  std::printf("%s; %a; %s\n", mine ? "a region of my own, hit" : "not found", m.tx,
              tokens_are_as_expected() ? "tokens as expected" : "other tokens");
}
