/// The exception that the example programs report to their users.
#pragma once

#include "common/printable.h"

#include <stdexcept>
#include <string>

namespace example {

/// A fault in a file or an option that the user can correct. `what()` is one line that names the
/// file or the option, and the place in the file. A program prints it and ends with status 2.
struct Error : std::runtime_error {
  /// Control characters in `message`, as a file or an option may have, become question marks.
  explicit Error(const std::string& message) : std::runtime_error(printable(message)) {}
};

}  // namespace example
