/// Splitting a line of 8-bit text into fields, one field per call.
///
/// To walk a line, pass the `next` of each result to the following call:
///
///     for (str_field* f = str_parse(line); f->type != STR_END; f = str_parse(f->next)) ...
///
/// A *blank* is a space, and no other white space. Only a blank ends a word or a number, so a
/// newline at the end of a line belongs to its last word, and makes a number a word: cut it off
/// first.
///
/// The parsers read the caller's text and never change it. Their results live in records and
/// buffers of the library, one set for `str_parse` and `str_parseEx` and one for
/// `str_parse_vvcp`, with one buffer for numbers that both share: copy what you need from a
/// result before the next call. Nothing is allocated. The C library decides what is white space and
/// what is printable, by the locale of the process, but the byte 0xFF is neither in any locale.
/// Letters, digits and the decimal point are ASCII's in every locale.
///
/// Threads: only one thread at a time may use the parsers, `ColorRGB::SetValue(0, text)` included:
/// from the call until it has copied what it needs of the result.
/// `str_token` and `str_lower_string` keep no state and may be called from any thread, and so may
/// `zelvan::read_field`, the parser with the caller's own record (read_field.h).
#pragma once

#include <zelvan/export.h>

#include <cstddef>
#include <cstdint>

/// Values of `str_field::type`.
enum str_field_type : int {
  STR_WORD = 0,    ///< a run of characters up to a blank or the end
  STR_STRING = 1,  ///< a quoted string, without its quotes and escapes
  STR_NUMBER = 2,  ///< a number
  STR_END = 3      ///< no field
};

/// One field. The library owns the record and its text; the caller must not release them.
struct str_field {
  int type;              ///< a `str_field_type`
  double value;          ///< of a number; 0.0 for every other kind
  std::uint64_t length;  ///< bytes in `text`, its terminator not counted
  char* text;            ///< terminated; null if there is no text
  char* next;            ///< where to go on in the caller's text; null only for a null text
};

/// Returns the next field of `text`, never null; for a null `text` it is `STR_END`.
///
/// Leading white space is skipped; what follows decides the kind:
///
/// - `"` opens a string in which a backslash is an ordinary character, `$` one in which a
///   backslash is dropped and the character after it taken as it is. Either kind ends at the
///   next `"` or `$`, or at the end of the text. An empty string has no text.
/// - A number has an optional sign, digits with an optional `.` before, among or after them, and an
///   optional exponent of up to 3 digits, or of none: the text of "5e" is "5". It must be followed
///   by a blank or the end; otherwise it is a word. The `text` of a number keeps 20 digits, and its
///   `value` is that of the `text`, correctly rounded.
///
///   After a sign the digits may be missing: the value is then 0.0. So it is for a sign and a `.`
///   ("-."), a sign and an exponent that begins with a digit ("-e5"), and a sign alone with a blank
///   and a digit after it: of "- 5" the first field is the number "-", and `next` is at the blank.
///   A sign alone with anything else after it is a word.
///
///   Leading zeros count among the 20 digits, the one before the point included. So half of the
///   numbers from 1e-4 to 1e-3 that `%.17g` prints lose a digit and don't read back: write small
///   numbers with an exponent (`%.16e`), as 2.3009973488625243e-4 for 0.00023009973488625243.
///   Digits before the point that are cut shrink the value: 25 of them are read as the first 20.
/// - Anything else is a word: it runs to the next blank (no other white space) or the end.
///
/// `STR_END` comes with `next` at the end of the text or at the character that can't start a
/// field: one that is not printable, such as a control character, or, in the locales C and
/// UTF-8, one with the high bit set. A word or string of more than 1599 bytes does not fit the
/// buffer and is refused in the same way, with `next` at its first character. So a walk that
/// ends at `STR_END` has read the whole line if `*next` is the terminator.
ZELVAN_C_API str_field* str_parse(char* text);

/// Returns the next field as `str_parse` does, but with a `mode` of 1, `$` only opens strings:
/// inside one it is copied and does not end it. Any other mode is that of `str_parse`.
ZELVAN_C_API str_field* str_parseEx(char* text, int mode);

/// Returns the next field as `str_parse` does, but with other strings: only `"` ends one, and a
/// backslash escapes the character after it in strings of both kinds.
ZELVAN_C_API str_field* str_parse_vvcp(char* text);

/// Cuts one token off `text` at the first delimiter outside quotes, and returns its start, the
/// first character that is not a blank; null if the token is empty.
///
/// The delimiter is overwritten with the terminator and stored in `*found`; `*next` is the
/// place after it, to go on from. If the text ends first, `*found` is NUL and `*next` null.
/// A `"` opens a quoted part, in which nothing delimits; the next `"` or the end of the text closes
/// it. But if the two `"` are next to each other, the first is an ordinary character and the second
/// opens a part. Outside quotes, a character after a backslash neither delimits nor opens a part.
/// Inside, a backslash is an ordinary character, so `\"` closes the part. Quotes, backslashes and
/// trailing blanks stay in the token.
///
/// Requires: no null pointer; `text` writable. `delimiters` may be empty.
ZELVAN_C_API char* str_token(char* text, char* delimiters, char** next, char* found);

/// Converts the ASCII letters of `text` to lower case, in place. Other bytes do not change.
///
/// Requires: `text` is not null.
ZELVAN_C_API void str_lower_string(char* text);

static_assert(offsetof(str_field, type) == 0 && offsetof(str_field, value) == alignof(double) &&
                  offsetof(str_field, length) == alignof(double) + 8 &&
                  offsetof(str_field, text) == alignof(double) + 16 &&
                  offsetof(str_field, next) == alignof(double) + 16 + sizeof(void*) &&
                  sizeof(str_field) == alignof(double) + 16 + 2 * sizeof(void*),
              "layout is interface");
