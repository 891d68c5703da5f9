// Whichever system call fails, nothing is lost, nothing is left behind, and the result tells.

#include <zelvan/platform/clock.h>
#include <zelvan/platform/environment.h>
#include <zelvan/platform/files.h>
#include <zelvan/platform/processes.h>
#include <zelvan/platform/sockets.h>
#include <zelvan/wipc/detail/connection.h>
#include <zelvan/wipc/detail/heap_text.h>
#include <zelvan/zelvan.h>

#include <cwchar>
#include <set>
#include <sstream>

#include <logger/inside.h>
#include <osh/world.h>
#include <support/posix/failing_calls.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

// A character set with two-byte characters from 0x81 on, and with 0xff for no character.
extern "C" std::size_t __wrap_mbrtowc(wchar_t*, const char* text, std::size_t count,
                                      std::mbstate_t* state) {
  const auto byte = static_cast<unsigned char>(*text);
  const bool is_usable = std::exchange(state->__count, byte == 0xff) == 0;
  return !is_usable || byte == 0xff ? -1 : byte < 0x81 ? 1 : count < 2 ? -2 : 2;
}

extern std::vector<std::string> played_folders;  // of fonts: see fonts_test.cpp

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

/// Runs an operation with each of its calls failing, for several reasons, and interrupted, and then
/// with each of its requests refused by the heap, alone and with all behind it. Done, it makes this
/// `change` of all that there is; a failure makes none, or one that begins with `left`. `calls` are
/// the names of those that it makes, each followed by a mark for every time that it is made: `!` if
/// its failure makes the result false, else `.`. `standing` fail in every run.
void expect(const Operation& operation, const std::string& change, const std::string& calls,
            const Failures& standing = {}, const std::string& left = "#", bool tells_why = true) {
  SCOPED_TRACE(calls);
  const auto run = [&](int why, Failures planted, bool interrupted) {
    World world;
    const timespec times[] = {{4'000'000'000, 0}, {1000, 0}};  // a later look doesn't change them
    utimensat(AT_FDCWD, "plain", times, 0);
    chmod("plain", 04775);
    EXPECT_EQ((geteuid() == 0 ? chown("other", 12, 34) : 0) + chmod("other", 04606), 0);
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
    std::string outcome = run(0, {}, false) ? "" : "failed";
    const std::vector<int> made(std::begin(support::calls_made), std::end(support::calls_made));
    for (std::size_t call = 0; call < support::call_names.size(); ++call) {
      const std::string& name = support::call_names[call];
      if (made[call] != 0) outcome += (outcome.empty() ? "" : " ") + name;
      for (int nth = 1; nth <= made[call]; ++nth) {
        outcome += run(why, {{name, nth, why}}, false) ? '.' : '!';
      }
    }
    EXPECT_EQ(outcome, calls);
  }
  for (const int step : {1, -1}) {
    int request = 0;
    do {
      support::refused_request = request += step;
      run(ENOMEM, {}, false);
    } while (support::refused_request != 0);
  }
}

Operation copy(char* to) {
  return [=] { return osh_copyfile(to, "plain"_c) != 0; };
}
Operation move(char* from, char* to) {
  return [=] { return osh_rename(from, to) == 0; };
}

TEST(SystemCalls, LeaveFilesWhole) {
  const auto mask = umask(07);
  const std::string moved = "-plain 4775 12345 old\n+new 4775 12345 old\n";
  const std::string moved_without_its_user = "-plain 4775 12345 old\n+new 775 12345 old\n";
  const std::string whose = geteuid() == 0 ? " foreign\n" : "\n";
  expect(copy("other"_c), "-other 4606 abc" + whose + "+other 606 12345" + whose,
         "open!! openat. read! copy_file_range.. stat! lstat! fstat!. faccessat!!. getxattr! "
         "fremovexattr! fchmod! fchown. fsync! linkat! renameat! close!..",
         {}, "-other 4606 abc" + whose + "+other 606 12345\n");
  expect(
      copy("new"_c), "+new 770 12345\n",
      "open!! openat. read! copy_file_range.. stat! lstat! fstat!. faccessat!. fgetxattr! linkat! "
      "renameat! close!..");
  // Where the kernel copies nothing by itself, and every file has a name.
  expect(
      copy("new"_c), "+new 770 12345\n",
      "open!! openat.! read!! write! copy_file_range. stat! lstat! fstat!. faccessat! fgetxattr! "
      "renameat! close!..",
      {{"copy_file_range", 0, EXDEV}, {"openat", 1, EOPNOTSUPP}});
  expect(move("plain"_c, "new"_c), moved, "faccessat! renameat2!");
  // A file system that knows no flags, and then another one than that of the file.
  expect(move("plain"_c, "new"_c), moved, "fstatat!. faccessat! linkat! renameat2! unlinkat!",
         {{"renameat2", 0, EINVAL}});
  expect(move("plain"_c, "new"_c), moved,
         "openat! fstatat!. faccessat! linkat! renameat! renameat2! close.",
         {{"renameat2", 0, EINVAL}, {"linkat", 0, EPERM}});
  expect(move("dir"_c, "new"_c), "-dir 770 \n-dir/inner 770 \n+new 770 \n+new/inner 770 \n",
         "fstatat!. faccessat! renameat! renameat2! mkdirat!", {{"renameat2", 0, ENOSYS}});
  const std::string by_copy =
      "open!! openat.. read! copy_file_range.. stat! lstat! fstat!. fstatat. faccessat!. "
      "fgetxattr! "
      "fremovexattr! fchmod! ";
  const std::string kept = " futimens! fsync!! linkat! renameat2!! unlinkat! close!...";
  expect(move("plain"_c, "new"_c), moved, by_copy + "fchown." + kept, {{"renameat2", 1, EXDEV}},
         moved_without_its_user);
  const std::string moved_without_its_group = "-plain 4775 12345 old\n+new 755 12345 old\n";
  expect(move("plain"_c, "new"_c), moved_without_its_group, by_copy + "fchown.." + kept,
         {{"renameat2", 1, EXDEV}, {"fchown", 0, EPERM}});
  expect([] { return osh_cat("new"_c, "plain"_c) == 1; }, "+new 600 12345\n",
         "open!! read!! write! lseek. stat. fstat.... faccessat!.. close.!", {}, "+new 600");
  const auto many = [] {
    char text[1024] = "";
    unsigned short mode = 0;
    const int fd = osh_open_text("new"_c, 0x302, 07220);
    const bool done = fd >= 0 && osh_write(fd, "12345"_c, 5) == 5 && osh_lseek(fd, 1, 0) == 1 &&
                      osh_read(fd, text, 3) == 3 && osh_fdfilesize(fd) == 5;
    if ((fd >= 0 && osh_close(fd) != 0) || !done || text != std::string("234")) return false;
    std::FILE* fp = osh_fopen_text("link"_c, "a"_c);
    return fp != nullptr && osh_fclose(fp) == 0 && osh_rmdir("empty"_c) == 1 &&
           osh_mkdir("empty/"_c) == 1 && osh_chmod("other"_c, 0) == 1 &&
           osh_file_access("other"_c, 1) == 1 && osh_file_access("other"_c, 2) == 0 &&
           osh_chmod("other"_c, 0222) == 1 && osh_unlink("plain"_c) == 0 &&
           osh_file_exists("link"_c) == 0 && osh_filesize("other"_c) == 3 &&
           osh_inquire_file("other"_c, &mode) == 1 && osh_get_working_dir(text) == 1 &&
           osh_setenv("ZELVAN"_c, "7"_c) == 0;
  };
  expect(
      many,
      "-other 4606 abc" + whose + "-plain 4775 12345 old\n+new 620 12345\n+other 4604 abc" + whose,
      "open!! fopen! read! write! ftruncate! lseek! stat..!!.!.! lstat! fstat.!!..! "
      "faccessat..!!.!!.!! getcwd! "
      "chmod!! unlink! mkdir! rmdir! close!.",
      {}, "");
  const auto prefix = [] {
    std::string text = "old";
    text.swap(LoggerInside::prefix);
    Logger(nullptr).setFilePrefix("a prefix too long to be kept in place");
    text.swap(LoggerInside::prefix);
    EXPECT_TRUE(text == "old" || text.size() == 37);
    return text != "old";
  };
  expect(prefix, "", "", {}, "#", false);
  const auto date = [] {
    char* text = nullptr;
    (Logger(nullptr).*LoggerInside::date)("%Y", &text);
    return zelvan::HeapText(text) != nullptr;
  };
  expect(date, "", "", {}, "#", false);
  const auto path = [] {
    const zelvan::HeapText absolute(osh_find_exec_path("new"_c));
    return absolute != nullptr && *absolute == '/';
  };
  expect(path, "", "getcwd!!", {}, "#", false);
  const support::TemporaryFolder folder;
  put("a.ttf"), put("b/c.ttc");
  played_folders = {"missing", folder.path};
  const auto fonts = [] {
    int count = 7;
    char** list = osh_GetFontFileListCount(&count);
    EXPECT_EQ(list == nullptr, count == 7);
    if (list != nullptr) osh_FreeFontFileList(&list);
    return count == 2 || !support::interrupts;
  };
  expect(fonts, "", "open... fstat.. fstatat..... fdopendir.. readdir.........");
  umask(mask);
}

TEST(SystemCalls, RefuseWithAReason) {
  World world;
  mkfifo("pipe", 0400);
  chmod("empty", 0555);
  const std::set<std::string> before = everything();
  const auto refuses = [&](int why, const Operation& operation, const Failures& failures = {}) {
    errno = 0;
    EXPECT_FALSE(support::run_failing(operation, failures));
    EXPECT_TRUE(errno == why && everything() == before) << errno << ' ' << why;
  };
  // Some file systems know no flags, and some are others than that of the file.
  for (const int answer : {EINVAL, ENOSYS}) {
    refuses(EEXIST, move("other"_c, "plain"_c), {{"renameat2", 0, answer}});
    refuses(EEXIST, move("dir"_c, "plain"_c), {{"renameat2", 0, answer}});
    refuses(EEXIST, move("other"_c, "plain"_c), {{"renameat2", 0, answer}, {"linkat", 0, EPERM}});
  }
  refuses(EEXIST, move("other"_c, "plain"_c), {{"renameat2", 1, EXDEV}});
  refuses(EXDEV, move("link"_c, "new"_c), {{"renameat2", 1, EXDEV}});
  refuses(EINVAL, [] { return osh_copyfile("new"_c, "pipe"_c) != 0; });
  refuses(EINVAL, copy("pipe"_c));
  refuses(ENOSPC, copy("new"_c),
          {{"copy_file_range", 0, ENOSPC}, {"write", 1, ENOSPC}, {"close", 0, EIO}});
  refuses(EISDIR, [] { return osh_open_text("empty"_c, 0, 0) >= 0; }, {{"close", 0, EIO}});
  refuses(EINVAL, [] { return osh_lseek(0, 0, 3) > 0; });
  refuses(EINVAL, [] { return platform::_putenv("ZELVAN") == 0; });
  EXPECT_EQ(osh_filesize("pipe"_c), 0) << "without waiting";
  const Operation has_no_size = [] { return osh_filesize("plain"_c) == -1; };
  EXPECT_TRUE(support::run_failing(has_no_size, {{"fstat", 2, EIO}}));
  EXPECT_EQ(osh_unlink("pipe"_c), 0);

  // A draft that can't be taken away is nobody else's to read, and the next one has another name.
  const std::string draft = ".zelvan-" + std::to_string(getpid()) + "-0";
  EXPECT_FALSE(support::run_failing(
      copy("other"_c), {{"openat", 1, EOPNOTSUPP}, {"read", 1, EIO}, {"unlinkat", 1, EPERM}}));
  EXPECT_EQ(errno, EIO);
  EXPECT_EQ(fs::status(draft).permissions(), fs::perms{0600});
  EXPECT_TRUE(copy("other"_c)() && content("other") == "12345" && content(draft) == "12345");
  EXPECT_FALSE(support::run_failing(
      move("plain"_c, "new"_c),
      {{"renameat2", 1, EXDEV}, {"unlinkat", 1, EPERM}, {"unlinkat", 2, EIO}}));
  EXPECT_EQ(errno, EPERM);
}

// A file system of the network repeats a request whose answer got lost, and reports that there is
// nothing left to do.
TEST(SystemCalls, KeepTheOnlyCopyWhenAnAnswerIsRepeated) {
  const std::pair<const char*, Failures> rows[] = {
      {"by a link", {{"renameat2", 0, EINVAL}, {"unlinkat", 1, ENOENT, true}}},
      {"for another reason", {{"renameat2", 0, EINVAL}, {"unlinkat", 1, EIO, true}}},
      {"by a copy", {{"renameat2", 1, EXDEV}, {"unlinkat", 1, ENOENT, true}}},
      {"over a reserved name",
       {{"renameat2", 0, EINVAL}, {"linkat", 0, EPERM}, {"renameat", 1, ENOENT, true}}}};
  for (const auto& [why, failures] : rows) {
    World world;
    EXPECT_TRUE(support::run_failing(move("plain"_c, "new"_c), failures)) << why;
    EXPECT_TRUE(!fs::exists("plain") && content("new") == "12345") << why;
  }
  World world;
  EXPECT_TRUE(support::run_failing(move("empty"_c, "new"_c), rows[3].second));
  EXPECT_TRUE(!fs::exists("empty") && fs::is_directory("new"));
  EXPECT_TRUE(support::run_failing(copy("other"_c), {{"renameat", 1, ENOENT, true}}));
  EXPECT_EQ(content("other"), "12345");
}

// A move syncs the folder of the new name, as far as that can be done.
TEST(SystemCalls, SyncAFolderOrEverything) {
  const struct {
    support::Failure failure;
    int syncs;
    const char* why;
  } rows[] = {{{"fsync", 2, EINVAL}, 0, "such a folder needs no sync"},
              {{"openat", 2, EACCES}, 1, "a folder that may not be read can't be opened"}};
  for (const auto& [failure, syncs, why] : rows) {
    World world;
    EXPECT_TRUE(support::run_failing(move("plain"_c, "new"_c), {{"renameat2", 1, EXDEV}, failure}))
        << why;
    EXPECT_EQ(support::calls_made[support::sync_id], syncs) << why;
    EXPECT_EQ(support::calls_made[support::fsync_id], 2 - syncs) << why;
  }
}

TEST(SystemCalls, EmptyNoFileForADescriptorThatDoesNotFit) {
  World world;
  for (const auto& [lowest, done] : {std::pair{0, true}, {32'768, false}}) {
    put("plain", "12345");
    support::lowest_descriptor = lowest;
    const auto empties = [] {
      const int fd = osh_open_binary("plain"_c, osh_open_write_only | osh_open_truncate, 0);
      return fd >= 0 && osh_close(fd) == 0;
    };
    EXPECT_EQ(support::run_failing(empties, {}), done) << lowest;
    EXPECT_EQ(content("plain"), done ? "" : "12345") << lowest;
    EXPECT_TRUE(done || errno == EMFILE);
  }
  support::lowest_descriptor = 0;
}

// Where every file has the permissions of the mount, none can be given to a copy, nor need be.
TEST(SystemCalls, CopyWithoutPermissionsToGive) {
  World world;
  for (const auto& [mode, done] : {std::pair{0600, true}, {0640, false}}) {
    chmod("other", mode);
    EXPECT_EQ(support::run_failing(copy("other"_c), {{"fchmod", 0, EPERM}}), done);
    EXPECT_TRUE(done || errno == EPERM);
  }
}

TEST(SystemCalls, HaveNoSeparatorInsideACharacter) {
  const std::pair<std::string, std::string> rows[] = {{"a\\b\x81\\c", "a|b\x81\\c"},
                                                      {"a\\\xff/\x81", "a\\\xff|\x81"},
                                                      {"a/\xff\x81\\", "a|\xff\x81\\"}};
  for (auto [path, split] : rows) {
    char file[9];
    EXPECT_EQ(osh_truncate_path(path.data(), path.data(), file), 1);
    EXPECT_EQ(path.c_str() + std::string("|") + file, split);
  }
}

TEST(SystemCalls, StartAProgramOrTellWhyNot) {
  setenv("PATH", "/bin", 1);
  const auto starts = [](const Operation& operation, const std::string& calls) {
    expect(operation, "+new 644 \n", calls + " close.. waitpid.", {}, "", false);
  };
  starts([] { return platform::CreateProcessA("touch new") == 1; },
         "read. stat! access! pipe2! fork!! dup3! setsid. execve!");
  starts([] { return osh_system(0, "touch new"_c) == 0; },
         "read. stat. access. pipe2! fork!! dup3! execve!");
  starts([] { return osh_system(1, "exec touch new"_c) == 0; },
         "read. stat. pipe2! fork!! dup3! execve! fcntl.");
  const std::pair<int, int> results[] = {{EACCES, 5}, {EPERM, 5},    {EAGAIN, 8},
                                         {EMFILE, 8}, {ENFILE, 8},   {ENOMEM, 8},
                                         {E2BIG, 8},  {ENOEXEC, 11}, {EIO, 2}};
  for (const auto& [why, result] : results) {
    for (const support::Failure& failure :
         {support::Failure{"fork", 2, why}, support::Failure{"execve", 1, why}}) {
      const auto told = [result = result] { return osh_system(1, "true"_c) == result; };
      EXPECT_TRUE(support::run_failing(told, {failure, {"read", 1, EINTR}})) << why;
    }
  }
  support::refused_request = 1;
  EXPECT_TRUE(support::run_failing([] { return osh_system(1, "a long command"_c) == 8; }, {}));
  support::refused_request = 0;
  unsetenv("PATH");  // which has a value for shells then, and none for sessions
  EXPECT_EQ(platform::CreateProcessA("true"), 1);
  EXPECT_EQ(zelvan::wipc_find_module("sh"), nullptr);
}

TEST(SystemCalls, KeepAPauseWhole) {
  for (const int time : {1, 998, 999, 1000, 5999}) {  // from 1 ms over a full second on
    const auto pauses = [time] { return platform::Sleep(static_cast<unsigned>(time)), true; };
    EXPECT_TRUE(support::run_failing(pauses, {}, true));
    EXPECT_EQ(support::end_of_pause.tv_sec, 5 + (1 + time) / 1000);
    EXPECT_EQ(support::end_of_pause.tv_nsec, (1 + time) % 1000 * 1'000'000);
  }
}

// A program at both ends: what it sends waits at the other one until it is fetched.
TEST(SystemCalls, KeepAConversationWhole) {
  const auto talk = [](bool is_answered, bool may_meet) {
    platform::SocketAddress address{{127, 0, 0, 1}, 0};
    const int door = platform::socket(), near = platform::socket();
    bool done = platform::bind(door, address) == 0 && platform::getsockname(door, &address) == 0 &&
                (!is_answered || platform::listen(door, 1) == 0) &&
                platform::connect(near, address) == 0;
    EXPECT_TRUE(may_meet || !done);
    done = done && platform::select(door) == 1;
    const int far = done ? platform::accept(door) : -1;
    done = far >= 0 && platform::send(near, "to you", 6) == 6;
    char text[99] = "";
    for (int n = 1, got = 0; n > 0 && done && got < 6; got += n) {
      n = platform::recv(far, text + got, 6 - got);
    }
    done = done && text == std::string("to you") && platform::gethostname(text, 99) == 0 &&
           platform::gethostbyname("localhost", &address) == 1 && address.host[0] == 127;
    for (const int end : {door, near, far}) platform::closesocket(end);
    return done;
  };
  const auto meets = [&] { return talk(true, true); };
  expect(
      meets, "",
      "socket!! setsockopt.. bind! getsockname!. getpeername. listen! accept4! poll! send! recv! "
      "gethostname! gethostbyname_r! close... connect!",
      {}, "#", false);
  EXPECT_TRUE(support::run_failing(meets, {{"gethostbyname_r", 1, ERANGE}})) << "in more room";
  // How an interrupted connection ends shows later, if it can be asked.
  EXPECT_FALSE(support::run_failing([&] { return talk(false, false); }, {}, true));
  for (const char* call : {"poll", "getsockopt"}) {
    EXPECT_FALSE(support::run_failing([&] { return talk(true, false); }, {{call, 1, EIO}}, true));
  }
}

}  // namespace
