/// Renaming that destroys nothing.
#pragma once

namespace zelvan::platform {

/// Renames within a file system, and never over anything. The folders are descriptors, or
/// AT_FDCWD. False on failure, with the reason in `errno`.
bool rename_to_free_name(int from_folder, const char* from, int to_folder, const char* to);

}  // namespace zelvan::platform
