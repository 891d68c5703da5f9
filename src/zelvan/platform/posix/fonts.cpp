#include <zelvan/platform/fonts.h>
#include <zelvan/platform/posix/retry_interrupted.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr int deepest = 16;

bool is_font_name(std::string_view name) {
  const std::size_t dot = name.rfind('.');
  if (dot == std::string_view::npos || name.size() - dot != 4) return false;
  const auto is_t = [](char c) { return c == 't' || c == 'T'; };
  return is_t(name[dot + 1]) && is_t(name[dot + 2]);
}

/// The state of one search.
struct Search {
  std::size_t limit;
  std::vector<std::string> files;
  std::set<std::pair<dev_t, ino_t>> searched;  // folders, by device and inode
};

struct Content {
  std::vector<std::string> files;
  std::vector<std::string> folders;
};

/// Returns the sorted font files and folders in a folder; nothing if it was searched before or
/// can't be read. Closes the folder before it returns, so that a deep tree needs one descriptor at
/// a time.
Content read_folder(const std::string& path, Search* search) {
  struct Close {
    void operator()(DIR* folder) const { ::closedir(folder); }
  };
  const int fd =
      retry_interrupted([&] { return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
  if (fd < 0) return {};
  const std::unique_ptr<DIR, Close> folder(::fdopendir(fd));
  if (folder == nullptr) {
    ::close(fd);
    return {};
  }
  struct stat status;
  if (::fstat(fd, &status) != 0) return {};
  if (!search->searched.emplace(status.st_dev, status.st_ino).second) return {};

  Content content;
  while (const dirent* entry = ::readdir(folder.get())) {
    const std::string_view name = entry->d_name;
    if (name == "." || name == "..") continue;
    if (::fstatat(fd, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) continue;
    if (S_ISDIR(status.st_mode)) {
      content.folders.emplace_back(name);
    } else if (is_font_name(name) && ::fstatat(fd, entry->d_name, &status, 0) == 0 &&
               S_ISREG(status.st_mode)) {
      content.files.emplace_back(name);
    }
  }
  std::sort(content.files.begin(), content.files.end());
  std::sort(content.folders.begin(), content.folders.end());
  return content;
}

void search_folder(const std::string& path, int depth, Search* search) {
  if (search->files.size() == search->limit) return;
  const Content content = read_folder(path, search);
  for (const std::string& name : content.files) {
    if (search->files.size() == search->limit) return;
    search->files.push_back(path + '/' + name);
  }
  if (depth == deepest) return;
  for (const std::string& name : content.folders) {
    search_folder(path + '/' + name, depth + 1, search);
  }
}

/// Returns the value of a variable if it is an absolute path, else null.
const char* absolute_variable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? value : nullptr;
}

}  // namespace

std::vector<std::string> font_folders() {
  std::vector<std::string> folders = {"/usr/share/fonts", "/usr/local/share/fonts"};
  const char* home = absolute_variable("HOME");
  if (const char* data = absolute_variable("XDG_DATA_HOME")) {
    folders.push_back(std::string(data) + "/fonts");
  } else if (home != nullptr) {
    folders.push_back(std::string(home) + "/.local/share/fonts");
  }
  if (home != nullptr) folders.push_back(std::string(home) + "/.fonts");
  return folders;
}

std::vector<std::string> find_font_files(const std::vector<std::string>& folders,
                                         std::size_t limit) {
  Search search{limit, {}, {}};
  for (const std::string& folder : folders) search_folder(folder, 0, &search);
  return std::move(search.files);
}

}  // namespace zelvan::platform
