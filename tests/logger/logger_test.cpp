#include <zelvan/logger/logger.h>

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <logger/inside.h>
#include <support/heap.h>
#include <support/system.h>

namespace {

using In = LoggerInside;

constexpr const char* variables[] = {"LOGGER_MAX_NUM_FILES", "LOGGER_MAX_NUM_LINES",
                                     "LOGGER_LOG_LEVEL", "LOGGER_FILE_PREFIX"};

/// Puts the settings that all objects share back to their values at load.
class LoggerTest : public testing::Test {
 protected:
  void SetUp() override {
    In::files = 2;
    In::most_lines = 5000;
    In::level = logTrace;
    In::prefix.clear();
    In::lines = 0;
    In::number = 0;
    In::appends = false;
    In::is_pending = true;
    for (const char* variable : variables) support::set_environment(variable, nullptr);
  }
};

std::string content(const std::string& path) {
  std::string text;
  std::getline(std::ifstream(path), text, '\0');
  return text;
}

TEST_F(LoggerTest, ObjectsOwnACopyOfTheirName) {
  std::string given = "name";
  Logger log(given.c_str());
  given = "gone";
  log.setStout(true);
  Logger copy(log);
  log.setClassname(nullptr);
  EXPECT_STREQ(log.*In::name, "") << "null counts as empty";
  EXPECT_STREQ(copy.*In::name, "name") << "a copy keeps its own";
  Logger assigned(nullptr);
  assigned = copy;
  assigned.setClassname(assigned.*In::name);
  EXPECT_STREQ(assigned.*In::name, "name") << "given its own name";
  EXPECT_NE(assigned.*In::name, copy.*In::name);
  EXPECT_TRUE(assigned.*In::stout);
}

TEST_F(LoggerTest, ReadsNumbersFromTheEnvironmentWithinBounds) {
  const struct {
    const char* variable;
    const char* value;
    int expected;
    const char* why;
  } rows[] = {
      {variables[0], nullptr, 2, "not set"},
      {variables[0], " +7 of them", 7, "begins with a number"},
      {variables[0], "0", 1, "at least 1"},
      {variables[0], "99999999999", 2147483647, "the nearest int"},
      {variables[1], "999", 1000, "at least 1000"},
      {variables[2], "-3", 0, "at least 0"},
      {variables[2], "9", 4, "at most 4"},
  };
  for (const auto& row : rows) {
    SetUp();
    support::set_environment(row.variable, row.value);
    Logger log(nullptr);
    (log.*In::init)();
    const bool is_level = row.variable == variables[2];
    const int found = is_level                       ? In::level
                      : row.variable == variables[0] ? In::files
                                                     : In::most_lines;
    EXPECT_EQ(found, row.expected) << row.variable << ": " << row.why;
    EXPECT_FALSE(In::is_pending);
  }
}

TEST_F(LoggerTest, BoundsASetLevelAndReadsOnlyOnce) {
  Logger log(nullptr);
  log.setLogLevel(static_cast<logPriorities>(77));
  (log.*In::init)();
  EXPECT_EQ(In::level, logError);
  support::set_environment("LOGGER_MAX_NUM_FILES", "5");
  (log.*In::init)();
  EXPECT_EQ(In::files, 2) << "a second init reads nothing";
}

TEST_F(LoggerTest, TakesThePrefixFromEnvironmentProgramOrSystem) {
  Logger log(nullptr);
  (log.*In::init)();
  EXPECT_EQ(In::prefix, support::is_posix ? "/tmp/logQelt-" : "c:\\temp\\logQelt-");
  In::is_pending = true;
  log.setFilePrefix("program-");
  (log.*In::init)();
  EXPECT_EQ(In::prefix, "program-");
  In::is_pending = true;
  support::set_environment("LOGGER_FILE_PREFIX", "environment-");
  (log.*In::init)();
  EXPECT_EQ(In::prefix, "environment-");
}

TEST_F(LoggerTest, OpensItsFileAnewOrToAppendAfterADestructorClosedIt) {
  const std::string prefix = testing::TempDir() + "logger-test-";
  const auto destroy_one = [] { Logger closes_the_file(nullptr); };
  Logger log("log");
  log.setFilePrefix(prefix.c_str());
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
  EXPECT_EQ(content(prefix + "7.log"), "12345") << "a second opening begins the file anew";
  std::filesystem::remove(prefix + "7.log");
  In::appends = false;
  log.setFilePrefix((prefix + "none/").c_str());
  (log.*In::open)();
  EXPECT_EQ(In::file, nullptr) << "no such folder";
  destroy_one();
  EXPECT_FALSE(In::appends) << "no file was open";
}

TEST_F(LoggerTest, WritingReturnsTrueAndOpensNothing) {
  Logger log("log");
  EXPECT_TRUE(log.log(logError, "origin", "message"));
  EXPECT_TRUE(log.logf(logError, nullptr, nullptr));
  EXPECT_TRUE(log.debug("origin", "message"));
  EXPECT_TRUE(log.error("origin", "message"));
  EXPECT_TRUE(log.trace("origin", "message"));
  EXPECT_TRUE(log.warn(nullptr, nullptr));
  EXPECT_TRUE((log.*In::outlog)(logError, nullptr, nullptr));
  EXPECT_EQ(In::file, nullptr);
}

TEST_F(LoggerTest, FormatsTheLocalTimeIntoAClearedBlock) {
  support::set_environment("TZ", "ABC-5:30");
  tzset();
  const std::time_t there = std::time(nullptr) + (5 * 60 + 30) * 60;
  char hour[16] = "";
  std::strftime(hour, sizeof hour, "%d at %H", std::gmtime(&there));
  const std::string longest(63, 'x');
  Logger log(nullptr);
  for (const std::string& format : {std::string("%d at %H"), longest, longest + "x"}) {
    char* date = nullptr;
    (log.*In::date)(format.c_str(), &date);
    const std::string expected = format[0] == '%' ? hour : format == longest ? longest : "";
    EXPECT_EQ(std::string(date, 65), expected + std::string(65 - expected.size(), '\0')) << format;
    std::free(date);
  }
}

TEST_F(LoggerTest, SurvivesARefusingHeap) {
  Logger log("name");
  log.setFilePrefix("kept-");
  char* date = nullptr;
  heap::refuse(1, true);
  (log.*In::date)("%H", &date);
  log.setFilePrefix("a prefix of more bytes than a string holds within itself");
  log.setClassname(In::prefix.data());
  heap::grant_all();
  EXPECT_EQ(date, nullptr);
  EXPECT_EQ(In::prefix, "kept-");
  EXPECT_TRUE(heap::is_null(log.*In::name));
  heap::refuse(0, false);
  { Logger copy("an object"); }
  heap::grant_all();
  EXPECT_EQ(heap::blocks_left(), 0) << "an object takes its name with it";
}

}  // namespace
