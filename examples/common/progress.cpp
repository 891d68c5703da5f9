#include "common/progress.h"

#include <cstdio>
#include <utility>

#include <signal.h>
#include <unistd.h>

namespace example {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 2s;
constexpr auto interval = 1s;

}  // namespace

Progress::Progress(std::string program) : program_(std::move(program)) {
  if (isatty(STDERR_FILENO) != 0) thread_ = std::thread([this] { run(); });
}

Progress::~Progress() {
  {
    const std::lock_guard lock(mutex_);
    is_over_ = true;
    clear_line();
  }
  over_.notify_one();
  if (thread_.joinable()) thread_.join();
}

void Progress::begin(const char* work) {
  const std::lock_guard lock(mutex_);
  clear_line();
  work_ = work;
  start_ = std::chrono::steady_clock::now();
}

void Progress::end() {
  const std::lock_guard lock(mutex_);
  clear_line();
  work_.clear();
}

void Progress::run() {
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);  // signals are for the thread that works
  std::unique_lock lock(mutex_);
  while (!over_.wait_for(lock, interval, [this] { return is_over_; })) {
    const auto spent = std::chrono::steady_clock::now() - start_;
    if (work_.empty() || spent < patience) continue;
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(spent).count();
    std::fprintf(stderr, "\r%s: %s, %lld s so far", program_.c_str(), work_.c_str(),
                 static_cast<long long>(seconds));
    is_shown_ = true;
  }
}

void Progress::clear_line() {
  constexpr const char* to_start_and_erase = "\r\033[K";
  if (is_shown_) std::fputs(to_start_and_erase, stderr);
  is_shown_ = false;
}

}  // namespace example
