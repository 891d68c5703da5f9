// gallery draws the pictures of the guide: one page for each idea, each a PNG in a folder.

#include "common/error.h"
#include "gallery/pages.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <span>
#include <string_view>

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
  throw example::Error("no page is called " + std::string(name));
}

void print_usage(std::FILE* out) {
  std::fputs("usage: gallery FOLDER [PAGE...]\n\nDraws the pages (or all) as FOLDER/PAGE.png:\n",
             out);
  for (const Page* page : gallery::pages()) std::fprintf(out, "  %s\n", page->name);
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char*> arguments(argv + 1, argv + argc);
  if (arguments.empty() || arguments[0][0] == '-') {
    const bool asked = !arguments.empty() && arguments[0] == std::string_view("--help");
    print_usage(asked ? stdout : stderr);
    return asked ? 0 : 2;
  }
  try {
    const std::filesystem::path folder = arguments[0];
    std::filesystem::create_directories(folder);
    if (arguments.size() == 1) {
      for (const Page* page : gallery::pages()) draw(*page, folder);
    }
    for (const char* name : arguments.subspan(1)) draw(page_of_name(name), folder);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "gallery: %s\n", error.what());
    return 2;
  }
}
