/// Starting programs, and who we are.
///
/// A started program gets the caller's environment and directory. On Windows it gets no handle; a
/// console is shared. On POSIX it gets descriptors 0 to 2, and none above them, neither the
/// library's nor the caller's own. It begins with the caller's signal mask, and with the default
/// action for every signal that the caller handles. The caller need not wait for it: no zombie is
/// left when it ends, and no child of the caller's own is ever reaped here. A signal handler for
/// SIGCHLD may see one more signal.
#pragma once

namespace zelvan::platform {

/// Starts a program from a command line and doesn't wait for it. Returns 1 if the program runs
/// now, 0 if it could not be run: a missing file, one that is no program, a directory, no
/// permission, no process left, an empty line. The answer is known when the call returns.
///
/// The line is split at blanks and tabs; double quotes hold a part together, blanks included,
/// and vanish. Nothing else in it has a meaning: no shell sees it. The first part is the program:
/// a path if a `/` stands in it, else a name to look for along "PATH". The program runs in a
/// session of its own, without a terminal, so that the keys which interrupt the caller don't reach
/// it. On Windows the system itself reads the line and looks for the program, which shows no window
/// and is in a group of its own for the sake of these keys.
int CreateProcessA(const char* command_line);

/// Starts a command and doesn't wait for it. Returns a value above 31 if the command was started,
/// else why it was not: 2 for a program that isn't there, 5 for one that may not be run, 8 if
/// processes or memory ran out, 11 for a file that is no program.
///
/// A command of plain words is started directly if the first of them names a program; else it is
/// the shell's. A first word that neither "PATH" nor the shell knows is reported as 2, or 5 if
/// "PATH" leads to a file that may not be run. If the command opens with anything but a plain word
/// (a quote, an assignment, a group), the shell alone judges it, and only a shell that can't be run
/// is a failure. On Windows there is no shell in between: the command is the line of a program,
/// which shows its window, and 0 says that the system ran out of memory.
int WinExec(const char* command);

/// The id of this process.
int _getpid();

}  // namespace zelvan::platform
