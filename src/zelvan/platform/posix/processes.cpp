#include <zelvan/platform/posix/retry_interrupted.h>
#include <zelvan/platform/processes.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zelvan::platform {
namespace {

constexpr const char* shell = "/bin/sh";
constexpr int report_fd = 3;  // the lowest descriptor that a started program doesn't inherit
constexpr int started = 33;

/// Splits at blanks and tabs. Double quotes keep a part together and are removed.
std::vector<std::string> split_command_line(std::string_view line) {
  std::vector<std::string> parts;
  bool in_part = false;
  bool in_quotes = false;
  for (const char c : line) {
    if (!in_quotes && (c == ' ' || c == '\t')) {
      in_part = false;
      continue;
    }
    if (!in_part) parts.emplace_back();
    in_part = true;
    if (c == '"') {
      in_quotes = !in_quotes;
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

/// Returns 0 if the path is an executable file, else the errno that says why not.
int why_not_runnable(const char* path) {
  struct stat status;
  if (::stat(path, &status) != 0) return errno;
  if (!S_ISREG(status.st_mode)) return EACCES;
  return ::access(path, X_OK) == 0 ? 0 : errno;
}

/// Replaces a bare name by the first executable path along "PATH"; keeps a path unchanged. Returns
/// 0, or the errno that says why the last file found can't be run; ENOENT if none was found.
int find_program(std::string* program) {
  if (program->find('/') != std::string::npos) return why_not_runnable(program->c_str());
  if (program->empty()) return ENOENT;
  const char* variable = std::getenv("PATH");
  int error = ENOENT;
  for (std::string_view path = variable != nullptr ? variable : "/bin:/usr/bin";;) {
    const std::size_t colon = path.find(':');
    const std::string_view folder = path.substr(0, colon);
    const std::string candidate = std::string(folder.empty() ? "." : folder) + '/' + *program;
    const int why_not = why_not_runnable(candidate.c_str());
    if (why_not == 0) {
      *program = candidate;
      return 0;
    }
    if (why_not != ENOENT && why_not != ENOTDIR) error = why_not;
    if (colon == std::string_view::npos) return error;
    path.remove_prefix(colon + 1);
  }
}

struct Start {
  const char* program;
  char* const* arguments;
  bool detached;                       // runs in a session of its own
  char* const* shell_check = nullptr;  // arguments of a shell that must exit with 0 first, or null
};

/// Ends a child that can't run the program, after it has written the errno to the pipe `report`.
[[noreturn]] void exit_with_errno(int report) {
  const int error = errno;
  [[maybe_unused]] const ssize_t written = ::write(report, &error, sizeof error);
  _exit(127);
}

/// Turns the child into the program, by `execve`. The child has a copy of the caller's memory, with
/// locks in any state, so only async-signal-safe calls are allowed in it.
[[noreturn]] void execute(const Start& start, int report, const sigset_t& callers_mask) {
  // `dup2` does nothing if the pipe has this number already.
  if (::dup2(report, report_fd) < 0) exit_with_errno(report);
  if (::fcntl(report_fd, F_SETFD, FD_CLOEXEC) != 0) exit_with_errno(report_fd);
  ::closefrom(report_fd + 1);
  if (start.detached) ::setsid();
  // The caller's handlers must not run in the child once signals are unblocked.
  for (int signal = 1; signal < NSIG; ++signal) {
    struct sigaction action = {};  // stays empty if the system reserves the signal for itself
    ::sigaction(signal, nullptr, &action);
    if (action.sa_handler != SIG_IGN) ::signal(signal, SIG_DFL);
  }
  ::sigprocmask(SIG_SETMASK, &callers_mask, nullptr);
  ::execve(start.program, start.arguments, environ);
  exit_with_errno(report_fd);
}

/// Asks a shell whether it knows the command; if not, ends the child with ENOENT. Runs in the
/// child, so that waiting for the shell can't disturb the caller. Meanwhile SIGCHLD has its default
/// action: where it is ignored, there is no exit status to wait for.
void check_by_shell(char* const* arguments, int report, const sigset_t& callers_mask) {
  const auto callers_action = ::signal(SIGCHLD, SIG_DFL);
  const pid_t checker = ::fork();
  if (checker == 0) execute({shell, arguments, false}, report, callers_mask);
  if (checker < 0) exit_with_errno(report);
  int status = 0;
  ::waitpid(checker, &status, 0);
  ::signal(SIGCHLD, callers_action);
  if (status == 0) return;  // it exited with 0; no other end has this status
  errno = ENOENT;
  exit_with_errno(report);
}

/// Starts the program by a double fork: it becomes the child of a child that ends at once, so that
/// the system reaps it and it leaves no zombie. Returns 0, or the errno of what failed.
int run(const Start& start) {
  int report[2];
  if (::pipe2(report, O_CLOEXEC) != 0) return errno;

  sigset_t all_signals;
  sigset_t callers_mask;
  sigfillset(&all_signals);
  ::pthread_sigmask(SIG_SETMASK, &all_signals, &callers_mask);
  const pid_t child = ::fork();
  if (child == 0) {
    if (start.shell_check != nullptr) check_by_shell(start.shell_check, report[1], callers_mask);
    const pid_t grandchild = ::fork();
    if (grandchild == 0) execute(start, report[1], callers_mask);
    if (grandchild < 0) exit_with_errno(report[1]);
    _exit(0);
  }
  int error = child < 0 ? errno : 0;
  ::close(report[1]);
  if (child > 0) {
    // A caller that waits for any child may get this one first; that is harmless.
    retry_interrupted([&] { return ::waitpid(child, nullptr, 0); });
    // The error stays 0 if the child wrote nothing: a program that starts closes the pipe.
    retry_interrupted([&] { return ::read(report[0], &error, sizeof error); });
  }
  ::close(report[0]);
  ::pthread_sigmask(SIG_SETMASK, &callers_mask, nullptr);
  return error;
}

std::vector<char*> argument_array(std::vector<std::string>& parts) {
  std::vector<char*> arguments;
  for (std::string& part : parts) arguments.push_back(part.data());
  arguments.push_back(nullptr);
  return arguments;
}

// Characters that a shell may interpret, as POSIX lists them.
constexpr const char* special_to_shells = "|&;<>()$`\\\"'\n*?[]#~=%{}!";

/// Returns the first word of a command; empty if the shell may interpret it.
std::string plain_first_word(std::string_view command) {
  const std::size_t begin = command.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  const std::string_view word = command.substr(begin, command.find_first_of(" \t", begin) - begin);
  return std::string(word.find_first_of(special_to_shells) == std::string_view::npos ? word : "");
}

int start_result(int error) {
  switch (error) {
    case 0:
      return started;
    case EACCES:
    case EPERM:
      return 5;
    case EAGAIN:
    case EMFILE:
    case ENFILE:
    case ENOMEM:
    case E2BIG:
      return 8;
    case ENOEXEC:
      return 11;
    default:
      return 2;
  }
}

int run_command(const char* command) {
  const std::string name = plain_first_word(command);
  std::vector<std::string> in_shell = {"sh", "-c", command};
  if (name.empty()) return run({shell, argument_array(in_shell).data(), false});
  std::string program = name;
  const int error = find_program(&program);
  if (error == 0) {
    // Start plain words directly. A shell would start the same program, but it would run a file
    // that is no program as a script; here that is a failure.
    const bool is_plain = std::strpbrk(command, special_to_shells) == nullptr;
    std::vector<std::string> words = is_plain ? split_command_line(command) : in_shell;
    return run({is_plain ? program.c_str() : shell, argument_array(words).data(), false});
  }
  if (name.find('/') != std::string::npos) return error;
  // The word may still be a command of the shell itself, so ask the shell first.
  std::vector<std::string> check = {"sh", "-c", "command -v -- \"$1\" >/dev/null 2>&1", "sh", name};
  const int result =
      run({shell, argument_array(in_shell).data(), false, argument_array(check).data()});
  return result == ENOENT ? error : result;
}

}  // namespace

int CreateProcessA(const char* command_line) try {
  std::vector<std::string> parts = split_command_line(command_line);
  if (parts.empty()) return 0;
  std::string program = parts[0];
  if (find_program(&program) != 0) return 0;
  return run({program.c_str(), argument_array(parts).data(), true}) == 0;
} catch (const std::bad_alloc&) {
  return 0;
}

int WinExec(const char* command) try {
  return start_result(run_command(command));
} catch (const std::bad_alloc&) {
  return start_result(ENOMEM);
}

int _getpid() { return ::getpid(); }

}  // namespace zelvan::platform
