#include <zelvan/text/detail/character_set.h>
#include <zelvan/text/detail/written_number.h>
#include <zelvan/text/read_field.h>
#include <zelvan/text/str_field.h>

#include <algorithm>
#include <array>
#include <cassert>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <string_view>

namespace {

using namespace std::string_view_literals;

/// The result of a parser and the text that it points to.
using Result = zelvan::field_record;

constexpr std::size_t buffer_size = sizeof(Result::text);  // including the terminator

// The state of the module, all zero at load, without a lock: callers must let only one thread at a
// time use the three parsers.
Result parse_result;            // of str_parse and str_parseEx
Result vvcp_result;             // of str_parse_vvcp
char number_text[buffer_size];  // the text of a number, shared by all three

/// How a string ends and what a backslash does in it.
struct StringSyntax {
  bool dollar_closes;
  bool backslash_escapes_in_quotes;
};

/// The kind of field that a first character opens. Printable ASCII is the same in every locale;
/// only other bytes need isspace and isprint.
enum Kind : unsigned char { unclassified, opens_word, opens_string, may_open_number };

constexpr auto kinds = [] {
  std::array<Kind, 256> table{};
  for (char c = '!'; c <= '~'; ++c) table[c] = opens_word;
  for (const char c : {'"', '$'}) table[c] = opens_string;
  for (const char c : {'+', '-', '.', '0', '1', '2', '3', '4', '5', '6', '7', '8', '9'}) {
    table[c] = may_open_number;
  }
  return table;
}();

Kind kind_of(char c) { return kinds[static_cast<unsigned char>(c)]; }

// What ends a copy; the terminator is one of them.
constexpr zelvan::CharacterSet<char> ends_field(" \0"sv);
constexpr zelvan::CharacterSet<char> special_in_string("\"$\\\0"sv);

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_sign(char c) { return c == '+' || c == '-'; }

char* skip_digits(char* p) {
  while (is_digit(*p)) ++p;
  return p;
}

// A caller may parse text that an earlier call returned, so the text can lie in the buffer that a
// word or string is copied to. No byte is therefore overwritten before it is read. Numbers are an
// exception: the terminator written after the mantissa can overwrite the start of the exponent.

/// Copies characters up to the first of `stops`, at most `room`, and returns their number. Works in
/// blocks of a fixed size, whose loop the compiler unrolls: this saves a sixth of the time for a
/// field of ten bytes.
template <const zelvan::CharacterSet<char>& stops>
std::size_t copy_until(const char* from, char* to, std::size_t room) {
  constexpr std::size_t block = 8;
  std::size_t n = 0;
  for (; room - n >= block; n += block) {
    for (std::size_t i = n; i < n + block; ++i) {
      if (stops.contains(from[i])) return i;
      to[i] = from[i];
    }
  }
  for (; n < room && !stops.contains(from[n]); ++n) to[n] = from[n];
  return n;
}

/// Stores and returns STR_END: there is no field at `p`, or it doesn't fit into the buffer.
str_field* store_end(char* p, Result& result) {
  result.field = {STR_END, 0.0, 0, nullptr, p};
  return &result.field;
}

// ---- The scans store and return the field that begins at `p`, which is not white space

str_field* scan_word(char* p, Result& result) {
  const std::size_t length = copy_until<ends_field>(p, result.text, buffer_size - 1);
  if (!ends_field.contains(p[length])) return store_end(p, result);
  result.text[length] = '\0';
  result.field = {STR_WORD, 0.0, length, result.text, p + length};
  return &result.field;
}

[[gnu::noinline]] str_field* scan_string(char* const p, StringSyntax syntax, Result& result) {
  const bool escapes = *p == '$' || syntax.backslash_escapes_in_quotes;
  char* next = p + 1;
  std::size_t length = 0;
  for (;;) {
    const std::size_t copied =
        copy_until<special_in_string>(next, result.text + length, buffer_size - 1 - length);
    length += copied;
    next += copied;
    if (*next == '\0') break;
    if (*next == '"' || (*next == '$' && syntax.dollar_closes)) {
      ++next;
      break;
    }
    if (*next == '\\' && escapes && *++next == '\0') break;  // a backslash at the end is dropped
    if (length == buffer_size - 1) return store_end(p, result);
    result.text[length++] = *next++;
  }
  result.text[length] = '\0';
  result.field = {STR_STRING, 0.0, length, length == 0 ? nullptr : result.text, next};
  return &result.field;
}

constexpr std::ptrdiff_t kept_digits = 20;
constexpr std::ptrdiff_t longest_mantissa = kept_digits + 2;  // with sign and point
constexpr int most_exponent_digits = 3;

/// Returns true if a number may start at `p`; `scan_number` decides. Requires: `*p` is a digit, a
/// point or a sign.
bool may_be_number(const char* p) {
  if (is_digit(*p)) return true;
  if (*p == '.') return is_digit(p[1]);
  assert(is_sign(*p));
  return is_digit(p[1]) || p[1] == '.' || (p[1] != '\0' && is_digit(p[2]));
}

/// The part of a number before its exponent.
struct Mantissa {
  std::ptrdiff_t length;
  std::ptrdiff_t digits;    // number of all digits
  std::ptrdiff_t decimals;  // number of digits after the point
  std::uint64_t whole;      // all digits as an integer; valid for up to 19 digits
};

/// Reads the mantissa at `p` in one pass. Copies its first characters, enough for the digits that
/// are kept, to `number_text`.
Mantissa scan_mantissa(const char* p, char* number_text) {
  std::ptrdiff_t n = 0;
  std::uint64_t whole = 0;
  const auto scan_digits = [&] {
    for (; is_digit(p[n]) && n < longest_mantissa; ++n) {
      whole = whole * 10 + static_cast<unsigned char>(p[n] - '0');
      number_text[n] = p[n];
    }
    while (is_digit(p[n])) ++n;
  };
  if (is_sign(*p)) number_text[n++] = *p;
  const std::ptrdiff_t integer = n;
  scan_digits();
  const std::ptrdiff_t point = n;
  if (p[point] != '.') return {point, point - integer, 0, whole};
  if (n < longest_mantissa) number_text[n] = '.';
  ++n;
  scan_digits();
  return {n, n - integer - 1, n - point - 1, whole};
}

/// Computes the number from a short mantissa and a small power of ten, without the sign. A double
/// holds both exactly, so their product or quotient is rounded only once. Returns false if the
/// mantissa or the power may be too large for that. (W. D. Clinger, How to Read Floating Point
/// Numbers Accurately, 1990.)
bool is_short_number(const Mantissa& mantissa, std::ptrdiff_t exponent, double* value) {
  static constexpr double powers_of_10[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                            1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
  constexpr std::ptrdiff_t most_digits = 15, largest_power = std::size(powers_of_10) - 1;
  const std::ptrdiff_t power = exponent - mantissa.decimals;
  if (mantissa.digits > most_digits) return false;
  if (power < -largest_power || power > largest_power) return false;
  const double whole = static_cast<double>(static_cast<std::int64_t>(mantissa.whole));
  *value = power < 0 ? whole / powers_of_10[-power] : whole * powers_of_10[power];
  return true;
}

/// Scans a number, with its text in `number_text`; scans a word if it is no number.
[[gnu::noinline]] str_field* scan_number(char* p, Result& result, char* number_text) {
  if (!may_be_number(p)) return scan_word(p, result);
  const Mantissa mantissa = scan_mantissa(p, number_text);
  // Surplus digits are cut off the text, even before the point, which makes the value smaller.
  const std::ptrdiff_t surplus = std::max<std::ptrdiff_t>(mantissa.digits - kept_digits, 0);
  auto length = static_cast<std::size_t>(mantissa.length - surplus);
  number_text[length] = '\0';

  char* const mantissa_end = p + mantissa.length;
  char* end = mantissa_end;
  std::ptrdiff_t exponent = 0;
  std::ptrdiff_t exponent_digits = 0;
  if (*end == 'e' || *end == 'E') {
    ++end;
    const bool is_negative = *end == '-';
    if (*end == '+' || is_negative) ++end;
    char* const first = end;
    end = skip_digits(first);
    exponent_digits = end - first;
    if (exponent_digits > most_exponent_digits) return scan_word(p, result);
    for (const char* digit = first; digit != end; ++digit) exponent = exponent * 10 + *digit - '0';
    if (is_negative) exponent = -exponent;
  }
  if (!ends_field.contains(*end)) return scan_word(p, result);
  if (exponent_digits > 0) {  // an "e" without digits is skipped and not part of the text
    const auto exponent_length = static_cast<std::size_t>(end - mantissa_end);
    std::memmove(number_text + length, mantissa_end, exponent_length);
    length += exponent_length;
    number_text[length] = '\0';
  }
  double value;
  if (mantissa.digits > 0 && is_short_number(mantissa, exponent, &value)) {
    if (number_text[0] == '-') value = -value;
  } else {
    value = zelvan::number_of(number_text, length);
  }
  result.field = {STR_NUMBER, value, length, number_text, end};
  return &result.field;
}

/// Returns the argument for the C library's character tests. 0xFF is passed as EOF, so in no locale
/// is it blank or printable, although it is a letter in Latin-1. Other characters are passed as
/// unsigned numbers, which every C library accepts.
int ctype_argument(char c) {
  const auto number = static_cast<unsigned char>(c);
  return number == 0xFF ? EOF : number;
}

bool is_blank(char c) { return std::isspace(ctype_argument(c)) != 0; }
bool is_printable(char c) { return std::isprint(ctype_argument(c)) != 0; }

str_field* parse(char* p, Result& result, char* number_text, StringSyntax syntax);

/// Parses from a byte that only the C library can classify, or from the terminator.
[[gnu::noinline]] str_field* parse_unclassified(char* p, Result& result, char* number_text,
                                                StringSyntax syntax) {
  if (is_blank(*p)) {
    while (is_blank(*p)) ++p;
    return parse(p, result, number_text, syntax);
  }
  return *p != '\0' && is_printable(*p) ? scan_word(p, result) : store_end(p, result);
}

str_field* parse(char* p, Result& result, char* number_text, StringSyntax syntax) {
  if (p == nullptr) return store_end(p, result);
  while (*p == ' ') ++p;
  switch (kind_of(*p)) {
    case opens_word:
      return scan_word(p, result);
    case opens_string:
      return scan_string(p, syntax, result);
    case may_open_number:
      return scan_number(p, result, number_text);
    default:
      return parse_unclassified(p, result, number_text, syntax);
  }
}

/// Returns the position after the quoted part that opens at `p`.
char* skip_quoted(char* p) {
  ++p;
  if (*p == '"') return p;  // the second of two quotes opens a part of its own
  while (*p != '\0' && *p != '"') ++p;
  return *p == '\0' ? p : p + 1;
}

/// Returns the first delimiter outside quotes and escapes, or the terminator.
char* find_delimiter(char* p, const char* delimiters) {
  while (*p != '\0') {
    if (*p == '"') {
      p = skip_quoted(p);
    } else if (*p == '\\') {
      p += p[1] == '\0' ? 1 : 2;
    } else if (std::strchr(delimiters, *p) != nullptr) {
      return p;
    } else {
      ++p;
    }
  }
  return p;
}

}  // namespace

str_field* str_parse(char* text) { return str_parseEx(text, 0); }

str_field* str_parseEx(char* text, int mode) {
  return parse(text, parse_result, number_text, {mode != 1, false});
}

str_field* str_parse_vvcp(char* text) {
  return parse(text, vvcp_result, number_text, {false, true});
}

const str_field* zelvan::read_field(const char* text, field_record* record, string_rules rules) {
  const bool is_vvcp = rules == string_rules::of_str_parse_vvcp;
  const bool dollar_closes = !is_vvcp && rules != string_rules::of_str_parse_mode_1;
  // The text is only read. The field gets its address as non-const, so that the caller may read on.
  return parse(const_cast<char*>(text), *record, record->text, {dollar_closes, is_vvcp});
}

char* str_token(char* text, char* delimiters, char** next, char* found) {
  while (*text == ' ') ++text;
  char* const end = find_delimiter(text, delimiters);
  *found = *end;
  *next = *end == '\0' ? nullptr : end + 1;
  if (*end != '\0') *end = '\0';
  return *text == '\0' ? nullptr : text;
}

void str_lower_string(char* text) {
  for (; *text != '\0'; ++text) {
    if (*text >= 'A' && *text <= 'Z') *text = static_cast<char>(*text - 'A' + 'a');
  }
}
