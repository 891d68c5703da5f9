// foreign draws the world from a file in a mainframe's formats. It converts the file byte by byte
// and then draws as mapview does.

#include "common/drawing.h"
#include "common/error.h"
#include "common/file.h"
#include "common/progress.h"
#include "common/stages.h"
#include "outlines.h"

#include <cstdio>
#include <exception>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>

namespace {

using namespace example;

void run(const std::string& data, const std::string& output) {
  if (data.empty()) throw Error("--data: the name is empty");
  if (output.empty()) throw Error("--output: the name is empty");
  check_picture_path(output);
  Progress progress("foreign");
  progress.begin("read");
  LoadedWorld world(read_outlines(data));
  progress.begin("draw");
  const ViewSettings settings;
  const View view(settings);
  Tally tally;
  std::vector<DrawnCountry> countries;
  for (std::size_t i = 0; i < world.size(); ++i) {
    DevicePolygons outline =
        map_to_device(clip_to_view(world.outline(i), view, tally), view, tally);
    if (!outline.empty()) countries.push_back({i, std::move(outline)});
  }
  const Style style = default_style();
  Picture picture = begin_picture(output, settings, style);
  draw_world(world, countries, settings, style, picture);
  write_file(output, picture.finish());
  progress.end();
  std::printf("%zu countries from %s to %s, %lld vertices\n", world.size(), world.name(0).c_str(),
              world.name(world.size() - 1).c_str(), tally.vertices.came_in);
}

}  // namespace

int main(int argc, char** argv) {
  std::string data = example::shipped_outlines(), output;
  CLI::App app("Draws the outlines in an export file of a mainframe.", "foreign");
  app.footer("\nExample:\n  foreign -o world.png\n");
  app.add_option("-d,--data", data, "file of outlines (default: the world)")->type_name("FILE");
  app.add_option("-o,--output", output, "picture to write, .png or .svg")
      ->type_name("FILE")
      ->required();
  constexpr int bad_input = 2;
  try {
    try {
      app.parse(argc, argv);
      run(data, output);
    } catch (const CLI::CallForHelp&) {
      std::printf("%s", app.help().c_str());
    } catch (const CLI::ParseError& error) {
      throw example::Error(std::string(error.what()) + "; see foreign --help");
    }
    example::finish_output();
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "foreign: %s\n", error.what());
  }
  return bad_input;
}
