#include <zelvan/platform/comparison.h>
#include <zelvan/var/search_value.h>

#include <cstring>

namespace {

constexpr std::size_t shortest_text = 3;  // a key, a colon and a value of one character each

const char* skip_separators(const char* p) {
  while (*p == ':' || *p == ',') ++p;
  return p;
}

/// The next `c` at or behind `p`; the terminator if there is none.
const char* find_or_end(const char* p, char c) {
  while (*p != c && *p != '\0') ++p;
  return p;
}

}  // namespace

std::intptr_t utl_searchValueForKey(const char* text, const char* key, const char** value) {
  *value = nullptr;
  if (text == nullptr || key == nullptr) return 0;
  const std::size_t length = std::strlen(text);
  if (length < shortest_text) return 0;
  const char* const last = text + length - 1;

  const char* item = text;
  for (;;) {
    item = skip_separators(item);
    const char* const colon = find_or_end(item, ':');
    if (*colon == '\0') return 0;
    const auto key_length = static_cast<std::size_t>(colon - item);
    const bool is_found = zelvan::platform::_strnicmp(item, key, key_length) == 0;
    const char* const start = skip_separators(colon);
    if (start > last) return 0;
    if (is_found) {
      *value = start;
      return find_or_end(start, ',') - start;
    }
    item = find_or_end(item, ',');
    if (start == last || item >= last) return 0;
  }
}
