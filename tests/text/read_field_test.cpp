#include <zelvan/text/read_field.h>

#include <cstring>
#include <string>
#include <thread>

#include <gtest/gtest.h>

using zelvan::field_record;
using zelvan::read_field;
using zelvan::string_rules;

namespace {

const char* const lines[] = {
    "line 0.25 -1.5e3 \"a b\" $say \\$5$ 12px \"\" end",
    "\"a$b\\\"c\" $d\"e$ 1e5 12E +.5 + 1e1234 00.001",
    "  \t tab 1234567890123456789012345 $open \\",
    "stops \x01 here",
    "",
};

/// Expects the fields of all lines to be those of `parse`, a parser with a record of the library's.
template <class Parse>
void expect_fields_of(Parse parse, string_rules rules) {
  for (const char* const line : lines) {
    std::string copy = line;
    field_record record;
    const char* text = line;
    for (char* p = copy.data();;) {
      const str_field expected = *parse(p);
      const str_field field = *read_field(text, &record, rules);
      const auto place = expected.next - copy.data();
      ASSERT_EQ(field.type, expected.type) << line << ", up to " << place;
      EXPECT_EQ(field.value, expected.value) << line << ", up to " << place;
      EXPECT_EQ(field.length, expected.length) << line << ", up to " << place;
      EXPECT_STREQ(field.text, expected.text) << line << ", up to " << place;
      ASSERT_EQ(field.next - line, place) << line;
      if (field.type == STR_END) break;
      p = expected.next;
      text = field.next;
    }
  }
}

}  // namespace

TEST(ReadField, ReadsWhatEachParserReads) {
  expect_fields_of(str_parse, string_rules::of_str_parse);
  expect_fields_of([](char* p) { return str_parseEx(p, 1); }, string_rules::of_str_parse_mode_1);
  expect_fields_of(str_parse_vvcp, string_rules::of_str_parse_vvcp);
}

TEST(ReadField, KeepsApartWhatOtherRecordsHold) {
  char word[] = "word", number[] = "1.5";
  const str_field* const library_word = str_parse_vvcp(word);
  const str_field* const library_number = str_parse(number);
  field_record first, second;
  read_field("first", &first);
  read_field("2.25", &second);
  EXPECT_STREQ(library_word->text, "word");
  EXPECT_STREQ(library_number->text, "1.5");
  EXPECT_STREQ(first.field.text, "first");
  EXPECT_STREQ(second.field.text, "2.25");
}

TEST(ReadField, RefusesWhatDoesNotFitTheRecord) {
  field_record record;
  EXPECT_EQ(read_field(nullptr, &record)->type, STR_END);
  EXPECT_EQ(record.field.next, nullptr);
  const std::string longest(1599, 'x'), too_long(1600, 'x');
  EXPECT_EQ(read_field(longest.c_str(), &record)->length, 1599u);
  EXPECT_EQ(read_field(too_long.c_str(), &record)->type, STR_END);
  EXPECT_EQ(record.field.next, too_long.c_str());
}

#ifndef __EMSCRIPTEN__  // which has no threads
TEST(ReadField, RunsOnManyThreadsAtOnce) {
  int wrong[2] = {};
  const auto read = [&wrong](int thread, const char* text, double value) {
    field_record record;
    for (int i = 0; i < 100'000; ++i) {
      const str_field* const field = read_field(text, &record);
      if (field->value != value || std::strcmp(field->text, text) != 0) ++wrong[thread];
    }
  };
  std::thread other(read, 1, "-20.125", -20.125);
  read(0, "3.5", 3.5);
  other.join();
  EXPECT_EQ(wrong[0], 0);
  EXPECT_EQ(wrong[1], 0);
}
#endif
