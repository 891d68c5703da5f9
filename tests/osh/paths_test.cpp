#include <zelvan/osh/paths.h>

#include <cerrno>
#include <tuple>

#include <gtest/gtest.h>
#include <osh/world.h>

namespace {

TEST(Paths, FindTheNextFreeName) {
  World world;
  const std::string prefix = "AA.", longest = padded("x", 1022);  // no carry reaches these
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {prefix, "AAZ", "ABA"},   {prefix, "AZZ", "BAA"},   {prefix, "ZZZ", ""},
      {prefix, "A1", "B1"},     {prefix, "MMM", "MMN"},   {prefix, "Y", "Z"},
      {prefix, "", ""},         {prefix, "AZ-Z", "BA-A"}, {prefix, "a@", ""},
      {prefix, "A9Z[", "B9A["}, {longest, "A", "B"}};
  for (const auto& [start, taken, next] : rows) {
    put(start + taken);
    for (const bool onto_start : {true, false}) {
      std::string text = (onto_start ? start : taken) + '\0';
      text.resize(1025, '#');
      char* const result = text.data();
      errno = 77;
      EXPECT_EQ(utl_unique_filename(onto_start ? result : given(start),
                                    onto_start ? given(taken) : result, result),
                next.empty() ? -1 : 0);
      EXPECT_TRUE(next.empty() || errno == 77) << errno;
      EXPECT_EQ(text.substr(0, text.find('#')), start + (next.empty() ? taken : next) + '\0');
    }
    fs::remove(start + taken);
  }
  char result[1024] = "#";
  EXPECT_EQ(utl_unique_filename(given(longest), "AA"_c, result) + *result, -1);
}

}  // namespace
