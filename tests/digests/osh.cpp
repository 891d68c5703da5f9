// What is pure text or reckoning; files have tests of their own. The clock is played here.
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>

#include "digests/group.h"

#include <cstring>
#include <string>

namespace {

zelvan::platform::LocalTime now;

}  // namespace

void zelvan::platform::GetLocalTime(LocalTime* time) { *time = now; }
void zelvan::platform::Sleep(std::uint64_t) {}

namespace {

/// All texts of up to so many characters: letters, a dot, and what separates.
std::vector<std::string> short_texts(std::size_t longest) {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; texts[i].size() < longest; ++i) {
    for (const char c : {'a', '.', '/', '\\', '\xe9'}) texts.push_back(texts[i] + c);
  }
  return texts;
}

// Split, and put together, into buffers of their own and in place.
const Group paths("osh.paths", [](Digest& digest) {
  for (std::string text : short_texts(5)) {
    for (const int place : {0, 1, 2}) {
      std::string path = text;
      char directory[8] = "#######", file[8] = "#######";
      digest(osh_truncate_path(path.data(), place == 1 ? path.data() : directory,
                               place == 2 ? path.data() : file),
             path, directory, file);
    }
    digest(utl_file_extension(text.data()) - text.data());
  }
  for (int null = 0; null < 3; ++null) {
    char a[] = "a/b", b[] = "?", c[] = "?";
    digest(osh_truncate_path(null == 0 ? nullptr : a, null == 1 ? nullptr : b,
                             null == 2 ? nullptr : c),
           a, b, c);
  }
  for (std::string first : short_texts(2)) {
    for (std::string second : short_texts(2)) {
      for (const int place : {0, 1, 2}) {
        char result[8] = "#######";
        if (place > 0) std::strcpy(result, (place == 1 ? first : second).c_str());
        digest(osh_append_path(place == 1 ? result : first.data(),
                               place == 2 ? result : second.data(), result),
               result, first, second);
      }
    }
  }
});

const Group services("osh.services", [](Digest& digest) {
  const char* const words[] = {"z", "\xe9", "ab", "", "Z", "a", "abc", "\x7f"};
  for (const auto& first : words) {
    for (const auto& second : words) digest(osh_qsort_compare_strings(&first, &second));
  }
  for (const int year : {1999, 2000, 2105}) {
    now = {year, year % 12 + 1, year % 31, year % 24, 5, year % 60};
    char stamp[20] = "###################";
    digest(osh_get_time_stamp(stamp), stamp);
  }
  for (int size = -1; size <= 20; ++size) {
    char name[24] = "#######################";
    digest(osh_gethostname(name, size), name);
  }
  short parameters[10], *shared = osh_get_sys_parms();
  osh_get_file_parms(parameters);
  shared[2] = 7;
  osh_get_sys_parms();
  for (int i = 0; i < 10; ++i) digest(parameters[i], shared[i]);
  digest(osh_system_type(), osh_verify_file_name());
});

}  // namespace
