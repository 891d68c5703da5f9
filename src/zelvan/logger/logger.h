/// The settings and the file of a log.
///
/// The class writes nothing: its writing operations return true at once and read none of their
/// arguments, so calls may stay in hot loops. The settings are stored. The code that opens the file
/// is complete, but private and never called: no program gets a log file by using this class.
///
/// All objects share one output file and one set of settings, without locks. Only the writing
/// operations may be called from any thread.
#pragma once

#include <zelvan/export.h>

#include <cstdio>
#include <string>

/// Priorities of messages; higher is more important.
enum logPriorities : int {
  logTrace = 0,  ///< each step
  logDebug = 1,  ///< details that help to find a fault
  logInfo = 2,   ///< normal events
  logWarn = 3,   ///< possible faults
  logError = 4,  ///< faults
};

/// A writer to the log, with the name of the class that it writes for.
class ZELVAN_API Logger {
 public:
  /// Keeps a copy of `classname`; null counts as the empty string. Opens nothing.
  explicit Logger(const char* classname);

  /// Copies the name and both flags (`stout`, `reserved_flag`). Each object owns its own name.
  Logger(const Logger&);
  Logger& operator=(const Logger&);

  /// Closes the log file if it is open, even if another object opened it.
  ~Logger();

  /// Returns true and does nothing. Any argument may be null.
  bool log(logPriorities priority, const char* origin, const char* message);
  bool logf(logPriorities priority, const char* origin, const char* format, ...);
  bool debug(const char* origin, const char* message);
  bool error(const char* origin, const char* message);
  bool trace(const char* origin, const char* message);
  bool warn(const char* origin, const char* message);

  /// Replaces this object's name by a copy of `name`; null counts as the empty string. If the heap
  /// refuses, the object has no name.
  void setClassname(char* name);

  /// Replaces the leading part of the log file's path, for all objects; null counts as the empty
  /// string. If the heap refuses, the old one stays.
  void setFilePrefix(const char* prefix);

  /// Stores `level` for all objects, whatever its value.
  void setLogLevel(logPriorities level);

  /// Stores `value` for this object. Nothing reads it.
  void setStout(bool value);

 private:
  friend struct LoggerInside;

  /// Reads LOGGER_MAX_NUM_FILES (at least 1), LOGGER_MAX_NUM_LINES (at least 1000),
  /// LOGGER_LOG_LEVEL (0 to 4) and LOGGER_FILE_PREFIX from the environment, in this order. A
  /// variable that is missing, or does not begin with a number where one is expected, leaves its
  /// setting as it was. Then each number outside its bounds is set to the nearest bound, even if no
  /// variable changed it. An empty prefix is replaced by the platform's default. Only the first
  /// call has an effect.
  void init();

  /// Opens the log file, "<file_prefix><file_number>.log": emptied, or to append if the destructor
  /// of an object had closed it. Closes it first if it is open. Does nothing before `init`.
  void openFile();

  bool outlog(logPriorities priority, const char* origin, const char* message);

  /// Stores the local time, formatted by `strftime`, in a new block that the caller frees with
  /// `free`.
  ///
  /// The block has 65 bytes; those after the text are zero. A text of more than 63 bytes becomes
  /// the empty string. `*date` is null if the heap refuses.
  void getCurrentDate(const char* format, char** date);

  char* classname;     ///< from `malloc`, the object's own; null if the heap refused
  bool stout;          ///< set by `setStout`; initially false
  bool reserved_flag;  ///< true; nothing reads it

  static logPriorities log_level;
  static int max_num_files;
  static int max_num_lines;
  static std::string file_prefix;
  static std::FILE* log_file;     ///< null when closed
  static int num_lines;           ///< 0: nothing is written, so nothing is counted
  static int file_number;         ///< the number in the file's name; nothing changes it
  static bool reopen_for_append;  ///< a destructor closed the file: append next time
  static bool init_pending;       ///< `init` has yet to run
};

static_assert(sizeof(Logger) == 2 * sizeof(void*), "layout is interface");
