#include <zelvan/osh/detail/fixed_path.h>
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/clock.h>

#include "digests/group.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

// A machine of the program's own: its drives, the one path that exists, and the time.
static int current_drive;
static std::string roots, existing;
static unsigned roots_length;  // 0: as long as they are
static zelvan::platform::LocalTime now;
static Digest* asked;  // takes what the machine is asked for

int answer_access(const char* path, int mode) asm("__wrap__ZN6zelvan8platform7_accessEPKci");
int answer_access(const char* path, int mode) {
  if (asked != nullptr) (*asked)(std::string(path), mode);
  return path == existing ? 0 : -1;
}
int answer_drive() asm("__wrap__ZN6zelvan8platform9_getdriveEv");
int answer_drive() { return current_drive; }
unsigned answer_roots(unsigned size,
                      char* list) asm("__wrap__ZN6zelvan8platform23GetLogicalDriveStringsAEjPc");
unsigned answer_roots(unsigned size, char* list) {
  (*asked)(size);
  std::memcpy(list, roots.c_str(), roots.size() + 1);
  return roots_length != 0 ? roots_length - 1 : static_cast<unsigned>(roots.size());
}
void answer_time(zelvan::platform::LocalTime* time) asm(
    "__wrap__ZN6zelvan8platform12GetLocalTimeEPNS0_9LocalTimeE");
void answer_time(zelvan::platform::LocalTime* time) { *time = now; }
extern "C" short __wrap_osh_file_exists(char* path) { return path <= existing; }

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
    for (const char place : {'-', 'd', 'f'}) {
      std::string path = text;
      char directory[8] = "#######", file[8] = "#######";
      char* const outputs[] = {place == 'd' ? path.data() : directory,
                               place == 'f' ? path.data() : file};
      digest(osh_truncate_path(path.data(), outputs[0], outputs[1]), path, directory, file);
    }
    digest(utl_file_extension(text.data()) - text.data());
  }
  char some[] = "a/b";
  digest(osh_truncate_path(nullptr, some, some), osh_truncate_path(some, nullptr, some),
         osh_truncate_path(some, some, nullptr), some);
  for (std::string first : short_texts(2)) {
    for (std::string second : short_texts(2)) {
      for (const char place : {'-', '1', '2'}) {
        char result[8] = "#######";
        char* const inputs[] = {place == '1' ? result : first.data(),
                                place == '2' ? result : second.data()};
        if (place == '1') std::strcpy(result, first.c_str());
        if (place == '2') std::strcpy(result, second.c_str());
        digest(osh_append_path(inputs[0], inputs[1], result), result, first, second);
      }
    }
  }
});

// All names that are not beyond a certain one are taken.
const Group names("osh.names", [](Digest& digest) {
  const std::string longest(1022, 'x');
  for (const std::string& prefix : {std::string("AA."), std::string(), longest, longest + 'x'}) {
    for (const char* start : {"A", "Y", "Z", "AAZ", "AZZ", "ZZZ", "A1", "AZ-Z", "a@", "A9Z[", ""}) {
      for (const char* last : {"", "C", "AAZ", "BBB", "ZZ", "[", "~"}) {
        std::string given = prefix, letters = start, result(2048, '#');
        existing = prefix + last;
        errno = 77;
        digest(utl_unique_filename(given.data(), letters.data(), result.data()));
        digest(result, errno);
      }
    }
  }
});

// A rooted path without a drive is looked for on the current one, then on all that have a letter.
const Group drives("osh.drives", [](Digest& digest) {
  using namespace std::string_literals;
  asked = &digest;
  roots = "1:\\\0C:\\\0a:\\\0b:\\\0c|\\\0e:/\0B:\\\0D:\\\0z:\\\0"s;
  const std::string fitting = '\\' + std::string(1020, 'x');
  const std::string given[] = {
      "\\x", "x", "", "\\\\host\\x", "/x", fitting, fitting + 'x', std::string(1024, 'x')};
  for (const std::string& path : given) {
    for (const char* drive : {"", "C:", "D:", "B:", "z:", "a:", "Z:", "c|"}) {
      for (const int current : {0, 3, 26}) {
        for (const unsigned length : {0, 1, 1024, 1025}) {
          current_drive = current;
          roots_length = length;
          existing = drive + path;
          char fixed[zelvan::path_size] = "#";
          errno = 0;
          digest(zelvan::osh1_fix_path(const_cast<char*>(path.c_str()), fixed, 0));
          digest(std::string(fixed), errno == 0);
        }
      }
    }
  }
  char fixed[zelvan::path_size] = "#";
  digest(zelvan::osh1_fix_path(nullptr, fixed, 0));
  digest(std::string(fixed));
  asked = nullptr;
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
  digest(parameters);
  shared[2] = 7;
  for (int i = 0; i < 10; ++i) digest(osh_get_sys_parms()[i]);
  digest(osh_system_type(), osh_verify_file_name());
  for (const char* name : {"ZELVAN_DIGEST", "", "=ZELVAN_DIGEST", "ZELVAN_DIGEST=c"}) {
    char value[] = "a=b";
    digest(osh_setenv(const_cast<char*>(name), value));
    digest(std::string(std::getenv("ZELVAN_DIGEST")));
  }
  digest(osh_setenv(nullptr, const_cast<char*>("x")));
});

}  // namespace
