/// Renaming that destroys nothing.
#pragma once

#include <zelvan/platform/posix/names.h>

namespace zelvan::platform {

/// Renames within a file system, and never over anything: whatever has the new name stays. False
/// on failure, with the reason in `errno`.
bool rename_to_free_name(Name from, Name to);

}  // namespace zelvan::platform
