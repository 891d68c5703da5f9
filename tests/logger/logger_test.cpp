#include <zelvan/logger/logger.h>

#include <array>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>
#include <osh/world.h>

/// The private members of a Logger.
struct LoggerInside {
  static constexpr auto init = &Logger::init;
  static constexpr auto open = &Logger::openFile;
  static constexpr auto date = &Logger::getCurrentDate;
  static constexpr auto name = &Logger::classname;
  static constexpr auto stout = &Logger::stout;
  static inline auto& files = Logger::max_num_files;
  static inline auto& most_lines = Logger::max_num_lines;
  static inline auto& lines = Logger::num_lines;
  static inline auto& number = Logger::file_number;
  static inline auto& appends = Logger::reopen_for_append;
  static inline auto& is_pending = Logger::init_pending;
  static inline auto& level = Logger::log_level;
  static inline auto& prefix = Logger::file_prefix;
  static inline auto& file = Logger::log_file;
};

namespace {

using In = LoggerInside;

constexpr const char* variables[] = {"LOGGER_MAX_NUM_FILES", "LOGGER_MAX_NUM_LINES",
                                     "LOGGER_LOG_LEVEL", "LOGGER_FILE_PREFIX"};

const int files_at_load = In::files, lines_at_load = In::most_lines;
const bool is_pending_at_load = In::is_pending, appends_at_load = In::appends;

/// Puts the settings that all objects share back to their values at load.
void forget_settings() {
  In::files = files_at_load;
  In::most_lines = lines_at_load;
  In::level = logTrace;
  std::string().swap(In::prefix);  // frees its memory as well
  In::appends = appends_at_load;
  In::is_pending = is_pending_at_load;
  for (const char* variable : variables) support::set_environment(variable, nullptr);
}

TEST(Logger, ObjectsOwnACopyOfTheirName) {
  std::string given = "name";
  Logger log(given.c_str());
  given = "gone";
  EXPECT_FALSE(log.*In::stout);
  log.setStout(true);
  Logger copy(log);
  log.setClassname(nullptr);
  EXPECT_STREQ(log.*In::name, "") << "null counts as empty";
  EXPECT_STREQ(copy.*In::name, "name") << "a copy keeps its own";
  Logger assigned(nullptr);
  assigned = copy;
  assigned.setClassname(assigned.*In::name);
  EXPECT_STREQ(assigned.*In::name, "name") << "given its own name";
  EXPECT_TRUE(assigned.*In::stout);
}

TEST(Logger, WritesNothingAndReturnsTrue) {
  Logger log(nullptr);
  EXPECT_TRUE(log.log(logError, nullptr, nullptr));
  EXPECT_TRUE(log.logf(logError, nullptr, nullptr));
  for (const auto write : {&Logger::debug, &Logger::error, &Logger::trace, &Logger::warn}) {
    EXPECT_TRUE((log.*write)(nullptr, nullptr));
  }
}

TEST(Logger, ReadsItsSettingsFromTheEnvironmentWithinBounds) {
  const std::string of_system = support::is_posix ? "/tmp/logQelt-" : "c:\\temp\\logQelt-";
  using Values = std::array<const char*, 4>;  // of the variables
  const auto expect = [](Values values, int files, int lines, int level, std::string prefix,
                         const char* why) {
    forget_settings();
    for (const int i : {0, 1, 2, 3}) support::set_environment(variables[i], values[i]);
    Logger log(nullptr);
    if (values[3] != nullptr) log.setFilePrefix("the program's");
    log.setLogLevel(logInfo);
    (log.*In::init)();
    support::set_environment(variables[0], "3");
    (log.*In::init)();  // a second call reads nothing
    EXPECT_EQ(In::files, files) << why;
    EXPECT_EQ(In::most_lines, lines) << why;
    EXPECT_EQ(In::level, level) << why;
    EXPECT_EQ(In::prefix, prefix) << why;
  };
  expect({}, 2, 5000, logInfo, of_system, "not set: the program's level");
  expect({" +7 of them", "2000", "3", "here-"}, 7, 2000, 3, "here-", "begin with a number");
  expect({"0", "999", "-3"}, 1, 1000, 0, of_system, "less than the least");
  expect({"99999999999", "many", "9"}, 2147483647, 5000, 4, of_system, "too large or none");
}

TEST(Logger, FormatsTheDateInUpTo63Characters) {
  for (const std::size_t length : {1, 63, 64}) {
    char* date = nullptr;
    (Logger(nullptr).*In::date)(std::string(length, '-').c_str(), &date);
    EXPECT_STREQ(date, length == 64 ? "" : std::string(length, '-').c_str());
    std::free(date);
  }
}

TEST(Logger, OpensItsFileAnewOrToAppendAfterADestructorClosedIt) {
  const support::TemporaryFolder folder;
  forget_settings();
  const auto destroy_one = [] { Logger closes_the_file(nullptr); };
  Logger log("log");
  log.setFilePrefix("test-");
  In::number = 7;
  (log.*In::open)();
  EXPECT_EQ(In::file, nullptr) << "init has not run";
  (log.*In::init)();
  for (const char* text : {"lost", "123", "45"}) {
    const bool appends = text == std::string("45");
    if (appends) destroy_one();
    EXPECT_EQ(In::appends, appends) << text;
    In::lines = 5;
    (log.*In::open)();
    ASSERT_NE(In::file, nullptr);
    EXPECT_EQ(In::lines, appends ? 5 : 0) << text;
    EXPECT_FALSE(In::appends);
    std::fputs(text, In::file);
  }
  destroy_one();
  EXPECT_EQ(In::file, nullptr);
  EXPECT_EQ(content("test-7.log"), "12345") << "a second opening begins the file anew";
}

}  // namespace
