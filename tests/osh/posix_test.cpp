// What only POSIX has: names of any length, other users, signals, threads that are cancelled.
#include <zelvan/osh/file_access.h>
#include <zelvan/osh/paths.h>
#include <zelvan/osh/system_services.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <thread>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <pthread.h>
#include <support/guarded_array.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

using Text = support::GuardedArray<char>;

std::string absolute(const std::string& path) {
  const std::unique_ptr<char, void (*)(void*)> text(osh_find_exec_path(given(path)), std::free);
  return text.get();
}

TEST(Paths, HaveOneFormEachAndAreNeverCut) {
  World world;
  std::vector<std::tuple<std::string, std::string, int>> rows = {
      {"plain", "/plain", 0},      {"dangling", "/dangling", -1},
      {".//./plain", "/plain", 0}, {"plain/../x", "/plain/../x", -1},
      {"\\plain", "/\\plain", -1}, {"...", "/...", -1}};
  for (const std::size_t length : {1023, 1024, 5000}) {
    rows.emplace_back(padded("plain", length), "/plain", length < 1024 ? 0 : -1);
    rows.emplace_back(std::string(length, 'x'), '/' + std::string(length, 'x'), -1);
  }
  for (const auto& [path, form, alternate] : rows) {
    Text out(1024);
    EXPECT_EQ(osh_alternate_pathname(given(path), out.data()), alternate);
    EXPECT_EQ(out.data(), path.size() < 1024 ? path : "");
    EXPECT_EQ(absolute(path), world.path + form);
  }
  fs::current_path("/");
  EXPECT_EQ(absolute("") + absolute("/") + absolute("//.//a/") + absolute("./b"), "//a/b");
}

TEST(Paths, EndWhereTheCurrentDirectoryDoes) {
  World world;
  char text[1024];
  if (geteuid() == 0) {  // who can be another user, and have another root
    fs::permissions("dir", fs::perms::owner_all);
    fs::permissions(".", fs::perms::all);
    fs::permissions("empty", fs::perms{0333});
    const testing::ExitedWithCode is_right(0);
    EXPECT_EXIT(
        _exit(seteuid(65534) + osh_file_exists("dir/inner"_c) + !osh_chmod("plain"_c, 0222) +
              osh_copyfile("plain"_c, "other"_c) + !osh_copyfile("empty/new"_c, "plain"_c)),
        is_right, "");
    EXPECT_EXIT(_exit(chroot(".") + !osh_copyfile("/new"_c, "/plain"_c)), is_right, "");
    EXPECT_EXIT(
        _exit(chroot("/proc") + osh_get_working_dir(text) + (osh_GetFontFileList() != nullptr)),
        is_right, "");
  }
  for (const std::size_t length : {1023, 1024}) {
    std::string path = world.path;
    while (path.size() < 800) path += '/' + std::string(200, 'd');
    path += '/' + std::string(length - path.size() - 1, 'd');
    fs::create_directories(path);
    fs::current_path(path);
    Text directory(std::string(1024, 'u'));
    EXPECT_EQ(osh_get_working_dir(directory.data()), length < 1024);
    EXPECT_EQ(std::string(directory.data(), 1023), length < 1024 ? path : std::string(1023, 'u'));
    EXPECT_EQ(absolute("x"), path + "/x");
    fs::remove(path);
    EXPECT_EQ(absolute("x") + absolute("/x") + char('0' + osh_get_working_dir(text)), "/x0");
  }
}

std::string next_line(std::FILE* fp) {
  char line[100];
  return {line, static_cast<std::size_t>(osh_readLine(fp, line, sizeof line))};
}

int writing_end;
const char* next_byte;

// The handler of a signal writes the byte for which the interrupted reader waits.
TEST(ReadLine, GoesOnAfterASignal) {
  struct sigaction action = {};  // without SA_RESTART
  action.sa_handler = [](int) {
    if (*next_byte == '\0' || write(writing_end, next_byte++, 1) != 1) close(writing_end);
  };
  sigaction(SIGALRM, &action, nullptr);
  for (const bool had_error : {false, true}) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    writing_end = ends[1], next_byte = "first\r\nsecond\rthird\r\r\nlast";
    std::FILE* const fp = osh_fdopen(ends[0], "r"_c);
    if (had_error) osh_fputc('x', fp);
    const itimerval each_millisecond = {{0, 1000}, {0, 1000}}, none = {};
    setitimer(ITIMER_REAL, &each_millisecond, nullptr);
    errno = 77;
    std::vector<std::string> lines;
    for (std::string line; !(line = next_line(fp)).empty();) lines.push_back(line);
    setitimer(ITIMER_REAL, &none, nullptr);
    EXPECT_EQ(lines, (std::vector<std::string>{"first\r\n", "second\r", "third\r\r\n", "last"}));
    EXPECT_EQ(errno, 77) << "nothing failed";
    EXPECT_EQ(std::ferror(fp) != 0, had_error) << "an error of earlier is kept, and none is added";
    osh_fclose(fp);
  }
}

TEST(ReadLine, IsWholeForEachOfTwoThreads) {
  World world;
  constexpr int count = 50'000;
  std::string text;
  for (int i = 0; i < count; ++i) text += std::to_string(i) + "\r\n";
  put("plain", text);
  std::FILE* const fp = osh_fopen_binary("plain"_c, "r"_c);
  int read[2] = {}, broken[2] = {};
  const auto read_all = [&](int reader) {
    for (std::string line; !(line = next_line(fp)).empty(); ++read[reader]) {
      broken[reader] += line != std::to_string(std::atoi(line.c_str())) + "\r\n";
    }
  };
  std::thread other(read_all, 1);
  read_all(0);
  other.join();
  EXPECT_EQ(read[0] + read[1], count);
  EXPECT_EQ(broken[0] + broken[1], 0);
  osh_fclose(fp);
}

TEST(ReadLine, LeavesNoStreamLockedByACancelledThread) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::FILE* const fp = osh_fdopen(ends[0], "r"_c);
  std::thread reader([fp] { next_line(fp); });  // which waits for the first byte
  pthread_cancel(reader.native_handle());
  reader.join();
  ASSERT_EQ(ftrylockfile(fp), 0) << "still locked";
  funlockfile(fp);
  EXPECT_EQ(write(ends[1], "x\n", 2), 2);
  EXPECT_EQ(next_line(fp), "x\n");
  osh_fclose(fp);
  close(ends[1]);
}

// A search for a line feed through all that is buffered, at each line, would take minutes.
TEST(ReadLine, TakesALineAtATimeFromALargeBuffer) {
  World world;
  constexpr int count = 2'000'000;
  std::string text, buffer(2 * count + 1, ' ');
  for (int i = 0; i < count; ++i) text += "x\r";
  put("plain", text);
  std::FILE* const fp = osh_fopen_binary("plain"_c, "r"_c);
  std::setvbuf(fp, buffer.data(), _IOFBF, buffer.size());
  const auto start = std::chrono::steady_clock::now();
  int read = 0;
  std::string line(2 * count, ' ');
  while (osh_readLine(fp, line.data(), 2 * count) == 2) ++read;
  EXPECT_EQ(read, count);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
  osh_fclose(fp);
}

}  // namespace
