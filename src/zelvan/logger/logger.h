/// The settings and the file of a log.
///
/// As it stands, the class writes nothing: its writing operations return true at once and look
/// at none of their arguments, so calls of them may stay in hot loops. The settings are kept,
/// and the machinery that opens the file is complete but private, and nothing calls it. No
/// program gets a log file by using this class.
///
/// One output file and one set of settings serve all objects. They are plain data without
/// locks: only the writing operations may run on any thread.
#pragma once

#include <zelvan/export.h>

#include <cstdio>
#include <string>

/// How much a message matters, from 0 on up: the higher, the more. A log tells of its own
/// beginning at the highest, so that no level hides it.
enum logPriorities : int {
  logTrace = 0,  ///< each step
  logDebug = 1,  ///< what helps to find a fault
  logInfo = 2,   ///< what goes on
  logWarn = 3,   ///< what may be a fault
  logError = 4,  ///< what is one
};

/// The log as one class writes to it; it keeps that class's name.
class ZELVAN_API Logger {
 public:
  /// Keeps a copy of `classname`; null counts as the empty string. Opens nothing.
  explicit Logger(const char* classname);

  /// Takes the two flags over, and a copy of the name: each object owns its own.
  Logger(const Logger&);
  Logger& operator=(const Logger&);

  /// Closes the log file if one is open, whichever object opened it.
  ~Logger();

  /// Writing. Each returns true and does nothing; null is as good as any argument.
  bool log(logPriorities priority, const char* origin, const char* message);
  bool logf(logPriorities priority, const char* origin, const char* format, ...);
  bool debug(const char* origin, const char* message);
  bool error(const char* origin, const char* message);
  bool trace(const char* origin, const char* message);
  bool warn(const char* origin, const char* message);

  /// Replaces this object's name by a copy of `name`; null counts as the empty string.
  void setClassname(char* name);

  /// Replaces the leading part of the log file's path, for all objects; null counts as the
  /// empty string. When the heap refuses, the old one stays.
  void setFilePrefix(const char* prefix);

  /// Keeps `level` for all objects, whatever its value.
  void setLogLevel(logPriorities level);

  /// Keeps `value` for this object. Nothing reads it.
  void setStout(bool value);

 private:
  friend struct LoggerInside;

  /// Reads LOGGER_MAX_NUM_FILES (at least 1), LOGGER_MAX_NUM_LINES (at least 1000),
  /// LOGGER_LOG_LEVEL (0 to 4) and LOGGER_FILE_PREFIX, in this order. A value that does not
  /// begin with a number leaves the setting as it was; the bounds apply in any case. Does all
  /// that just once.
  void init();

  /// Opens the log file, "<file_prefix><file_number>.log": a new one, or to append if the
  /// destructor of an object had closed it. Does nothing before `init`.
  void openFile();

  bool outlog(logPriorities priority, const char* origin, const char* message);

  /// The local time, as `strftime` puts it into `format`, in a block that the caller frees with
  /// `free`: 64 characters and a terminator, the unused ones zero. What does not fit gives the
  /// empty string, and a heap that refuses null.
  void getCurrentDate(const char* format, char** date);

  char* classname;     ///< from `malloc`, the object's own; null if the heap refused
  bool stout;          ///< as `setStout` left it, first false
  bool reserved_flag;  ///< true; nothing reads it

  static logPriorities log_level;
  static int max_num_files;
  static int max_num_lines;
  static std::string file_prefix;
  static std::FILE* log_file;     ///< null when closed
  static int num_lines;           ///< lines in the file since it was begun
  static int file_number;         ///< the number in the file's name; nothing changes it
  static bool reopen_for_append;  ///< a destructor closed the file
  static bool init_pending;       ///< `init` has yet to run
};

static_assert(sizeof(Logger) == 2 * sizeof(void*), "layout is interface");
