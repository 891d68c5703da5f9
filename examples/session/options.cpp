#include "session/options.h"

#include "common/error.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <system_error>

#include <CLI/CLI.hpp>

namespace example {

namespace {

constexpr const char* example_call = R"(
Examples:
  session 12.5,41.9 2.35,48.85       asks twice, and ends
  session --two-steps                asks what you type, a place a line
  session --raw 12.5,41.9            shows every byte on the wire
  session --host tuna.example.org    says what to run on that machine, and waits for it
)";

// Returns the path of the picker in the folder of this program.
std::string own_picker() {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename("session_picker");
}

}  // namespace

std::optional<real_pt_t> parse_place(const std::string& text) {
  real_pt_t place{};
  const char* const end = text.data() + text.size();
  const auto first = std::from_chars(text.data(), end, place.x);
  if (first.ec != std::errc() || first.ptr == end || *first.ptr != ',') return std::nullopt;
  const auto second = std::from_chars(first.ptr + 1, end, place.y);
  if (second.ec != std::errc() || second.ptr != end) return std::nullopt;
  const bool is_on_the_map = std::abs(place.x) <= 180.0 && std::abs(place.y) <= 90.0;
  return is_on_the_map ? std::optional(place) : std::nullopt;
}

std::optional<Options> read_options(int argc, char** argv) {
  Options options;
  options.module = own_picker();
  bool in_two_steps = false;
  std::vector<std::string> places;

  CLI::App app("Asks another process which country lies at a place.", "session");
  app.footer(example_call);
  app.add_option("--module", options.module,
                 "picker to start (default: session_picker beside this program)")
      ->type_name("FILE");
  app.add_flag("--two-steps", in_two_steps,
               "open the session in two steps: prepare, then start and accept");
  CLI::Option* const host = app.add_option("--host", options.host,
                                           "wait for a picker that you start on this other machine")
                                ->type_name("NAME");
  app.add_flag("--raw", options.shows_wire, "print the bytes that travel; opens in two steps");
  app.add_option("PLACE", places,
                 "LON,LAT in degrees; without any, asks what you type, a place a line");
  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp&) {
    std::cout << app.help();
    return std::nullopt;
  } catch (const CLI::ParseError& error) {
    throw Error(std::string(error.what()) + "; see session --help");
  }

  if (options.module.empty()) throw Error("--module: the name is empty");
  if (*host && options.host.empty()) throw Error("--host: the name is empty");
  if (options.shows_wire && !options.host.empty()) {
    throw Error("--raw works on this machine alone: leave out --host");
  }
  if (in_two_steps || options.shows_wire)
    options.host = options.host.empty() ? "localhost" : options.host;
  for (const std::string& text : places) {
    const std::optional<real_pt_t> place = parse_place(text);
    if (!place)
      throw Error("'" + text + "' is no LON,LAT in degrees, such as 12.5,41.9; see session --help");
    options.places.push_back(*place);
  }
  return options;
}

}  // namespace example
