// What only POSIX has: signals, and threads that are cancelled.
#include <zelvan/osh/file_access.h>
#include <zelvan/osh/system_services.h>

#include <chrono>
#include <csignal>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <osh/world.h>
#include <pthread.h>
#include <sys/time.h>
#include <unistd.h>

static std::string next_line(std::FILE* fp) {
  char line[100];
  return {line, static_cast<std::size_t>(osh_readLine(fp, line, sizeof line))};
}

static int writing_end;
static const char* next_byte;

// The handler of a signal writes the byte for which the interrupted reader waits.
TEST(ReadLine, GoesOnAfterASignal) {
  struct sigaction action = {};  // without SA_RESTART
  action.sa_handler = [](int) {
    if (*next_byte == '\0' || write(writing_end, next_byte++, 1) != 1) close(writing_end);
  };
  sigaction(SIGALRM, &action, nullptr);
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  writing_end = ends[1];
  next_byte = "first\r\nsecond\rthird\r\r\nlast";
  std::FILE* const fp = osh_fdopen(ends[0], "r"_c);
  const itimerval each_millisecond = {{0, 1000}, {0, 1000}}, none = {};
  setitimer(ITIMER_REAL, &each_millisecond, nullptr);
  errno = 77;
  std::vector<std::string> lines;
  for (std::string line; !(line = next_line(fp)).empty();) lines.push_back(line);
  setitimer(ITIMER_REAL, &none, nullptr);
  EXPECT_EQ(lines, (std::vector<std::string>{"first\r\n", "second\r", "third\r\r\n", "last"}));
  EXPECT_EQ(errno, 77) << "nothing failed";
  EXPECT_EQ(std::ferror(fp), 0);
  osh_fclose(fp);
}

TEST(Sleep, IsNotShortenedByASignal) {
  std::signal(SIGALRM, [](int) {});
  ualarm(100'000, 0);
  const auto start = std::chrono::steady_clock::now();
  osh_sleep(1);
  const std::chrono::duration<double> slept = std::chrono::steady_clock::now() - start;
  EXPECT_GE(slept.count(), 1);
}

TEST(ReadLine, IsWholeForEachOfTwoThreads) {
  const World world;
  std::string text;
  constexpr int count = 2'000'000;  // enough for both threads to read at once
  for (int i = 0; i < count; ++i) text += "line\r";
  put("plain", text);
  std::FILE* const fp = osh_fopen_binary("plain"_c, "r"_c);
  int n_whole[2] = {};
  const auto count_whole = [&](int reader) {
    while (next_line(fp) == "line\r") ++n_whole[reader];
  };
  std::thread other(count_whole, 1);
  count_whole(0);
  other.join();
  EXPECT_EQ(n_whole[0] + n_whole[1], count);
  osh_fclose(fp);
}

TEST(ReadLine, LeavesNoStreamLockedByACancelledThread) {
  int ends[2];
  ASSERT_EQ(pipe(ends), 0);
  std::FILE* const fp = osh_fdopen(ends[0], "r"_c);
  std::thread reader([fp] { next_line(fp); });  // waits for the first byte
  pthread_cancel(reader.native_handle());
  reader.join();
  ASSERT_EQ(ftrylockfile(fp), 0) << "still locked";
  funlockfile(fp);
  EXPECT_EQ(write(ends[1], "x\n", 2), 2);
  EXPECT_EQ(next_line(fp), "x\n");
  osh_fclose(fp);
  close(ends[1]);
}
