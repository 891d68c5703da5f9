#include <zelvan/colour/color_map.h>

#include <thread>

#include <gtest/gtest.h>

// Both threads write the shared answer, and neither may return what the other one wrote.
TEST(GetClosestColor, AnswersForItselfWhereAnotherThreadSearches) {
  int wrong[2] = {};
  const auto search = [&wrong](int nearest) {
    ColorMap map(3, 255);
    const int channel = 10 + 3 * nearest;
    map.colors[nearest] = {channel, channel, channel};
    map.colors[3 - nearest] = {200, 200, 200};
    ColorRGB target(10, 10, 10);
    for (int i = 0; i < 500'000; ++i) {
      int distance = -1;
      const int found = map.GetClosestColor(&target, &distance, 1);
      if (found != nearest || distance != 3 * nearest) ++wrong[nearest - 1];
    }
  };
  std::thread other(search, 2);
  search(1);
  other.join();
  EXPECT_EQ(wrong[0], 0) << "of 500 000 searches in a map whose pen 1 is 3 away";
  EXPECT_EQ(wrong[1], 0) << "of 500 000 searches in a map whose pen 2 is 6 away";
}
