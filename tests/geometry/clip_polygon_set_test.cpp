#include <zelvan/geometry/clip_polygon_set.h>

#include "support/guarded_array.h"
#include "support/random.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

struct Vertex {
  double x, y;
  int flag;

  bool operator==(const Vertex&) const = default;
};

using Vertices = std::vector<Vertex>;

void PrintTo(const Vertex& v, std::ostream* out) {
  *out << '(' << v.x << ", " << v.y << ") " << v.flag;
}

namespace {

using support::GuardedArray;
using support::Random;

const real_rect_t ten_by_ten = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};

// Clips with arrays of just the size that suffices by the stated bound.
Vertices clip(const Vertices& in, real_rect_t rect, const Vertices& before = {}) {
  const std::size_t room = before.size() + 9 * in.size();
  GuardedArray<real_pt_t> points(in.size()), out_points(room);
  GuardedArray<int> flags(in.size()), out_flags(room);
  for (std::size_t i = 0; i < in.size(); ++i) {
    points[i] = {in[i].x, in[i].y};
    flags[i] = in[i].flag;
  }
  for (std::size_t i = 0; i < before.size(); ++i) {
    out_points[i] = {before[i].x, before[i].y};
    out_flags[i] = before[i].flag;
  }
  drw_pset_t source = {static_cast<int>(in.size()), points.data(), flags.data()};
  drw_pset_t target = {static_cast<int>(before.size()), out_points.data(), out_flags.data()};
  ClipPolygonSet(&source, &target, &rect);
  Vertices out;
  for (int i = 0; i < target.n_points; ++i) {
    out.push_back({out_points[i].x, out_points[i].y, out_flags[i]});
  }
  return out;
}

Vertices ring(const std::vector<real_pt_t>& points, int flag = 1) {
  Vertices out;
  for (const real_pt_t& p : points) out.push_back({p.x, p.y, flag});
  out.back().flag += 2;
  return out;
}

Vertices operator+(Vertices a, const Vertices& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

TEST(ClipPolygonSet, CutsTheKnownShapes) {
  const double e = 1.1920928955078125e-07;
  const Vertices whole = {{0, 0, 0}, {0, 10, 0}, {10, 10, 0}, {10, 0, 2}};
  const Vertices inside = {{1, 1, 1}, {1, 1, 0}, {4, 1, 0}, {4, 4, 2}};
  const struct {
    const char* name;
    Vertices in, out;
  } rows[] = {
      {"over one corner",
       ring({{5, 5}, {15, 5}, {15, 15}, {5, 15}}),
       {{10, 5, 0}, {10, 10, 0}, {5, 10, 1}, {5, 5, 3}}},
      {"a U that dips in",
       ring({{2, 2}, {8, 2}, {8, 15}, {6, 15}, {6, 5}, {4, 5}, {4, 15}, {2, 15}}),
       {{8, 10, 0},
        {6, 10, 1},
        {6, 5, 1},
        {4, 5, 1},
        {4, 10, 0},
        {2, 10, 1},
        {2, 2, 1},
        {8, 2, 3}}},
      {"an arch whose legs reach in",
       ring({{2, 15}, {8, 15}, {8, 5}, {6, 5}, {6, 12}, {4, 12}, {4, 5}, {2, 5}}),
       {{8, 10, 0},
        {6, 10, 1},
        {6, 5, 1},
        {8, 5, 3},
        {4, 10, 0},
        {2, 10, 1},
        {2, 5, 1},
        {4, 5, 3}}},
      {"wholly inside, flags and duplicates kept", inside, inside},
      {"around", ring({{-5, -5}, {15, -5}, {15, 15}, {-5, 15}}), whole},
      {"apart", ring({{20, 0}, {30, 0}, {30, 10}}), {}},
      {"below", ring({{-20, -1}, {30, -1}, {30, -10}}), {}},
      {"an L around, not holding it",
       ring({{-5, -5}, {20, -5}, {20, 20}, {15, 20}, {15, -1}, {-5, -1}}),
       {}},
      {"a band across",
       ring({{-5, 4}, {15, 4}, {15, 6}, {-5, 6}}),
       {{0, 4, 0}, {0, 6, 1}, {10, 6, 0}, {10, 4, 3}}},
      {"two points across",
       ring({{-5, 5}, {15, 5}}),
       {{0, 5, 0}, {0, 5, 1}, {10, 5, 0}, {10, 5, 3}}},
      {"two points inside", ring({{2, 5}, {5, 5}}), ring({{2, 5}, {5, 5}})},
      {"one point repeated", ring({{5, 5}, {5, 5}, {5, 5}}), {}},
      {"a single closing vertex", {{5, 5, 3}}, {}},
      {"no closing vertex at the end", inside + Vertices{{5, 5, 1}, {6, 6, 1}}, inside},
      {"several in set order, closing vertices between",
       ring({{-5, 4}, {15, 4}, {15, 6}, {-5, 6}}) + Vertices{{1, 1, 2}} + inside,
       Vertices{{0, 4, 0}, {0, 6, 1}, {10, 6, 0}, {10, 4, 3}} + inside},
      {"invisible edges stay invisible",
       ring({{5, 5}, {15, 5}, {15, 15}, {5, 15}}, 0),
       {{10, 5, 0}, {10, 10, 0}, {5, 10, 0}, {5, 5, 2}}},
      {"touching from outside leaves a sliver",
       ring({{10, 5}, {15, 3}, {15, 7}}),
       {{10 + 5 * e, 5 - 2 * e, 0}, {10, 5, 1}, {10, 5, 3}}},
  };
  const Vertices before = {{7, 7, 1}, {8, 8, 3}};
  for (const auto& row : rows) {
    EXPECT_EQ(clip(row.in, ten_by_ten), row.out) << row.name;
    EXPECT_EQ(clip(row.in, ten_by_ten, before), before + row.out) << row.name;
  }
}

double area(const Vertices& rings) {
  double sum = 0.0;
  for (std::size_t first = 0, i = 0; i < rings.size(); ++i) {
    const bool last = rings[i].flag >= 2;
    const Vertex& next = rings[last ? first : i + 1];
    sum += (rings[i].x - rings[first].x) * (next.y - rings[first].y) -
           (next.x - rings[first].x) * (rings[i].y - rings[first].y);
    if (last) first = i + 1;
  }
  return sum / 2;
}

// Cuts by one half-plane after the other (I. Sutherland and G. Hodgman, 1974): right in area
// for every polygon, though not in outline.
Vertices cut_by_half_planes(Vertices polygon, const real_rect_t& rect) {
  const double sense = area(ring({rect.corners, rect.corners + 4}));
  for (int side = 0; side < 4; ++side) {
    const real_pt_t &a = rect.corners[side], &b = rect.corners[(side + 1) % 4];
    const auto depth = [&](const Vertex& v) {
      return sense * ((b.x - a.x) * (v.y - a.y) - (b.y - a.y) * (v.x - a.x));
    };
    Vertices kept;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
      const Vertex &p = polygon[i], &q = polygon[(i + 1) % polygon.size()];
      const double dp = depth(p), dq = depth(q);
      if (dp >= 0) kept.push_back({p.x, p.y, 1});
      if ((dp < 0) != (dq < 0)) {
        const double t = dp / (dp - dq);
        kept.push_back({p.x + t * (q.x - p.x), p.y + t * (q.y - p.y), 1});
      }
    }
    polygon = kept;
  }
  if (!polygon.empty()) polygon.back().flag = 3;
  return polygon;
}

// In general position the area that remains is that of an independent method, for simple
// polygons of up to 60 vertices against upright and turned rectangles of either sense.
TEST(ClipPolygonSet, KeepsTheAreaInside) {
  int cut = 0;
  for (unsigned seed = 1; seed <= 4000; ++seed) {
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    Random random(seed);
    Vertices star;
    const int n = 3 + random.below(58);
    const double cx = random.between(-8, 8), cy = random.between(-8, 8);
    for (int i = 0; i < n; ++i) {
      const double angle = 2 * std::numbers::pi * (i + 0.8 * random.unit()) / n;
      const double r = random.between(1, 12);
      star.push_back({cx + r * std::cos(angle), cy + r * std::sin(angle), 1});
    }
    star.back().flag = 3;
    real_rect_t rect;
    const double turn = seed % 2 == 0 ? 0.0 : random.between(0, 7);
    const double w = random.between(2, 9), h = random.between(2, 9);
    const real_pt_t upright[] = {{-w, -h}, {w, -h}, {w, h}, {-w, h}};
    for (int i = 0; i < 4; ++i) {
      const real_pt_t& p = upright[seed % 3 == 0 ? 3 - i : i];
      rect.corners[i] = {p.x * std::cos(turn) - p.y * std::sin(turn),
                         p.x * std::sin(turn) + p.y * std::cos(turn)};
    }
    const Vertices out = clip(star, rect);
    double got = 0.0;  // ring by ring: a result ring may run either way
    for (auto first = out.begin(); first != out.end();) {
      const auto last = std::find_if(first, out.end(), [](const Vertex& v) { return v.flag >= 2; });
      got += std::fabs(area({first, last + 1}));
      first = last + 1;
    }
    const double expected = std::fabs(area(cut_by_half_planes(star, rect)));
    ASSERT_NEAR(got, expected, 1e-6 * (1 + expected));
    cut += got > 0.0 && out.size() != star.size();
  }
  EXPECT_GT(cut, 2000) << "most cases should be real cuts";
}

// A million sets of small whole numbers, with vertices on the sides and corners of the
// rectangle all the time: every walk ends, nothing is written past the stated bound, and what
// comes out are closed rings made of what went in.
TEST(ClipPolygonSet, EndsWithinItsBoundOnDegenerateSets) {
  constexpr int most = 12;
  GuardedArray<real_pt_t> points(most), out_points(9 * most);
  GuardedArray<int> flags(most), out_flags(9 * most);
  Random random(1);
  for (int set = 0; set < 1'000'000; ++set) {
    const int n = 1 + random.below(most);
    int room = 0;
    for (int i = most - n, first = i; i < most; ++i) {
      points[i] = {random.below(6) - 1.0, random.below(6) - 1.0};
      flags[i] = random.below(5) == 0 ? 2 + random.below(2) : random.below(2);
      if (flags[i] >= 2) room += 5 * (i - first + 1) + 4, first = i + 1;
    }
    // A rectangle, upright or leaning; now and then flat or a point.
    const double x = random.below(2), y = random.below(2), w = random.below(5), h = random.below(5);
    const double lean = random.below(3) - 1.0;
    real_rect_t rect = {{{x, y}, {x + lean, y + h}, {x + w + lean, y + h}, {x + w, y}}};
    drw_pset_t source = {n, &points[most - n], &flags[most - n]};
    drw_pset_t target = {0, out_points.end() - room, out_flags.end() - room};
    ClipPolygonSet(&source, &target, &rect);
    ASSERT_LE(target.n_points, room) << "set " << set;
    for (int i = 0; i < target.n_points; ++i) {
      const real_pt_t& p = target.points[i];  // on an edge of the set or of the rectangle
      ASSERT_TRUE(p.x >= -1.0 && p.x <= 6.0 && p.y >= -1.0 && p.y <= 5.0) << "set " << set;
    }
    if (target.n_points == 0) continue;
    ASSERT_GE(target.edge_flags[target.n_points - 1], 2) << "set " << set;
  }
}

// Any bits at all: infinities and NaN end too, within the bound.
TEST(ClipPolygonSet, EndsOnHardValues) {
  for (unsigned seed = 1; seed <= 20000; ++seed) {
    Random random(seed);
    Vertices in;
    for (int n = 2 + random.below(9); n > 0; --n) {
      in.push_back({random.hard_double(), random.hard_double(), random.below(9) == 0 ? 3 : 1});
    }
    in.back().flag = 2;
    const double w = random.hard_double(), h = random.hard_double();
    clip(in, {{{0, 0}, {0, h}, {w, h}, {w, 0}}});
  }
}

}  // namespace
