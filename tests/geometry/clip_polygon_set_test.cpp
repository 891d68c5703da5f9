#include <zelvan/geometry/clip_polygon_set.h>
#include <zelvan/geometry/detail/outline_scan.h>

#include "support/bits.h"
#include "support/guarded_array.h"
#include "support/random.h"
#include "support/vector_forms.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::GuardedArray;
using support::Random;

using Flat = std::vector<double>;  // a polygon set: x, y and flag by turns

// What is appended behind `kept` vertices, in arrays that end with the stated bound: one step
// beyond it faults.
Flat clip(const Flat& in, real_rect_t rect, int kept = 0) {
  constexpr int most = 5000;
  static GuardedArray<real_pt_t> points(most), out_points(9 * most);
  static GuardedArray<int> flags(most), out_flags(9 * most);
  const int n = static_cast<int>(in.size() / 3);
  drw_pset_t source = {n, points.end() - n, flags.end() - n};
  int room = kept;
  for (int i = 0, first = 0; i < n; ++i) {
    source.points[i] = {in[3 * i], in[3 * i + 1]};
    source.edge_flags[i] = static_cast<int>(in[3 * i + 2]);
    if (source.edge_flags[i] >= 2) room += 5 * (i - first + 1) + 4, first = i + 1;
  }
  drw_pset_t target = {kept, out_points.end() - room, out_flags.end() - room};
  ClipPolygonSet(&source, &target, &rect);
  EXPECT_TRUE(kept <= target.n_points && target.n_points <= room);
  Flat out;
  for (int i = kept; i < target.n_points; ++i)
    out.insert(out.end(), {target.points[i].x, target.points[i].y, 1.0 * target.edge_flags[i]});
  return out;
}

TEST(ClipPolygonSet, CutsTheKnownShapes) {
  const double e = 1.1920928955078125e-07;
  const real_rect_t rect = {{{0, 0}, {0, 10}, {10, 10}, {10, 0}}};
  const struct {
    Flat in, out;
  } rows[] = {
      // over one corner
      {{5, 5, 1, 15, 5, 1, 15, 15, 1, 5, 15, 3}, {10, 5, 0, 10, 10, 0, 5, 10, 1, 5, 5, 3}},
      // an arch whose legs reach in
      {{2, 15, 1, 8, 15, 1, 8, 5, 1, 6, 5, 1, 6, 12, 1, 4, 12, 1, 4, 5, 1, 2, 5, 3},
       {8, 10, 0, 6, 10, 1, 6, 5, 1, 8, 5, 3, 4, 10, 0, 2, 10, 1, 2, 5, 1, 4, 5, 3}},
      // around, and two points across
      {{-5, -5, 1, 15, -5, 1, 15, 15, 1, -5, 15, 3}, {0, 0, 0, 0, 10, 0, 10, 10, 0, 10, 0, 2}},
      {{-5, 5, 1, 15, 5, 3}, {0, 5, 0, 0, 5, 1, 10, 5, 0, 10, 5, 3}},
      // a closing vertex, wholly inside with a duplicate, and no closing vertex at the end
      {{9, 9, 2, 1, 1, 1, 1, 1, 0, 4, 1, 0, 4, 4, 2, 5, 5, 1, 6, 6, 1},
       {1, 1, 1, 1, 1, 0, 4, 1, 0, 4, 4, 2}},
      // touching from outside leaves a sliver
      {{10, 5, 1, 15, 3, 1, 15, 7, 3}, {10 + 5 * e, 5 - 2 * e, 0, 10, 5, 1, 10, 5, 3}},
  };
  for (const auto& row : rows) EXPECT_EQ(clip(row.in, rect, 7), row.out);
}

// Any change of a bit, an order or a flag shows: on small whole numbers, with vertices on the sides
// and corners of the rectangle all the time, in general position, close to the tolerances, with
// huge, tiny and not even numbers, and on walks that stay to one side for a while. Some outlines
// cross a side so often that the crossings are sorted, many of them at the same place.
std::uint64_t digest_of_hard_sets() {
  constexpr double e = 1.1920928955078125e-07, tiny = 0x1p-126;
  constexpr int exponents[] = {-1060, -537, -64, -63, -25, -24, -23, -22, 300, 511, 1020};
  Random random(1);
  support::Digest digest;
  for (int set = 0; set < 400'000; ++set) {
    const int kind = random.below(8), step = kind == 7;
    const double scale = kind == 4 ? std::ldexp(1, exponents[random.below(11)]) : 1;
    const double flat = kind == 5 ? std::nextafter(tiny, tiny * random.below(3)) : 1;
    const auto place = [&](int range, int from) {
      const double whole = random.below(range) + from;
      if (kind == 1) return random.between(from, from + range);
      if (kind == 2 && random.below(9) == 0) return random.hard_double();
      if (kind == 3) return whole + (random.below(5) - 2) * e / 2;
      return whole == 0 && random.below(2) == 0 ? -0.0 : whole * scale;
    };
    const int n = set % 4096 == 0 ? 4000 : set % 64 == 0 ? 200 : 1 + random.below(12);
    Flat in;
    for (int i = 0; i < n; ++i) {
      const bool closes = random.below(n / 2 + 2) == 0;
      double x = place(6, -1), y = place(6, -1) * flat;
      if (i > 0 && (step != 0 || random.below(8) == 0)) {  // a step or none from the last one
        x = in[3 * i - 3] + random.below(2 * step + 1) - step;
        y = in[3 * i - 2] + random.below(2 * step + 1) - step;
      }
      in.insert(in.end(), {x, y, random.below(2) + (closes ? 2.0 : 0.0)});
    }
    // Upright or leaning, in either sense; now and then it is flat or a point.
    const double x = place(2, 0), y = place(2, 0), w = place(9, -4), h = place(9, -4);
    const double leans = random.below(2), lean = leans * place(5, -2), rise = leans * place(5, -2);
    const real_rect_t rect = {
        {{x, y}, {x + lean, y + h}, {x + lean + w, y + h + rise}, {x + w, y + rise}}};
    for (const double v : clip(in, rect)) digest.add(support::bits(v));
  }
  return digest.value();
}

TEST(ClipPolygonSet, GivesTheSameBitsEverywhere) {
  support::for_each_form(
      [](const char* form) { EXPECT_EQ(digest_of_hard_sets(), 10435297863413888845u) << form; });
}

// On numbers that meet each other and the bounds all the time, not-a-numbers among them.
TEST(OutlineScan, TellsTheSameInEveryForm) {
  using namespace zelvan;
  Random random(2);
  const auto number = [&] { return random.below(9) > 0 ? random.below(4) : random.hard_double(); };
  constexpr ClipBox nowhere = {INFINITY, INFINITY, -INFINITY, -INFINITY};
  GuardedArray<real_pt_t> room(most_in_edge_set);
  for (int set = 0; set < 20'000; ++set) {
    const ClipBox box = {number(), number(), number(), number()};
    const ClipBox& inner = set % 2 == 0 ? box : nowhere;
    const int n = 2 + set % (most_in_edge_set - 1);
    real_pt_t* const points = room.end() - n;
    for (int i = 0; i < n; ++i) points[i] = {number(), number()};
    const SidesOut out = sides_out(box, *points), judge = plain::sides_out(box, *points);
    EXPECT_TRUE(out.beyond == judge.beyond && out.not_within == judge.not_within) << set;
    support::for_each_form([&](const char*) {
      EXPECT_EQ(near_edges(points, n, box, inner), plain::near_edges(points, n, box, inner)) << set;
      EXPECT_EQ(has_repeats(points, n), plain::has_repeats(points, n)) << set;
    });
  }
}

}  // namespace
