#include <zelvan/logger/logger.h>

#include "support/system.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

// The one friend: what a Logger keeps to itself.
struct LoggerInside {
  static constexpr auto init = &Logger::init, open = &Logger::openFile;
  static constexpr auto date = &Logger::getCurrentDate;
  static constexpr auto outlog = &Logger::outlog;
  static constexpr auto name = &Logger::classname;
  static auto flags(const Logger& log) { return std::pair(log.stout, log.reserved_flag); }
  static inline auto& file = Logger::log_file;
  static inline auto& lines = Logger::num_lines;
  static inline auto &appends = Logger::reopen_for_append, &is_pending = Logger::init_pending;
  static inline auto& number = Logger::file_number;
  static auto settings() {
    return std::tie(Logger::max_num_files, Logger::max_num_lines, Logger::log_level,
                    Logger::file_prefix);
  }
};

namespace {

using In = LoggerInside;
using support::set_environment;
using Settings = std::tuple<int, int, logPriorities, std::string>;

TEST(Logger, ReadsItsSettingsOnceWithinTheirBounds) {
  const Settings start(2, 5000, logTrace, "");
  EXPECT_TRUE(In::settings() == start && In::file == nullptr && In::lines + In::number == 0 &&
              !In::appends && In::is_pending);
  const struct {
    const char* values[4];  // of the four variables; null: not set
    int level_set;
    Settings read;
  } rows[] = {{{}, 3, {2, 5000, logWarn, "kept"}},
              {{"x", "", "x1", nullptr}, -1, {2, 5000, logTrace, "kept"}},
              {{"0", "999", "-3", "x/"}, 2, {1, 1000, logTrace, "x/"}},
              {{" +7 of them", "1000", "9", ""}, 2, {7, 1000, logError, support::log_prefix}},
              {{"99999999999", "-99999999999", "3", nullptr}, 17, {INT_MAX, 1000, logWarn, "kept"}},
              {{"-99999999999", "99999999999", nullptr, "y"}, 17, {1, INT_MAX, logError, "y"}}};
  const char* const names[] = {"LOGGER_MAX_NUM_FILES", "LOGGER_MAX_NUM_LINES", "LOGGER_LOG_LEVEL",
                               "LOGGER_FILE_PREFIX"};
  Logger log(nullptr);
  for (const auto& row : rows) {
    In::is_pending = true, In::settings() = start;
    log.setFilePrefix("kept"), log.setLogLevel(static_cast<logPriorities>(row.level_set));
    for (int i = 0; i < 4; ++i) {
      set_environment(names[i], row.values[i]);
    }
    (log.*In::init)();
    set_environment(names[0], "5"), (log.*In::init)();  // too late
    EXPECT_EQ(In::settings(), row.read);
  }
  EXPECT_FALSE(In::is_pending);
  log.setFilePrefix(nullptr);
  EXPECT_EQ(std::get<3>(In::settings()), "");
}

TEST(Logger, OpensItsFileAndNothingElseWrites) {
  const std::string prefix = testing::TempDir() + "logger-test-", name = prefix + "7.log";
  const auto content = [&] {
    std::string text;
    return std::getline(std::ifstream(name), text, '\0'), text;
  };
  Logger log("a");
  log.setFilePrefix(prefix.c_str());
  In::is_pending = true, In::lines = In::number = 7;
  (log.*In::open)();
  EXPECT_TRUE(In::file == nullptr && In::lines == 7) << "not before init";
  In::is_pending = false;
  for (const std::string text : {"", "line\n", "line\nline\n"}) {  // anew, then to append
    Logger other("closes the file when it ends");
    (log.*In::open)();
    ASSERT_NE(In::file, nullptr);
    EXPECT_TRUE(In::lines == (text.empty() ? 0 : 8) && !In::appends);
    In::lines = 8;
    std::fputs("line\n", In::file);
    EXPECT_TRUE(log.log(logError, "o", "m") && log.logf(logError, nullptr, nullptr) &&
                log.debug("o", "m") && log.error("o", "m") && log.trace("o", "m") &&
                log.warn(nullptr, nullptr) && (log.*In::outlog)(logError, nullptr, nullptr));
    std::fflush(In::file);
    EXPECT_EQ(content(), text + "line\n");
  }
  EXPECT_TRUE(In::file == nullptr && In::appends);
  In::appends = false;
  for (int i = 0; i < 2; ++i) (log.*In::open)();  // anew, then anew while it is open
  EXPECT_EQ(content() + std::to_string(In::lines), "0");
  std::remove(name.c_str());
  log.setFilePrefix("/nowhere/at/all-");
  (log.*In::open)();
  EXPECT_TRUE(In::file == nullptr && !In::appends && In::number == 7);
}

TEST(Logger, OwnsItsNameAndGivesItsDateAway) {
  Logger log("name"), other("other"), empty(nullptr);
  EXPECT_EQ(In::flags(log), std::pair(false, true));
  log.setStout(true);
  Logger copy(log);
  other = copy;
  other.setClassname(other.*In::name);
  for (const auto* same : {&copy, &other}) {
    EXPECT_STREQ(same->*In::name, "name");
    EXPECT_TRUE(same->*In::name != log.*In::name && In::flags(*same) == std::pair(true, true));
  }
  log.setStout(false), other = log, log.setClassname(nullptr);
  EXPECT_FALSE(In::flags(other).first);
  EXPECT_EQ(std::string(log.*In::name) + empty.*In::name, "");
  set_environment("TZ", "ABC-5:30"), tzset();
  const std::time_t there = std::time(nullptr) + (5 * 60 + 30) * 60;
  char hour[16] = "";
  std::strftime(hour, sizeof hour, "%d at %H", std::gmtime(&there));
  const std::string longest(63, 'x');
  for (const std::string& format : {std::string("%d at %H"), longest, longest + 'x'}) {
    const std::string text = format[0] == '%' ? hour : format == longest ? format : "";
    char* date = nullptr;
    (log.*In::date)(format.c_str(), &date);
    EXPECT_EQ(std::string(date, 65), text + std::string(65 - text.size(), '\0'));
    std::free(date);
  }
}

}  // namespace
