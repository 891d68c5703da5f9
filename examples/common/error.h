/// The one kind of failure that the example programs report.
#pragma once

#include <stdexcept>

namespace example {

/// Something about a file or an option that the user can put right. `what()` is one line that
/// names the file and the place in it; a program prints it and ends with exit status 2.
struct Error : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace example
