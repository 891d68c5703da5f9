#include <zelvan/platform/locale.h>

#include <cstdlib>
#include <string_view>

namespace {

// The variables in POSIX's order of precedence; an empty one counts as unset.
std::string_view name_of_locale() {
  for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
    const char* const value = std::getenv(variable);
    if (value != nullptr && *value != '\0') return value;
  }
  return {};
}

// Not `tolower`, which depends on the process's locale.
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool is_letter(char c) { return lower(c) >= 'a' && lower(c) <= 'z'; }

}  // namespace

int zelvan::platform::GetLocaleInfoA(char (&language)[3]) {
  // A name looks like "ja", "ja_JP" or "ja_JP.UTF-8@variant". "C" and "POSIX" have no language.
  const std::string_view name = name_of_locale();
  const bool has_language = name.size() >= 2 && is_letter(name[0]) && is_letter(name[1]) &&
                            (name.size() == 2 || !is_letter(name[2]));
  if (!has_language) return 0;
  language[0] = lower(name[0]);
  language[1] = lower(name[1]);
  language[2] = '\0';
  return 3;
}
