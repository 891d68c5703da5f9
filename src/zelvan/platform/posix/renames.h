/// Renaming that never overwrites.
#pragma once

#include <zelvan/platform/posix/names.h>

namespace zelvan::platform {

/// Renames within a file system to a name that must be free. Returns false on failure, with the
/// reason in `errno`.
///
/// If the system has no call for that, a file has both names for a moment. If it can't have two,
/// the new name is reserved first, and what others write into it meanwhile is lost.
bool rename_to_free_name(Name from, Name to);

}  // namespace zelvan::platform
