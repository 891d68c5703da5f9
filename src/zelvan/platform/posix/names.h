/// Names in folders, and the files that they lead to.
#pragma once

#include <sys/stat.h>

namespace zelvan::platform {

/// A name, `text`, in the open folder with the descriptor `folder`. If `folder` is AT_FDCWD, `text`
/// is a path.
struct Name {
  int folder;
  const char* text;
};

/// Stores the status of the file that a name leads to; links are not followed. Returns false on
/// failure.
bool get_status(Name name, struct stat* status);

/// What a name leads to: the same file, another or none, or unknown if the system can't tell.
enum class Found { same, other, unknown };

/// Returns whether the name still leads to the file of this status.
Found look_for(Name name, const struct stat& file);

/// Removes a name of a file that already has another name. Returns false if the file may still have
/// this one.
///
/// A network file system may repeat a request that has worked, and report the failure of the second
/// one, mostly ENOENT. So a failed call counts as done if the name no longer leads to the file. If
/// the name leads to another file before the call, that file stays.
bool remove_old_name(Name name, const struct stat& file);

/// Undoes a failed rename: removes `made`, the file that the rename left under the new name.
///
/// Does nothing unless `source` still has its old name and the new name still leads to `made`.
/// Otherwise the file under the new name may be the only copy, or another process's. Keeps `errno`.
void take_back(Name new_name, const struct stat& made, Name old_name, const struct stat& source);

}  // namespace zelvan::platform
