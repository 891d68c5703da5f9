/// Renaming that never overwrites.
#pragma once

#include <zelvan/platform/posix/names.h>

namespace zelvan::platform {

/// Renames within a file system to a name that must be free. Returns false on failure, with the
/// reason in `errno`.
///
/// Where the system has no call for that, a file gets the new name as a link and loses the old one
/// after that, so for a moment it has both. A directory, and a file that can't have two names,
/// replaces an empty one that is created under the new name; what others write into that one
/// meanwhile is lost.
bool rename_to_free_name(Name from, Name to);

}  // namespace zelvan::platform
