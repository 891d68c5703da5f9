#include "digests/group.h"
#include "logger/inside.h"

namespace {

using In = LoggerInside;

void take_settings(Digest& digest) {
  digest(In::files, In::most_lines, In::level, In::prefix, In::file == nullptr, In::lines,
         In::number, In::appends, In::is_pending);
}

const std::uint64_t at_load = [] {
  Digest digest;
  take_settings(digest);
  return digest.value();
}();

// Settings within and beyond their bounds, which are read once, and only if they are numbers. No
// file is opened before, and none where there is no directory.
const Group settings("logger.settings", [](Digest& digest) {
  digest(at_load);
  const std::pair<const char*, std::vector<const char*>> variables[] = {
      {"LOGGER_MAX_NUM_FILES", {"x", "0", "1", "2", " +7 of them", "99999999999", "-99999999999"}},
      {"LOGGER_MAX_NUM_LINES", {"+", "999", "1000", "1001", "-99999999999", "99999999999"}},
      {"LOGGER_LOG_LEVEL", {"x1", "-3", "0", "3", "4", "9"}},
      {"LOGGER_FILE_PREFIX", {"/nowhere/x-", "/nowhere/at/all-"}}};
  Logger log(nullptr);
  for (int i = 0; i < 7 * 6; ++i) {
    In::files = 2;
    In::most_lines = 5000;
    In::is_pending = true;
    log.setFilePrefix(i % 2 == 0 ? nullptr : "kept");
    log.setLogLevel(static_cast<logPriorities>(i % 9 * 3 - 2));
    (log.*In::open)();
    take_settings(digest);
    for (const auto& [name, values] : variables) {
      std::string variable = name, value = values[i % values.size()];
      osh_setenv(variable.data(), value.data());
    }
    (log.*In::init)();
    std::string too_late = "LOGGER_MAX_NUM_FILES", five = "5";
    osh_setenv(too_late.data(), five.data());
    (log.*In::init)();
    (log.*In::open)();
    take_settings(digest);
  }
});

// Objects own their names, also one that is given its own.
const Group objects("logger.objects", [](Digest& digest) {
  Logger log("name"), other("other"), empty(nullptr);
  log.setStout(true);
  Logger copy(log);
  for (int i = 0; i < 3; ++i) {
    for (const Logger* each : {&log, &other, &empty, &copy}) {
      digest(each->*In::name, each->*In::stout, each->*In::reserved);
    }
    if (i == 0) other = copy;
    if (i == 1) log.setClassname(nullptr);
    if (i == 1) log.setStout(false);
    other.setClassname(other.*In::name);
  }
  digest(log.log(logError, "o", "m"), log.logf(logError, nullptr, nullptr), log.debug("o", "m"),
         log.error("o", "m"), log.trace("o", "m"), log.warn(nullptr, nullptr));
});

}  // namespace
