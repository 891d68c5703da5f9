#include <zelvan/platform/locale.h>

#include "digests/group.h"

#include <cstring>

namespace {

std::string language;  // of the user, as it is played here

}  // namespace

int zelvan::platform::GetLocaleInfoA(unsigned locale, unsigned type, char* buffer, int size) {
  if (locale != LOCALE_USER_DEFAULT || type != LOCALE_SISO639LANGNAME || size <= 3) return 0;
  std::strcpy(buffer, language.c_str());
  return static_cast<int>(language.size()) + 1;
}

namespace {

using Wide = zelvan::wide_string;

/// Takes the fields of a line, one parser after the other.
void take_fields(Digest& digest, const std::string& line) {
  for (int parser = 0; parser < 4; ++parser) {
    std::vector<char> text(line.c_str(), line.c_str() + line.size() + 1);
    char* p = text.data();
    for (bool is_end = false; !is_end;) {
      const str_field* const f = parser == 0   ? str_parse(p)
                                 : parser == 3 ? str_parse_vvcp(p)
                                               : str_parseEx(p, parser);
      digest(f->type, f->value, f->length, f->next - text.data(), f->text);
      is_end = f->type == STR_END;
      p = f->next;
    }
    digest(line == text.data());
  }
}

void take_tokens(Digest& digest, const std::string& line, std::string delimiters) {
  std::vector<char> text(line.c_str(), line.c_str() + line.size() + 1);
  for (char* next = text.data(); next != nullptr;) {
    char found = '?';
    digest(str_token(next, delimiters.data(), &next, &found), found);
  }
  digest(text);
}

// All lines of up to four of the characters that mean something; then longer ones, with runs about
// as long as a number can be, or as a field: 1599 bytes are the most. In these 1 is any digit, and
// a control character is any byte.
const Group fields("text.fields", [](Digest& digest) {
  const std::string digits = "11111111111111111111.11e", few = "1.-eE$\"\\ x\t",
                    more = "1111.+--eE$\"\\  x\t\n\v\f\r\x01\x01";
  Random random(4);
  digest(str_parse(nullptr)->type, str_parse(nullptr)->next == nullptr);
  for (int i = -16104; i <= 20000; ++i) {
    std::string line;
    for (int n = -i; n > 0; n = (n - 1) / 11) line += few[(n - 1) % 11];
    if (i > 0 && i % 4 == 0) {
      const int exponent = i % 8 == 0 ? i % 53 - 26 : (i % 701 - 350) * (i % 32 == 4 ? 9 : 1);
      line.assign(i % 3 != 0, '-');
      line += digits.substr(random.below(24)) + std::to_string(exponent) + ' ';
    }
    for (int n = i > 0 ? random.below(16) : 0; n > 0; --n) {
      const char c = more[random.below(more.size())];
      const int length = random.below(99) == 0 ? 1595 : random.below(4) == 0 ? 25 : 4;
      line.append(length - random.below(3) - 1, c);
    }
    for (char& c : line) {
      if (c == '1' && i > 0) c = static_cast<char>('0' + random.below(10));
      if (c == '\x01') c = static_cast<char>(1 + random.below(255));
    }
    take_fields(digest, line);
    take_tokens(digest, line, i % 3 == 0 ? "" : i % 3 == 1 ? " .\"" : "x\\");
    str_lower_string(line.data());
    digest(line);
  }
  // Strings about as long as may be, with what may mean more at each place ahead of their end.
  for (int i = 0; i < 4 * 80; ++i) {
    std::string line(i % 4 == 0 ? 1650 : 1599 + i % 4, 'x');
    line[0] = "\"$"[i / 4 % 2];
    line[1520 + i / 4] = "$\\"[i % 3 == 0];
    take_fields(digest, line);
  }
});

// Two records and two buffers for texts, but one for numbers: what a result is after the next call.
const Group shared("text.shared", [](Digest& digest) {
  for (int i = 0; i < 3 * 3 * 3 * 3; ++i) {
    char lines[][8] = {"word", "1.5", "2.5x"};
    const auto parse = [&](int parser, int line) {
      return parser == 0   ? str_parse(lines[line])
             : parser == 1 ? str_parseEx(lines[line], 1)
                           : str_parse_vvcp(lines[line]);
    };
    const str_field* const first = parse(i % 3, i / 3 % 3);
    const str_field* const second = parse(i / 9 % 3, i / 27);
    digest(first == second, first->text, first->value, second->text);
  }
});

// Every code unit, in a number and as what ends one; then texts as long as a vector, or longer, of
// characters whose low bytes are equal.
const Group tokens("text.tokens", [](Digest& digest) {
  const Wide some = {'a', '9', '0', '.', ' ', 'b', 0x7F, 0x80, 0xFF, 0x120, 0x2061, 0x20FF, 0};
  const char* const languages[] = {"", "ja", "zh", "de", "zha", "jv"};
  Random random(3);
  for (int i = 0; i < 150'000; ++i) {
    const auto unit = static_cast<unsigned short>(i);
    Wide text = {' ', unit, '.', '7', unit, 'b', unit, 'c'}, set = {'.', unit};
    if (i > 0xFFFF) {
      text.resize(random.below(i % 8 == 0 ? 90 : 9));
      set.resize(random.below(5));
      for (auto& c : text) c = some[random.below(i % 16 == 0 ? 3 : 13)];
      for (auto& c : set) c = some[random.below(13)];
    }
    const std::string narrow(text.begin(), text.end()), narrow_set(set.begin(), set.end());
    language = languages[i % 6];
    digest(tokenize(narrow, narrow_set), trim(narrow, narrow_set.c_str()));
    digest(wtokenize(text, set), wtokenize2(text, set), wtrim(text, set.c_str()));
    digest(GlyphTokenize(text));
  }
});

}  // namespace
