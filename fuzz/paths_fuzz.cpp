// Splits and joins paths, and searches for free names in a temporary folder. Results are written to
// blocks of exactly the required size, so the address sanitizer detects a byte too many.

#include <zelvan/osh/paths.h>

#include "bytes.h"

#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace {

using fuzz::ExactText;
using fuzz::require;

/// A temporary folder in which some names are in use; removed when the program ends.
struct Folder {
  Folder() {
    std::string name = std::filesystem::temp_directory_path() / "zelvan-fuzz-XXXXXX";
    require(mkdtemp(name.data()) != nullptr);
    path = name;
    for (const char* taken : {"A", "Z", "AA", "AZ", "a-Z", "ZZ", "B.B"})
      std::ofstream(path / taken);
  }
  ~Folder() { std::filesystem::remove_all(path); }
  std::filesystem::path path;
};

void split_and_join(const std::string& text, const std::string& other) {
  ExactText path(text), second(other);
  ExactText directory(text), file(text);
  require(osh_truncate_path(path.get(), directory.get(), file.get()) == 1);
  const std::size_t kept = std::strlen(directory.get()) + std::strlen(file.get());
  require(kept == path.length() || kept + 1 == path.length());

  const std::size_t room = path.length() + second.length() + 2;
  const std::unique_ptr<char[]> joined(new char[room]);
  require(osh_append_path(path.get(), second.get(), joined.get()) == 1);
  const std::size_t length = std::strlen(joined.get());
  require(length + 2 == room || length + 1 == room);

  const char* const extension = utl_file_extension(path.get());
  require(extension >= path.get() && extension <= path.get() + path.length());
  require(*extension == '.' || *extension == '\0');
  require(std::strpbrk(extension, "/\\") == nullptr);

  char* const whole = osh_find_exec_path(path.get());
  require(whole != nullptr && (whole[0] == '/') == (path.length() > 0));
  require(std::strstr(whole, "//") == nullptr);
  std::free(whole);
  const std::unique_ptr<char[]> alternate(new char[1024]);
  const int answer = osh_alternate_pathname(path.get(), alternate.get());
  require(answer == -1 || std::strcmp(alternate.get(), path.get()) == 0);
}

void find_free_name(const std::string& folder, const std::string& letters) {
  ExactText prefix(folder + '/'), counted(letters);
  const std::unique_ptr<char[]> result(new char[1024]);
  const int answer = utl_unique_filename(prefix.get(), counted.get(), result.get());
  require(answer == 0 || answer == -1);
  if (result[0] == '\0') return require(answer == -1);
  require(std::strlen(result.get()) == prefix.length() + counted.length());
  std::error_code ignored;
  require(answer == -1 || !std::filesystem::exists(result.get(), ignored));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Folder folder;
  fuzz::Bytes bytes(data, size);
  const std::string first = bytes.text(static_cast<std::size_t>(bytes.below(40)) * 40);
  const std::string second = bytes.text(2000);
  split_and_join(first, second);
  find_free_name(folder.path.string(), first.substr(0, 3) + second.substr(0, second.size() % 4));
  return 0;
}
