/// Splitting text into tokens, and trimming it.
///
/// `tokenize` is the plain form, on `char`. The wide tokenisers work on UTF-16 code units, one
/// `unsigned short` each (surrogate pairs get no special care), and add two rules: in a number at
/// the start of a token, dots and digits are no delimiters, and blanks are trimmed from the ends of
/// each token.
///
/// | | `tokenize` | `wtokenize` | `wtokenize2` |
/// |---|---|---|---|
/// | delimiter that ends a token | dropped | dropped | kept at its end |
/// | more delimiters after it | dropped | dropped | dropped |
/// | delimiters at the start | dropped | dropped | the first is a token, more are dropped |
/// | empty text | no token | no token | one empty token |
/// | 3.14, with a dot as delimiter | cut | whole | whole |
/// | blanks at a token's ends | kept | trimmed | trimmed |
///
/// Delimiters are a set: their order has no meaning, and with an empty set the text is one
/// token. Inputs are only read and there is no state: calls may run on any thread. If the heap
/// refuses, the exception of the standard library reaches the caller.
#pragma once

#include <zelvan/export.h>
#include <zelvan/text/wide_string.h>

#include <string>
#include <vector>

/// Returns the tokens of `text` in order. None of them is empty.
ZELVAN_API std::vector<std::string> tokenize(const std::string& text,
                                             const std::string& delimiters);

/// Returns `text` without the characters of `chars`, a set, at its two ends; empty if it holds no
/// others.
/// Requires: `chars` is not null.
ZELVAN_API std::string trim(const std::string& text, const char* chars);

/// Returns the tokens of `text` in order, without their delimiters.
///
/// A token that begins with a digit first takes the whole run of digits and dots there, then
/// all up to the next delimiter: with a blank and a dot as delimiters "3.14abc def" becomes
/// "3.14abc" and "def". A digit further into a token, and one after a sign, has no such effect. A
/// token that held nothing but blanks stays in the list, empty.
ZELVAN_API std::vector<zelvan::wide_string> wtokenize(const zelvan::wide_string& text,
                                                      const zelvan::wide_string& delimiters);

/// Returns tokens as `wtokenize` does, but the first one begins at the very start of `text`, and
/// each token keeps the delimiter that ended it, unless that is a blank, which is trimmed: "Hello,
/// world!" becomes "Hello," and "world!", a blank, a comma and an exclamation mark being the
/// delimiters.
ZELVAN_API std::vector<zelvan::wide_string> wtokenize2(const zelvan::wide_string& text,
                                                       const zelvan::wide_string& delimiters);

/// Trims a wide string as `trim` does. Requires: `chars` is not null and ended by a 0.
ZELVAN_API zelvan::wide_string wtrim(const zelvan::wide_string& text, const unsigned short* chars);
