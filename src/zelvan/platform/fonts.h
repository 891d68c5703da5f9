/// Where the system keeps its TrueType fonts.
///
/// On Windows there is one folder, the shell's, which is not searched any deeper, and the order is
/// that in which the system finds the files.
///
/// Both functions throw `std::bad_alloc` where the heap refuses. They read the environment and
/// the file system, and may run on any thread while nobody changes the environment.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zelvan::platform {

/// The folders that can hold fonts, each an absolute path, in the order in which they are
/// searched: the system's, the local ones, the user's own. They need not exist.
std::vector<std::string> font_folders();

/// The full paths of the font files in these folders and in the folders inside them, `limit`
/// at most: what is a file, or a link to one, and has an extension of three characters that
/// begins with `tt` in either case.
///
/// The order is that of `folders`; within a folder first its files, then its folders, each in
/// the order of their bytes. So a call returns the same list as the last one unless a file came
/// or went. Links to folders are not followed, no folder is searched twice, and the search
/// goes 16 folders deep. What may not be read is passed over.
std::vector<std::string> find_font_files(const std::vector<std::string>& folders,
                                         std::size_t limit);

}  // namespace zelvan::platform
