/// Splitting text into tokens: at delimiters and, in a Chinese or Japanese locale, into single
/// characters.
#pragma once

#include <zelvan/export.h>
#include <zelvan/text/wide_string.h>

#include <vector>

/// Returns the tokens of `text`, which is UTF-16, in order.
///
/// Chinese and Japanese write words without blanks between them. There each code unit from 0x80 on
/// is a token by itself (a surrogate pair is two). Each run of ASCII between them is trimmed of
/// blanks and split by `wtokenize2`; a run of blanks alone becomes one empty token. In every other
/// language, and if none is set, `wtokenize2` splits the whole text. The delimiters are the blank,
/// the two curved double quotes (U+201C, U+201D) and the punctuation of ASCII without the
/// backslash.
///
/// The language is the user's: the environment variable LC_ALL, LC_CTYPE or LANG, the first that is
/// set and not empty, read at each call. The locale need not be installed. On Windows it is the
/// language of the user's settings.
///
/// Threads: reads the environment as `getenv` does, so no thread may change it meanwhile.
ZELVAN_API std::vector<zelvan::wide_string> GlyphTokenize(const zelvan::wide_string& text);
