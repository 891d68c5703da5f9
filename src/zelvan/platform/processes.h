/// Starting programs, and the id of the process.
///
/// A started program gets the caller's environment and directory. On Windows it inherits no handle,
/// but shares the console. On POSIX it inherits descriptors 0 to 2 and no others, neither the
/// library's nor the caller's own.
///
/// It starts with the caller's signal mask, and with the default action for every signal that the
/// caller handles. The caller need not wait for the program: it leaves no zombie. Starting uses a
/// short-lived child of its own, which is reaped here, and no other. So the caller's handler for
/// SIGCHLD may be called once for each start.
#pragma once

namespace zelvan::platform {

/// Starts a program from a command line and doesn't wait for it. Returns 1 if the program now runs.
/// Returns 0 if it can't be run: a missing file, a file that is no program, a directory, no
/// permission, no process left, an empty line.
///
/// The line is split at blanks and tabs. Double quotes keep a part together, including blanks, and
/// are removed. Nothing else is special, and no shell is used. The first part is the program: a
/// path if it contains a `/`, otherwise a name to search along "PATH". The program runs in a
/// session of its own, without a terminal, so the keys that interrupt the caller don't reach it. On
/// Windows the system itself splits the line and finds the program. It shows no window. It is
/// in a process group of its own, so the keys don't reach it either.
int CreateProcessA(const char* command_line);

/// Starts a command and doesn't wait for it. Returns a value above 31 if it was started, otherwise
/// the reason: 2 for a program that doesn't exist, 5 for one that may not be run, 8 if the system
/// has no process or memory left, 11 for a file that is no program.
///
/// A command of plain words is started directly if the first one names a program; otherwise the
/// shell runs it. If neither "PATH" nor the shell knows the first word, the result is 2, or 5 if
/// "PATH" leads to a file that may not be run. A first word with a `/` is a path; if it can't be
/// run, the command fails without asking the shell. If the command begins with anything but a plain
/// word (a quote, an assignment, a group), only the shell judges it. Then only a shell that can't
/// be run is a failure.
///
/// On Windows there is no shell in between: the command is the line of a program, which shows its
/// window, and 0 means that the system ran out of memory.
int WinExec(const char* command);

/// Returns the id of this process.
int _getpid();

}  // namespace zelvan::platform
