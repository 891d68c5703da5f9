#include <zelvan/detail/comparison.h>
#include <zelvan/var/search_value.h>

#include <cstring>

namespace {

constexpr std::size_t shortest_text = 3;  // one character of key, a colon, one of value

const char* skip_separators(const char* p) {
  while (*p == ':' || *p == ',') ++p;
  return p;
}

const char* find_or_end(const char* p, const char* end, char c) {
  const void* const found = std::memchr(p, c, static_cast<std::size_t>(end - p));
  return found != nullptr ? static_cast<const char*>(found) : end;
}

}  // namespace

std::intptr_t utl_searchValueForKey(const char* text, const char* key, const char** value) {
  *value = nullptr;
  if (text == nullptr || key == nullptr) return 0;
  const std::size_t length = std::strlen(text);
  if (length < shortest_text) return 0;
  const char* const end = text + length;

  const char* item = skip_separators(text);
  const char* colon = find_or_end(item, end, ':');
  const char* start = skip_separators(colon);  // the start of the value
  while (start < end) {
    if (zelvan::_strnicmp(item, key, static_cast<std::size_t>(colon - item)) == 0) {
      *value = start;
      return find_or_end(start, end, ',') - start;
    }
    if (start == end - 1) return 0;
    item = skip_separators(find_or_end(item, end, ','));
    // Search for the next colon only if the new item begins after the colon found before.
    if (item > colon) {
      colon = find_or_end(item, end, ':');
      start = skip_separators(colon);
    }
  }
  return 0;
}
