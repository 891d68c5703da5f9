/// Cutting text into the units that the user's language has.
#pragma once

#include <zelvan/export.h>
#include <zelvan/text/wide_string.h>

#include <vector>

/// The units of `text`, which is UTF-16, in order.
///
/// In Chinese and Japanese, where words are not set apart, each code unit from 0x80 on is a
/// token by itself (a surrogate pair is two), and each stretch of ASCII between them is trimmed
/// of blanks and cut by `wtokenize2`. A stretch of blanks alone gives one empty token. In every
/// other language, and when there is none, the whole text is cut by `wtokenize2`. The
/// delimiters are the blank, the two curved double quotes (U+201C, U+201D) and the punctuation
/// of ASCII without the backslash.
///
/// The language is the user's: the environment variable LC_ALL, LC_CTYPE or LANG, the first
/// that is set and not empty, asked afresh at each call. The locale need not be installed. On
/// Windows it is the one that the user's settings name.
/// Threads: as `getenv`, so nobody may change the environment meanwhile.
ZELVAN_API std::vector<zelvan::wide_string> GlyphTokenize(const zelvan::wide_string& text);
