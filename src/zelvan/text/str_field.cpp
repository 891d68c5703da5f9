#include <zelvan/text/detail/written_number.h>
#include <zelvan/text/str_field.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstring>

namespace {

constexpr std::size_t buffer_size = 1600;  // so the text of a field has at most 1599 bytes

/// The result of a parser and the text that it points to.
struct Result {
  str_field field;
  char text[buffer_size];
};

// The module's state, all zero at load. One thread at a time may be in a parser: callers see
// to that, there is no lock.
Result parse_result;            // of str_parse and str_parseEx
Result vvcp_result;             // of str_parse_vvcp
char number_text[buffer_size];  // the text of numbers, of all three

/// How a string ends and what a backslash does in it.
struct StringRules {
  bool dollar_closes;
  bool backslash_escapes_in_quotes;
};

constexpr std::ptrdiff_t kept_digits = 20;
constexpr int most_exponent_digits = 3;

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool ends_field(char c) { return c == '\0' || c == ' '; }

// In every locale what has a glyph in ASCII is printable and no space, so of most characters the
// C library needn't be asked.
bool has_ascii_glyph(char c) { return c > ' ' && c <= '~'; }
bool is_space(char c) {
  return c == ' ' || (!has_ascii_glyph(c) && std::isspace(static_cast<unsigned char>(c)) != 0);
}
bool is_printable(char c) {
  return has_ascii_glyph(c) || std::isprint(static_cast<unsigned char>(c)) != 0;
}

char* skip_digits(char* p) {
  while (is_digit(*p)) ++p;
  return p;
}

/// True if what starts at `p` may be a number; whether it is one, `scan_number` finds out.
bool may_be_number(const char* p) {
  if (is_digit(*p)) return true;
  if (*p == '.') return is_digit(p[1]);
  if (*p != '+' && *p != '-') return false;
  return is_digit(p[1]) || p[1] == '.' || (p[1] != '\0' && is_digit(p[2]));
}

/// The number that digits with a point among them spell, if they are so few that they and the
/// power of ten are exact: then their quotient is rounded once, as it should be.
/// (W. D. Clinger, How to Read Floating Point Numbers Accurately, 1990.)
bool is_short_number(const char* digits, const char* end, double* value) {
  static constexpr double powers_of_10[] = {1.0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                            1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
  if (end - digits > 15) return false;
  std::uint64_t whole = 0;
  std::ptrdiff_t decimals = 0;
  for (const char* p = digits; p != end; ++p) {
    if (is_digit(*p)) {
      whole = whole * 10 + static_cast<std::uint64_t>(*p - '0');
    } else if (*p == '.') {
      decimals = end - p - 1;
    } else {
      return false;
    }
  }
  *value = static_cast<double>(static_cast<std::int64_t>(whole)) / powers_of_10[decimals];
  return true;
}

/// Reads a number at `p` into `field`. False if what is written there doesn't hold together;
/// the caller then makes a word of it.
bool scan_number(char* p, str_field& field) {
  char* const integer = *p == '+' || *p == '-' ? p + 1 : p;
  char* mantissa_end = skip_digits(integer);
  std::ptrdiff_t digits = mantissa_end - integer;
  if (*mantissa_end == '.') {
    char* const fraction = mantissa_end + 1;
    mantissa_end = skip_digits(fraction);
    digits += mantissa_end - fraction;
  }
  double value;
  const bool is_short = digits > 0 && is_short_number(integer, mantissa_end, &value);
  if (is_short && *p == '-') value = -value;

  // Surplus digits are cut off the written form, even ahead of the point: the value shrinks.
  const std::ptrdiff_t surplus = std::max<std::ptrdiff_t>(digits - kept_digits, 0);
  auto length = static_cast<std::size_t>(mantissa_end - p - surplus);
  std::memmove(number_text, p, length);
  number_text[length] = '\0';

  char* end = mantissa_end;
  std::ptrdiff_t exponent_digits = 0;
  if (*end == 'e' || *end == 'E') {
    ++end;
    if (*end == '+' || *end == '-') ++end;
    char* const exponent = end;
    end = skip_digits(exponent);
    exponent_digits = end - exponent;
    if (exponent_digits > most_exponent_digits) return false;
  }
  if (!ends_field(*end)) return false;
  if (exponent_digits > 0) {  // an "e" without digits is stepped over and no part of the text
    const auto exponent_length = static_cast<std::size_t>(end - mantissa_end);
    std::memmove(number_text + length, mantissa_end, exponent_length);
    length += exponent_length;
    number_text[length] = '\0';
  }
  if (!is_short || exponent_digits > 0) value = zelvan::number_of(number_text, length);
  field = {STR_NUMBER, value, length, number_text, end};
  return true;
}

/// What may have a meaning in a string; all other characters are copied.
constexpr auto may_mean_more = [] {
  std::array<bool, 256> table{};
  for (const unsigned char c : {'\0', '"', '$', '\\'}) table[c] = true;
  return table;
}();

/// Reads the string that opens at `p`. False if it does not fit the buffer.
bool scan_string(char* p, StringRules rules, Result& result) {
  const bool escapes = *p == '$' || rules.backslash_escapes_in_quotes;
  std::size_t length = 0;
  for (++p;; ++p) {
    if (may_mean_more[static_cast<unsigned char>(*p)]) {
      if (*p == '\0') break;
      if (*p == '"' || (*p == '$' && rules.dollar_closes)) {
        ++p;
        break;
      }
      if (*p == '\\' && escapes && *++p == '\0') break;  // the last backslash of all is dropped
    }
    if (length == buffer_size - 1) return false;
    result.text[length++] = *p;
  }
  result.text[length] = '\0';
  result.field = {STR_STRING, 0.0, length, length == 0 ? nullptr : result.text, p};
  return true;
}

/// Reads the word at `p`. False if it does not fit the buffer.
bool scan_word(char* p, Result& result) {
  std::size_t length = 0;
  while (!ends_field(p[length])) ++length;
  if (length >= buffer_size) return false;
  std::memmove(result.text, p, length);
  result.text[length] = '\0';
  result.field = {STR_WORD, 0.0, length, result.text, p + length};
  return true;
}

str_field* parse(char* p, StringRules rules, Result& result) {
  if (p != nullptr) {
    while (is_space(*p)) ++p;
  }
  result.field = {STR_END, 0.0, 0, nullptr, p};
  if (p == nullptr || *p == '\0' || !is_printable(*p)) return &result.field;
  if (*p == '"' || *p == '$') {
    scan_string(p, rules, result);
  } else if (!may_be_number(p) || !scan_number(p, result.field)) {
    scan_word(p, result);
  }
  return &result.field;
}

/// The place behind the stretch in quotes that opens at `p`.
char* skip_quoted(char* p) {
  ++p;
  if (*p == '"') return p;  // the second of two opens a stretch of its own
  while (*p != '\0' && *p != '"') ++p;
  return *p == '\0' ? p : p + 1;
}

}  // namespace

str_field* str_parse(char* text) { return str_parseEx(text, 0); }

str_field* str_parseEx(char* text, int mode) {
  return parse(text, {mode != 1, false}, parse_result);
}

str_field* str_parse_vvcp(char* text) { return parse(text, {false, true}, vvcp_result); }

char* str_token(char* text, char* delimiters, char** next, char* found) {
  while (*text == ' ') ++text;
  *found = '\0';
  *next = nullptr;
  for (char* p = text; *p != '\0';) {
    if (*p == '"') {
      p = skip_quoted(p);
    } else if (*p == '\\') {
      p += p[1] == '\0' ? 1 : 2;
    } else if (std::strchr(delimiters, *p) != nullptr) {
      *found = *p;
      *next = p + 1;
      *p = '\0';
    } else {
      ++p;
    }
  }
  return *text == '\0' ? nullptr : text;
}

void str_lower_string(char* text) {
  for (; *text != '\0'; ++text) {
    if (*text >= 'A' && *text <= 'Z') *text = static_cast<char>(*text - 'A' + 'a');
  }
}
