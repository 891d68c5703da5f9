// Measures splitting a line into fields, compared with from_chars and memchr, and splitting a text
// into tokens, compared with strtok_r and a plain loop.

#include <zelvan/text/str_field.h>
#include <zelvan/text/tokenize.h>

#include "contest.h"

#include <charconv>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

std::string line_of(int fields, bool has_words) {
  std::mt19937 random(1);
  std::string line;
  for (int i = 0; i < fields; ++i) {
    if (has_words && i % 3 == 0)
      line += "keyword" + std::to_string(i);
    else if (has_words && i % 3 == 1)
      line += "\"a quoted string\"";
    else
      line += std::to_string((static_cast<int>(random() % 2'000'000) - 1'000'000) / 1000.0);
    line += ' ';
  }
  return line;
}

double sum_by_library(std::string& line) {
  double sum = 0.0;
  for (const str_field* f = str_parse(line.data()); f->type != STR_END; f = str_parse(f->next)) {
    sum += f->value + static_cast<double>(f->length);
  }
  return sum;
}

// The loop to compare with: reads words, quoted strings and numbers, without escapes and without
// copying the text.
double sum_by_hand(const std::string& line) {
  double sum = 0.0;
  const char* at = line.data();
  const char* const end = at + line.size();
  for (;;) {
    while (at != end && *at == ' ') ++at;
    if (at == end) return sum;
    const char stop = *at == '"' ? '"' : ' ';
    if (stop == '"') ++at;
    const auto left = static_cast<std::size_t>(end - at);
    const void* found = std::memchr(at, stop, left);
    const char* const after = found != nullptr ? static_cast<const char*>(found) : end;
    double value = 0.0;
    if (stop == ' ' && std::from_chars(at, after, value).ptr == after) sum += value;
    sum += static_cast<double>(after - at);
    at = after + (stop == '"');
  }
}

void fields() {
  for (const bool has_words : {true, false}) {
    static std::string lines[2] = {line_of(300, false), line_of(300, true)};
    std::string& line = lines[has_words];
    bench::contest(
        std::string("fields of a text, ") + (has_words ? "mixed" : "numbers"),
        [&line] { return sum_by_library(line) == sum_by_hand(line); },
        {{"zelvan", [&line] { benchmark::DoNotOptimize(sum_by_library(line)); }},
         {"from_chars and memchr", [&line] { benchmark::DoNotOptimize(sum_by_hand(line)); }}},
        300);
  }
}

std::string words() {
  std::string text;
  for (int i = 0; i < 300; ++i) text += "word" + std::to_string(i * i) + (i % 4 == 0 ? ", " : ",");
  return text;
}

std::vector<std::string> by_strtok(const std::string& text) {
  std::string copy = text;
  std::vector<std::string> tokens;
  char* rest = nullptr;
  for (char* t = strtok_r(copy.data(), ", ", &rest); t; t = strtok_r(nullptr, ", ", &rest)) {
    tokens.emplace_back(t);
  }
  return tokens;
}

using Wide = zelvan::wide_string;

// The loop to compare with does less: it neither trims tokens nor keeps a number whole that
// contains a delimiter.
std::vector<Wide> wide_by_hand(const Wide& text, const Wide& delimiters) {
  std::vector<Wide> tokens;
  std::size_t start = text.find_first_not_of(delimiters);
  while (start != Wide::npos) {
    const std::size_t end = text.find_first_of(delimiters, start);
    tokens.push_back(text.substr(start, end - start));
    start = text.find_first_not_of(delimiters, end);
  }
  return tokens;
}

void tokens() {
  static const std::string text = words(), delimiters = ", ";
  bench::contest(
      "tokens, narrow", [] { return tokenize(text, delimiters) == by_strtok(text); },
      {{"zelvan", [] { benchmark::DoNotOptimize(tokenize(text, delimiters)); }},
       {"strtok_r", [] { benchmark::DoNotOptimize(by_strtok(text)); }}},
      300);
  static const Wide wide(text.begin(), text.end()), set(delimiters.begin(), delimiters.end());
  bench::contest(
      "tokens, wide", [] { return wtokenize(wide, set) == wide_by_hand(wide, set); },
      {{"zelvan", [] { benchmark::DoNotOptimize(wtokenize(wide, set)); }},
       {"loop by hand", [] { benchmark::DoNotOptimize(wide_by_hand(wide, set)); }}},
      300);
}

const bench::Rows rows([] { fields(), tokens(); });

}  // namespace
