#include <zelvan/platform/characters.h>

#include <mbstring.h>

namespace zelvan::platform {

const char* _mbsrchr(const char* text, char c) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  return reinterpret_cast<const char*>(::_mbsrchr(bytes, static_cast<unsigned char>(c)));
}

}  // namespace zelvan::platform
