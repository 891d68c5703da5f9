/// The cutting of wide text that the wide tokenisers share.
#pragma once

#include <zelvan/text/detail/character_set.h>
#include <zelvan/text/wide_string.h>

#include <vector>

namespace zelvan {

using WideSet = CharacterSet<unsigned short, wide_string::traits_type>;
using WideText = WideSet::Text;
using WideTokens = std::vector<wide_string>;

/// What becomes of the delimiter that ends a token, and of one at the very start.
enum class Delimiters { dropped, kept };

/// The blank alone, which is trimmed from every token.
inline constexpr unsigned short blank[] = {' '};
inline constexpr WideSet is_blank(WideText(blank, 1));

/// Appends the tokens of `text`: those of `wtokenize` where delimiters are dropped, those of
/// `wtokenize2` where they are kept.
void append_wide_tokens(WideText text, const WideSet& delimiters, Delimiters fate,
                        WideTokens* tokens);

}  // namespace zelvan
