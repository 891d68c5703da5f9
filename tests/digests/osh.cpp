// What is pure text or reckoning, and the search for a drive; files have tests of their own.

// The clock is played, and so is a machine with drives.
#include <zelvan/platform/clock.h>
#include <zelvan/platform/comparison.h>

#include "digests/group.h"
#include "digests/printed.h"
#include "osh/machine_with_drives.h"

#include <algorithm>
#include <array>

namespace zelvan::platform {
bool IsCharAlphaA(char c);  // whose header went into the other machine
}
static zelvan::platform::LocalTime now;
void zelvan::platform::GetLocalTime(LocalTime* time) { *time = now; }

namespace {

// A rooted path without a drive is looked for on the current one, then on all that have a letter;
// what is found is opened, if its number fits.
const Group drives("osh.drives", [](Digest& digest) {
  using namespace std::string_literals;
  using namespace machine_with_drives;
  platform::roots = "C:\\\0@:\\\0a:\\\0b:\\\0c|\\\0e:/\0B:\\\0D:\\\0z:\\\0"s;
  const std::string fitting = '\\' + std::string(1020, 'x');
  char mode[] = " mode";
  for (std::string path :
       {"\\x"s, "x"s, ""s, "\\\\host\\x"s, "/x"s, fitting, fitting + 'x', std::string(1024, 'x')}) {
    for (const char* drive : {"", "C:", "D:", "B:", "z:", "a:", "Z:", "c|"}) {
      for (int i = 0; i < 4 * 4 * 3; ++i) {
        platform::drive = std::array{-1, 0, 13, 26}[i % 4];  // none at all, a share, M, Z
        platform::roots_length = std::array{0u, 1u, 1024u, 1025u}[i / 4 % 4];
        platform::opened = 32766 + i / 16;
        platform::existing = {drive + path.substr(0, 1022)};
        char fixed[path_size] = "#";
        errno = 0;
        char* const found = fixed;
        digest(osh1_fix_path(path.data(), fixed, 0), found);
        digest(osh1_open(path.data(), 5, 6));
        digest(errno == EMFILE, errno == ENAMETOOLONG, errno == 0);
        digest(osh1_fopen(path.data(), mode) == nullptr, platform::asked);
        platform::asked.clear();
      }
    }
  }
  char fixed[path_size] = "#";
  errno = 0;
  digest(osh1_fix_path(nullptr, fixed, 0), fixed[0]);
  digest(osh1_open(nullptr, 0, 0));
  digest(errno == EINVAL);
});

/// All texts of up to so many of these characters.
std::vector<std::string> short_texts(std::size_t longest,
                                     std::string_view characters = "a./\\\xe9") {
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; texts[i].size() < longest; ++i) {
    for (const char c : characters) texts.push_back(texts[i] + c);
  }
  return texts;
}

// Split at the last separator, and put together by one backslash, into buffers of their own and in
// the place of an input.
const Group paths("osh.paths", [](Digest& digest) {
  for (std::string text : short_texts(5)) {
    const std::size_t end = text.find_last_of("/\\"), begin = end + 1;  // npos and 0 if none
    for (const int place : {0, 1, 2}) {
      std::string path = text;
      char directory[8] = "#######", file[8] = "#######";
      char* const parts[] = {place == 1 ? path.data() : directory, place == 2 ? path.data() : file};
      digest(osh_truncate_path(path.data(), parts[0], parts[1]), path, directory, file);
      digest.expect(parts[0] == text.substr(0, begin == 0 ? 0 : end));
      digest.expect(parts[1] == text.substr(begin));
    }
    const char* const extension = utl_file_extension(text.data());
    digest.expect(extension - text.data() == long(std::min(text.find('.', begin), text.size())));
  }
  for (int null = 0; null < 3; ++null) {
    char a[] = "a/b", b[] = "?", c[] = "?";
    digest(osh_truncate_path(null == 0 ? nullptr : a, null == 1 ? nullptr : b,
                             null == 2 ? nullptr : c),
           a, b, c);
  }
  for (std::string first : short_texts(2)) {
    for (std::string second : short_texts(2)) {
      const bool is_joined = (!first.empty() && first.back() == '\\') || second[0] == '\\';
      for (const int place : {0, 1, 2}) {
        char result[8] = "#######";
        if (place > 0) std::strcpy(result, (place == 1 ? first : second).c_str());
        digest(osh_append_path(place == 1 ? result : first.data(),
                               place == 2 ? result : second.data(), result),
               result);
        digest.expect(result == first + (is_joined ? "" : "\\") + second);
      }
    }
  }
});

// The next free name counts the capitals up, over whatever stands between them.
const Group names("osh.names", [](Digest& digest) {
  printed = &digest;
  for (std::string letters : short_texts(3, "AYZ@[1")) {
    for (std::string prefix : {std::string("AA."), std::string(1022, 'x')}) {
      for (const bool is_onto_letters : {false, true}) {
        char result[1030] = "";
        std::strcpy(result, (is_onto_letters ? letters : prefix).c_str());
        existing = {prefix + letters, prefix + "AZA", prefix + "B"};
        errno = 77;
        const int status = utl_unique_filename(is_onto_letters ? prefix.data() : result,
                                               is_onto_letters ? result : letters.data(), result);
        digest(status, result, status != 0 || errno == 77);
      }
    }
  }
});

// Every pair of bytes, between others that differ in case.
const Group characters("osh.characters", [](Digest& digest) {
  namespace platform = zelvan::platform;
  for (int x = 0; x < 256; ++x) {
    digest(platform::IsCharAlphaA(static_cast<char>(x)));
    for (int y = 0; y < 256; ++y) {
      const char a[] = {'k', static_cast<char>(x), 'Z', 0},
                 b[] = {'K', static_cast<char>(y), 'z', 0};
      for (const int order : {platform::_stricmp(a, b), platform::_strnicmp(a, b, 2),
                              platform::_strnicmp(a, b, 1), platform::_strnicmp(a, nullptr, 0)}) {
        digest(order<0, order> 0);
      }
    }
  }
});

const Group services("osh.services", [](Digest& digest) {
  const char* const words[] = {"z", "\xe9", "ab", "", "Z", "a", "abc", "\x7f", "{"};
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
  shared[2] = 7;
  osh_get_file_parms(parameters);
  osh_get_sys_parms();
  for (int i = 0; i < 10; ++i) digest(parameters[i], shared[i]);
  digest(osh_system_type(), osh_verify_file_name());
  for (std::string name : {"ZELVAN", "", "=ZELVAN", "ZELVAN=c"}) {
    for (std::string value : {std::string("a=b"), std::string(5000, 'v')}) {
      digest(osh_setenv(name.data(), value.data()));
      const char* const now_set = std::getenv("ZELVAN");
      digest(now_set);
    }
  }
  digest(osh_setenv(nullptr, nullptr));
  printed = &digest;
  for (std::string result : {"0", "2", "31", "32"}) digest(osh_system(1, result.data()));
  osh_sleep(3);
});

}  // namespace
