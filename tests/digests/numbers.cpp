#include "digests/group.h"

namespace {

std::string some_digits(Random& random) {
  std::string digits;
  for (int n = random.below(15); n > 0; --n) digits += std::to_string(random.below(10));
  return digits;
}

// Numbers of many digits, which are hard to round, from below to above the range of a double.
const Group numbers("text.numbers", [](Log& log) {
  Random random(2);
  for (int i = 0; i < 6000; ++i) {
    std::string line = some_digits(random) + '.';
    line += some_digits(random);
    const int exponent = i % 2 == 0 ? random.below(53) - 26 : random.below(701) - 350;
    if (i % 3 != 0) line += 'e' + std::to_string(exponent);
    std::string buffer = line;
    const str_field* const field = str_parse(buffer.data());
    log("str_parse", inputs(line), field->type, field->value);
  }
});

}  // namespace
