/// Copying and moving whole files without losing data.
///
/// The rules of `files.h` for paths, `errno`, signals and read-only files hold here as well.
#pragma once

namespace zelvan::platform {

/// Copies a regular file over an existing file or to a new name. Returns nonzero on success.
///
/// The copy replaces the target when it is complete. So the target holds either its whole old
/// content or the whole new one, even if the disk fills up or the process is killed. If it existed,
/// this holds even if the power fails. On Windows the system replaces a file in two steps; if the
/// process is killed between them, the old content remains under another name.
///
/// A target that existed keeps its permissions and access list, and its owner and group if the
/// system allows it. If it gets another group, that group's rights are reduced to those of others.
/// A new target gets the source's permissions less the process's mask, on Windows the source's
/// attributes. If the target is a symbolic link, the file that it leads to is replaced.
///
/// Fails for a source or target that is no regular file, and if both are the same file. Fails as
/// well for a target that is read-only, that the caller may not write or that can't be replaced,
/// and for a link that leads nowhere.
int CopyFileA(const char* from, const char* to);

/// Renames a file or directory, possibly into another directory. Returns nonzero on success. Fails
/// if the new name is in use.
///
/// A regular file can be moved to another file system: it is copied with its permissions, access
/// list and times, on Windows with its attributes and the time of its last change. The source is
/// removed once the copy and its name are on the disk. A failed move removes only what it created
/// itself.
int MoveFileA(const char* from, const char* to);

}  // namespace zelvan::platform
