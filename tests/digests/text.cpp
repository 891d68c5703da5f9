#include "digests/group.h"

namespace {

std::string some_text(Random& random, std::string_view characters, int longest) {
  std::string text;
  for (int n = random.below(longest + 1); n > 0; --n) {
    text += characters[random.below(static_cast<int>(characters.size()))];
  }
  return text;
}

void log_fields(Log& log, std::string line) {
  char* at = line.data();
  for (bool is_end = false; !is_end;) {
    const std::string before = at;
    const str_field* const field = str_parse(at);
    at = field->next;
    is_end = field->type == STR_END;
    log("str_parse", inputs(before), field->type, field->value, field->text, at);
  }
}

const Group fields_of_lines("text.fields", [](Log& log) {
  Random random(1);
  for (int i = 0; i < 6000; ++i) {
    log_fields(log, some_text(random, "11.+-eE$\"\\  x\t\n\v\x01\x7f\xa0\xe9", 16));
  }
});

// Digits enough that rounding is hard, with exponents on both sides of what a double holds.
const Group numbers("text.numbers", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 6000; ++i) {
    std::string line = some_text(random, "0123456789", 14);
    line += '.' + some_text(random, "0123456789", 14);
    const int exponent = i % 2 == 0 ? random.below(53) - 26 : random.below(701) - 350;
    if (i % 3 != 0) line += 'e' + std::to_string(exponent);
    log_fields(log, line);
  }
});

using Wide = decltype(wtrim({}, nullptr));

// Every code unit, in a token and as what ends one.
const Group tokens("text.tokens", [](Log& log) {
  for (int i = 0; i <= 0xFFFF; ++i) {
    const auto unit = static_cast<unsigned short>(i);
    const Wide text = {' ', unit, '.', '7', unit, 'b', unit, 'c'};
    const Wide set = {'.', unit};
    log("wtokenize", inputs(text, set), wtokenize(text, set));
    log("wtrim", inputs(text, set), wtrim(text, set.c_str()));
  }
});

// Names that differ in case, in a byte beyond ASCII, or in what is next to the letters.
const Group names("var.names", [](Log& log) {
  Random random(3);
  for (int i = 0; i < 6000; ++i) {
    const auto some_name = [&] { return some_text(random, "aAbB@[`{\x01 \xc9\xe9", 9); };
    const std::string names[] = {some_name(), some_name(), some_name()};
    const VarNameValue table[] = {
        {names[0].c_str(), -1}, {names[1].c_str(), 9}, {names[2].c_str(), 2}, {nullptr, 0}};
    const std::string sought = i % 2 == 0 ? names[i % 3].substr(0, 7) : some_name();
    int value = 77;
    const int is_found = VarLookupInt(table, sought.c_str(), &value);
    log("VarLookupInt", inputs(names, sought), is_found, value);
  }
});

// Lengths that no double holds exactly, in the order in which they are added.
const Group patterns("linetypes.patterns", [](Log& log) {
  constexpr double lengths[] = {0.0, -0.0, -1.0, 0.1, 1e9, 0x1p-60, 0.3, NAN};
  Random random(4);
  for (int i = 0; i < 1000; ++i) {
    CLineTypeDefPattern pattern;
    for (int n = random.below(20); n > 0; --n) {
      const double length = lengths[random.below(8)];
      const bool is_added = pattern.AddFragment(length);
      log("AddFragment", inputs(length), is_added, pattern.GetFragmentSum());
    }
  }
});

}  // namespace
