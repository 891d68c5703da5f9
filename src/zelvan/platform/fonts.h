/// The TrueType fonts of the system.
///
/// On Windows there is one folder, the shell's. Folders inside it are not searched, and files come
/// in the order in which the system finds them.
///
/// Both functions throw `std::bad_alloc` if the heap refuses. They read the environment and the
/// file system, and may run on any thread while no thread changes the environment.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zelvan::platform {

/// Returns the folders that can hold fonts as absolute paths, in search order: the system's, the
/// local ones, the user's own. They need not exist.
std::vector<std::string> font_folders();

/// Returns the full paths of the font files in these folders and in the folders inside them, at
/// most `limit`. A font file is a file, or a link to one, whose extension has three characters and
/// begins with `tt` in either case.
///
/// The order is that of `folders`. Within a folder its files come first, then its folders, each
/// sorted by bytes. So calls return the same list as long as no file comes or goes. Links to
/// folders are not followed, no folder is searched twice, and the search is 16 folders deep.
/// Folders that may not be read are skipped.
std::vector<std::string> find_font_files(const std::vector<std::string>& folders,
                                         std::size_t limit);

}  // namespace zelvan::platform
