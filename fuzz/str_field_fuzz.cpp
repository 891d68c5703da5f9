// Splits a line into fields with each of the parsers, and reads it as a colour. The line is in a
// block of exactly its size, so the address sanitizer detects a byte too many. A parser that does
// not advance is detected here.

#include <zelvan/colour/color_rgb.h>
#include <zelvan/text/read_field.h>
#include <zelvan/text/str_field.h>

#include "bytes.h"

namespace {

using fuzz::require;

template <class Parser>
void walk(char* line, Parser parse) {
  const char* const end = line + std::strlen(line);
  for (char* at = line;;) {
    const str_field* field = parse(at);
    require(field->next >= at && field->next <= end);
    if (field->type == STR_END) return;
    require(field->next > at);
    require(field->length == (field->text ? std::strlen(field->text) : 0));
    require(field->type == STR_NUMBER || field->value == 0.0);
    at = field->next;
  }
}

/// Requires that `read_field`, which writes into a record of the caller, finds the same fields as
/// `parse`, which writes into a record of the library.
template <class Parser>
void compare(char* line, zelvan::string_rules rules, Parser parse) {
  const auto record = std::make_unique<zelvan::field_record>();
  for (char* at = line;;) {
    const str_field* own = zelvan::read_field(at, record.get(), rules);
    const str_field* shared = parse(at);
    require(own->type == shared->type && own->length == shared->length);
    require(own->next == shared->next);
    require(std::memcmp(&own->value, &shared->value, sizeof own->value) == 0);
    require((own->text == nullptr) == (shared->text == nullptr));
    if (own->text != nullptr) require(std::strcmp(own->text, shared->text) == 0);
    if (own->type == STR_END) return;
    at = own->next;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  fuzz::ExactText line(text);

  walk(line.get(), str_parse);
  walk(line.get(), str_parse_vvcp);
  walk(line.get(), [](char* at) { return str_parseEx(at, 0); });
  walk(line.get(), [](char* at) { return str_parseEx(at, 1); });

  compare(line.get(), zelvan::string_rules::of_str_parse, str_parse);
  compare(line.get(), zelvan::string_rules::of_str_parse_vvcp, str_parse_vvcp);
  compare(line.get(), zelvan::string_rules::of_str_parse_mode_1,
          [](char* at) { return str_parseEx(at, 1); });

  ColorRGB color(-1, -2, -3);
  if (color.SetValue(0, line.get())) {
    for (int channel : {color.red, color.green, color.blue}) {
      require(channel >= 0 && channel <= 255);
    }
  } else {
    require(color.red == -1 && color.green == -2 && color.blue == -3);
  }
  require(std::memcmp(line.get(), text.c_str(), line.length() + 1) == 0);

  char delimiters[] = ",; ";
  char found = '\0';
  for (char* at = line.get(); at != nullptr;) str_token(at, delimiters, &at, &found);
  str_lower_string(line.get());
  return 0;
}
