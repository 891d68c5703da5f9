/// A set of characters or code units, for tests of each character of a text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

namespace zelvan {

/// A set of characters. Below 256 a table look-up decides; above, a search among the members, since
/// few sets have members there. *Requires:* the members outlive the set.
template <class Char, class Traits = std::char_traits<Char>>
class CharacterSet {
 public:
  using Text = std::basic_string_view<Char, Traits>;

  static constexpr std::size_t none = Text::npos;

  explicit constexpr CharacterSet(Text members) : members_(members) {
    for (const Char member : members) {
      const unsigned c = number(member);
      if (c < 256) {
        low_[c] = true;
      } else {
        has_high_ = true;
      }
    }
  }

  constexpr bool contains(Char character) const {
    const unsigned c = number(character);
    if (c >= 256) [[unlikely]]
      return is_high_member(character);
    return low_[c];
  }

  /// Returns the position of the first member in `text`, from `from` on, or `none`. A search from
  /// `none` returns `none`.
  constexpr std::size_t first_in(Text text, std::size_t from) const {
    return first(text, from, true);
  }

  /// Returns the position of the first character that is no member, from `from` on, or `none`.
  constexpr std::size_t first_not_in(Text text, std::size_t from) const {
    return first(text, from, false);
  }

  /// Returns `text` without the members at its two ends.
  constexpr Text trimmed(Text text) const {
    while (!text.empty() && contains(text.front())) text.remove_prefix(1);
    while (!text.empty() && contains(text.back())) text.remove_suffix(1);
    return text;
  }

 private:
  static constexpr unsigned number(Char c) { return static_cast<std::make_unsigned_t<Char>>(c); }

  // Not inline, so that the loops over a text stay short.
  [[gnu::noinline]] constexpr bool is_high_member(Char character) const {
    return has_high_ && members_.find(character) != none;
  }

  constexpr std::size_t first(Text text, std::size_t from, bool member) const {
    while (from < text.size() && contains(text[from]) != member) ++from;
    return from < text.size() ? from : none;
  }

  Text members_;
  bool low_[256] = {};
  bool has_high_ = false;
};

}  // namespace zelvan
