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
CPickRect shared_region(-5.0, -5.0, 5.0, 5.0);
const VarNameValue shared_table[] = {{"first", 1}, {"second", 2}, {nullptr, 0}};
CLineTypeDefList shared_line_types;
const std::string shared_text = "alpha:1,beta:22,gamma:333";

std::string clipped_and_mapped(void (*clip)(drw_pset_t*, drw_pset_t*, real_rect_t*)) {
  support::SetArrays<real_pt_t> in(star);
  support::SetArrays<real_pt_t> out(200);
  support::SetArrays<int_pt_t> device(200);
  drw_pset_t source = {static_cast<int>(star.size()), in.points.data(), in.flags.data()};
  drw_pset_t target = {0, out.points.data(), out.flags.data()};
  drw_dpset_t mapped = {0, device.points.data(), device.flags.data()};
  clip(&source, &target, &window);
  shared_matrix.XfmPolySetPts(&target, &mapped);
  return testing::PrintToString(device.first(mapped.n_points));
}

std::string picked(CPickRegion& region) {
  std::string hits;
  for (int x = -8; x <= 8; ++x) hits += region.isInside(x, 1.0, 0.0) ? '1' : '0';
  const std::unique_ptr<CPickRegion> image(region.xfm(shared_matrix));
  return hits + (image->isInside(0.0, 0.0, 0.0) ? " image hit" : " image missed");
}

std::string translated() {
  unsigned char bytes[64];
  for (int i = 0; i < 64; ++i) bytes[i] = static_cast<unsigned char>(3 * i);
  tra_convert_flpt(16, 0xB8, 8, bytes, bytes);
  tra_swap_bytes(0xA4, 16, bytes, bytes);
  tra_convert_charset(1, 64, bytes, bytes);
  return testing::PrintToString(bytes);
}

std::string looked_up() {
  const char* value = nullptr;
  const std::intptr_t length = utl_searchValueForKey(shared_text.c_str(), "beta", &value);
  int number = 0;
  VarLookupInt(shared_table, "SECOND", &number);
  char name[] = "navy";
  ColorRGB color;
  color.FindName(name);
  return std::string(value, static_cast<std::size_t>(length)) + ' ' + std::to_string(number) + ' ' +
         testing::PrintToString(color);
}

std::string dashes() {
  const CLineTypeDefinition copy(*shared_line_types.GetDefinition(4));
  return std::to_string(copy.GetIndex());
}

TEST(Threads, ReadSharedObjectsAndWorkOnTheirOwnAtOnce) {
  double xs[] = {-6.0, 6.0, 0.0};
  double ys[] = {-6.0, -6.0, 9.0};
  CPolygon shared_polygon(3, xs, ys);
  const std::vector<std::function<std::string()>> jobs = {
      [] { return clipped_and_mapped(ClipPolygonSet); },
      [] { return clipped_and_mapped(ClipPolygonSetToView); },
      [] { return picked(shared_region); },
      [&] { return picked(shared_polygon); },
      translated,
      looked_up,
      dashes,
      [] { return testing::PrintToString(tokenize(shared_text, ",:")); },
  };
  std::vector<std::string> expected;
  for (const auto& job : jobs) expected.push_back(job());

  std::vector<std::string> differences(4);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < differences.size(); ++t) {
    threads.emplace_back([&, t] {
      for (std::size_t i = 0; i < 50 * jobs.size(); ++i) {
        const std::size_t job = (i + 2 * t) % jobs.size();
        const std::string result = jobs[job]();
        if (result != expected[job]) differences[t] = "job " + std::to_string(job) + ": " + result;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(differences, std::vector<std::string>(4)) << testing::PrintToString(expected);
}

}  // namespace
