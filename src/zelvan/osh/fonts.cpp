#include <zelvan/detail/heap_text.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/fonts.h>

#include <cstdlib>
#include <new>
#include <string>
#include <vector>

namespace platform = zelvan::platform;

namespace {

constexpr std::size_t most_files = 1200;

/// Returns the paths as a list that the caller owns, or null if the heap refuses.
char** make_list(const std::vector<std::string>& paths) {
  char** list = static_cast<char**>(std::calloc(paths.size() + 1, sizeof(char*)));
  if (list == nullptr) return nullptr;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    list[i] = zelvan::heap_copy(paths[i]).release();
    if (list[i] == nullptr) {
      osh_FreeFontFileList(&list);
      return nullptr;
    }
  }
  return list;
}

}  // namespace

char** osh_GetFontFileListCount(int* count) try {
  const std::vector<std::string> paths =
      platform::find_font_files(platform::font_folders(), most_files);
  if (paths.empty()) return nullptr;
  char** list = make_list(paths);
  if (list != nullptr) *count = static_cast<int>(paths.size());
  return list;
} catch (const std::bad_alloc&) {
  return nullptr;
}

char** osh_GetFontFileList() {
  int count;
  return osh_GetFontFileListCount(&count);
}

void osh_FreeFontFileList(char*** list) {
  for (char** path = *list; *path != nullptr; ++path) std::free(*path);
  std::free(*list);
  *list = nullptr;
}

int osh_qsort_compare_strings(const void* first, const void* second) {
  const int order = std::strcmp(*static_cast<const char* const*>(first),
                                *static_cast<const char* const*>(second));
  return (order > 0) - (order < 0);
}
