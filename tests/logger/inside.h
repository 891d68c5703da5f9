/// The private members of a Logger, for tests.
#pragma once

#include <zelvan/logger/logger.h>

struct LoggerInside {
  static constexpr auto init = &Logger::init;
  static constexpr auto open = &Logger::openFile;
  static constexpr auto name = &Logger::classname;
  static constexpr auto stout = &Logger::stout;
  static inline auto& files = Logger::max_num_files;
  static inline auto& lines = Logger::num_lines;
  static inline auto& number = Logger::file_number;
  static inline auto& appends = Logger::reopen_for_append;
  static inline auto& is_pending = Logger::init_pending;
  static inline auto& level = Logger::log_level;
  static inline auto& prefix = Logger::file_prefix;
  static inline auto& file = Logger::log_file;
};
