/// The exception that the example programs report to their users.
#pragma once

#include <stdexcept>

namespace example {

/// A fault in a file or an option that the user can correct. `what()` is one line that names the
/// file or the option, and the place in the file. A program prints it and ends with status 2.
struct Error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace example
