#include <zelvan/platform/processes.h>

#include <cstdlib>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zelvan::platform;

/// A program that reports its arguments, its descriptors, and whether it leads a session of its
/// own. The report appears whole, under a name that the test waits for.
constexpr char tell[] = R"sh(#!/bin/sh
( for word; do echo "[$word]"; done
  ls /proc/self/fd
  [ "$(cut -d' ' -f6 /proc/$$/stat)" != $$ ] || echo alone
) > t 2> /dev/null
mv t told)sh";

struct Programs : support::TemporaryFolder {
  Programs() : TemporaryFolder(false) {
    put("a folder/tell", tell);
    put("noformat", "no program\n");
    put("plain");
    fs::permissions("a folder/tell", fs::perms::owner_all);
    fs::permissions("noformat", fs::perms::owner_all);
    setenv("PATH", ("/none::" + path + "/a folder:/bin:" + path + "/plain").c_str(), 1);
  }
};

std::string told() {
  for (int i = 0; i < 1000 && (!fs::exists("told") || fs::is_empty("told")); ++i) usleep(10000);
  const std::string text = content("told");
  fs::remove("told");
  return text;
}

// 3 is the folder that `ls` itself reads.
const std::string descriptors = "0\n1\n2\n3\n";

TEST(Processes, GetTheirWordsAndNothingElseOfTheCallers) {
  const Programs programs;
  const int leaked = fcntl(open("plain", O_RDONLY), F_DUPFD, 20);  // stays open, as a caller's may
  const std::pair<const char*, const char*> lines[] = {
      {"\"a folder/tell\" host 1", "[host]\n[1]\n"},
      {"  a\" \"folder/tell  $HOME\t'a b' *.c # ", "[$HOME]\n['a]\n[b']\n[*.c]\n[#]\n"},
      {"tell \"\" x\"  \"y \"open end", "[]\n[x  y]\n[open end]\n"}};
  for (const auto& [line, words] : lines) {
    EXPECT_EQ(CreateProcessA(line), 1) << line;
    EXPECT_EQ(told(), words + descriptors + "alone\n") << line;
  }
  for (const char* command :
       {"a\\ folder/tell  'b  c' > x; exit", " \ttell 'b  c'", "eval \"tell 'b  c'\""}) {
    EXPECT_GT(WinExec(command), 31) << command;
    EXPECT_EQ(told(), "[b  c]\n" + descriptors) << command;
  }
  close(leaked);
  EXPECT_EQ(waitpid(-1, nullptr, 0), -1) << "a child is left";
}

TEST(Processes, TellAtOnceWhyTheyDontStart) {
  const Programs programs;
  const auto expect = [](const char* command, int as_line, int as_command, const char* why) {
    EXPECT_EQ(CreateProcessA(command), as_line) << command << ": " << why;
    EXPECT_EQ(WinExec(command), as_command) << command << ": " << why;
  };
  expect(" \t", 0, 33, "to a shell nothing is a command");
  expect("./none 1", 0, 2, "no such file");
  expect("none,1:2@3", 0, 2, "nothing along PATH");
  expect("plain", 0, 5, "no right to run it");
  expect(" noformat\t-1,a:b@c 2", 0, 11, "no program");
  expect("true ''", 1, 33, "a program");
  expect("export A=1", 0, 33, "a word of the shell's own");
}

}  // namespace
