#include <zelvan/geometry/clip_polygon_set_to_view.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::Random;

struct Vertex : real_pt_t {
  int flag;
  bool operator==(const Vertex& v) const { return x == v.x && y == v.y && flag == v.flag; }
};
using Set = std::vector<Vertex>;

void add(const Vertex& v, support::FnvDigest* digest) {
  digest->add(real_pt_t{v}), digest->add(static_cast<unsigned>(v.flag));
}

// Clips into arrays of just the stated room, which end at an unreadable page as the given ones
// do, with everything scaled by 2^k meanwhile.
Set clip(const Set& in, real_rect_t view, int k = 0) {
  static support::GuardedArray<real_pt_t> points(500), out_points(2500);
  static support::GuardedArray<int> flags(500), out_flags(2500);
  const auto scaled = [](real_pt_t p, int by) -> real_pt_t {
    return {std::ldexp(p.x, by), std::ldexp(p.y, by)};
  };
  const int n = static_cast<int>(in.size());
  drw_pset_t source = {n, points.end() - n, flags.end() - n};
  long room = 0;
  for (int i = 0; i < n; ++i) {
    source.points[i] = scaled(in[i], k), source.edge_flags[i] = in[i].flag;
    room += in[i].flag < 2 ? 4 : 8;
  }
  for (real_pt_t& corner : view.corners) corner = scaled(corner, k);
  drw_pset_t target = {0, out_points.end() - room, out_flags.end() - room};
  ClipPolygonSetToView(&source, &target, &view);
  Set out;
  for (int i = 0; i < target.n_points; ++i) {
    out.push_back({scaled(target.points[i], -k), target.edge_flags[i]});
  }
  return out;
}

template <class Visit>
void for_each_edge(const Set& set, Visit visit) {
  for (std::size_t i = 0, first = 0; i < set.size(); ++i) {
    const bool closes = set[i].flag > 1;
    visit(set[i], set[closes ? first : i + 1], set[i].flag % 2);
    if (closes) first = i + 1;
  }
}

double area(real_pt_t a, real_pt_t b, real_pt_t c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}
double length(real_pt_t a, real_pt_t b) { return std::hypot(b.x - a.x, b.y - a.y); }

int winding(const Set& set, real_pt_t p) {
  int sum = 0;
  for_each_edge(set, [&](real_pt_t a, real_pt_t b, int) {
    if (a.y <= p.y && b.y > p.y) sum += area(a, b, p) > 0;
    if (a.y > p.y && b.y <= p.y) sum -= area(a, b, p) < 0;
  });
  return sum;
}

// Judges results by nothing but what was asked for.
class Judge {
 public:
  Judge(const real_rect_t& view, double rounding) : c_(view.corners), rounding_(rounding) {
    for (int k = 0; k < 4; ++k)
      scale_[k] = 1 / std::copysign(length(c_[k], c_[(k + 1) % 4]), area(c_[0], c_[1], c_[2]));
  }

  // How far inside a side a point lies.
  double depth(int k, real_pt_t p) const { return area(c_[k], c_[(k + 1) % 4], p) * scale_[k]; }
  double depth(real_pt_t p) const {
    return std::min({depth(0, p), depth(1, p), depth(2, p), depth(3, p)});
  }

  // What of an edge is inside and not along the border.
  double length_inside(real_pt_t a, real_pt_t b) const {
    double from = 0, to = 1;
    for (int k = 0; k < 4; ++k) {
      const double at_a = depth(k, a), at_b = depth(k, b);
      if (at_a < 1e-12 && at_b < 1e-12) return 0;
      (at_a < at_b ? from : to) = at_a < at_b
                                      ? std::max(from, at_a / (at_a - at_b))
                                      : std::min(to, at_a == at_b ? 1 : at_a / (at_a - at_b));
    }
    return std::max(to - from, 0.0) * length(a, b);
  }

  // The windings about each place, so that both fill rules agree; the length that is visible; each
  // vertex one of the outline or on the border. Gives how many places are covered.
  int expect_right(const Set& in, const Set& out, const std::vector<real_pt_t>& places) const {
    int covered = 0;
    for (const real_pt_t p : places) {
      const int expected = depth(p) > 0 ? winding(in, p) : 0;
      EXPECT_EQ(winding(out, p), expected) << p.x << ' ' << p.y;
      covered += expected != 0;
    }
    double visible = 0;
    for_each_edge(
        in, [&](real_pt_t a, real_pt_t b, int flag) { visible += flag * length_inside(a, b); });
    for_each_edge(out, [&](real_pt_t a, real_pt_t b, int flag) {
      visible -= flag * length(a, b);
      EXPECT_TRUE(flag == 0 || length_inside(a, b) > 0 || length(a, b) < 1e-12) << "on the border";
      const auto is_a = [&](real_pt_t p) { return p.x == a.x && p.y == a.y; };
      const bool is_own = depth(a) > 0 && std::any_of(in.begin(), in.end(), is_a);
      EXPECT_TRUE(is_own || std::fabs(depth(a)) <= rounding_) << a.x << ' ' << a.y;
    });
    EXPECT_NEAR(visible, 0, 1e-11);
    return covered;
  }

 private:
  const real_pt_t* c_;
  double rounding_, scale_[4];
};

// Every ring of up to five vertices by its lowest one, begun at each in turn. The grid has places
// beyond, on and inside the sides of all views, one of which narrows to a point on it.
TEST(ClipPolygonSetToView, WalksAllSmallPolygons) {
  const real_rect_t views[] = {{{{1, 0.5}, {2.5, 0.5}, {2.5, 2}, {1, 2}}},
                               {{{1, 0}, {0, 1}, {2, 3}, {3, 2}}},
                               {{{0, 3}, {1, 2}, {2, 2}, {3, 3}}}};
  const std::vector<real_pt_t> places = {{1.13, 0.61}, {1.77, 0.58}, {2.39, 0.67}, {1.21, 1.31},
                                         {1.69, 1.37}, {2.41, 1.29}, {1.17, 1.83}, {1.73, 1.91},
                                         {2.37, 1.87}, {0.71, 1.03}, {1.37, 2.61}, {2.29, 2.79}};
  long polygons = 0, covered = 0;
  support::FnvDigest digest;
  for (int n = 2; n <= 5; ++n) {
    for (int code = 0; code < 1 << 4 * n; ++code) {
      const auto place = [&](long i) { return code >> 4 * (i % n) & 15; };
      bool is_lowest = true;
      for (int i = 1; i < n; ++i) is_lowest = is_lowest && place(0) <= place(i);
      if (!is_lowest) continue;
      Set in;
      for (long i = 0; i < n; ++i) {
        const int at = place(polygons + i), visible = polygons * 40503 >> i & 1;
        in.push_back({{1.0 * (at % 4), 1.0 * (at / 4)}, visible + (i + 1 == n ? 2 : 0)});
      }
      for (int i : {0, 1 + static_cast<int>(polygons % 2)}) {
        const Set out = clip(in, views[i]);
        covered += Judge(views[i], i > 0 ? 1e-12 : 0).expect_right(in, out, places);
        for (const Vertex& v : out) add(v, &digest);
      }
      ASSERT_FALSE(HasFailure()) << "the polygon " << std::hex << code << " of " << n;
      ++polygons;
    }
  }
  EXPECT_EQ(polygons, 263976);
  EXPECT_GT(covered, polygons);
  EXPECT_EQ(digest.value(), 15943736397531002457u);
}

// Sets of rings that cross themselves and hold others, on a grid or anywhere, and at the ends of
// the doubles, too; and values of all kinds and next to corners, which can't be judged. The last
// bit of all is the same on every compiler and in each vector form.
TEST(ClipPolygonSetToView, KeepsWindingsAndVisibleLengths) {
  support::for_each_form([](const char* form) {
    support::FnvDigest digest;
    int covered = 0;
    for (unsigned seed = 1; seed <= 8000; ++seed) {
      SCOPED_TRACE(testing::Message() << form << ", seed " << seed);
      Random random(seed);
      const bool on_grid = seed % 3 == 0, is_turned = seed % 4 > 1, is_hard = seed % 5 == 0;
      const double w = 1 + random.below(9),
                   h = 1 + (on_grid ? random.below(8) : random.between(0, 8));
      const double c = is_turned ? random.between(-1, 1) : 1, s = std::sqrt(1 - c * c);
      real_rect_t view;
      for (int i = 0; i < 4; ++i) {
        const double u = i % 3 == 0 ? w : -w, v = (i < 2) == (seed % 7 < 3) ? h : -h;
        view.corners[i] = {u * c - v * s, u * s + v * c};
      }
      Set in;
      for (int rings = 1 + random.below(3); rings > 0; --rings) {
        const double size = random.below(3) == 0 ? 3 : 12;
        for (int n = random.below(random.below(4) == 0 ? 70 : 9); n >= 0; --n) {
          in.push_back(
              {{random.between(-size, size), random.between(-size, size)}, random.below(2)});
          const int corner = is_hard ? random.below(8) : 8;  // or just beside it
          if (corner < 4) in.back() = {view.corners[corner], in.back().flag};
          for (double* v : {&in.back().x, &in.back().y}) {
            if (on_grid) *v = std::round(*v);
            if (corner < 4) *v = std::nextafter(*v, random.between(-9, 9));
            if (is_hard && random.below(5) == 0) *v = random.hard_double();
          }
        }
        in.back().flag += 2;
      }
      std::vector<real_pt_t> places(40);
      for (real_pt_t& p : places) p = {random.between(-9, 9), random.between(-9, 9)};
      const int scales[] = {0, 0, 1019, -480, -990},
                scale = is_hard ? -1055 * random.below(2) : scales[random.below(5)];
      const Set out = clip(in, view, scale);
      for (const Vertex& v : out) add(v, &digest);
      if (!is_hard &&
          std::count_if(in.begin(), in.end(), [](const Vertex& v) { return v.flag > 1; }) == 1) {
        Set back(in.rbegin(), in.rend());  // meets the border at the same points
        std::swap(back.front().flag, back.back().flag);
        for (const Vertex& v : clip(back, view, scale)) {
          const auto is_v = [&](real_pt_t p) { return p.x == v.x && p.y == v.y; };
          EXPECT_TRUE(std::any_of(out.begin(), out.end(), is_v) ||
                      std::any_of(view.corners, view.corners + 4, is_v));
        }
      }
      if (!is_hard) covered += Judge(view, is_turned ? 1e-12 : 0).expect_right(in, out, places);
      ASSERT_FALSE(HasFailure());
    }
    EXPECT_GT(covered, 25000);
    EXPECT_EQ(digest.value(), 11098297709966562314u);
  });
}

// Around the view, with a vertex on its side, to and fro, touching, in an L, and a corner so small
// that it rounds away; between a polygon of
// one vertex and one that isn't closed. What is not finite, and what has no area, gives nothing.
TEST(ClipPolygonSetToView, KeepsToItsRules) {
  const real_rect_t view = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const Set around = {{{-1, -1}, 1}, {{30, -1}, 1}, {{-1, 30}, 3}};
  const Set inside = {{{1, 1}, 1}, {{1, 1}, 0}, {{4, 4}, 3}};
  const struct {
    Set in, out;
  } rows[] = {
      {around, {{{0, 10}, 0}, {{0, 0}, 0}, {{10, 0}, 0}, {{10, 10}, 2}}},
      {{{{0, 5}, 1}, {{11, 1}, 1}, {{1, 9}, 3}},
       {{{0, 5}, 1}, {{10, 15 / 11.0}, 0}, {{10, 1.8}, 1}, {{1, 9}, 3}}},
      {{{{-5, 5}, 1}, {{15, 5}, 3}}, {{{0, 5}, 1}, {{10, 5}, 3}}},
      {{{{10, 5}, 1}, {{15, 3}, 1}, {{15, 7}, 3}}, {}},
      {{{{-5, -5}, 1}, {{20, -5}, 1}, {{20, 20}, 1}, {{15, 20}, 1}, {{15, -1}, 3}}, {}},
      {{{{4, 16}, 1}, {{16, std::nextafter(4, 0)}, 1}, {{17, 17}, 3}}, {}},
      {inside, inside},
  };
  for (const auto& row : rows) {
    Set in = {{{3, 3}, 3}};
    in.insert(in.end(), row.in.begin(), row.in.end());
    in.push_back({{1, 1}, 1});
    EXPECT_EQ(clip(in, view), row.out) << &row - rows;
    for (const double v : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
      in[2].x = v;
      EXPECT_EQ(clip(in, view), Set{}) << v;
      std::swap(in[2].x, in[2].y);
      EXPECT_EQ(clip(in, view), Set{}) << v;
    }
  }
  const double huge = 1.7e308;
  EXPECT_EQ(clip(around, {{{-huge, -huge}, {huge, -huge}, {huge, huge}, {-huge, huge}}}), around);
  for (const double v : {0.0, -HUGE_VAL, std::nan("")}) {
    EXPECT_EQ(clip(around, {{{0, 0}, {0, v}, {10, v}, {10, 0}}}), Set{}) << v;
    EXPECT_EQ(clip(around, {{{0, 0}, {10, 5}, {v, v}, {10, 10}}}), Set{}) << v;
  }
  EXPECT_EQ(clip(around, {{{0, 0}, {10, 10}, {0, 10}, {10, 0}}}), Set{}) << "crossed";
}

// Edges through a view whose ends lie farther and farther out: what is seen stays the same.
TEST(ClipPolygonSetToView, SeesTheSameOfEdgesOfAnyLength) {
  for (const real_rect_t& view : {real_rect_t{{{1, -3}, {9, -3}, {9, 5}, {1, 5}}},
                                  real_rect_t{{{5, -4}, {-1, 1}, {4, 7}, {10, 2}}}}) {
    for (const real_pt_t to : {real_pt_t{4, 1}, {1, 1}, {3, -1}, {2, 1}, {-1, 2}}) {
      Set near;
      for (int k = 5; k <= 1021; k += k < 70 ? 1 : 50) {
        const double x = std::ldexp(to.x, k), y = std::ldexp(to.y, k);
        const Set seen = clip({{{-x, -y}, 1}, {{x, y}, 1}, {{-y, x}, 3}}, view);
        if (k == 5) near = seen;
        ASSERT_EQ(seen.size(), near.size()) << k;
        for (std::size_t i = 0; i < seen.size(); ++i)
          EXPECT_LT(length(seen[i], near[i]), 1e-12) << k;
      }
    }
  }
}

}  // namespace
