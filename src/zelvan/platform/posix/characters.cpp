#include <zelvan/platform/characters.h>

#include <cstring>
#include <cwchar>

namespace zelvan::platform {

const char* _mbsrchr(const char* text, char c) {
  const char* last = nullptr;
  const char* const end = text + std::strlen(text);
  std::mbstate_t state{};
  while (text != end) {
    if (*text == c) last = text;
    const std::size_t length = std::mbrtowc(nullptr, text, end - text, &state);
    const bool is_character = length <= static_cast<std::size_t>(end - text);
    if (!is_character) state = {};
    text += is_character ? length : 1;
  }
  return last;
}

}  // namespace zelvan::platform
