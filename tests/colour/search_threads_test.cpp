// Two threads search at once, each in a map of its own: both write the memory of the last answer,
// and neither may answer with what the other wrote.
#include <zelvan/colour/color_map.h>
#include <zelvan/colour/color_xfm.h>

#include <functional>
#include <latch>
#include <thread>

#include <gtest/gtest.h>

namespace {

constexpr int searches = 500'000;

/// Two maps with a pen near (10, 10, 10): pen 1 of the first is 3 away, pen 2 of the second 6.
struct TwoMaps {
  ColorMap maps[2] = {ColorMap(3, 255), ColorMap(3, 255)};

  TwoMaps() {
    maps[0].colors[1] = {13, 13, 13};
    maps[0].colors[2] = {200, 200, 200};
    maps[1].colors[1] = {200, 200, 200};
    maps[1].colors[2] = {16, 16, 16};
  }
};

/// How often `search`, called on two threads at once with 1 and 2, is false.
int count_wrong_answers(const std::function<bool(int pen)>& search) {
  int wrong[2] = {};
  std::latch both_run(2);
  const auto run = [&](int pen) {
    both_run.arrive_and_wait();
    for (int i = 0; i < searches; ++i) {
      if (!search(pen)) ++wrong[pen - 1];
    }
  };
  std::thread second(run, 2);
  run(1);
  second.join();
  return wrong[0] + wrong[1];
}

}  // namespace

TEST(ColorMapThreads, AFreshSearchAnswersForItself) {
  TwoMaps two;
  const int wrong = count_wrong_answers([&two](int pen) {
    ColorRGB target(10, 10, 10);
    int distance = -1;
    const int found = two.maps[pen - 1].GetClosestColor(&target, &distance, 1);
    return found == pen && distance == 3 * pen;
  });
  EXPECT_EQ(wrong, 0) << "of " << 2 * searches << " searches";
}

TEST(ColorMapThreads, ATranslationCountsItsOwnDistances) {
  TwoMaps two;
  ColorMap source(2, 255);
  source.colors[1] = {10, 10, 10};
  ColorXfm tables[] = {ColorXfm(2), ColorXfm(2)};
  const int wrong = count_wrong_answers([&](int pen) {
    ColorXfm& table = tables[pen - 1];
    table.MapColors(&source, &two.maps[pen - 1]);
    const unsigned int counted = pen == 1 ? table.hist_3 : table.hist_7;
    return table.xfm_table[1] == static_cast<unsigned int>(pen) && counted == 1;
  });
  EXPECT_EQ(wrong, 0) << "of " << 2 * searches << " searches";
}
