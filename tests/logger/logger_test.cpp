#include <zelvan/logger/logger.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>
#include <support/system.h>

// The one friend: what a Logger keeps to itself.
struct LoggerInside {
  static constexpr auto init = &Logger::init, open = &Logger::openFile;
  static constexpr auto date = &Logger::getCurrentDate;
  static constexpr auto name = &Logger::classname;
  static inline auto &files = Logger::max_num_files, &most_lines = Logger::max_num_lines;
  static inline auto& lines = Logger::num_lines;
  static inline auto& level = Logger::log_level;
  static inline auto& prefix = Logger::file_prefix;
  static inline auto& file = Logger::log_file;
  static inline auto &appends = Logger::reopen_for_append, &pending = Logger::init_pending;
};

namespace {

using In = LoggerInside;
using support::set_environment;

TEST(Logger, ReadsItsSettingsOnceWithinTheirBounds) {
  const struct {
    const char *files, *lines, *level, *prefix;
    int level_set, files_read, lines_read, level_read;
    std::string prefix_read;
  } rows[] = {
      {"x", "", "x1", nullptr, -1, 2, 5000, 0, "kept"},
      {"0", "999", "-3", "x/", 2, 1, 1000, 0, "x/"},
      {" +7 of them", "1000", "9", "", 2, 7, 1000, 4, support::log_prefix},
      {"99999999999", "-99999999999999999999", "3", nullptr, 17, INT_MAX, 1000, 3, "kept"},
  };
  Logger log(nullptr);
  for (const auto& row : rows) {
    In::pending = true, In::files = 2, In::most_lines = 5000;
    log.setFilePrefix("kept");
    log.setLogLevel(static_cast<logPriorities>(row.level_set));
    EXPECT_EQ(In::level, row.level_set);
    set_environment("LOGGER_FILE_PREFIX", row.prefix);
    set_environment("LOGGER_MAX_NUM_LINES", row.lines);
    set_environment("LOGGER_LOG_LEVEL", row.level);
    for (const char* files : {row.files, "5"}) {  // the second comes too late
      set_environment("LOGGER_MAX_NUM_FILES", files);
      (log.*In::init)();
    }
    EXPECT_EQ(std::tuple(In::files, In::most_lines, In::level, In::prefix),
              std::tuple(row.files_read, row.lines_read, row.level_read, row.prefix_read));
  }
}

TEST(Logger, OpensItsFileAndNothingElseWrites) {
  const std::string prefix = testing::TempDir() + "logger-test-";
  Logger log("a");
  log.setFilePrefix(prefix.c_str());
  In::pending = true, In::lines = 7;
  (log.*In::open)();
  EXPECT_EQ(In::file, nullptr) << "not before init";
  In::pending = false;
  for (const int lines : {0, 7}) {  // anew, then to append
    Logger other("closes the file when it ends");
    (log.*In::open)();
    ASSERT_NE(In::file, nullptr);
    EXPECT_TRUE(In::lines == lines && !In::appends);
    In::lines = 7;
    std::fputs("line\n", In::file);
    EXPECT_TRUE(log.log(logError, "o", "m") && log.logf(logError, nullptr, nullptr) &&
                log.debug("o", "m") && log.error("o", "m") && log.trace("o", "m") &&
                log.warn(nullptr, nullptr));
  }
  EXPECT_TRUE(In::file == nullptr && In::appends);
  std::string text;
  std::getline(std::ifstream(prefix + "0.log"), text, '\0');
  EXPECT_EQ(text, "line\nline\n");
  std::remove((prefix + "0.log").c_str());
  log.setFilePrefix("/nowhere/at/all-");
  (log.*In::open)();
  EXPECT_TRUE(In::file == nullptr && !In::appends);
}

TEST(Logger, OwnsItsNameAndGivesItsDateAway) {
  Logger log("name"), copy(log), other("other");
  other = copy;
  other.setClassname(other.*In::name);
  EXPECT_TRUE(other.*In::name == std::string("name") && log.*In::name != other.*In::name);
  set_environment("TZ", "ABC-5:30");
  tzset();
  constexpr auto hour_format = "%d at %H";
  const std::time_t utc = std::time(nullptr) + (5 * 60 + 30) * 60;
  char there[16] = "";
  std::strftime(there, sizeof there, hour_format, std::gmtime(&utc));
  for (const auto& [format, text] : {std::pair<const char*, const char*>(hour_format, there),
                                     {"%A, %A, %A, %A, %A, %A, %A, %A, %A", ""}}) {  // too long
    char* date = nullptr;
    (log.*In::date)(format, &date);
    EXPECT_EQ(std::string(date, 65), text + std::string(65 - std::strlen(text), '\0'));
    std::free(date);
  }
}

}  // namespace
