/// The picker at the other end: its session, and how it gets started.
#pragma once

#include "session/options.h"
#include "session/wire_tap.h"

#include <optional>
#include <string>

#include <sys/types.h>

namespace example {

/// A session with the picker, open for as long as this lives. Ending it is orderly: the picker
/// is told, has answered or gone, and a process that was started here has ended.
class PickerProcess {
 public:
  /// Opens a session as the options say, in one step or in two. Throws `Error` when there is no
  /// such program, or it doesn't connect in time.
  explicit PickerProcess(const Options& options);
  ~PickerProcess();
  PickerProcess(const PickerProcess&) = delete;
  PickerProcess& operator=(const PickerProcess&) = delete;

  void* session() const { return session_; }

 private:
  void open_in_two_steps(const Options& options);
  void wait_for_end();

  std::optional<WireTap> tap_;
  pid_t started_ = 0;  ///< ours to wait for; 0: none
  void* session_ = nullptr;
};

}  // namespace example
