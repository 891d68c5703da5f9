// mapview draws a map and answers picks: what a drawing program does with the library.
//
// Each country is clipped to the view, mapped to device units, filled and stroked. Picks by place
// use the outlines as they were read, picks by pixel the outlines as they were drawn.

#include "common/country_cache.h"
#include "common/drawing.h"
#include "common/error.h"
#include "common/file.h"
#include "common/font.h"
#include "common/picker.h"
#include "common/progress.h"
#include "common/stages.h"
#include "options.h"

#include <chrono>
#include <cstdio>
#include <exception>
#include <memory>
#include <utility>

namespace {

using namespace example;

// Prints how long each stage takes, and shows the stage while it runs for long.
class Stages {
 public:
  void begin(const char* stage) {
    progress_.begin(stage);
    stage_ = stage;
    start_ = std::chrono::steady_clock::now();
  }

  void end() {
    const std::chrono::duration<double, std::milli> spent =
        std::chrono::steady_clock::now() - start_;
    progress_.end();
    std::printf("%-6s %9.2f ms\n", stage_, spent.count());
  }

 private:
  Progress progress_{"mapview"};
  const char* stage_ = "";
  std::chrono::steady_clock::time_point start_;
};

void print(const Tally& tally) {
  std::printf("%-10s%12s%14s%10s%10s%10s\n", "", "came in", "clipped away", "added", "merged",
              "drawn");
  for (const auto& [what, n] :
       {std::pair("polygons", tally.polygons), std::pair("vertices", tally.vertices)}) {
    std::printf("%-10s%12lld%14lld%10lld%10lld%10lld\n", what, n.came_in, n.clipped_away, n.added,
                n.merged, n.drawn);
  }
}

void print(const Reduction& n) {
  std::printf(
      "%u colours drawn; from their pens are %u at 0, %u at 1-3, %u at 4-7, %u at 8-15, "
      "%u at 16-31, %u farther\n",
      n.colours, n.exact, n.within_3, n.within_7, n.within_15, n.within_31, n.farther);
}

const char* name_or_none(const std::string* name) {
  return name == nullptr ? "no country" : name->c_str();
}

void pick_places(World& world, const View& view, const std::vector<real_pt_t>& places) {
  Picker picker;
  for (std::size_t i = 0; i < world.size(); ++i) picker.add(world.name(i), world.outline(i));
  for (const auto [longitude, latitude] : places) {
    const std::string* const name = picker.at_place(longitude, latitude);
    std::printf("place %g,%g: %s", longitude, latitude, name_or_none(name));
    if (const auto pixel = view.pixel_of({longitude, latitude})) {
      std::printf(", at pixel %d,%d\n", pixel->x, pixel->y);
    } else {
      std::printf(", outside the picture\n");
    }
  }
}

void pick_pixels(const World& world, const std::vector<DrawnCountry>& countries, const View& view,
                 const std::vector<int_pt_t>& pixels) {
  Picker picker;
  for (const DrawnCountry& drawn : countries) picker.add(world.name(drawn.index), drawn.outline);
  for (const auto [x, y] : pixels) {
    if (!view.contains({x, y})) {
      std::printf("pixel %d,%d: outside the picture\n", x, y);
      continue;
    }
    const std::string* name = picker.at((x + 0.5) * units_per_pixel, (y + 0.5) * units_per_pixel);
    const real_pt_t place = view.place_of({x, y});
    std::printf("pixel %d,%d: %s, at place %g,%g\n", x, y, name_or_none(name), place.x, place.y);
  }
}

struct Drawn {
  std::string path;
  Reduction reduction;
};

Drawn draw(World& world, const std::vector<DrawnCountry>& countries, const Options& options,
           const Font* label_font) {
  const bool is_automatic = options.output == automatic_output;
  Drawn drawn = {is_automatic ? "mapview.png" : options.output, {}};
  Picture picture = begin_picture(drawn.path, options.view, options.style);
  drawn.reduction = draw_world(world, countries, options.view, options.style, picture, label_font);
  const std::string& bytes = picture.finish();
  if (is_automatic) {  // the name is taken only now, since Ctrl-C waits while it is held
    FreeName name("mapview-", "AAA.png");
    drawn.path = name.path();
    write_file(drawn.path, bytes);
    name.keep();
  } else {
    write_file(drawn.path, bytes);
  }
  return drawn;
}

void run(const Options& options) {
  std::unique_ptr<Font> label_font;
  if (!options.label.empty()) label_font = std::make_unique<Font>(options.label);

  Stages stages;
  stages.begin("read");
  CountryCache world(options.data, options.memory);
  stages.end();

  stages.begin("clip");
  const View view(options.view);
  Tally tally;
  std::vector<MapPolygons> clipped;
  for (std::size_t i = 0; i < world.size(); ++i) {
    clipped.push_back(clip_to_view(world.outline(i), view, tally, options.clip));
  }
  stages.end();

  stages.begin("map");
  std::vector<DrawnCountry> countries;
  for (std::size_t i = 0; i < world.size(); ++i) {
    DevicePolygons outline = map_to_device(clipped[i], view, tally);
    if (!outline.empty()) countries.push_back({i, std::move(outline)});
  }
  stages.end();

  const bool has_output = !options.output.empty();
  if (has_output) {
    stages.begin("draw");
    const Drawn drawn = draw(world, countries, options, label_font.get());
    stages.end();
    if (options.output == automatic_output) std::printf("picture %s\n", drawn.path.c_str());
    if (options.style.n_pens > 0) print(drawn.reduction);
  }
  const bool has_picks = !options.places.empty() || !options.pixels.empty();
  if (has_picks) {
    stages.begin("pick");
    pick_places(world, view, options.places);
    pick_pixels(world, countries, view, options.pixels);
    stages.end();
  }
  print(tally);
  if (options.memory > 0) {
    std::printf("memory: %d of %d bytes in use, %lld countries evicted\n", world.bytes_used(),
                options.memory, world.n_evicted());
  }
  finish_output();
  if (!has_output && !has_picks) {
    std::fprintf(stderr, "mapview: nothing is drawn; for a picture, add -o map.png\n");
  }
}

}  // namespace

int main(int argc, char** argv) {
  constexpr int bad_input = 2;
  try {
    const std::optional<Options> options = read_options(argc, argv);
    if (options) run(*options);
    finish_output();  // the help
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mapview: %s\n", error.what());
  }
  return bad_input;
}
