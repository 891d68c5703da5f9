#include <zelvan/logger/logger.h>
#include <zelvan/osh/system_services.h>
#include <zelvan/platform/directories.h>

#include "digests/group.h"
#include "digests/heap.h"

#include <climits>
#include <cstdlib>
#include <string>

// The one friend: what a Logger keeps to itself.
struct LoggerInside {
  static constexpr auto init = &Logger::init, open = &Logger::openFile;
  static constexpr auto date = &Logger::getCurrentDate;
  static constexpr auto outlog = &Logger::outlog;
  static constexpr auto name = &Logger::classname;
  static void take_object(Digest& digest, const Logger& log) {
    digest(heap::is_null(log.classname), log.stout, log.reserved_flag);
    if (log.classname != nullptr) digest(std::string(log.classname));
  }
  static void take_settings(Digest& digest) {
    const std::string& prefix = Logger::file_prefix;
    digest(Logger::max_num_files, Logger::max_num_lines, Logger::log_level,
           Logger::log_file == nullptr, Logger::num_lines, Logger::file_number,
           Logger::reopen_for_append, Logger::init_pending,
           prefix == zelvan::platform::log_prefix() ? "the system's" : prefix);
  }
  static void begin_anew() {
    Logger::max_num_files = 2;
    Logger::max_num_lines = 5000;
    Logger::init_pending = true;
  }
};

namespace {

using In = LoggerInside;

void set(std::string name, std::string value) { osh_setenv(name.data(), value.data()); }

// Settings within and beyond their bounds, which are read once, and only if they are numbers.
const Group settings("logger.settings", [](Digest& digest) {
  In::take_settings(digest);
  const char* const values[][4] = {{"x", "+", "x1", "x/"},
                                   {"0", "999", "-3", "y"},
                                   {" +7 of them", "1000", "9", "z-"},
                                   {"99999999999", "-99999999999", "3", "/a/b"},
                                   {"-99999999999", "99999999999", "4", "y"},
                                   {"1", "1001", "0", "0"}};
  Logger log(nullptr);
  for (const auto& row : values) {
    for (const int level : {-1, 2, 17}) {
      In::begin_anew();
      log.setFilePrefix(level == 2 ? nullptr : "kept");
      log.setLogLevel(static_cast<logPriorities>(level));
      (log.*In::open)();  // not before init
      In::take_settings(digest);
      const char* const names[] = {"LOGGER_MAX_NUM_FILES", "LOGGER_MAX_NUM_LINES",
                                   "LOGGER_LOG_LEVEL", "LOGGER_FILE_PREFIX"};
      for (int i = 0; i < 4; ++i) set(names[i], row[i]);
      (log.*In::init)();
      set("LOGGER_MAX_NUM_FILES", "5");
      (log.*In::init)();  // too late
      In::take_settings(digest);
    }
  }
  log.setFilePrefix("/nowhere/at/all-");
  (log.*In::open)();
  In::take_settings(digest);
});

const Group objects("logger.objects", [](Digest& digest) {
  Logger log("name"), other("other"), empty(nullptr);
  const auto take = [&] {
    for (const Logger* each : {&log, &other, &empty}) In::take_object(digest, *each);
    digest(log.*In::name == other.*In::name);
  };
  take();
  log.setStout(true);
  Logger copy(log);
  In::take_object(digest, copy);
  other = copy;
  other.setClassname(other.*In::name);
  take();
  log.setStout(false);
  other = log;
  log.setClassname(nullptr);
  take();
  digest(log.log(logError, "o", "m"), log.logf(logError, nullptr, nullptr), log.debug("o", "m"),
         log.error("o", "m"), log.trace("o", "m"), log.warn(nullptr, nullptr),
         (log.*In::outlog)(logError, nullptr, nullptr));
  const std::string longest(63, 'x');
  for (const std::string& format : {std::string("no date"), longest, longest + 'x'}) {
    char* date = nullptr;
    (log.*In::date)(format.c_str(), &date);
    digest(std::string(date, 65));
    std::free(date);
  }
});

const Group refusals("logger.refusals", [](Digest& digest) {
  const Logger whole("a name");
  heap::refuse_each([&] { In::take_object(digest, Logger("new")); });
  heap::refuse_each([&] { In::take_object(digest, Logger(whole)); });
  heap::refuse_each([&] {
    Logger assigned("old");
    assigned = whole;
    In::take_object(digest, assigned);
    char* date;
    (assigned.*In::date)("2", &date);
    digest(heap::is_null(date));
    std::free(date);
  });
});

}  // namespace
