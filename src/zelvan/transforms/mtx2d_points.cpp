#include <zelvan/detail/pair.h>
#include <zelvan/transforms/detail/mapping.h>
#include <zelvan/transforms/detail/point_kernels.h>
#include <zelvan/transforms/detail/rounding.h>
#include <zelvan/transforms/mtx2d.h>

namespace {

using zelvan::round_to_device;
using zelvan::with_mapping_of;

real_pt_t mapped(const Mtx2D& m, double x, double y) {
  return with_mapping_of(m, [=](const auto& map) { return map(x, y); });
}

template <class Result>
void map_array(const Mtx2D& m, int n, const real_pt_t* in, typename Result::Out* out) {
  zelvan::with_best_form([&](auto form) { zelvan::map_points<Result>(form, m, n, in, out); });
}

using zelvan::Pair;

struct Box {
  Pair low;
  Pair high;
};

template <class Rect>
Box box_of_mapped(const Mtx2D& m, const Rect& rect) {
  return with_mapping_of(m, [&](auto map) {
    const auto corner = [&](int i) {
      const real_pt_t p = map(rect.corners[i].x, rect.corners[i].y);
      return Pair{p.x, p.y};
    };
    Box box = {corner(0), corner(0)};
    for (int i = 1; i < 4; ++i) {  // x and y at once; a NaN replaces no bound and is not replaced
      const Pair p = corner(i);
      box.low = p < box.low ? p : box.low;
      box.high = p > box.high ? p : box.high;
    }
    return box;
  });
}

template <class Rect, class Point>
void write_box(Rect* out, Point low, Point high) {
  out->corners[0] = {low.x, low.y};
  out->corners[1] = {low.x, high.y};
  out->corners[2] = {high.x, high.y};
  out->corners[3] = {high.x, low.y};
}

real_pt_t point(Pair p) { return {p[0], p[1]}; }

}  // namespace

void zelvan::map_rect(Plain, const Mtx2D& m, const real_rect_t& in, int_rect_t* out) {
  const Box box = box_of_mapped(m, in);
  write_box(out, round_to_device(box.low), round_to_device(box.high));
}

void Mtx2D::XfmPt(double x, double y, double* xo, double* yo) {
  const real_pt_t p = mapped(*this, x, y);
  *xo = p.x;
  *yo = p.y;
}

void Mtx2D::XfmPt(real_pt_t* in, int_pt_t* out) {
  *out = round_to_device(mapped(*this, in->x, in->y));
}

void Mtx2D::RealXfmPt(real_pt_t* in, real_pt_t* out) { *out = mapped(*this, in->x, in->y); }

void Mtx2D::InvXfmPt(int_pt_t* in, real_pt_t* out) { *out = mapped(*this, in->x, in->y); }

void Mtx2D::RealXfmPts(int n, real_pt_t* in, real_pt_t* out) {
  map_array<zelvan::ToReal>(*this, n, in, out);
}

void Mtx2D::XfmPts(int n, real_pt_t* in, int_pt_t* out) {
  map_array<zelvan::ToInt>(*this, n, in, out);
}

void Mtx2D::XfmFPts(int n, real_pt_t* in, int_pt_t* out) {
  map_array<zelvan::ToIntTimesEight>(*this, n, in, out);
}

void Mtx2D::XfmSPts(int n, real_pt_t* in, short_pt_t* out) {
  map_array<zelvan::ToShort>(*this, n, in, out);
}

void Mtx2D::XfmRect(real_rect_t* in, real_rect_t* out) {
  const Box box = box_of_mapped(*this, *in);
  write_box(out, point(box.low), point(box.high));
}

void Mtx2D::XfmRect(real_rect_t* in, int_rect_t* out) {
  zelvan::with_best_form([=, this](auto form) { zelvan::map_rect(form, *this, *in, out); });
}

void Mtx2D::XfmRect(int_rect_t* in, real_rect_t* out) {
  const Box box = box_of_mapped(*this, *in);
  write_box(out, point(box.low), point(box.high));
}
