/// A sign of life on the terminal while a program works for long.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace example {

/// Shows on standard error what a program does, and for how many seconds it has done so.
///
/// A line appears when one piece of work takes more than two seconds, and goes when the work ends.
/// Nothing is written if standard error is not a terminal. A thread of its own writes the line, so
/// the work need not be cut into steps.
class Progress {
 public:
  /// `program` stands at the start of the line.
  explicit Progress(std::string program);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Begins a piece of work, such as "draw", and ends the one before.
  void begin(const char* work);

  /// Ends the work. The terminal is free for output until the next `begin`.
  void end();

 private:
  void run();
  void clear_line();

  std::string program_;
  std::mutex mutex_;  ///< guards what follows
  std::string work_;  ///< empty between two pieces of work
  std::chrono::steady_clock::time_point start_;
  bool is_shown_ = false;
  bool is_over_ = false;
  std::condition_variable over_;
  std::thread thread_;  ///< none without a terminal
};

}  // namespace example
