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
