#include <zelvan/platform/locale.h>

#include <gtest/gtest.h>
#include <support/system.h>

TEST(GetLocaleInfoA, TakesTheFirstVariableThatIsNotEmpty) {
  const auto expect = [](const char* lc_all, const char* lc_ctype, const char* lang,
                         const std::string& wanted, const char* why) {
    support::set_environment("LC_ALL", lc_all);
    support::set_environment("LC_CTYPE", lc_ctype);
    support::set_environment("LANG", lang);
    char language[3] = "~";
    const int length = zelvan::platform::GetLocaleInfoA(language);
    EXPECT_EQ(length, wanted == "~" ? 0 : 3) << why;
    EXPECT_EQ(language, wanted) << why;
  };
  expect("de", "zh", "ja", "de", "LC_ALL comes first");
  expect(nullptr, "zh", "ja", "zh", "LC_CTYPE comes before LANG");
  expect("", "", "jA_JP.UTF-8@x", "ja", "any case, country, charset and modifier");
  expect("aZ", "", "", "az", "a and Z are letters");
  expect("jam_JM", "", "", "~", "three letters");
  expect("1a", "", "", "~", "no letter first");
  expect("j{", "", "", "~", "no letter second");
  expect("", nullptr, "", "~", "no language at all");
}
