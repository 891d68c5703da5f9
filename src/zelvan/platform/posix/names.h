/// Names in folders, and the files that they lead to.
#pragma once

#include <sys/stat.h>

namespace zelvan::platform {

/// A name in a folder. The folder is a descriptor, or AT_FDCWD for a path.
struct Name {
  int folder;
  const char* text;
};

/// Asks what a name leads to; links are not followed. False on failure.
bool get_status(Name name, struct stat* status);

/// What a name leads to: the file that is asked about, another one or none, or nobody can tell.
enum class Found { same, other, unknown };

/// Looks whether the name still leads to the file of this status.
Found look_for(Name name, const struct stat& file);

/// Removes a name of a file that has another name by now. False if the file still has this one.
///
/// A network file system may repeat a request that has worked and report the failure of the
/// second, mostly ENOENT. So a failed call counts as done if the name no longer leads to the file.
/// If somebody has put another file in its place, that one stays.
bool remove_old_name(Name name, const struct stat& file);

/// After a failed rename: removes what was `made` under the new name. It stays unless the `source`
/// still has its old name, and unless it is still what was made. `errno` stays.
void take_back(Name new_name, const struct stat& made, Name old_name, const struct stat& source);

}  // namespace zelvan::platform
