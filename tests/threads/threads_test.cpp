// Operations that several threads may run at once: see "Threads" in docs/conventions.md. The thread
// sanitizer also runs this program, and reports a race even if the results happen to be right.

#include <zelvan/zelvan.h>

#include "geometry/clip_model.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

const Set star = {{{0, 9}, 1}, {{-6, -8}, 1}, {{9, 3}, 1}, {{-9, 3}, 1}, {{6, -8}, 3}};
const real_rect_t window = {{{-5, -5}, {-5, 5}, {5, 5}, {5, -5}}};

Mtx2D shared_matrix(1.0, 2.0, Mtx2DOrientRot90, 3.0, 4.0, 5.0, 6.0);
const std::string shared_text = "alpha:1,beta:22,gamma:333";

// Results are plain numbers. Formatting them as text would use the atomic counter of the locale,
// which synchronises the threads and hides races from the sanitizer.
using Numbers = std::vector<double>;

Numbers picked(CPickRegion& region) {
  Numbers hits;
  for (int x = -8; x <= 8; ++x) hits.push_back(region.isInside(x, 1.0, 0.0));
  const std::unique_ptr<CPickRegion> image(region.xfm(shared_matrix));
  hits.push_back(image->isInside(0.0, 0.0, 0.0));
  return hits;
}

Numbers fields_of_tokens() {
  Numbers values;
  zelvan::field_record record;
  for (const std::string& token : tokenize(shared_text, ",:")) {
    values.push_back(zelvan::read_field(token.c_str(), &record)->value);
  }
  return values;
}

// Runs the job 100 times in each of four threads.
template <class Job>
void expect_same_in_each_thread(const char* name, Job job) {
  const auto expected = job();
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int i = 0; i < 100; ++i) EXPECT_EQ(job(), expected) << name;
    });
  }
  for (auto& thread : threads) thread.join();
}

TEST(Threads, ReadSharedObjectsAndWorkOnTheirOwnAtOnce) {
  DblPt corners[] = {{-6, -6}, {6, -6}, {0, 9}};
  CPolygon polygon(3, corners);
  const auto clip = [] { return clipped(ClipPolygonSet, star, window); };
  const auto clip_to_view = [] { return clipped(ClipPolygonSetToView, star, window); };
  expect_same_in_each_thread("clipping into rings", clip);
  expect_same_in_each_thread("clipping to a view", clip_to_view);
  expect_same_in_each_thread("picking in a polygon", [&] { return picked(polygon); });
  expect_same_in_each_thread("cutting tokens and reading fields", fields_of_tokens);
}

}  // namespace
