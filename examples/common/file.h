/// Files, read and written whole.
#pragma once

#include <string>

namespace example {

/// The bytes of a file. Throws `Error` when it can't be read.
std::string read_file(const std::string& path);

/// Puts `bytes` into the file at `path`, replacing what was there.
///
/// The bytes are written beside the target, which then takes their name: whoever looks sees
/// the old file or the new one, never a half. Throws `Error` and leaves nothing behind when
/// the file can't be written.
void write_file(const std::string& path, const std::string& bytes);

}  // namespace example
