/// The splitting of wide text, shared by the wide tokenisers.
#pragma once

#include <zelvan/text/detail/character_set.h>
#include <zelvan/text/wide_string.h>

#include <vector>

namespace zelvan {

using WideSet = CharacterSet<unsigned short, wide_string::traits_type>;
using WideText = WideSet::Text;
using WideTokens = std::vector<wide_string>;

/// What happens to the delimiter that ends a token: it is dropped, or kept at the end of the token.
/// If kept, a delimiter at the very start of a text is a token of its own.
enum class Delimiters { dropped, kept };

/// The blank, which is trimmed from every token.
inline constexpr unsigned short blank[] = {' '};
inline constexpr WideSet is_blank(WideText(blank, 1));

/// Appends the tokens of `text`: as `wtokenize` does if delimiters are dropped, as `wtokenize2`
/// does if they are kept.
void append_wide_tokens(WideText text, const WideSet& delimiters, Delimiters fate,
                        WideTokens* tokens);

}  // namespace zelvan
