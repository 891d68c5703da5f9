/// The command line of session.
#pragma once

#include <zelvan/transforms/records.h>

#include <optional>
#include <string>
#include <vector>

namespace example {

struct Options {
  std::string module;             ///< the picker's program
  std::string host;               ///< the machine of the picker; empty: this one, in a single call
  bool shows_wire = false;        ///< print the bytes that travel
  std::vector<real_pt_t> places;  ///< to ask for; empty: those of standard input
};

/// Reads the command line. Returns nothing if it asks for help, which is then printed. Throws
/// `Error` for an option or a place that is not understood.
std::optional<Options> read_options(int argc, char** argv);

/// Reads "LON,LAT", in degrees. Returns nothing for any other text, or for a place off the map.
std::optional<real_pt_t> parse_place(const std::string& text);

}  // namespace example
