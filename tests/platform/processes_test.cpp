#include <zelvan/platform/clock.h>
#include <zelvan/platform/processes.h>

#include <chrono>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <osh/world.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace zelvan::platform;

/// Programs that tell what they were given: the report appears whole, under a name that the test
/// waits for.
struct Programs : support::TemporaryFolder {
  Programs() {
    put("a folder/tell", "#!/bin/sh\nfor part; do echo \"[$part]\"; done > t\nmv t told\n");
    put("a folder/list", "#!/bin/sh\nls /proc/self/fd > t\nmv t told\n");
    put("no format", "no program\n");
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
      fs::permissions(entry, fs::perms::owner_all);
    }
    put("plain");
  }
};

std::string told() {
  for (int i = 0; i < 1000 && (!fs::exists("told") || fs::is_empty("told")); ++i) Sleep(10);
  const std::string text = content("told");
  fs::remove("told");
  return text;
}

TEST(Processes, GetTheirWordsOrAReportAtOnce) {
  Programs programs;
  const std::string& folder = programs.path;
  setenv("PATH", ("/none::" + folder + "/a folder:/bin").c_str(), 1);
  const std::pair<const char*, const char*> lines[] = {
      {"\"a folder/tell\" host 1 2 3", "[host]\n[1]\n[2]\n[3]\n"},
      {"  a\" \"folder/tell  $HOME\t'a b' `x` ; *.c | \\ # ",
       "[$HOME]\n['a]\n[b']\n[`x`]\n[;]\n[*.c]\n[|]\n[\\]\n[#]\n"},
      {"tell \"\" x\"  \"y \"open end", "[]\n[x  y]\n[open end]\n"}};
  for (const auto& [line, words] : lines) {
    EXPECT_TRUE(CreateProcessA(line) == 1 && told() == words) << line;
  }
  for (const char* command :
       {"a\\ folder/tell  'b  c' > x; exit", "cd . && tell 'b  c'", " \ttell 'b  c'",
        "eval \"tell 'b  c'\"", "exec 'a folder/tell' 'b  c'"}) {
    EXPECT_TRUE(WinExec(command) > 31 && told() == "[b  c]\n") << command;
  }
  setenv("PATH", (folder + ":/bin:" + folder + "/plain").c_str(), 1);
  const std::tuple<const char*, int, int> rows[] = {
      {"", 0, 33},        {" \t", 0, 33},           {"\"\" x", 0, 33},
      {"./none 1", 0, 2}, {"./plain", 0, 5},        {"./none/x", 0, 2},
      {"/tmp", 0, 5},     {"./plain/x", 0, 2},      {"zelvan-none-such", 0, 2},
      {"plain", 0, 2},    {"\"no format\"", 0, 33}, {"./no\" \"format", 0, 33},
      {"true", 1, 33}};
  for (const auto& [command, started, why_not] : rows) {
    EXPECT_TRUE(CreateProcessA(command) == started && WinExec(command) == why_not) << command;
  }
}

TEST(Processes, InheritNothingAndLeaveNoZombie) {
  Programs programs;
  const pid_t own_child = fork();
  if (own_child == 0) _exit(7);
  int leaked[5];  // inheritable, as a caller's own may be
  for (int& fd : leaked) fd = open("plain", O_RDONLY);
  signal(SIGUSR2, [](int) {}), signal(SIGHUP, SIG_IGN);
  sigset_t usr1;
  sigemptyset(&usr1), sigaddset(&usr1, SIGUSR1);
  sigprocmask(SIG_BLOCK, &usr1, nullptr);
  // 3 is the folder that the listing itself reads.
  EXPECT_TRUE(CreateProcessA("\"a folder/list\"") == 1 && told() == "0\n1\n2\n3\n");
  EXPECT_TRUE(WinExec("'a folder/list'") > 31 && told() == "0\n1\n2\n3\n");
  EXPECT_EQ(CreateProcessA("cp /proc/self/status told"), 1);
  const std::string status_text = told();  // the caller's blocked and ignored signals
  const auto signals = [&](const char* which) {
    return std::stoul(status_text.substr(status_text.find(which) + 8, 16), nullptr, 16);
  };
  EXPECT_TRUE(signals("SigBlk") == 0x200 && (signals("SigIgn") & 0x801) == 1) << status_text;
  EXPECT_EQ(CreateProcessA("cp /proc/self/stat told"), 1);
  int id = 0, session = 1;  // which is the program's own
  EXPECT_EQ(sscanf(told().c_str(), "%d (cp) R %*d %*d %d", &id, &session), 2);
  EXPECT_EQ(id, session);
  sigprocmask(SIG_UNBLOCK, &usr1, nullptr);
  for (const int fd : leaked) close(fd);
  int status = 0;  // the caller's own child is still the caller's, and the only one
  EXPECT_TRUE(waitpid(-1, &status, 0) == own_child && WEXITSTATUS(status) == 7);
  EXPECT_EQ(waitpid(-1, &status, 0), -1);
}

// A timer interrupts the pause every 3 ms.
TEST(Sleep, IsNotCutShortBySignals) {
  signal(SIGALRM, [](int) {});
  const itimerval every_3_ms{{0, 3000}, {0, 3000}}, never{};
  setitimer(ITIMER_REAL, &every_3_ms, nullptr);
  const auto begin = std::chrono::steady_clock::now();
  Sleep(0);
  Sleep(1030);  // over a second, so that both parts of the time count
  const auto slept = std::chrono::steady_clock::now() - begin;
  setitimer(ITIMER_REAL, &never, nullptr);
  EXPECT_TRUE(slept >= std::chrono::milliseconds(1030) && slept < std::chrono::seconds(3));
}

}  // namespace
