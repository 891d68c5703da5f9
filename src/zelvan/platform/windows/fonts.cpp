#include <zelvan/platform/characters.h>
#include <zelvan/platform/fonts.h>

#include <cstring>

#include <windows.h>

namespace zelvan::platform {
namespace {

constexpr int fonts_folder = 0x14;  // the shell's number of the folder

/// Returns the folder that the shell reports; empty on failure. Loads the shell's library for this
/// query alone, so that programs that never ask don't load it.
std::string folder_of_the_shell() {
  using GetFolder = BOOL(WINAPI*)(HWND owner, char* path, int folder, BOOL create);
  char path[MAX_PATH] = "";
  const HMODULE shell = ::LoadLibraryA("SHELL32.DLL");
  if (shell == nullptr) return {};
  const FARPROC found = ::GetProcAddress(shell, "SHGetSpecialFolderPathA");
  GetFolder get_folder;
  std::memcpy(&get_folder, &found, sizeof get_folder);
  if (get_folder != nullptr) get_folder(nullptr, path, fonts_folder, FALSE);
  ::FreeLibrary(shell);
  return path;
}

/// Returns the usual folder: "Fonts" beside the system's directory; empty on failure.
std::string default_folder() {
  char path[MAX_PATH];
  const unsigned length = ::GetSystemDirectoryA(path, sizeof path);
  if (length == 0 || length > sizeof path) return {};
  const char* backslash = _mbsrchr(path, '\\');
  const std::size_t kept = backslash != nullptr ? backslash - path : 0;
  return std::string(path, kept) + "\\Fonts";
}

/// Checks the extension: the system's pattern also finds shorter ones, and longer ones by their
/// short form.
bool is_font(const WIN32_FIND_DATAA& entry) {
  const char* extension = std::strrchr(entry.cFileName, '.');
  return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && extension != nullptr &&
         std::strlen(extension) == 4;
}

}  // namespace

std::vector<std::string> font_folders() {
  std::string folder = folder_of_the_shell();
  if (folder.empty()) folder = default_folder();
  if (folder.empty()) return {};
  return {folder};
}

std::vector<std::string> find_font_files(const std::vector<std::string>& folders,
                                         std::size_t limit) {
  std::vector<std::string> files;
  for (const std::string& folder : folders) {
    struct Search {
      HANDLE handle;
      ~Search() { ::FindClose(handle); }
    };
    WIN32_FIND_DATAA entry;
    const Search search{::FindFirstFileA((folder + "\\*.tt?").c_str(), &entry)};
    if (search.handle == INVALID_HANDLE_VALUE) continue;
    do {
      if (files.size() == limit) return files;
      if (is_font(entry)) files.push_back(folder + '\\' + entry.cFileName);
    } while (::FindNextFileA(search.handle, &entry));
  }
  return files;
}

}  // namespace zelvan::platform
