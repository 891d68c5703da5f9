#include "digests/group.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace {

// In halves points meet the edges of boxes, and each other, all the time; in tenths no sum is
// exact, so that it shows where a tolerance is added. Ties between zeros and NaN tell the order of
// operands.
const Group boxes("transforms.boxes", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 100'000; ++i) {
    const double unit = i % 2 == 0 ? 0.5 : 0.1, ties[] = {-0.0, 0.0, 1.0, NAN};
    const auto place = [&] {
      return i % 8 == 7 ? ties[random.below(4)] : (random.below(19) - 9) * unit;
    };
    DblPt p{place(), place()}, q{place(), place()}, at{place(), place()}, swapped;
    const double tolerance = (random.below(13) - 4) * unit;
    CAlignedRect boxes[] = {{p, q}, {p.x, q.y, q.x, p.y}, {0, 0, 0, 0}, {0, 0, 0, 0}};
    boxes[2].set(q, at);
    boxes[3].set(at.x, q.y, p.x, p.y);
    for (CAlignedRect& box : boxes) {
      digest(box.left(), box.bottom(), box.right(), box.top(), box.isInside(at, tolerance),
             box.isInside(p.y, q.x, tolerance));
    }
    if (unit == 0.5 && i % 8 != 7) {
      const auto apart = [](double a, double b) { return std::fabs(a - b); };
      digest.expect(p.isEqualTo(q, tolerance) ==
                    (apart(p.x, q.x) < tolerance && apart(p.y, q.y) < tolerance));
      digest.expect(boxes[0].isInside(at, tolerance) ==
                    (apart(2 * at.x, p.x + q.x) <= apart(p.x, q.x) + 2 * tolerance &&
                     apart(2 * at.y, p.y + q.y) <= apart(p.y, q.y) + 2 * tolerance));
    }
    swapped.set(q.y, p.x);
    digest(p.isEqualTo(q, tolerance), swapped.isEqualTo(at, tolerance), DblPt(), swapped);
    IntPt a(random.below(3), 1), b;
    b.set(i % 3, random.below(3));
    digest(a == b, a, b, IntPt());
  }
});

template <class Point>
bool is_equal(const Point& a, const Point& b) {  // to the last bit
  return support::bits(a.x) == support::bits(b.x) && support::bits(a.y) == support::bits(b.y);
}

/// Takes all that can be asked of a matrix.
void take(Digest& digest, Mtx2D& m) {
  unsigned short mirrored[3];
  int codes[4];
  double degrees, angle, flat_angle, e[6];
  m.GetElements(e, e + 1, e + 2, e + 3, e + 4, e + 5);
  m.GetOrientationAndXMirror(mirrored, codes);
  m.GetXMirrorAndOrientation(mirrored + 1, codes + 1);
  m.GetXMirrorAndRotation(mirrored + 2, &degrees);
  m.GetOrientation(&angle, codes + 2);
  xfm_get_orientation(&m, &flat_angle, codes + 3);
  const double numbers[] = {m.m11, m.m12, m.m21, m.m22, m.tx, m.ty};
  digest(numbers, m.mirror, m.type, e, mirrored, codes, degrees, angle, flat_angle, m.GetScale(),
         m.GetRotation(), m.GetDeterminant(), m.ReversesOrientation(), m.IsIdentity());
}

// Each operation by both its names, from every linear part of some values at the edge of
// arithmetic, and then from any, with tags that don't fit.
const Group matrices("transforms.matrices", [](Digest& digest) {
  const double edges[] = {-INFINITY, -2.0, -0.0, 0.0, 0x1p-1074, 2.0, INFINITY, NAN};
  const double beside[] = {-1.0, -0x1p-53, 0x1p-52, 0x1p-1074, -0.0, 0.0, 0.0, 0.0};
  Random random(1);
  for (int i = 0; i < 5000; ++i) {
    Mtx2D m = random.matrix(i % 4), other = random.matrix(2), result = random.matrix(5);
    int rest = i;
    for (double* element : {&m.m11, &m.m12, &m.m21, &m.m22}) {
      if (i < 8 * 8 * 8 * 8) *element = edges[rest % 8];
      rest /= 8;
    }
    const double p = random.hard_double(), q = random.between(-9, 9);
    const double turn = i % 3 == 0 ? random.between(-999, 999) : -90.0 * (random.below(6) - 1);
    const auto orient = static_cast<Mtx2DOrient>(random.below(10) - 1);
    const int mode = random.below(3);
    const auto near_identity = [&] {
      m.Initialize();
      for (double* element : {&m.m11, &m.m12, &m.m21, &m.m22, &m.tx, &m.ty}) {
        *element += beside[random.below(8)];
      }
    };
    const std::function<void()> steps[] = {
        [&] { m.SetType(); },
        [&] { set_matrix_type(&m); },
        [&] { m.Translate(p, q); },
        [&] { translate_matrix(q, p, &m); },
        [&] { m.Scale(q, p); },
        [&] { scale_matrix(q, -0.5, &m); },
        [&] { m.ReflectInX(); },
        [&] { reflect_matrix_y(&m); },
        [&] { m.ReflectInY(); },
        [&] { reflect_matrix_x(&m); },
        [&] { m.Rotate(turn, mode); },
        [&] { rotate_matrix(-turn, &m, 3 - mode); },
        [&] { m.Orient(orient); },
        [&] { orient_matrix(orient, &m); },
        [&] { m.InvertYAxis(p); },
        [&] { m.ShearInX(q); },
        [&] { Mtx2D::Multiply(&m, &other, &result); },
        [&] { m = result.Invert(); },
        [&] { m = other * m; },
        [&] { multiply_matrices(&other, &m, &m); },
        [&] { invert_matrix(&m, &m); },
        [&] { m.SetXfm(p, q, orient, q, -p, 1, q); },
        [&] { m = m.Invert(); },
        [&] { set_xfm(0, 0, orient, q, p, -0.0, -0.0, &m); },
        [&] { m = Mtx2D(q, p, orient, 1, q, 0, 2); },
        [&] { multiply_matrices(&m, &m, &m); },
        [&] { near_identity(); },
        [&] { m.SetIdentity(); },
        [&] { initialize_matrix(&m); },
    };
    for (const auto& step : steps) {
      step();
      take(digest, m);
      digest(m != other, m != Mtx2D());
      if (random.below(4) == 0) m.type = random.below(4);
    }
  }
});

// Angles at a quarter turn and beside it, and the cosines that are read back as angles next to the
// bounds within which they snap to it.
const Group turns("transforms.turns", [](Digest& digest) {
  for (int i = -1800; i < 1800; ++i) {
    const double beside[] = {0.0, 1e-7, 0.1, -0.1};
    Mtx2D m;
    m.Rotate(i / 4 + beside[i & 3], i % 2 == 0 ? Mtx2DRotateFirst : Mtx2DRotateLast);
    const double cosine = m.m11;
    for (int step = -8; step <= 8; ++step) {
      m.m11 = cosine + step * 0x1p-54;
      take(digest, m);
    }
  }
});

/// A run of equal points is its first point with its last flag; a path there and back counts one
/// less.
template <class Points, class Set>
bool is_cleaned(const Points& all, const Set& out, const std::vector<int>& flags) {
  const auto same = [](const auto& a, const auto& b) { return a.x == b.x && a.y == b.y; };
  int runs = 0;
  for (std::size_t i = 0; i < all.size(); ++i, ++runs) {
    if (!is_equal(out.points[runs], all[i])) return false;
    while (i + 1 < all.size() && same(all[i], all[i + 1])) ++i;
    if (out.edge_flags[runs] != flags[i]) return false;
  }
  return out.n_points == (runs == 3 && same(out.points[2], out.points[0]) ? 2 : runs);
}

// Every type, unknown ones too, at every length that leaves a vector a rest of its own and at some
// that fill the blocks in which polygons are mapped. Of the points many recur, and collapse. An
// array is its points one by one.
const Group arrays("transforms.arrays", [](Digest& digest) {
  Random random(1);
  for (int i = 0; i < 6 * 154; ++i) {
    Mtx2D m = i % 7 == 0 ? Mtx2D() : random.matrix(i % 6 - 1);
    const int by_turns = i / 6 - 1, n = by_turns < 71 || by_turns > 142 ? by_turns : by_turns % 7;
    const auto choice = random.hard_points(2 + random.below(n < 7 ? 3 : 70));
    std::vector<real_pt_t> in(std::max(n, 0)), reals(in.size()), real_path(in.size());
    for (real_pt_t& p : in) p = choice[random.below(choice.size())];
    std::vector<int_pt_t> ints(in.size()), fixed(in.size()), path(in.size());
    std::vector<short_pt_t> shorts(in.size());
    m.RealXfmPts(n, in.data(), reals.data());
    m.XfmPts(n, in.data(), ints.data());
    m.XfmFPts(n, in.data(), fixed.data());
    m.XfmSPts(n, in.data(), shorts.data());
    digest(reals, ints, fixed, shorts);
    for (int k = 0; k < n; ++k) {
      real_pt_t real;
      int_pt_t rounded;
      m.RealXfmPt(&in[k], &real);
      m.XfmPt(&in[k], &rounded);
      const auto [x, y] = rounded;
      digest.expect(is_equal(reals[k], real));
      digest.expect(ints[k].x == x && fixed[k].x == int(x * 8u) && shorts[k].x == short(x));
      digest.expect(ints[k].y == y && fixed[k].y == int(y * 8u) && shorts[k].y == short(y));
    }
    std::vector<int> flags(in.size()), real_flags(in.size()), int_flags(in.size());
    for (int k = 0; k < n; ++k) flags[k] = k % 4;
    drw_pset_t source{n, in.data(), flags.data()}, set{-7, real_path.data(), real_flags.data()};
    drw_dpset_t int_set{-7, path.data(), int_flags.data()};
    int count;
    m.RealXfmPolyPtSet(&source, &set);
    m.XfmPolySetPts(&source, &int_set);
    m.XfmPolyPts(n, &count, in.data(), fixed.data());
    digest.expect(is_cleaned(reals, set, flags) && is_cleaned(ints, int_set, flags));
    digest(set.n_points, real_path, real_flags, int_set.n_points, path, int_flags, count, fixed);
  }
});

// One point, and rectangles of any four, by every operation that takes one.
const Group points("transforms.points", [](Digest& digest) {
  Random random(2);
  for (int i = 0; i < 30'000; ++i) {
    Mtx2D m = i % 7 == 0 ? Mtx2D() : random.matrix(i % 6 - 1);
    auto in = random.hard_points(4);
    real_rect_t rect = {{in[0], in[1], in[2], in[3]}}, box, flat_box, wide;
    real_pt_t real, by_value, by_flat_name, widened;
    int_rect_t corners, int_box;
    m.RealXfmPt(&in[0], &real);
    m.XfmPt(in[1].x, in[1].y, &by_value.x, &by_value.y);
    til_xfm_pnt(in[2].x, in[2].y, &by_flat_name.x, &by_flat_name.y, &m);
    for (int k = 0; k < 4; ++k) m.XfmPt(&in[k], &corners.corners[k]);
    m.InvXfmPt(&corners.corners[3], &widened);
    m.XfmRect(&rect, &box);
    XfmRect(&rect, &flat_box, &m);
    m.XfmRect(&rect, &int_box);
    m.XfmRect(&corners, &wide);
    m.XfmRect(&rect, &rect);
    digest(real, by_value, by_flat_name, corners, widened, box, flat_box, int_box, wide, rect);
  }
});

}  // namespace
