#include <zelvan/platform/locale.h>

#include <cstring>

#include <windows.h>

int zelvan::platform::GetLocaleInfoA(unsigned locale, unsigned type, char* buffer, int size) {
  constexpr int two_letters = 3;  // and their terminator
  if (locale != LOCALE_USER_DEFAULT || type != LOCALE_SISO639LANGNAME || size < two_letters)
    return 0;
  char name[16];
  if (::GetLocaleInfoA(locale, type, name, sizeof name) != two_letters) return 0;
  std::memcpy(buffer, name, two_letters);
  return two_letters;
}
