/// The command line of session.
#pragma once

#include <zelvan/transforms/records.h>

#include <optional>
#include <string>
#include <vector>

namespace example {

struct Options {
  std::string module;             ///< the program at the far end
  std::string host;               ///< where it runs; empty: it is started here, in one step
  bool shows_wire = false;        ///< print the bytes that travel; in two steps, on this machine
  std::vector<real_pt_t> places;  ///< what to ask; empty: ask what standard input says
};

/// Reads the command line. Nothing when it only asked for help, which is then on standard
/// output. Throws `Error` for what can't be understood.
std::optional<Options> read_options(int argc, char** argv);

/// Reads "LON,LAT", in degrees. Nothing for any other text.
std::optional<real_pt_t> parse_place(const std::string& text);

}  // namespace example
