// What several threads may do at once: see "Threads" in docs/conventions.md. The thread sanitizer
// runs this program as well, and reports a race even where the results happen to be right.

#include <zelvan/zelvan.h>

#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <support/polygon_set.h>

namespace {

const support::Vertices<real_pt_t> star = {
    {{0, 9}, 1}, {{-6, -8}, 1}, {{9, 3}, 1}, {{-9, 3}, 1}, {{6, -8}, 3}};
real_rect_t window = {{{-5, -5}, {-5, 5}, {5, 5}, {5, -5}}};

Mtx2D shared_matrix(1.0, 2.0, Mtx2DOrientRot90, 3.0, 4.0, 5.0, 6.0);
const std::string shared_text = "alpha:1,beta:22,gamma:333";

// Results are plain numbers: making a text of them would go through the locale's atomic counter,
// and that orders the threads, so that the sanitizer no longer sees what races beside it.
using Numbers = std::vector<double>;

Numbers clipped(void (*clip)(drw_pset_t*, drw_pset_t*, real_rect_t*)) {
  support::SetArrays<real_pt_t> in(star);
  support::SetArrays<real_pt_t> out(200);
  drw_pset_t source = {static_cast<int>(star.size()), in.points.data(), in.flags.data()};
  drw_pset_t target = {0, out.points.data(), out.flags.data()};
  clip(&source, &target, &window);
  Numbers result;
  for (const auto& vertex : out.first(target.n_points)) {
    result.push_back(vertex.point.x);
    result.push_back(vertex.point.y);
    result.push_back(vertex.flag);
  }
  return result;
}

Numbers picked(CPickRegion& region) {
  Numbers hits;
  for (int x = -8; x <= 8; ++x) hits.push_back(region.isInside(x, 1.0, 0.0));
  const std::unique_ptr<CPickRegion> image(region.xfm(shared_matrix));
  hits.push_back(image->isInside(0.0, 0.0, 0.0));
  return hits;
}

Numbers fields_and_tokens() {
  Numbers result;
  zelvan::field_record record;
  for (const std::string& token : tokenize(shared_text, ",:")) {
    const str_field* const field = zelvan::read_field(token.c_str(), &record);
    result.push_back(field->value);
    result.push_back(static_cast<double>(field->length));
  }
  return result;
}

TEST(Threads, ReadSharedObjectsAndWorkOnTheirOwnAtOnce) {
  double xs[] = {-6.0, 6.0, 0.0};
  double ys[] = {-6.0, -6.0, 9.0};
  CPolygon shared_polygon(3, xs, ys);
  const struct {
    const char* name;
    std::function<Numbers()> run;
  } jobs[] = {
      {"clipping into rings", [] { return clipped(ClipPolygonSet); }},
      {"clipping to a view", [] { return clipped(ClipPolygonSetToView); }},
      {"picking in a polygon", [&] { return picked(shared_polygon); }},
      {"cutting tokens and reading fields", fields_and_tokens},
  };
  for (const auto& job : jobs) {
    const Numbers expected = job.run();
    std::vector<Numbers> results(4);
    std::vector<std::thread> threads;
    for (Numbers& result : results) {
      threads.emplace_back([&] {
        for (int i = 0; i < 100; ++i) result = job.run();
      });
    }
    for (auto& thread : threads) thread.join();
    for (const Numbers& result : results) EXPECT_EQ(result, expected) << job.name;
  }
}

}  // namespace
