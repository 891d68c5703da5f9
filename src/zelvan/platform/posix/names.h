/// Names in folders, and the files that they lead to.
#pragma once

#include <sys/stat.h>

namespace zelvan::platform {

/// A name in a folder. The folder is a descriptor, or AT_FDCWD for a path.
struct Name {
  int folder;
  const char* text;
};

/// Asks for the status of what a name leads to, without following a link. False on failure.
bool get_status(Name name, struct stat* status);

/// What a name leads to: the file in question, another one or none, or the system can't tell.
enum class Found { same, other, unknown };

/// Looks up whether the name still leads to the file of this status.
Found look_for(Name name, const struct stat& file);

/// Removes a name of a file that has another name by now. False if the file may still have this
/// one.
///
/// A network file system may repeat a request that has worked and report the failure of the
/// second, mostly ENOENT. So a failed call counts as done if the name no longer leads to the file.
/// If the name leads to another file before the call, that file stays.
bool remove_old_name(Name name, const struct stat& file);

/// Removes what a failed rename has `made` under the new name. `errno` stays.
///
/// Removes it only if the `source` still has its old name and the new name still leads to what was
/// made: otherwise it may be the only copy, or somebody else's file.
void take_back(Name new_name, const struct stat& made, Name old_name, const struct stat& source);

}  // namespace zelvan::platform
