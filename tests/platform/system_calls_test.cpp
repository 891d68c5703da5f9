// Whichever system call fails, nothing is lost, nothing is left behind, and the result tells.

#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>
#include <zelvan/platform/environment.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/fonts.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/connection.h>
#include <zelvan/wipc/detail/session.h>
#include <zelvan/wipc/messages.h>

#include <set>
#include <sstream>

#include <osh/world.h>
#include <support/posix/failing_calls.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace platform = zelvan::platform;
using Failures = std::vector<support::Failure>;
using Operation = std::function<bool()>;

/// Each name with its permissions, what is in it, whether it still has the times of `plain`, and
/// whether it is another user's.
std::set<std::string> everything() {
  std::set<std::string> all;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    struct stat status;
    const std::string name = entry.path().lexically_normal();
    lstat(name.c_str(), &status);
    const bool is_old = status.st_mtime == 1000 && status.st_atime == 4'000'000'000;
    std::ostringstream line;
    line << name << ' ' << std::oct << (status.st_mode & 07777) << ' '
         << (S_ISREG(status.st_mode) ? content(name) : "") << (is_old ? " old" : "")
         << (status.st_uid == geteuid() ? "\n" : " foreign\n");
    all.insert(line.str());
  }
  return all;
}

/// Runs an operation with each of its calls failing, for several reasons, and interrupted. Done, it
/// makes this `change` of all that there is; a failure makes none, or one that begins with `left`.
/// `standing` fail in every run.
void expect(const Operation& operation, const std::string& change, const std::string& calls,
            const Failures& standing = {}, const std::string& left = "#", bool tells_why = true) {
  SCOPED_TRACE(calls);
  const auto run = [&](int why, Failures planted, bool interrupted) {
    World world;
    const timespec times[] = {{4'000'000'000, 0}, {1000, 0}};  // a later look doesn't change them
    utimensat(AT_FDCWD, "plain", times, 0);
    chmod("plain", 04664);
    EXPECT_EQ(geteuid() == 0 ? chown("other", 12, 34) : 0, 0);
    chmod("other", 0606);
    const std::set<std::string> before = everything();
    const int descriptors = support::open_descriptors();
    planted.insert(planted.end(), standing.begin(), standing.end());
    errno = 0;
    const bool done = support::run_failing(operation, planted, interrupted);
    EXPECT_TRUE(done || errno == why || !tells_why) << errno << ' ' << why;
    std::string found;
    for (int i = 0; i == 0 || (i < 2000 && done && found.empty() && !change.empty()); ++i) {
      if (i != 0) usleep(1000);  // a started program takes its time
      const std::set<std::string> after = everything();
      for (const auto& line : before) found += after.contains(line) ? "" : '-' + line;
      for (const auto& line : after) found += before.contains(line) ? "" : '+' + line;
    }
    EXPECT_TRUE(done ? found == change || (why != 0 && found == left)
                     : found.empty() || found.starts_with(left))
        << done << ' ' << found;
    EXPECT_EQ(support::open_descriptors(), descriptors);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
    return done;
  };
  EXPECT_TRUE(run(0, {}, true));
  run(ENOSPC, {{"write", 4, ENOSPC}}, true);
  for (const int why : tells_why ? std::vector{EIO, EMFILE, EACCES, ENOSPC} : std::vector{EIO}) {
    const auto fail = [&](const Failures& planted) { return run(why, planted, false); };
    EXPECT_EQ(support::fail_each_call(why, fail), calls);
  }
}

Operation copy(char* to) {
  return [=] { return osh_copyfile(to, "plain"_c) != 0; };
}
Operation move(char* from, char* to) {
  return [=] { return osh_rename(from, to) == 0; };
}

TEST(SystemCalls, LeaveFilesWhole) {
  const auto mask = umask(027);
  const std::string moved = "-plain 4664 12345 old\n+new 4664 12345 old\n";
  const std::string moved_without_its_user = "-plain 4664 12345 old\n+new 664 12345 old\n";
  const std::string whose = geteuid() == 0 ? " foreign\n" : "\n";
  expect(copy("other"_c), "-other 606 abc" + whose + "+other 606 12345" + whose,
         "open!! openat! read!! write! stat! lstat! fstat.! faccessat!! realpath! fchmod! fchown. "
         "fsync! renameat! close!..",
         {}, "-other 606 abc" + whose + "+other 606 12345\n");
  expect(copy("new"_c), "+new 640 12345\n",
         "open!! openat! read!! write! lstat! fstat.! faccessat! renameat! close!..");
  expect(move("plain"_c, "new"_c), moved, "faccessat! renameat2!");
  // A file system that knows no flags, and then another one than that of the file.
  expect(move("plain"_c, "new"_c), moved, "fstatat! faccessat! linkat! renameat2! unlinkat!",
         {{"renameat2", 0, EINVAL}});
  expect(move("dir"_c, "new"_c), "-dir 750 \n-dir/inner 750 \n+new 750 \n+new/inner 750 \n",
         "fstatat! faccessat! renameat! renameat2! mkdirat!", {{"renameat2", 0, ENOSYS}});
  expect(move("plain"_c, "new"_c), moved,
         "open!! openat! read!! write! lstat! fstat.! faccessat! fchmod! fchown. futimens! fsync! "
         "renameat2!! unlink! close!..",
         {{"renameat2", 1, EXDEV}}, moved_without_its_user);
  expect(move("plain"_c, "new"_c), moved_without_its_user,
         "open!! openat! read!! write! lstat! fstat.! faccessat! fchmod! fchown.. futimens! fsync! "
         "renameat2!! unlink! close!..",
         {{"renameat2", 1, EXDEV}, {"fchown", 0, EPERM}});
  expect([] { return osh_cat("new"_c, "plain"_c) == 1; }, "+new 600 12345\n",
         "open!! read!! write! lseek. stat. fstat.... faccessat!.. close.!", {}, "+new 600");
  const auto write_and_read = [] {
    char text[4] = "";
    const int fd = osh_open_text("new"_c, 0x302, 07220);
    const bool done = fd >= 0 && osh_write(fd, "12345"_c, 5) == 5 && osh_lseek(fd, 1, 0) == 1 &&
                      osh_read(fd, text, 3) == 3 && osh_fdfilesize(fd) == 5;
    return (fd < 0 || osh_close(fd) == 0) && done && text == std::string("234");
  };
  expect(write_and_read, "+new 600 12345\n",
         "open! read! write! lseek! stat. fstat.! faccessat. close!", {}, "+new 600");
  const auto many = [] {
    char path[1024];
    std::FILE* fp = osh_fopen_text("new"_c, "w"_c);
    return fp != nullptr && osh_fclose(fp) == 0 && osh_rmdir("empty"_c) == 1 &&
           osh_mkdir("empty/"_c) == 1 && osh_chmod("other"_c, 0) == 1 &&
           osh_unlink("plain"_c) == 0 && osh_file_exists("link"_c) == 0 &&
           osh_filesize("other"_c) == 3 && osh_get_working_dir(path) == 1 &&
           platform::find_font_files({"dir"}, 9).empty();
  };
  expect(many,
         "-other 606 abc" + whose + "-plain 4664 12345 old\n+new 640 \n+other 404 abc" + whose,
         "open!.. fopen! stat.! lstat! fstat..!.. fstatat. faccessat.!!.! getcwd! chmod! unlink! "
         "mkdir! rmdir! fdopendir.. readdir....... close.",
         {}, "");
  umask(mask);
}

// Among the file systems there are some that know no flags, and other ones than that of the file.
TEST(SystemCalls, RefuseWithAReason) {
  World world;
  mkfifo("pipe", 0600);
  const std::set<std::string> before = everything();
  const auto refused_by = [](long result, int why) { return result <= 0 && errno == why; };
  const auto move_refused = [&](char* from, char* to, int nth, int answer, int why) {
    const bool done = support::run_failing(move(from, to), {{"renameat2", nth, answer}});
    return refused_by(done, why) && everything() == before;
  };
  for (char* name : {"other"_c, "dir"_c}) {
    EXPECT_TRUE(move_refused(name, "plain"_c, 0, EINVAL, EEXIST));
    EXPECT_TRUE(move_refused(name, "plain"_c, 0, ENOSYS, EEXIST));
  }
  EXPECT_TRUE(move_refused("other"_c, "plain"_c, 1, EXDEV, EEXIST));
  EXPECT_TRUE(move_refused("link"_c, "new"_c, 1, EXDEV, EXDEV));
  EXPECT_TRUE(refused_by(osh_copyfile("new"_c, "pipe"_c), EINVAL));
  EXPECT_TRUE(refused_by(osh_copyfile("pipe"_c, "plain"_c), EINVAL));
  EXPECT_TRUE(refused_by(osh_lseek(0, 0, 3), EINVAL));
  EXPECT_TRUE(refused_by(platform::_putenv("ZELVAN"), EINVAL));
  EXPECT_EQ(osh_filesize("pipe"_c), 0) << "without waiting";
  const auto meet_nobody = [] {
    const int end = platform::socket();
    const bool met = platform::connect(end, {{127, 0, 0, 1}, platform::htons(1)}) == 0;
    platform::closesocket(end);
    return met;
  };
  EXPECT_FALSE(support::run_failing(meet_nobody, {}, true)) << "for all the signals";

  // A draft that can't be taken away is nobody else's to read, and the next one has another name.
  const std::string draft = ".zelvan-" + std::to_string(getpid()) + "-0";
  EXPECT_FALSE(support::run_failing(copy("other"_c), {{"write", 1, EIO}, {"unlinkat", 1, EIO}}));
  EXPECT_EQ(fs::status(draft).permissions(), fs::perms{0600});
  EXPECT_TRUE(copy("other"_c)() && content("other") == "12345" && content(draft).empty());
}

TEST(SystemCalls, StartAProgramOrTellWhyNot) {
  setenv("PATH", "/bin", 1);
  const auto program = [] { return platform::CreateProcessA("touch new") == 1; };
  const auto command = [] { return platform::WinExec("touch new") > 31; };
  const auto word = [] { return platform::WinExec("exec touch new") > 31; };
  expect(program, "+new 644 \n",
         "read. stat! access! pipe2! fork!! dup3! setsid. execve! close.. waitpid.", {}, "", false);
  expect(command, "+new 644 \n", "read. stat. access. pipe2! fork!! dup3! execve! close.. waitpid.",
         {}, "", false);
  expect(word, "+new 644 \n", "read. stat. pipe2! fork!! dup3! execve! fcntl. close.. waitpid.", {},
         "", false);
  const std::pair<int, int> results[] = {{EACCES, 5}, {EPERM, 5},    {EAGAIN, 8},
                                         {EMFILE, 8}, {ENFILE, 8},   {ENOMEM, 8},
                                         {E2BIG, 8},  {ENOEXEC, 11}, {EIO, 2}};
  for (const auto& row : results) {
    const auto told = [&] { return platform::WinExec("true") == row.second; };
    EXPECT_TRUE(support::run_failing(told, {{"fork", 2, row.first}})) << row.first;
    EXPECT_TRUE(support::run_failing(told, {{"execve", 1, row.first}})) << row.first;
  }
}

std::string read_all(int (*read)(void*, char*, int), void* session) {
  std::string all;
  char part[9];
  for (int n; (n = read(session, part, sizeof part)) > 0;) all.append(part, n);
  return all;
}

// The far end connects during the pauses, sends, and ends its own streams.
TEST(SystemCalls, KeepASessionWhole) {
  const auto session = [] {
    char *host, text[7] = "";
    int ports[2], is_local, ends[2] = {-1, -1};
    support::on_pause = [&] {
      for (int i = 0; i < 2; ++i) {
        if (ends[i] >= 0 || (ends[i] = platform::socket()) < 0) continue;
        const auto port = platform::htons(static_cast<std::uint16_t>(ports[i]));
        if (platform::connect(ends[i], {{127, 0, 0, 1}, port}) == 0) {
          platform::send(ends[i], i == 0 ? "hello" : "fine!", 5);
          shutdown(ends[i], SHUT_WR);
        } else {
          platform::closesocket(std::exchange(ends[i], -1));
        }
      }
    };
    void* s = nullptr;
    if (wipc_open_connection("localhost"_c, "/bin/sh"_c, &host, &ports[0], &ports[1], &is_local)) {
      s = wipc_accept_connection();
    }
    const bool done = s != nullptr && wipc_write(s, "to you"_c) == 1 &&
                      read_all(wipc_read, s) == "hello" && read_all(wipc_read_status, s) == "fine!";
    wipc_close_session(s);
    zelvan::wipc_release_bind_sessions();
    for (int n = 1, got = 0; n > 0 && done && got < 6; got += n) {
      n = platform::recv(ends[0], text + got, 6 - got);
    }
    for (const int end : ends) close(end);
    return done && text == std::string("to you");
  };
  expect(session, "",
         "faccessat! socket!!!!... setsockopt....... bind!! getsockname!!.. getpeername.. "
         "listen!! accept4!! poll....!. send!!!. recv!.!..! gethostname. gethostbyname_r! "
         "close......... connect... clock_nanosleep..",
         {}, "#", false);
}

}  // namespace
