#include <zelvan/platform/processes.h>

#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zelvan::platform;

/// A program that tells its words, its descriptors, which signals it survives, and whether it is
/// in a session of its own. The report appears whole, under a name that the test waits for.
constexpr char tell[] = R"sh(#!/bin/sh
( for word; do echo "[$word]"; done
  ls /proc/self/fd
  for name in HUP USR2; do sh -c "kill -$name \$\$; echo $name"; done
  [ "$(cut -d' ' -f6 /proc/$$/stat)" != $$ ] || echo alone
) > t 2> /dev/null
mv t told)sh";

struct Programs : support::TemporaryFolder {
  Programs() : TemporaryFolder(false) {
    put("a folder/tell", tell), put("no format", "no program\n"), put("noformat", "no program\n"),
        put("plain");
    for (const char* name : {"a folder/tell", "no format", "noformat"}) {
      fs::permissions(name, fs::perms::owner_all);
    }
  }
};

std::string told() {
  for (int i = 0; i < 1000 && (!fs::exists("told") || fs::is_empty("told")); ++i) usleep(10000);
  const std::string text = content("told");
  fs::remove("told");
  return text;
}

TEST(Processes, GetTheirWordsAndNothingElseOfTheCallers) {
  Programs programs;
  setenv("PATH", ("/none::" + programs.path + "/a folder:/bin").c_str(), 1);
  const pid_t own_child = fork();
  if (own_child == 0) _exit(7);
  int leaked[5];  // inheritable, as a caller's own may be
  for (int& fd : leaked) fd = open("plain", O_RDONLY);
  signal(SIGHUP, SIG_IGN), signal(SIGUSR2, [](int) {});
  sigset_t usr1;
  sigemptyset(&usr1), sigaddset(&usr1, SIGUSR1);
  sigprocmask(SIG_BLOCK, &usr1, nullptr);
  // 3 is the folder that the listing itself reads; and the caller ignores one of the signals.
  const std::string manners = "0\n1\n2\n3\nHUP\n";
  const std::pair<const char*, const char*> lines[] = {
      {"\"a folder/tell\" host 1 2 3", "[host]\n[1]\n[2]\n[3]\n"},
      {"  a\" \"folder/tell  $HOME\t'a b' `x` ; *.c | \\ # ",
       "[$HOME]\n['a]\n[b']\n[`x`]\n[;]\n[*.c]\n[|]\n[\\]\n[#]\n"},
      {"tell \"\" x\"  \"y \"open end", "[]\n[x  y]\n[open end]\n"}};
  for (const auto& [line, words] : lines) {
    EXPECT_EQ(CreateProcessA(line) == 1 ? told() : line, words + manners + "alone\n");
  }
  for (const char* command :
       {"a\\ folder/tell  'b  c' > x; exit", "cd . && tell 'b  c'", " \ttell 'b  c'",
        "eval \"tell 'b  c'\"", "exec 'a folder/tell' 'b  c'"}) {
    EXPECT_EQ(WinExec(command) > 31 ? told() : command, "[b  c]\n" + manners);
  }
  EXPECT_EQ(CreateProcessA("cp /proc/self/status told"), 1);
  EXPECT_NE(told().find("SigBlk:\t0000000000000200\n"), std::string::npos);
  sigprocmask(SIG_UNBLOCK, &usr1, nullptr);
  for (const int fd : leaked) close(fd);
  int status = 0;  // the caller's own child is still the caller's, and the only one
  EXPECT_TRUE(waitpid(-1, &status, 0) == own_child && WEXITSTATUS(status) == 7);
  EXPECT_EQ(waitpid(-1, &status, 0), -1);
}

TEST(Processes, TellAtOnceWhyTheyDontStart) {
  Programs programs;
  setenv("PATH", (programs.path + ":/bin:" + programs.path + "/plain").c_str(), 1);
  const std::tuple<const char*, int, int> rows[] = {
      {"", 0, 33},          {" \t", 0, 33},           {"\"\" x", 0, 33},
      {"./none 1", 0, 2},   {"./plain", 0, 5},        {"./none/x", 0, 2},
      {"/tmp", 0, 5},       {"./plain/x", 0, 2},      {"zelvan-none-such", 0, 2},
      {"plain", 0, 5},      {"\"no format\"", 0, 33}, {"./no\" \"format", 0, 33},
      {"true", 1, 33},      {"./noformat", 0, 11},    {" noformat\t-1,a:b@c 2", 0, 11},
      {"none,1:2@3", 0, 2}, {"./noformat ''", 0, 33}, {"true ''", 1, 33}};
  for (const auto& [command, started, why_not] : rows) {
    EXPECT_TRUE(CreateProcessA(command) == started && WinExec(command) == why_not) << command;
  }
}

}  // namespace
