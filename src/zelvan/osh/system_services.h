/// Fonts, time, environment, programs: what a portable caller asks the system for.
///
/// Nothing is reported but by results, and these differ from function to function.
///
/// Threads: every function may run on any thread, but no other thread may read or change the
/// environment during `osh_setenv`; the font list, the time stamp and `osh_system` read it.
#pragma once

#include <zelvan/export.h>

/// The files of the TrueType fonts that the system has: an array of full paths with one null
/// pointer after the last, and their number in `*count`. It is released by
/// `osh_FreeFontFileList`.
///
/// Result: the list, or null with `*count` unchanged if there are no fonts or the heap refuses.
///
/// Listed are the files named `*.tt?`, in either case: on Windows those in the system's folder of
/// fonts, in the order in which the system finds them; elsewhere those in `/usr/share/fonts`,
/// `/usr/local/share/fonts`, `$XDG_DATA_HOME/fonts` (`~/.local/share/fonts` if that is unset)
/// and `~/.fonts`, 1200 at most, the rest unlooked at. Within each folder the files come first,
/// then its folders, 16 deep and each in the order of their bytes. Links to folders are not
/// followed. To sort the whole list, pass it to `qsort` with `osh_qsort_compare_strings`.
///
/// Requires: `count` is not null.
ZELVAN_C_API char** osh_GetFontFileListCount(int* count);

/// Returns the list of `osh_GetFontFileListCount` without its number. Result: the list, or null.
ZELVAN_C_API char** osh_GetFontFileList(void);

/// Releases the paths up to the first null pointer, then the array, and sets `*list` to null.
/// No result. Requires: `list` and `*list` are not null.
ZELVAN_C_API void osh_FreeFontFileList(char*** list);

/// The order of two strings, for `qsort` over an array of `char*`: the arguments are the
/// addresses of two elements.
///
/// Result: -1, 0 or 1 by the first byte in which they differ, taken as unsigned; a string comes
/// after its own beginnings. Case counts, and no locale is asked.
ZELVAN_C_API int osh_qsort_compare_strings(const void* first, const void* second);

/// Writes the local time as `yymmdd.hhmmss` with its terminator, 14 bytes, to `stamp`: two
/// digits for each field, the year modulo 100.
///
/// Result: 13, the number of characters.
ZELVAN_C_API int osh_get_time_stamp(char* stamp);

/// Writes "localhost" to the `size` bytes of `name`, whatever the machine is called, and fills
/// the rest with zeros. With a `size` of 9 or less what fits is written, without a terminator;
/// with 0 or less nothing.
///
/// Result: 0, always.
ZELVAN_C_API int osh_gethostname(char* name, int size);

/// Sets an environment variable; a null `value` counts as the empty string, and an empty value
/// sets the variable to it. Both strings are copied. A `name` with an `=` in it ends there, and
/// the rest becomes the beginning of the value.
///
/// Result: 0, or -1 with nothing changed for a null `name`, a name that is empty or begins with
/// `=`, or where the heap refuses.
ZELVAN_C_API int osh_setenv(char* name, char* value);

/// Returns after that many seconds, at once for 0. A signal doesn't cut the time short.
ZELVAN_C_API void osh_sleep(unsigned int seconds);

/// Starts a command and doesn't wait for it to end; nothing is left to wait for. `reserved` is
/// ignored.
///
/// On POSIX the shell runs it, unless it is the plain words of a program, which is then started
/// directly. On Windows it is the command line of a program; what only the shell knows takes
/// `cmd /c` before it.
///
/// Result: 0 if the command was started, else why not: 2 for a command that isn't there, 5 for
/// one that may not be run, 8 if memory or processes ran out, 11 for a file that is no program (a
/// script needs its `#!` line). If the command has more than plain words, such as a quote or a
/// pipe, the shell alone finds out about 11; if its first word is not plain, the command is started
/// as soon as the shell is. On Windows the system's own 0, out of memory, is 0 as well.
///
/// Requires: `command` is not null.
ZELVAN_C_API int osh_system(int reserved, char* command);

/// Result: 8, always. It is the library's number for its own interface, not the system's.
ZELVAN_C_API int osh_system_type(void);

/// Does nothing: there is nothing to prepare. No result.
ZELVAN_C_API void osh_initialize(void);

/// Does nothing: no failure leaves a text to print. No result.
ZELVAN_C_API void osh_perror(void);
