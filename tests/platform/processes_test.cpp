#include <zelvan/platform/clock.h>
#include <zelvan/platform/processes.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace zelvan::platform;

/// An empty folder as the current directory, with programs that tell what they were given.
class Processes : public testing::Test {
 protected:
  Processes() {
    char name[] = "/tmp/zelvan-processes-XXXXXX";
    fs::current_path(mkdtemp(name));
    fs::create_directory("a folder");
    // The report appears whole, under a name that the test waits for.
    write("a folder/tell", "#!/bin/sh\nfor part; do echo \"[$part]\"; done > t\nmv t told\n");
    write("a folder/list", "#!/bin/sh\nls /proc/self/fd > t\nmv t told\n");
    write("plain", "no program\n", false);
    write("no format", "no program\n");
  }
  ~Processes() override {
    const fs::path folder = fs::current_path();
    fs::current_path("/");
    fs::remove_all(folder);
  }

  static void write(const char* path, const char* text, bool is_program = true) {
    std::ofstream(path) << text;
    if (is_program) fs::permissions(path, fs::perms::owner_all);
  }
  /// What the program told, within 10 seconds.
  static std::string told() {
    for (int i = 0; i < 1000 && (!fs::exists("told") || fs::is_empty("told")); ++i) Sleep(10);
    std::ifstream file("told");
    std::string text{std::istreambuf_iterator<char>(file), {}};
    fs::remove("told");
    return text;
  }
};

TEST_F(Processes, TakeTheirCommandLineWithoutAShell) {
  const struct {
    const char* line;
    const char* told;
  } rows[] = {
      {"\"a folder/tell\" host 1 2 3", "[host]\n[1]\n[2]\n[3]\n"},
      {"  a\" \"folder/tell  $HOME\t'a b' `x` ; *.c | \\ # ",
       "[$HOME]\n['a]\n[b']\n[`x`]\n[;]\n"
       "[*.c]\n[|]\n[\\]\n[#]\n"},
      {"\"a folder/tell\" \"\" x\"  \"y \"open end", "[]\n[x  y]\n[open end]\n"},
  };
  for (const auto& row : rows) {
    ASSERT_EQ(CreateProcessA(row.line), 1) << row.line;
    EXPECT_EQ(told(), row.told) << row.line;
  }
  setenv("PATH", ("/none::" + fs::current_path().string() + "/a folder:/bin").c_str(), 1);
  EXPECT_EQ(CreateProcessA("tell found"), 1);
  EXPECT_EQ(told(), "[found]\n");
}

TEST_F(Processes, ReportAtOnceWhatCannotBeStarted) {
  const struct {
    const char* command;
    int exec;
    const char* why;
  } rows[] = {
      {"", 33, "nothing, which the shell does at once"},
      {"./none 1", 2, "a missing file"},
      {"./plain", 5, "a plain file"},
      {"./told/x", 2, "a missing folder"},
      {"/tmp", 5, "a directory"},
      {"./plain/x", 2, "a file as a folder"},
      {"zelvan-none-such", 2, "a name that isn't along PATH"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CreateProcessA(row.command), 0) << row.why;
    EXPECT_EQ(WinExec(row.command), row.exec) << row.why;
  }
  EXPECT_EQ(CreateProcessA("\"no format\""), 0);
  EXPECT_EQ(CreateProcessA("\"\" x"), 0);
}

TEST_F(Processes, GiveCommandsToTheShellAsTheyStand) {
  for (const char* command : {"a\\ folder/tell  'b  c' > x; exit", "cd . && 'a folder/tell' 'b  c'",
                              "eval \"'a folder/tell' 'b  c'\"", "exec 'a folder/tell' 'b  c'"}) {
    EXPECT_GT(WinExec(command), 31) << command;
    EXPECT_EQ(told(), "[b  c]\n") << command;
  }
}

TEST_F(Processes, InheritNothingAndLeaveNoZombie) {
  const pid_t own_child = fork();
  if (own_child == 0) _exit(7);
  const int leaked = open("plain", O_RDONLY);  // inheritable, as a caller's own may be
  ASSERT_EQ(dup2(leaked, 200), 200);
  sigset_t usr1;
  sigemptyset(&usr1);
  sigaddset(&usr1, SIGUSR1);
  sigprocmask(SIG_BLOCK, &usr1, nullptr);

  ASSERT_EQ(CreateProcessA("\"a folder/list\""), 1);
  EXPECT_EQ(told(), "0\n1\n2\n3\n");  // 3 is the folder that the listing itself reads
  ASSERT_GT(WinExec("'a folder/list'"), 31);
  EXPECT_EQ(told(), "0\n1\n2\n3\n");
  ASSERT_EQ(CreateProcessA("cp /proc/self/status told"), 1);
  const std::string status_text = told();  // the caller's blocked signals, and no more
  EXPECT_NE(status_text.find("SigBlk:\t0000000000000200\n"), std::string::npos) << status_text;

  sigprocmask(SIG_UNBLOCK, &usr1, nullptr);
  close(leaked);
  close(200);
  int status = 0;  // the caller's own child is still the caller's, and the only one
  EXPECT_EQ(waitpid(-1, &status, 0), own_child);
  EXPECT_EQ(WEXITSTATUS(status), 7);
  EXPECT_EQ(waitpid(-1, &status, 0), -1);
  EXPECT_EQ(errno, ECHILD);
}

}  // namespace
