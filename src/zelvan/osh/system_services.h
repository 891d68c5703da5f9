/// Fonts, time, environment and programs of the system.
///
/// Failures are reported by results only, which differ from function to function.
///
/// Threads: every function may be called from any thread, but no other thread may read or change
/// the environment during `osh_setenv`. The font list, the time stamp and `osh_system` read it.
#pragma once

#include <zelvan/export.h>

/// Returns a list of the system's TrueType font files, and stores their number in `*count`.
///
/// The list is an array of full paths with a null pointer after the last. Release it with
/// `osh_FreeFontFileList`. Returns null, with `*count` unchanged, if there are no fonts or the heap
/// refuses.
///
/// Font files are those named `*.tt?`, in either case. On Windows they come from the system's font
/// folder, in the system's order. Elsewhere they come from `/usr/share/fonts`,
/// `/usr/local/share/fonts`, `$XDG_DATA_HOME/fonts` (`~/.local/share/fonts` if that variable is not
/// an absolute path) and `~/.fonts`: the first 1200. In each folder the files come first, then its
/// folders, up to 16 levels deep; both are sorted by their bytes. Links to folders are not
/// followed. To sort the whole list, pass it to `qsort` with `osh_qsort_compare_strings`.
///
/// Requires: `count` is not null.
ZELVAN_C_API char** osh_GetFontFileListCount(int* count);

/// Returns the list of `osh_GetFontFileListCount`, or null, without a count.
ZELVAN_C_API char** osh_GetFontFileList(void);

/// Releases the paths up to the first null pointer, then the array, and sets `*list` to null.
/// Requires: `list` and `*list` are not null.
ZELVAN_C_API void osh_FreeFontFileList(char*** list);

/// Compares two strings for `qsort` over an array of `char*`: the arguments are the addresses of
/// two elements.
///
/// Returns -1, 0 or 1 by the first byte that differs, taken as unsigned. A string that begins with
/// the other comes after it. Case counts, and the locale has no effect.
ZELVAN_C_API int osh_qsort_compare_strings(const void* first, const void* second);

/// Writes the local time as `yymmdd.hhmmss` with a terminator, 14 bytes, to `stamp`. Returns 13.
///
/// Each field has two digits; the year is taken modulo 100.
ZELVAN_C_API int osh_get_time_stamp(char* stamp);

/// Writes "localhost" to the `size` bytes of `name`, whatever the machine's name is. Returns 0.
///
/// The rest is filled with zeros. With a `size` of 9 or less there is no terminator, and below 9
/// the text is cut; with 0 or less nothing is written.
ZELVAN_C_API int osh_gethostname(char* name, int size);

/// Sets an environment variable. Returns 0, or -1 with nothing changed.
///
/// Both strings are copied. A null `value` counts as the empty string, which is a value like any
/// other. A `name` with an `=` in it ends there, and the rest becomes the beginning of the value.
/// Fails if `name` is null, empty or begins with `=`, or if the heap refuses.
ZELVAN_C_API int osh_setenv(char* name, char* value);

/// Pauses the thread for that many seconds; returns at once for 0. A signal doesn't shorten the
/// wait.
ZELVAN_C_API void osh_sleep(unsigned int seconds);

/// Starts a command and returns without waiting for its end. `reserved` is ignored.
///
/// The caller need not wait for it. On POSIX a program with plain words as arguments is started
/// directly, any other command by the shell. On Windows it is the command line of a program; put
/// `cmd /c` before a command of the shell.
///
/// Returns 0 if the command was started. Otherwise 2: there is no such command; 5: it may not be
/// run; 8: the system has no process or memory left; 11: the file is no program (a script needs its
/// `#!` line). If the command has more than plain words, such as a quote or a pipe, the shell
/// starts it and 11 is not reported; if its first word is not plain, the result is 0 as soon as the
/// shell runs. On Windows the system's own 0, out of memory, is returned as 0 as well.
///
/// Requires: `command` is not null.
ZELVAN_C_API int osh_system(int reserved, char* command);

/// Returns 8, the library's number for its own interface on every system.
ZELVAN_C_API int osh_system_type(void);

/// Does nothing: there is nothing to prepare.
ZELVAN_C_API void osh_initialize(void);

/// Does nothing: no failure leaves a text to print.
ZELVAN_C_API void osh_perror(void);
