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
  {
    Logger log("log");
    log.setFilePrefix(prefix.c_str());
    In::is_pending = In::appends = false, In::lines = 5, In::number = 7;
    for (const char* text : {"lost", "123", "45"}) {  // anew, so while it is open, and to append
      const bool appends = text[0] == '4';
      if (appends) Logger closes_the_file(nullptr);
      (log.*In::open)();
      ASSERT_NE(In::file, nullptr);
      EXPECT_TRUE(In::lines++ == appends && !In::appends);
      std::fputs(text, In::file);
      EXPECT_TRUE(log.log(logError, "o", "m") && log.logf(logError, nullptr, nullptr) &&
                  log.debug("o", "m") && log.error("o", "m") && log.trace("o", "m") &&
                  log.warn(nullptr, nullptr) && (log.*In::outlog)(logError, nullptr, nullptr));
    }
  }
  EXPECT_TRUE(In::file == nullptr && In::appends);
  std::string content;
  std::getline(std::ifstream(name), content, '\0');
  EXPECT_EQ(content, "12345");
  std::remove(name.c_str());
}

// What a variable leaves empty, the system says; and the hour is the local one.
TEST(Logger, AsksTheSystem) {
  Logger log(nullptr);
  In::is_pending = true;
  support::set_environment("LOGGER_FILE_PREFIX", "");
  (log.*In::init)();
  EXPECT_EQ(In::prefix, (support::is_posix ? "/tmp/logQelt-" : "c:\\temp\\logQelt-"));
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
