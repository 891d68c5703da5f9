/// Text from elsewhere, made safe to print.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace example {

/// Returns `text`, which is UTF-8, with a question mark for each control character.
///
/// A name in a file could otherwise begin a new line, or make a terminal do more than show it.
inline std::string printable(std::string_view text) {
  const auto byte_at = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_ascii_control = byte_at(i) < 0x20 || byte_at(i) == 0x7f;
    const bool is_long_control =  // U+0080 to U+009F
        byte_at(i) == 0xc2 && byte_at(i + 1) >= 0x80 && byte_at(i + 1) < 0xa0;
    result += is_ascii_control || is_long_control ? '?' : text[i];
    if (is_long_control) ++i;
  }
  return result;
}

}  // namespace example
