#include <zelvan/logger/logger.h>
#include <zelvan/osh/system_services.h>

#include "digests/group.h"

#include <cstdlib>
#include <string>

// The one friend: what a Logger keeps to itself.
struct LoggerInside {
  static constexpr auto init = &Logger::init, open = &Logger::openFile;
  static constexpr auto date = &Logger::getCurrentDate;
  static constexpr auto name = &Logger::classname;
  static void take(Digest& digest, const Logger& log) {
    digest(std::string(log.classname), log.stout, log.reserved_flag);
  }
  static void take_settings(Digest& digest) {
    digest(Logger::max_num_files, Logger::max_num_lines, Logger::log_level, Logger::file_prefix,
           Logger::log_file == nullptr, Logger::num_lines, Logger::file_number,
           Logger::reopen_for_append, Logger::init_pending);
  }
  static void begin_anew() {
    Logger::max_num_files = 2;
    Logger::max_num_lines = 5000;
    Logger::init_pending = true;
  }
};

namespace {

using In = LoggerInside;

// Settings within and beyond their bounds, which are read once, and only if they are numbers. No
// file is opened before, and none where there is no directory.
const Group settings("logger.settings", [](Digest& digest) {
  In::take_settings(digest);
  const std::pair<const char*, std::vector<const char*>> variables[] = {
      {"LOGGER_MAX_NUM_FILES", {"x", "0", "1", "2", " +7 of them", "99999999999", "-99999999999"}},
      {"LOGGER_MAX_NUM_LINES", {"+", "999", "1000", "1001", "-99999999999", "99999999999"}},
      {"LOGGER_LOG_LEVEL", {"x1", "-3", "0", "3", "4", "9"}},
      {"LOGGER_FILE_PREFIX", {"/nowhere/x-", "/nowhere/at/all-"}}};
  Logger log(nullptr);
  for (int i = 0; i < 7 * 6; ++i) {
    In::begin_anew();
    log.setFilePrefix(i % 2 == 0 ? nullptr : "kept");
    log.setLogLevel(static_cast<logPriorities>(i % 9 * 3 - 2));
    (log.*In::open)();
    In::take_settings(digest);
    for (const auto& [name, values] : variables) {
      std::string variable = name, value = values[i % values.size()];
      osh_setenv(variable.data(), value.data());
    }
    (log.*In::init)();
    std::string too_late = "LOGGER_MAX_NUM_FILES", five = "5";
    osh_setenv(too_late.data(), five.data());
    (log.*In::init)();
    (log.*In::open)();
    In::take_settings(digest);
  }
});

// Objects own their names, also one that is given its own; dates go to the caller.
const Group objects("logger.objects", [](Digest& digest) {
  Logger log("name"), other("other"), empty(nullptr);
  log.setStout(true);
  Logger copy(log);
  for (int i = 0; i < 3; ++i) {
    for (const Logger* each : {&log, &other, &empty, &copy}) In::take(digest, *each);
    if (i == 0) other = copy;
    if (i == 1) log.setClassname(nullptr);
    if (i == 1) log.setStout(false);
    other.setClassname(other.*In::name);
  }
  digest(log.log(logError, "o", "m"), log.logf(logError, nullptr, nullptr), log.debug("o", "m"),
         log.error("o", "m"), log.trace("o", "m"), log.warn(nullptr, nullptr));
  const std::string longest(63, 'x');
  for (const std::string& format : {std::string("no date"), longest, longest + 'x'}) {
    char* date = nullptr;
    (log.*In::date)(format.c_str(), &date);
    digest(std::string(date, 65));
    std::free(date);
  }
});

}  // namespace
