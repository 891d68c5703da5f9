/// Copying and moving whole files, so that nothing gets lost.
///
/// What `files.h` says of paths, `errno`, signals and read-only files holds here as well.
#pragma once

namespace zelvan::platform {

/// Copies a regular file over an existing one or to a new name. Nonzero on success.
///
/// The copy takes the target's place when it is complete, so the target holds either its old
/// content or the new one, whole, even if the disk fills up or the process is killed, and if it
/// existed, even if the power fails. On Windows the system replaces a file in two steps; if the
/// process is killed between them, the old content stays under another name. A target that existed
/// keeps its permissions and access list, and its owner where that can be had; a new one gets the
/// source's permissions less what the process masks out, on Windows the source's attributes. Where
/// the target is a symbolic link, the file that it leads to is replaced.
///
/// Refused: a source or target that is no regular file, one file as both, a target that is
/// read-only, that the caller may not write or that can't be replaced, and a link that leads
/// nowhere.
int CopyFileA(const char* from, const char* to);

/// Renames a file or directory, into another directory if need be. Nonzero on success. The move is
/// refused if the new name is in use.
///
/// A regular file can be moved to another file system: it is copied with its permissions, access
/// list and times, and removed once the copy and its name are on the disk. A move that fails
/// removes nothing but what it made itself.
int MoveFileA(const char* from, const char* to);

}  // namespace zelvan::platform
