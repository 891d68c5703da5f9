#include <zelvan/platform/locale.h>

#include <cstring>

#include <windows.h>

int zelvan::platform::GetLocaleInfoA(char (&language)[3]) {
  char name[16];
  const int size = ::GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SISO639LANGNAME, name, sizeof name);
  if (size != sizeof language) return 0;
  std::memcpy(language, name, sizeof language);
  return size;
}
