#include "options.h"

#include "common/colour_text.h"
#include "common/country_cache.h"
#include "common/error.h"
#include "common/line_dashes.h"

#include <charconv>
#include <cmath>
#include <iostream>
#include <system_error>

#include <CLI/CLI.hpp>

namespace example {

namespace {

constexpr const char* example_call = R"(
Example:
  mapview --center 12,46 --width 30 --rotation 20 --pick 12.5,41.9 -o closeup.png

draws central Europe, turned, and says that Italy lies at 12.5 east, 41.9 north.

A COLOUR is one of 'RGB 1 0.5 0' (0 to 1 each), 'HSV 240 1 1', 'Name "dark blue"' and '#ff8000'.
)";

// Reads two numbers, as in "12.5,41.9" and "1600x800". Throws `Error` for any other text.
template <class Point>
Point parse_pair(const std::string& option, const std::string& text, char separator) {
  Point point;
  const char* const end = text.data() + text.size();
  const auto first = std::from_chars(text.data(), end, point.x);
  if (first.ec == std::errc() && first.ptr != end && *first.ptr == separator) {
    const auto second = std::from_chars(first.ptr + 1, end, point.y);
    const bool is_finite = std::isfinite(point.x + 0.0) && std::isfinite(point.y + 0.0);
    if (second.ec == std::errc() && second.ptr == end && is_finite) return point;
  }
  const char* const example = separator == 'x' ? "640x360" : "12.5,41.9";
  throw Error(option + ": '" + text + "' is no pair of numbers such as " + example +
              "; see mapview --help");
}

// Throws `Error` if the option was given with an empty name, as from a shell variable that is
// unset.
void require_name(const CLI::Option& option, const std::string& name) {
  if (option && name.empty()) throw Error(option.get_name() + ": the name is empty");
}

void require(bool is_so, const char* what) {
  if (!is_so) throw Error(std::string(what) + "; see mapview --help");
}

}  // namespace

std::optional<Options> read_options(int argc, char** argv) {
  Options options;
  options.data = shipped_world();
  ViewSettings& view = options.view;
  std::string centre_text = "0,0", size_text = "1600x800";
  std::string sea_text, fill_text, border_text;
  std::vector<std::string> place_texts, pixel_texts;

  CLI::App app("Draws a map of countries and names the country at a place.", "mapview");
  app.footer(example_call);
  CLI::Option* const data = app.add_option("-d,--data", options.data,
                                           "outlines to draw (default: the world at 1:110 million)")
                                ->type_name("FILE");
  app.add_flag_callback(
         "--fine", [&] { options.data = fine_world(); }, "the world at 1:50 million, for close-ups")
      ->excludes(data);
  CLI::Option* const output =
      app.add_option("-o,--output", options.output,
                     "picture to write, .png or .svg; auto: mapview-AAA.png, or AAB, AAC and so on")
          ->type_name("FILE");
  CLI::Option* const label =
      app.add_option("--label", options.label,
                     "write the countries' names in a font of this system, such as DejaVuSans")
          ->type_name("NAME");
  app.add_option("--center", centre_text, "centre of the view in degrees (default: 0,0)")
      ->type_name("LON,LAT");
  app.add_option("--width", view.width, "degrees of longitude across the picture (default: 360)")
      ->type_name("DEGREES");
  app.add_option("--rotation", view.rotation, "turn the map counter-clockwise (default: 0)")
      ->type_name("DEGREES");
  app.add_option("--size", size_text, "size of the picture in pixels (default: 1600x800)")
      ->type_name("WxH");
  CLI::Option* const sea =
      app.add_option("--sea", sea_text, "colour of the sea")->type_name("COLOUR");
  CLI::Option* const fill =
      app.add_option("--fill", fill_text, "one colour for all countries (default: a palette)")
          ->type_name("COLOUR");
  CLI::Option* const border =
      app.add_option("--border", border_text, "colour of coasts and borders")->type_name("COLOUR");
  CLI::Option* const memory =
      app.add_option("--memory", options.memory,
                     "memory for outlines; those that don't fit are read again when needed")
          ->type_name("BYTES");
  std::string clip = "view";
  app.add_option("--clip", clip,
                 "view: for any polygon (default); rings: cut into rings, for comparison")
      ->type_name("HOW");
  int line_type = 0;
  CLI::Option* const line_type_option =
      app.add_option("--line-type", line_type, "draw borders in dashes: a line type from 1 to 13")
          ->type_name("N");
  CLI::Option* const palette =
      app.add_option("--palette", options.style.n_pens,
                     "reduce a .png to so many colours, and count how far they are off")
          ->type_name("PENS");
  app.add_option("--pick", place_texts, "name the country at a place; any number of times")
      ->type_name("LON,LAT")
      ->allow_extra_args(false);
  app.add_option("--pixel", pixel_texts, "name the country under a pixel; any number of times")
      ->type_name("X,Y")
      ->allow_extra_args(false);
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::cout << app.help();
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    throw Error(std::string(error.what()) + "; see mapview --help");
  }

  const auto centre = parse_pair<real_pt_t>("--center", centre_text, ',');
  const auto size = parse_pair<int_pt_t>("--size", size_text, 'x');
  require(std::abs(centre.x) <= 540.0, "--center: the longitude is from -540 to 540 degrees");
  require(std::abs(centre.y) <= 90.0, "--center: the latitude is from -90 to 90 degrees");
  require(view.width >= 1e-4 && view.width <= 1080.0, "--width: from 0.0001 to 1080 degrees");
  require(std::abs(view.rotation) <= 360.0, "--rotation: from -360 to 360 degrees");
  require(size.x >= 1 && size.x <= 16384, "--size: the width is from 1 to 16384 pixels");
  require(size.y >= 1 && size.y <= 16384, "--size: the height is from 1 to 16384 pixels");
  require(clip == "view" || clip == "rings", "--clip: view or rings");
  if (clip == "rings") options.clip = ClipPolygonSet;
  require_name(*data, options.data);
  require_name(*output, options.output);
  require_name(*label, options.label);
  if (*output && options.output != automatic_output) check_picture_path(options.output);
  const int n_pens = options.style.n_pens;
  require(!*palette || (n_pens >= 1 && n_pens <= 256), "--palette: from 1 to 256 pens");
  require(!*palette || !*output || !is_svg(options.output), "--palette: only for a .png");
  require(!*memory || options.memory >= 1, "--memory: from 1 to 2147483647 bytes");
  if (*line_type_option) {
    const auto dashes = line_dashes(line_type);
    require(dashes.has_value(), "--line-type: from 1 to 13");
    options.style.border_dashes = *dashes;
  }
  if (*sea) options.style.sea = read_colour("--sea", sea_text);
  if (*border) options.style.border = read_colour("--border", border_text);
  if (*fill) {
    options.style.fills = ColorMap(1, 255);
    options.style.fills.colors[0] = read_colour("--fill", fill_text);
  }
  view.centre_longitude = centre.x;
  view.centre_latitude = centre.y;
  view.pixels_wide = size.x;
  view.pixels_high = size.y;
  for (const std::string& text : place_texts) {
    options.places.push_back(parse_pair<real_pt_t>("--pick", text, ','));
  }
  for (const std::string& text : pixel_texts) {
    options.pixels.push_back(parse_pair<int_pt_t>("--pixel", text, ','));
  }
  return options;
}

}  // namespace example
