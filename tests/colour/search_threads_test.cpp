#include <zelvan/colour/color_map.h>

#include <future>

#include <gtest/gtest.h>

// Both threads write the shared answer, and neither may return what the other one wrote.
TEST(GetClosestColor, AnswersForItselfWhereAnotherThreadSearches) {
  const auto count_wrong = [](int nearest) {
    ColorMap map(3, 255);
    map.colors[nearest] = {30 * nearest, 0, 0};
    map.colors[3 - nearest] = {200, 0, 0};
    ColorRGB black;
    int n_wrong = 0;
    for (int i = 0; i < 500'000; ++i) {
      int distance = -1;
      const int found = map.GetClosestColor(&black, &distance, 1);
      if (found != nearest || distance != 10 * nearest) ++n_wrong;
    }
    return n_wrong;
  };
  auto other = std::async(std::launch::async, count_wrong, 2);
  EXPECT_EQ(count_wrong(1), 0) << "searches in a map whose pen 1 is 10 away";
  EXPECT_EQ(other.get(), 0) << "searches in a map whose pen 2 is 20 away";
}
