// gallery draws the pictures of the guide, each as a PNG in a folder.

#include "common/error.h"
#include "gallery/pages.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

using gallery::Page;

void draw(const Page& page, const std::filesystem::path& folder) {
  gallery::Canvas canvas(page.width, page.height);
  page.draw(canvas);
  const std::filesystem::path path = folder / (std::string(page.name) + ".png");
  canvas.save(path.string());
  std::printf("%s\n", path.string().c_str());
}

const Page& page_of_name(std::string_view name) {
  for (const Page* page : gallery::pages()) {
    if (page->name == name) return *page;
  }
  throw example::Error("no page '" + std::string(name) +
                       "'; the pages are listed by gallery --help");
}

void make_folder(const std::filesystem::path& folder) {
  if (folder.empty()) throw example::Error("the folder's name is empty; see gallery --help");
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw example::Error(folder.string() + ": can't be made: " + error.message());
}

// Writes what standard output still holds back. Throws `Error` if any of it is lost.
void finish_output() {
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return;
  throw example::Error(std::string("standard output: can't be written: ") + std::strerror(errno));
}

void print_usage(std::FILE* out) {
  std::fputs("usage: gallery FOLDER [PAGE...]\n\nDraws these pages, or all, as FOLDER/PAGE.png:\n",
             out);
  for (const Page* page : gallery::pages()) std::fprintf(out, "  %s\n", page->name);
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char*> arguments(argv + 1, argv + argc);
  try {
    if (arguments.empty() || arguments[0][0] == '-') {
      const std::string_view option = arguments.empty() ? "" : arguments[0];
      const bool is_asked = option == "--help" || option == "-h";
      print_usage(is_asked ? stdout : stderr);
      finish_output();
      return is_asked ? 0 : 2;
    }
    const std::filesystem::path folder = arguments[0];
    std::vector<const Page*> wanted;
    for (const char* name : arguments.subspan(1)) wanted.push_back(&page_of_name(name));
    if (wanted.empty()) wanted.assign(gallery::pages().begin(), gallery::pages().end());
    make_folder(folder);
    for (const Page* page : wanted) draw(*page, folder);
    finish_output();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "gallery: %s\n", error.what());
    return 2;
  }
}
