#include <zelvan/platform/locale.h>

#include "support/system.h"

#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

namespace platform = zelvan::platform;

TEST(GetLocaleInfo, NamesTheLanguageInTwoSmallLetters) {
  if (!support::is_posix) GTEST_SKIP() << "the system names it";
  const auto language = [](int size, unsigned locale, unsigned type) {
    char text[4] = "---";
    const int length = platform::GetLocaleInfoA(locale, type, text, size);
    return std::to_string(length) + text;
  };
  const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
      {"ja_JP.UTF-8", "de", "fr", "3ja"},  // LC_ALL rules
      {"", "AZ@x", "fr", "3az"},           // then LC_CTYPE; one that is empty counts as unset
      {nullptr, nullptr, "Zz", "3zz"},     // then LANG
      {"C", "de", "de", "0---"},           // has no language
      {"POSIX", "de", "de", "0---"},       // nor has this
      {"d1", "de", "de", "0---"},          // nor what does not begin with two letters
      {"1d", "de", "de", "0---"},          // nor this
      {nullptr, "", nullptr, "0---"}};     // nothing is set
  for (const auto& [all, characters, last, answer] : rows) {
    support::set_environment("LC_ALL", all);
    support::set_environment("LC_CTYPE", characters);
    support::set_environment("LANG", last);
    EXPECT_EQ(language(3, 0x400, 0x59), answer) << (all != nullptr ? all : "null");
  }
  support::set_environment("LANG", "de");
  EXPECT_EQ(language(2, 0x400, 0x59), "0---") << "it doesn't fit";
  EXPECT_EQ(language(3, 0x401, 0x59), "0---") << "another locale";
  EXPECT_EQ(language(3, 0x400, 0x5A), "0---") << "another question";
}

}  // namespace
