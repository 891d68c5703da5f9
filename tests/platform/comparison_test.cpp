#include <zelvan/platform/comparison.h>

#include "support/guarded_array.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using zelvan::platform::_stricmp;
using zelvan::platform::_strnicmp;

int sign(int v) { return (v > 0) - (v < 0); }

std::string small_letters(std::string text) {
  for (char& c : text) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
  }
  return text;
}

// Every pair of bytes, behind a common start that differs in case, against a comparison of
// folded copies.
TEST(Comparison, IgnoresTheCaseOfAsciiLettersAndNothingElse) {
  for (int x = 0; x < 256; ++x) {
    for (int y = 0; y < 256; ++y) {
      const std::string a{'k', static_cast<char>(x), 'Z'}, b{'K', static_cast<char>(y), 'z'};
      const std::string a_read = a.c_str(), b_read = b.c_str();  // a zero byte ends both
      const int expected = sign(small_letters(a_read).compare(small_letters(b_read)));
      ASSERT_EQ(sign(_stricmp(a.c_str(), b.c_str())), expected) << x << ' ' << y;
      ASSERT_EQ(sign(_strnicmp(a.c_str(), b.c_str(), 3)), expected) << x << ' ' << y;
      ASSERT_EQ(_strnicmp(a.c_str(), b.c_str(), 1), 0);
    }
  }
}

// A text comes after its beginnings, and no byte behind a count or a terminator is read.
TEST(Comparison, EndsWithTheShorterText) {
  const std::string open = "coLour";
  support::GuardedArray<char> unended(open), ended(std::string("Col\0", 4));
  EXPECT_EQ(_strnicmp(unended.data(), ended.data(), 3), 0);
  EXPECT_GT(_strnicmp(unended.data(), ended.data(), 4), 0);
  EXPECT_LT(_stricmp(ended.data(), unended.data()), 0);
  EXPECT_EQ(_strnicmp(unended.data(), "COLOURS", 6), 0);
  EXPECT_EQ(_strnicmp(nullptr, nullptr, 0), 0);
  EXPECT_EQ(_stricmp("", ""), 0);
}

}  // namespace
