// strcasecmp is not called here: it asks the locale of the process, which the caller owns.

#include <zelvan/platform/comparison.h>

#include <limits>

namespace zelvan::platform {
namespace {

/// The byte as a number from 0 to 255, a capital ASCII letter as its small form.
int folded(char c) {
  const unsigned char byte = static_cast<unsigned char>(c);
  return byte >= 'A' && byte <= 'Z' ? byte - 'A' + 'a' : byte;
}

}  // namespace

int _stricmp(const char* a, const char* b) {
  return _strnicmp(a, b, std::numeric_limits<std::size_t>::max());
}

int _strnicmp(const char* a, const char* b, std::size_t count) {
  for (std::size_t i = 0; i < count; ++i) {
    const int difference = folded(a[i]) - folded(b[i]);
    if (difference != 0 || a[i] == '\0') return difference;
  }
  return 0;
}

}  // namespace zelvan::platform
