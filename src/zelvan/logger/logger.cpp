#include <zelvan/detail/heap_text.h>
#include <zelvan/logger/logger.h>
#include <zelvan/platform/directories.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>
#include <string>
#include <utility>

// All objects share these, without locks: while one thread changes a setting, opens the file or
// destroys an object, no other thread may do any of that.
logPriorities Logger::log_level = logTrace;
int Logger::max_num_files = 2;
int Logger::max_num_lines = 5000;
std::string Logger::file_prefix;
std::FILE* Logger::log_file = nullptr;
int Logger::num_lines = 0;
int Logger::file_number = 0;
bool Logger::reopen_for_append = false;
bool Logger::init_pending = true;

namespace {

// Returns a copy from `malloc`; null if the heap refuses.
char* copy_of(const char* name) { return zelvan::heap_copy(name == nullptr ? "" : name).release(); }

// Stores the number at the start of an environment variable, as `scanf` reads "%d"; changes nothing
// if there is no number. A number outside the range of `int` becomes the nearest limit.
void read_number(const char* variable, int* number) {
  const char* const text = std::getenv(variable);
  if (text == nullptr) return;
  char* end = nullptr;
  const long value = std::strtol(text, &end, 10);
  if (end != text) *number = static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX));
}

// Assigns a new value; if the heap is exhausted, keeps the old one.
void replace(std::string* string, const char* by) try {
  string->assign(by);
} catch (const std::bad_alloc&) {
}

}  // namespace

Logger::Logger(const char* classname)
    : classname(copy_of(classname)), stout(false), reserved_flag(true) {}

Logger::Logger(const Logger& other)
    : classname(copy_of(other.classname)), stout(other.stout), reserved_flag(other.reserved_flag) {}

Logger& Logger::operator=(const Logger& other) {
  setClassname(other.classname);
  stout = other.stout;
  reserved_flag = other.reserved_flag;
  return *this;
}

Logger::~Logger() {
  if (log_file != nullptr) {
    reopen_for_append = true;
    std::fclose(std::exchange(log_file, nullptr));
  }
  std::free(classname);
}

bool Logger::log(logPriorities, const char*, const char*) { return true; }
bool Logger::logf(logPriorities, const char*, const char*, ...) { return true; }
bool Logger::debug(const char*, const char*) { return true; }
bool Logger::error(const char*, const char*) { return true; }
bool Logger::trace(const char*, const char*) { return true; }
bool Logger::warn(const char*, const char*) { return true; }
bool Logger::outlog(logPriorities, const char*, const char*) { return true; }

void Logger::setClassname(char* name) {
  char* const copy = copy_of(name);  // before the old one is freed: `name` may point to it
  std::free(std::exchange(classname, copy));
}

void Logger::setFilePrefix(const char* prefix) {
  replace(&file_prefix, prefix == nullptr ? "" : prefix);
}

void Logger::setLogLevel(logPriorities level) { log_level = level; }

void Logger::setStout(bool value) { stout = value; }

void Logger::init() {
  if (!init_pending) return;
  read_number("LOGGER_MAX_NUM_FILES", &max_num_files);
  max_num_files = std::max(max_num_files, 1);
  read_number("LOGGER_MAX_NUM_LINES", &max_num_lines);
  max_num_lines = std::max(max_num_lines, 1000);
  int level = log_level;
  read_number("LOGGER_LOG_LEVEL", &level);
  log_level = static_cast<logPriorities>(std::clamp<int>(level, logTrace, logError));
  if (const char* const prefix = std::getenv("LOGGER_FILE_PREFIX")) replace(&file_prefix, prefix);
  if (file_prefix.empty()) replace(&file_prefix, zelvan::platform::log_prefix());
  init_pending = false;
}

void Logger::openFile() try {
  if (init_pending) return;
  if (log_file != nullptr) std::fclose(std::exchange(log_file, nullptr));
  const std::string name = file_prefix + std::to_string(file_number) + ".log";
  if (reopen_for_append) {
    log_file = std::fopen(name.c_str(), "a");
    reopen_for_append = false;
    return;
  }
  num_lines = 0;
  log_file = std::fopen(name.c_str(), "w");
  if (log_file != nullptr) logf(logError, "Logger.log()", "New log file: %s", name.c_str());
} catch (const std::bad_alloc&) {
}

void Logger::getCurrentDate(const char* format, char** date) {
  char text[64];
  const std::time_t now = std::time(nullptr);
  const std::tm* const local = std::localtime(&now);
  const std::size_t length = local == nullptr ? 0 : std::strftime(text, sizeof text, format, local);
  *date = static_cast<char*>(std::calloc(1, sizeof text + 1));
  if (*date != nullptr) std::memcpy(*date, text, length);
}
