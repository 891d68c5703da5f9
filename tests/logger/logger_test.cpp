#include "logger/inside.h"
#include "support/system.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using In = LoggerInside;

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

// What a variable leaves empty, the system says; and the hour is the local one.
TEST(Logger, AsksTheSystem) {
  Logger log(nullptr);
  In::is_pending = true;
  support::set_environment("LOGGER_FILE_PREFIX", "");
  (log.*In::init)();
  EXPECT_EQ(In::prefix, support::log_prefix);
  support::set_environment("TZ", "ABC-5:30");
  tzset();
  const std::time_t there = std::time(nullptr) + (5 * 60 + 30) * 60;
  char hour[16] = "", *date = nullptr;
  std::strftime(hour, sizeof hour, "%d at %H", std::gmtime(&there));
  const std::string longest(63, 'x');
  for (const std::string& format : {std::string("%d at %H"), longest, longest + 'x'}) {
    const std::string text = format[0] == '%' ? hour : format == longest ? format : "";
    (log.*In::date)(format.c_str(), &date);
    EXPECT_EQ(std::string(date, 65), text + std::string(65 - text.size(), '\0'));
    std::free(date);
  }
}

}  // namespace
